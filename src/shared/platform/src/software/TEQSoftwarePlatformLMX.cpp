#include "software/TEQSoftwarePlatformLMX.h"

#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(spfm)

namespace TEQSoftwarePlatform {

const char* const kNamespaceUri = "urn:teq:platform";

namespace {

const char kPrefix[] = "teq";

Platform fromDocument(const zr_xml::Document& doc) {
  Platform p;
  zr_xml_record::unmarshalRecord(doc, p, "platform", kNamespaceUri, kPrefix);
  return p;
}

}  // namespace

ZR_XML_DEFINE_OCCURS_OK(Prebuilt, "prebuilt")
ZR_XML_DEFINE_OCCURS_OK(Image, "image")
ZR_XML_DEFINE_OCCURS_OK(BootImages, "bootImages")
ZR_XML_DEFINE_OCCURS_OK(Os, "os")
ZR_XML_DEFINE_OCCURS_OK(ProcessorGroup, "processorGroup")
ZR_XML_DEFINE_OCCURS_OK(Configuration, "configuration")
ZR_XML_DEFINE_OCCURS_OK(SystemConfigurations, "systemConfigurations")
ZR_XML_DEFINE_OCCURS_OK(Platform, "platform")

Platform unmarshalFile(const std::string& path) {
  return fromDocument(zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(spfm)));
}

Platform unmarshalString(const std::string& text, const std::string& name) {
  return fromDocument(zr_xml::Document::parseMemory(text, name, ZR_XML_SCHEMA(spfm)));
}

std::string marshal(const Platform& platform) {
  return zr_xml_record::marshalRecord(platform, "platform", ZR_XML_SCHEMA(spfm), "software platform document",
                                      kNamespaceUri, kPrefix);
}

}  // namespace TEQSoftwarePlatform
