#include "formats/TEQHpfmLMX.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <limits>

#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(hpfm)

namespace WELHardwarePlatform {

const char* const kNamespaceUri = "urn:teq:hpfm";
const char* const kNamespacePrefix = "kp";

namespace {

// The name under which documents held in memory appear in error texts.
const char kMemoryDocumentName[] = "hpfm document";

// Optional sign, then decimal digits only.
bool isIntegerText(const std::string& body) {
  const std::size_t start = (!body.empty() && (body[0] == '+' || body[0] == '-')) ? 1 : 0;
  return body.size() > start && body.find_first_not_of("0123456789", start) == std::string::npos;
}

[[noreturn]] void badValue(const std::string& text, int line, const char* name, const char* what) {
  throw HXMLException("attribute '" + std::string(name) + "': '" + text + "' is not " + what, line);
}

template <class T>
void readSmall(const std::string& text, T& out, int line, const char* name) {
  const std::string body = HSTStringUtils::trim(text);
  if (!isIntegerText(body)) badValue(text, line, name, "an integer");
  errno = 0;
  const long long value = std::strtoll(body.c_str(), nullptr, 10);
  if (errno == ERANGE || value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
    badValue(text, line, name, "an integer in range");
  out = static_cast<T>(value);
}

// The value types of the format: those it shares with the plain records, plus
// 16-bit integers, Booleans, and integers kept as text.
struct HpfmConversions : zr_xml_record::PlainConversions {
  using PlainConversions::fromText;
  using PlainConversions::toText;

  static void fromText(const std::string& text, std::uint16_t& out, int line, const char* name) {
    readSmall(text, out, line, name);
  }
  static void fromText(const std::string& text, std::int16_t& out, int line, const char* name) {
    readSmall(text, out, line, name);
  }
  static void fromText(const std::string& text, bool& out, int line, const char* name) {
    const std::string body = HSTStringUtils::trim(text);
    if (body == "true" || body == "1")
      out = true;
    else if (body == "false" || body == "0")
      out = false;
    else
      badValue(text, line, name, "a Boolean");
  }
  static void fromText(const std::string& text, Integer& out, int line, const char* name) {
    const std::string body = HSTStringUtils::trim(text);
    if (!isIntegerText(body)) badValue(text, line, name, "an integer");
    out = Integer(body);
  }

  static std::string toText(std::uint16_t value) { return std::to_string(value); }
  static std::string toText(std::int16_t value) { return std::to_string(value); }
  static std::string toText(bool value) { return value ? "true" : "false"; }
  static std::string toText(const Integer& value) { return value.get_as_string(); }
};

zr_xml::Document parseBuffer(const char* buffer, std::size_t length) {
  if (buffer == nullptr && length != 0) throw HXMLException("no document buffer was given", 0);
  return zr_xml::Document::parseMemory(buffer ? std::string(buffer, length) : std::string(),
                                       kMemoryDocumentName, ZR_XML_SCHEMA(hpfm));
}

// The schema admits two document elements; the caller says which it takes.
void fillFrom(Repository& target, const zr_xml::Document& doc) {
  zr_xml_record::unmarshalRecord<HpfmConversions>(doc, target, "repository", kNamespaceUri, kNamespacePrefix);
}

std::string marshalText(const Repository& repository) {
  return zr_xml_record::marshalRecord<HpfmConversions>(repository, "repository", ZR_XML_SCHEMA(hpfm),
                                                       "hpfm document", kNamespaceUri, kNamespacePrefix);
}

}  // namespace

int Integer::toIntSaturated() const {
  const std::string body = HSTStringUtils::trim(text_);
  if (!isIntegerText(body)) return 0;
  // Beyond its own range strtoll answers its limits, which lie beyond those of int.
  const long long value = std::strtoll(body.c_str(), nullptr, 10);
  if (value > INT_MAX) return INT_MAX;
  if (value < INT_MIN) return INT_MIN;
  return static_cast<int>(value);
}

ZR_XML_DEFINE_OCCURS_OK(DeviceInfo, "deviceInfo")
ZR_XML_DEFINE_OCCURS_OK(RegisteredDevices, "registeredDevices")
ZR_XML_DEFINE_OCCURS_OK(Clock, "clock")
ZR_XML_DEFINE_OCCURS_OK(SystemClocks, "systemClocks")
ZR_XML_DEFINE_OCCURS_OK(PlatformInfo, "platformInfo")
ZR_XML_DEFINE_OCCURS_OK(Parameter, "parameter")
ZR_XML_DEFINE_OCCURS_OK(BusInterfaceAddressSegment, "addressSegment")
ZR_XML_DEFINE_OCCURS_OK(BusInterface, "busInterface")
ZR_XML_DEFINE_OCCURS_OK(NocConnectivity, "nocConnectivity")
ZR_XML_DEFINE_OCCURS_OK(ResourceEstimates, "resourceEstimates")
ZR_XML_DEFINE_OCCURS_OK(Component, "component")
ZR_XML_DEFINE_OCCURS_OK(Repository, "repository")

void Repository::Unmarshal(const char* buffer, std::size_t length) {
  fillFrom(*this, parseBuffer(buffer, length));
}

void Repository::Unmarshal(const std::string& path) {
  fillFrom(*this, zr_xml::Document::parseFile(path, ZR_XML_SCHEMA(hpfm)));
}

void Repository::Marshal(const std::string& path) const {
  zr_xml_record::writeDocumentFile(path, marshalText(*this));
}

void Repository::Marshal(std::string* out) const {
  if (out == nullptr) throw HXMLException("no target string to write the hpfm document into", 0);
  *out = marshalText(*this);
}

void Kp::AssignRepository(const Repository& value) {
  busInterface_.unset();
  repository_.assign(value);
}

void Kp::AssignBusInterface(const BusInterface& value) {
  repository_.unset();
  busInterface_.assign(value);
}

void Kp::Unmarshal(const char* buffer, std::size_t length) {
  const zr_xml::Document doc = parseBuffer(buffer, length);
  const zr_xml::Node top = doc.root();
  if (top.name() == "busInterface" && top.nsUri() == kNamespaceUri) {
    BusInterface parsed;
    zr_xml_record::unmarshalRecord<HpfmConversions>(doc, parsed, "busInterface", kNamespaceUri,
                                                    kNamespacePrefix);
    AssignBusInterface(parsed);
    return;
  }
  Repository parsed;
  fillFrom(parsed, doc);
  AssignRepository(parsed);
}

}  // namespace WELHardwarePlatform
