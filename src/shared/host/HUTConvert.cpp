#include "host/HUTConvert.h"

void HUTConvert::dataToHexLittleEndian(const void* data, std::size_t size, std::string& out) {
  static const char kDigits[] = "0123456789abcdef";
  const unsigned char* bytes = static_cast<const unsigned char*>(data);
  out.clear();
  out.reserve(size * 2);
  for (std::size_t i = size; i > 0; --i) {
    unsigned char b = bytes[i - 1];
    out.push_back(kDigits[b >> 4]);
    out.push_back(kDigits[b & 0x0f]);
  }
}

std::string HUTConvert::trimLeading(const std::string& text, char c) {
  std::string::size_type first = text.find_first_not_of(c);
  return first == std::string::npos ? std::string() : text.substr(first);
}
