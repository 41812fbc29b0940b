#include "emulation/TEQEmulationLMX.h"

#include <fstream>

#include "host/HEXAll.h"
#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(emulation)

namespace TEQEmulation {

#define TEQEMU_DEFINE_OCCURS_OK(Record)                                \
  bool Record::IsOccursOk(std::string* why) const {                    \
    return ::zr_xml_record::OccursChecker::check(#Record, *this, why); \
  }
TEQEMU_DEFINE_OCCURS_OK(File)
TEQEMU_DEFINE_OCCURS_OK(Files)
TEQEMU_DEFINE_OCCURS_OK(Emulation)
TEQEMU_DEFINE_OCCURS_OK(Emulations)
TEQEMU_DEFINE_OCCURS_OK(Root)
#undef TEQEMU_DEFINE_OCCURS_OK

namespace {

void fillFrom(Root& target, const zr_xml::Document& doc) {
  const zr_xml::Node top = doc.root();
  // The schema admits no other top element; this guards the record all the same.
  if (top.name() != "Root" || !top.nsUri().empty())
    throw HXMLException("the document element is not 'Root' in no namespace", top.line());
  Root parsed;
  zr_xml_record::RecordReader::read(top, parsed);
  target.Swap(parsed);
}

std::string marshalText(const Root& root) {
  return zr_xml_record::marshalRecord(root, "Root", ZR_XML_SCHEMA(emulation), "emulation XML document");
}

}  // namespace

void Root::Unmarshal(const char* buffer, std::size_t length, const std::string& name) {
  if (buffer == nullptr && length != 0) throw HXMLException("no document buffer was given", 0);
  fillFrom(*this, zr_xml::Document::parseMemory(buffer ? std::string(buffer, length) : std::string(), name,
                                                ZR_XML_SCHEMA(emulation)));
}

void Root::Unmarshal(const std::string& path) {
  fillFrom(*this, zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(emulation)));
}

void Root::Marshal(const std::string& path) const {
  zr_xml_record::writeDocumentFile(path, marshalText(*this));
}

void Root::Marshal(std::string* out) const {
  if (out == nullptr) throw HXMLException("no target string to write the emulation XML document into", 0);
  *out = marshalText(*this);
}

}  // namespace TEQEmulation
