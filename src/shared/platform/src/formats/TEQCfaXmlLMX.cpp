#include "formats/TEQCfaXmlLMX.h"

#include <fstream>
#include <ostream>

#include "host/HEXAll.h"
#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(cfa)

namespace BasePlatform {

#define BP_DEFINE_OCCURS_OK(Record)                                    \
  bool Record::IsOccursOk(std::string* why) const {                    \
    return ::zr_xml_record::OccursChecker::check(#Record, *this, why); \
  }
BP_ALL_RECORDS(BP_DEFINE_OCCURS_OK)
#undef BP_DEFINE_OCCURS_OK

namespace {

// The name under which documents held in memory appear in error texts.
const char kMemoryDocumentName[] = "CFA XML document";

void fillFrom(Root& target, const zr_xml::Document& doc) {
  const zr_xml::Node top = doc.root();
  // The schema admits no other top element; this guards the record all the same.
  if (top.name() != "Root" || !top.nsUri().empty())
    throw HXMLException("the document element is not 'Root' in no namespace", top.line());
  Root parsed;
  zr_xml_record::RecordReader::read(top, parsed);
  target.Swap(parsed);
}

template <class Parse>
void unmarshal(Root& target, DebugError* debugError, Parse parse) {
  try {
    fillFrom(target, parse());
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
