#include "xml/XmlRecordIO.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <limits>

#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HSTStringUtils.h"

namespace zr_xml_record {

void writeDocumentFile(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) throw HXMLException("cannot open '" + path + "' for writing", 0);
  file << text;
  file.close();
  if (!file) throw HXMLException("cannot write '" + path + "'", 0);
}

void throwBadIndex(std::size_t index, std::size_t size) {
  throw HEXAlgException("record list index " + std::to_string(index) + " is out of range (limit " +
                        std::to_string(size) + ")");
}

namespace {

[[noreturn]] void badNumber(const std::string& text, int line, const char* name) {
  throw HXMLException("attribute '" + std::string(name) + "': '" + text + "' is not an integer in range",
                      line);
}

// Numbers carry blanks around them; inside, only a sign and decimal digits.
std::string numericBody(const std::string& text, int line, const char* name) {
  std::string body = HSTStringUtils::trim(text);
  const std::size_t digits = (!body.empty() && (body[0] == '+' || body[0] == '-')) ? 1 : 0;
  if (body.size() == digits || body.find_first_not_of("0123456789", digits) != std::string::npos)
    badNumber(text, line, name);
  return body;
}

template <class T>
void readUnsigned(const std::string& text, T& out, int line, const char* name) {
  const std::string body = numericBody(text, line, name);
  // "-0" is a valid zero; any other negative value is below the range.
  if (body[0] == '-' && body.find_first_not_of('0', 1) != std::string::npos) badNumber(text, line, name);
  errno = 0;
  const unsigned long long value = std::strtoull(body.c_str() + (body[0] == '-' ? 1 : 0), nullptr, 10);
  if (errno == ERANGE || value > std::numeric_limits<T>::max()) badNumber(text, line, name);
  out = static_cast<T>(value);
}

}  // namespace

void PlainConversions::fromText(const std::string& text, std::wstring& out, int, const char*) {
  out = HI18N::convert(text);
}
void PlainConversions::fromText(const std::string& text, std::uint8_t& out, int line, const char* name) {
  readUnsigned(text, out, line, name);
}
void PlainConversions::fromText(const std::string& text, std::uint32_t& out, int line, const char* name) {
  readUnsigned(text, out, line, name);
}
void PlainConversions::fromText(const std::string& text, std::uint64_t& out, int line, const char* name) {
  readUnsigned(text, out, line, name);
}
void PlainConversions::fromText(const std::string& text, std::int64_t& out, int line, const char* name) {
  const std::string body = numericBody(text, line, name);
  errno = 0;
  const long long value = std::strtoll(body.c_str(), nullptr, 10);
  if (errno == ERANGE) badNumber(text, line, name);
  out = value;
}

void PlainConversions::fromText(const std::string& text, Decimal& out, int, const char*) {
  out = Decimal(HSTStringUtils::trim(text));
}

std::string PlainConversions::toText(const std::wstring& value) { return HI18N::convert(value); }
std::string PlainConversions::toText(std::uint8_t value) {
  return std::to_string(static_cast<unsigned>(value));
}
std::string PlainConversions::toText(std::uint32_t value) { return std::to_string(value); }
std::string PlainConversions::toText(std::uint64_t value) { return std::to_string(value); }
std::string PlainConversions::toText(std::int64_t value) { return std::to_string(value); }
std::string PlainConversions::toText(const Decimal& value) { return value.get_as_string(); }

void requireElement(const zr_xml::Node& node, const char* localName, const char* nsUri, const char* prefix) {
  if (node.name() == localName && node.nsUri() == nsUri) return;
  if (*nsUri == '\0')
    throw HXMLException(std::string("the document element is not '") + localName + "' in no namespace",
                        node.line());
  throw HXMLException(
      std::string("the document element is not '") + prefix + ":" + localName + "' in the namespace " + nsUri,
      node.line());
}

bool isXmlText(const std::wstring& value) {
  for (wchar_t wc : value) {
    const auto c = static_cast<unsigned long>(wc);
    const bool allowed = c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
                         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
    if (!allowed) return false;
  }
  return true;
}

}  // namespace zr_xml_record
