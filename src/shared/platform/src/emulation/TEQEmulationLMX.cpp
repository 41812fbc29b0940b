#include "emulation/TEQEmulationLMX.h"

#include <fstream>

#include "host/HEXAll.h"
#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(emulation)

namespace TEQEmulation {

ZR_XML_DEFINE_OCCURS_OK(File, "File")
ZR_XML_DEFINE_OCCURS_OK(Files, "Files")
ZR_XML_DEFINE_OCCURS_OK(Emulation, "Emulation")
ZR_XML_DEFINE_OCCURS_OK(Emulations, "Emulations")
ZR_XML_DEFINE_OCCURS_OK(Root, "Root")

namespace {

std::string marshalText(const Root& root) {
  return zr_xml_record::marshalRecord(root, "Root", ZR_XML_SCHEMA(emulation), "emulation XML document");
}

}  // namespace

void Root::Unmarshal(const char* buffer, std::size_t length, const std::string& name) {
  if (buffer == nullptr && length != 0) throw HXMLException("no document buffer was given", 0);
  zr_xml_record::unmarshalRecord(
      zr_xml::Document::parseMemory(buffer ? std::string(buffer, length) : std::string(), name,
                                    ZR_XML_SCHEMA(emulation)),
      *this, "Root");
}

void Root::Unmarshal(const std::string& path) {
  zr_xml_record::unmarshalRecord(zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(emulation)), *this, "Root");
}

void Root::Marshal(const std::string& path) const {
  zr_xml_record::writeDocumentFile(path, marshalText(*this));
}

void Root::Marshal(std::string* out) const {
  if (out == nullptr) throw HXMLException("no target string to write the emulation XML document into", 0);
  *out = marshalText(*this);
}

}  // namespace TEQEmulation
