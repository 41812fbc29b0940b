#include "loading/TEQPlatformLMX.h"

#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(zdf)

namespace TEQPlatform {

const char* const kNamespaceUri = "urn:teq:platform";

ZR_XML_DEFINE_OCCURS_OK(HardwarePlatform, "hardwarePlatform")
ZR_XML_DEFINE_OCCURS_OK(HwEmuPlatform, "hwEmuPlatform")
ZR_XML_DEFINE_OCCURS_OK(SoftwarePlatform, "softwarePlatform")
ZR_XML_DEFINE_OCCURS_OK(AnonHardwarePlatform, "hardwarePlatforms")
ZR_XML_DEFINE_OCCURS_OK(ReconfigurablePartitionAnonHardwarePlatform, "reconfigurablePartition")
ZR_XML_DEFINE_OCCURS_OK(HwEmuPlatformAlone, "hardwarePlatforms")
ZR_XML_DEFINE_OCCURS_OK(ReconfigurablePartition, "reconfigurablePartition")
ZR_XML_DEFINE_OCCURS_OK(ReconfigurablePartitions, "hardwarePlatforms")
ZR_XML_DEFINE_OCCURS_OK(HardwarePlatforms, "hardwarePlatforms")
ZR_XML_DEFINE_OCCURS_OK(SoftwarePlatforms, "softwarePlatforms")
ZR_XML_DEFINE_OCCURS_OK(Platform, "platform")

namespace {

Platform fromDocument(const zr_xml::Document& doc) {
  Platform p;
  zr_xml_record::unmarshalRecord(doc, p, "platform", kNamespaceUri, "teq");
  return p;
}

}  // namespace

Platform unmarshalFile(const std::string& path) {
  return fromDocument(zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(zdf)));
}

Platform unmarshalMemory(const std::string& text, const std::string& name) {
  return fromDocument(zr_xml::Document::parseMemory(text, name, ZR_XML_SCHEMA(zdf)));
}

}  // namespace TEQPlatform
