#include "host/HI18N.h"

// Hand-written UTF-8 coding: the standard codecvt facets are deprecated, and a
// malformed byte must not throw. Invalid input becomes U+FFFD.

std::string HI18N::convert(const std::wstring& wide) {
  std::string out;
  out.reserve(wide.size());
  for (wchar_t wc : wide) {
    auto c = static_cast<unsigned long>(wc);
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = 0xFFFD;
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

std::wstring HI18N::convert(const std::string& narrow) {
  std::wstring out;
  out.reserve(narrow.size());
  const auto* s = reinterpret_cast<const unsigned char*>(narrow.data());
  const std::size_t n = narrow.size();
  for (std::size_t i = 0; i < n;) {
    const unsigned char b = s[i];
    int extra = b < 0x80 ? 0 : (b >> 5) == 0x6 ? 1 : (b >> 4) == 0xE ? 2 : (b >> 3) == 0x1E ? 3 : -1;
    unsigned long c = extra == 0 ? b : extra == 1 ? (b & 0x1F) : extra == 2 ? (b & 0x0F) : (b & 0x07);
    bool ok = extra >= 0 && i + static_cast<std::size_t>(extra) < n;
    for (int k = 1; ok && k <= extra; ++k) {
      if ((s[i + k] & 0xC0) != 0x80)
        ok = false;
      else
        c = (c << 6) | (s[i + k] & 0x3F);
    }
    if (!ok) {
      out += static_cast<wchar_t>(0xFFFD);
      ++i;
      continue;
    }
    out += static_cast<wchar_t>(c);
    i += static_cast<std::size_t>(extra) + 1;
  }
  return out;
}
