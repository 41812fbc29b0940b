#include "formats/TEQCfaXmlLMX.h"

#include <fstream>
#include <ostream>

#include "host/HEXAll.h"
#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(cfa)

namespace BasePlatform {

#define BP_DEFINE_OCCURS_OK(Record) ZR_XML_DEFINE_OCCURS_OK(Record, #Record)
BP_ALL_RECORDS(BP_DEFINE_OCCURS_OK)
#undef BP_DEFINE_OCCURS_OK

namespace {

// The name under which documents held in memory appear in error texts.
const char kMemoryDocumentName[] = "CFA XML document";

template <class Parse>
void unmarshal(Root& target, DebugError* debugError, Parse parse) {
  try {
    zr_xml_record::unmarshalRecord(parse(), target, "Root");
  } catch (const HXMLException& e) {
    if (debugError) {
      debugError->text = e.getText();
      debugError->line = e.getLineNumber();
    }
    throw;
  }
}

std::string marshalText(const Root& root) {
  return zr_xml_record::marshalRecord(root, "Root", ZR_XML_SCHEMA(cfa), "CFA XML document");
}

}  // namespace

void Root::Unmarshal(const char* buffer, std::size_t length, DebugError* debugError) {
  unmarshal(*this, debugError, [&] {
    if (buffer == nullptr && length != 0) throw HXMLException("no document buffer was given", 0);
    return zr_xml::Document::parseMemory(buffer ? std::string(buffer, length) : std::string(),
                                         kMemoryDocumentName, ZR_XML_SCHEMA(cfa));
  });
}

void Root::Unmarshal(const std::string& path) {
  unmarshal(*this, nullptr, [&] { return zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(cfa)); });
}

void Root::Marshal(const std::string& path) const {
  zr_xml_record::writeDocumentFile(path, marshalText(*this));
}

void Root::Marshal(std::ostream& out) const {
  const std::string text = marshalText(*this);
  out << text;
  if (!out) throw HXMLException("cannot write the CFA XML document to the stream", 0);
}

void Root::Marshal(std::string* out) const {
  if (out == nullptr) throw HXMLException("no target string to write the CFA XML document into", 0);
  *out = marshalText(*this);
}

}  // namespace BasePlatform
