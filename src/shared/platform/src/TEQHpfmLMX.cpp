#include "TEQHpfmLMX.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fstream>
#include <limits>

#include "XmlRecordIO.h"
#include "ZrXml.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HSTStringUtils.h"

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

// ---- Attribute text to values ----

void fromText(const std::string& text, std::wstring& out, int, const char*) { out = HI18N::convert(text); }

void fromText(const std::string& text, std::uint32_t& out, int line, const char* name) {
  zr_xml_record::PlainConversions::fromText(text, out, line, name);
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

void fromText(const std::string& text, std::uint16_t& out, int line, const char* name) {
  readSmall(text, out, line, name);
}

void fromText(const std::string& text, std::int16_t& out, int line, const char* name) {
  readSmall(text, out, line, name);
}

void fromText(const std::string& text, bool& out, int line, const char* name) {
  const std::string body = HSTStringUtils::trim(text);
  if (body == "true" || body == "1")
    out = true;
  else if (body == "false" || body == "0")
    out = false;
  else
    badValue(text, line, name, "a Boolean");
}

void fromText(const std::string& text, Integer& out, int line, const char* name) {
  const std::string body = HSTStringUtils::trim(text);
  if (!isIntegerText(body)) badValue(text, line, name, "an integer");
  out = Integer(body);
}

void fromText(const std::string& text, Decimal& out, int, const char*) {
  out = Decimal(HSTStringUtils::trim(text));
}

// ---- Values to attribute text ----

std::string toText(const std::wstring& value) { return HI18N::convert(value); }
std::string toText(std::uint16_t value) { return std::to_string(value); }
std::string toText(std::int16_t value) { return std::to_string(value); }
std::string toText(std::uint32_t value) { return std::to_string(value); }
std::string toText(bool value) { return value ? "true" : "false"; }
std::string toText(const Integer& value) { return value.get_as_string(); }
std::string toText(const Decimal& value) { return value.get_as_string(); }

// Fills a record from an element of a validated document.
class Reader {
 public:
  template <class R>
  static void read(const zr_xml::Node& node, R& record) {
    Reader reader(node);
    record.visit(reader);
  }

  template <class T>
  void attribute(const char* name, zr_xml_record::Attribute<T>& attr, zr_xml_record::AttrUse) {
    if (!node_.hasAttr(name)) return;
    T value{};
    fromText(node_.attr(name), value, node_.line(), name);
    attr.set(value);
  }
  template <class R>
  void child(const char* name, zr_xml_record::Single<R>& holder, zr_xml_record::ChildOccurs) {
    const zr_xml::Node node = node_.child(name);
    if (node) read(node, holder.get());
  }
  template <class R>
  void child(const char* name, zr_xml_record::List<R>& holder, zr_xml_record::ChildOccurs) {
    for (const zr_xml::Node& node : node_.children(name)) read(node, holder.append());
  }
  void text(const char* name, zr_xml_record::Attribute<std::wstring>& holder) {
    const zr_xml::Node node = node_.child(name);
    if (node) holder.set(HI18N::convert(node.text()));
  }

 private:
  explicit Reader(const zr_xml::Node& node) : node_(node) {}
  zr_xml::Node node_;
};

// Writes a record into an element being built: set attributes, then present
// children, each in table order.
class Writer {
 public:
  template <class R>
  static void write(zr_xml::Builder::Element element, const R& record) {
    Writer writer(element);
    record.visit(writer);
  }

  template <class T>
  void attribute(const char* name, const zr_xml_record::Attribute<T>& attr, zr_xml_record::AttrUse) {
    if (attr.isSet()) element_.setAttr(name, toText(attr.get()));
  }
  template <class R>
  void child(const char* name, const zr_xml_record::Single<R>& holder, zr_xml_record::ChildOccurs) {
    if (holder.isSet()) write(element_.addChild(name), holder.get());
  }
  template <class R>
  void child(const char* name, const zr_xml_record::List<R>& holder, zr_xml_record::ChildOccurs) {
    for (std::size_t i = 0; i < holder.size(); ++i) write(element_.addChild(name), holder.at(i));
  }
  void text(const char* name, const zr_xml_record::Attribute<std::wstring>& holder) {
    if (holder.isSet()) element_.addChild(name).setText(HI18N::convert(holder.get()));
  }

 private:
  explicit Writer(zr_xml::Builder::Element element) : element_(element) {}
  zr_xml::Builder::Element element_;
};

// Finds the first required attribute or text element that is unset, the
// first required child that is missing, or text that XML cannot carry.
// `path` names the element as "repository/component/platformInfo".
class Checker {
 public:
  template <class R>
  static bool check(const std::string& path, const R& record, std::string* why) {
    Checker checker(path);
    record.visit(checker);
    if (!checker.ok_ && why) *why = checker.why_;
    return checker.ok_;
  }

  template <class T>
  void attribute(const char* name, const zr_xml_record::Attribute<T>& attr, zr_xml_record::AttrUse use) {
    if (!ok_) return;
    if (use == zr_xml_record::AttrUse::kRequired && !attr.isSet())
      fail("the required attribute '" + std::string(name) + "' of element '" + path_ + "' is not set");
    else if (attr.isSet() && !zr_xml_record::isXmlText(attr.get()))
      fail("the attribute '" + std::string(name) + "' of element '" + path_ +
           "' holds a character that XML cannot carry");
  }
  template <class R>
  void child(const char* name, const zr_xml_record::Single<R>& holder, zr_xml_record::ChildOccurs occurs) {
    if (!ok_) return;
    if (holder.isSet())
      descend(name, holder.get());
    else if (occurs == zr_xml_record::ChildOccurs::kOne)
      fail("the element '" + path_ + "' lacks its required child '" + name + "'");
  }
  template <class R>
  void child(const char* name, const zr_xml_record::List<R>& holder, zr_xml_record::ChildOccurs) {
    for (std::size_t i = 0; ok_ && i < holder.size(); ++i) descend(name, holder.at(i));
  }
  void text(const char* name, const zr_xml_record::Attribute<std::wstring>& holder) {
    if (!ok_) return;
    if (!holder.isSet())
      fail("the element '" + path_ + "' lacks its required child '" + name + "'");
    else if (!zr_xml_record::isXmlText(holder.get()))
      fail("the element '" + path_ + "/" + name + "' holds a character that XML cannot carry");
  }

 private:
  explicit Checker(std::string path) : path_(std::move(path)) {}
  template <class R>
  void descend(const char* name, const R& record) {
    std::string why;
    if (!check(path_ + "/" + name, record, &why)) fail(why);
  }
  void fail(const std::string& why) {
    ok_ = false;
    why_ = why;
  }

  std::string path_;
  std::string why_;
  bool ok_ = true;
};

zr_xml::Document parseBuffer(const char* buffer, std::size_t length) {
  if (buffer == nullptr && length != 0) throw HXMLException("no document buffer was given", 0);
  return zr_xml::Document::parseMemory(buffer ? std::string(buffer, length) : std::string(),
                                       kMemoryDocumentName, ZR_XML_SCHEMA(hpfm));
}

// The schema admits two document elements; the caller says which it takes.
void requireTop(const zr_xml::Node& top, const char* localName) {
  if (top.name() != localName || top.nsUri() != kNamespaceUri)
    throw HXMLException(std::string("the document element is not '") + kNamespacePrefix + ":" + localName +
                            "' in the namespace " + kNamespaceUri,
                        top.line());
}

void fillFrom(Repository& target, const zr_xml::Document& doc) {
  const zr_xml::Node top = doc.root();
  requireTop(top, "repository");
  Repository parsed;
  Reader::read(top, parsed);
  target.Swap(parsed);
}

std::string marshalText(const Repository& repository) {
  std::string why;
  if (!repository.IsOccursOk(&why)) throw HXMLException("cannot write the hpfm document: " + why, 0);
  zr_xml::Builder builder("repository", kNamespaceUri, kNamespacePrefix, true);
  Writer::write(builder.root(), repository);
  builder.validate(ZR_XML_SCHEMA(hpfm));
  return builder.toString();
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

#define WHP_DEFINE_OCCURS_OK(Record, Path) \
  bool Record::IsOccursOk(std::string* why) const { return Checker::check(Path, *this, why); }
WHP_DEFINE_OCCURS_OK(DeviceInfo, "deviceInfo")
WHP_DEFINE_OCCURS_OK(RegisteredDevices, "registeredDevices")
WHP_DEFINE_OCCURS_OK(Clock, "clock")
WHP_DEFINE_OCCURS_OK(SystemClocks, "systemClocks")
WHP_DEFINE_OCCURS_OK(PlatformInfo, "platformInfo")
WHP_DEFINE_OCCURS_OK(Parameter, "parameter")
WHP_DEFINE_OCCURS_OK(BusInterfaceAddressSegment, "addressSegment")
WHP_DEFINE_OCCURS_OK(BusInterface, "busInterface")
WHP_DEFINE_OCCURS_OK(NocConnectivity, "nocConnectivity")
WHP_DEFINE_OCCURS_OK(ResourceEstimates, "resourceEstimates")
WHP_DEFINE_OCCURS_OK(Component, "component")
WHP_DEFINE_OCCURS_OK(Repository, "repository")
#undef WHP_DEFINE_OCCURS_OK

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
    Reader::read(top, parsed);
    AssignBusInterface(parsed);
    return;
  }
  requireTop(top, "repository");
  Repository parsed;
  Reader::read(top, parsed);
  AssignRepository(parsed);
}

}  // namespace WELHardwarePlatform
