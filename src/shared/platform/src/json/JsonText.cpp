#include "json/JsonText.h"

#include <algorithm>
#include <boost/property_tree/json_parser.hpp>
#include <cstring>
#include <ostream>
#include <sstream>

namespace zr_json {

namespace {

using Tree = boost::property_tree::ptree;

// Bytes that are written as they are; everything else is escaped (bytes of
// 0x80 and above are written as they are when they form UTF-8, see below).
bool plain(unsigned char c) { return c >= 0x20 && c != '"' && c != '/' && c != '\\'; }

// The second character of a two-character escape, or 0 for the "\u00XX" form.
char shortEscape(unsigned char c) {
  switch (c) {
    case '\b':
      return 'b';
    case '\f':
      return 'f';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case '\t':
      return 't';
    case '/':
      return '/';
    case '"':
      return '"';
    case '\\':
      return '\\';
    default:
      return 0;
  }
}

// Bytes that are not UTF-8 are written as U+FFFD, so that the text is always
// valid JSON; well-formed UTF-8 is written as it is.
const char kReplacement[] = "\xEF\xBF\xBD";
constexpr std::size_t kReplacementSize = sizeof kReplacement - 1;

// The length of the well-formed UTF-8 sequence that starts at s[i], a byte of
// 0x80 or above; 0 when there is none, and then `skip` is how many bytes one
// U+FFFD stands for (the longest start of a sequence that is there: a
// truncated sequence is one replacement, a stray byte another).
std::size_t utf8Length(const std::string& s, std::size_t i, std::size_t& skip) {
  const unsigned char c = static_cast<unsigned char>(s[i]);
  std::size_t need;
  unsigned char lo = 0x80, hi = 0xBF;  // the range of the second byte
  if (c >= 0xC2 && c <= 0xDF) {
    need = 1;
  } else if (c >= 0xE0 && c <= 0xEF) {
    need = 2;
    if (c == 0xE0) lo = 0xA0;  // no overlong form
    if (c == 0xED) hi = 0x9F;  // no surrogate
  } else if (c >= 0xF0 && c <= 0xF4) {
    need = 3;
    if (c == 0xF0) lo = 0x90;  // no overlong form
    if (c == 0xF4) hi = 0x8F;  // nothing past U+10FFFF
  } else {
    skip = 1;
    return 0;
  }
  std::size_t k = 1;
  for (; k <= need && i + k < s.size(); ++k) {
    const unsigned char b = static_cast<unsigned char>(s[i + k]);
    if (b < lo || b > hi) break;
    lo = 0x80;
    hi = 0xBF;
  }
  if (k > need) return need + 1;
  skip = k;
  return 0;
}

std::size_t escapedSize(const std::string& s) {
  std::size_t n = s.size();
  for (std::size_t i = 0; i < s.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(s[i]);
    if (c >= 0x80) {
      std::size_t skip = 0;
      const std::size_t len = utf8Length(s, i, skip);
      if (len == 0) n = n - skip + kReplacementSize;
      i += (len == 0 ? skip : len) - 1;
    } else if (!plain(c)) {
      n += shortEscape(c) ? 1 : 5;
    }
  }
  return n;
}

// Output into a buffer known to be large enough.
struct BufferOut {
  char* p;
  void put(char c) { *p++ = c; }
  void put(const char* text, std::size_t n) {
    std::memcpy(p, text, n);
    p += n;
  }
  void spaces(std::size_t n) {
    std::memset(p, ' ', n);
    p += n;
  }
};

// Output to a stream through a fixed buffer, so that a large text is never
// held whole.
class StreamOut {
 public:
  explicit StreamOut(std::ostream& out) : out_(out) {}
  void put(char c) {
    if (used_ == sizeof buf_) flush();
    buf_[used_++] = c;
  }
  void put(const char* text, std::size_t n) {
    while (n > 0) {
      if (used_ == sizeof buf_) flush();
      const std::size_t k = std::min(n, sizeof buf_ - used_);
      std::memcpy(buf_ + used_, text, k);
      used_ += k;
      text += k;
      n -= k;
    }
  }
  void spaces(std::size_t n) {
    static const char kBlanks[] = "                                                                ";
    for (; n > sizeof kBlanks - 1; n -= sizeof kBlanks - 1) put(kBlanks, sizeof kBlanks - 1);
    put(kBlanks, n);
  }
  void flush() {
    out_.write(buf_, static_cast<std::streamsize>(used_));
    used_ = 0;
  }

 private:
  std::ostream& out_;
  char buf_[1 << 16];
  std::size_t used_ = 0;
};

// Output appended to a string.
struct StringOut {
  std::string& s;
  void put(char c) { s += c; }
  void put(const char* text, std::size_t n) { s.append(text, n); }
  void spaces(std::size_t n) { s.append(n, ' '); }
};

template <class Out>
void putEscaped(const std::string& s, Out& out) {
  std::size_t run = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(s[i]);
    if (c >= 0x80) {
      std::size_t skip = 0;
      const std::size_t len = utf8Length(s, i, skip);
      if (len != 0) {
        i += len - 1;
        continue;
      }
      out.put(s.data() + run, i - run);
      out.put(kReplacement, kReplacementSize);
      i += skip - 1;
      run = i + 1;
      continue;
    }
    if (plain(c)) continue;
    out.put(s.data() + run, i - run);
    run = i + 1;
    out.put('\\');
    if (const char e = shortEscape(c)) {
      out.put(e);
    } else {
      static const char kHex[] = "0123456789ABCDEF";
      const char code[] = {'u', '0', '0', kHex[c >> 4], kHex[c & 0xf]};
      out.put(code, sizeof code);
    }
  }
  out.put(s.data() + run, s.size() - run);
}

// Arrays are nodes below the root whose children all have empty keys; the
// root is always an object.
bool isArray(const Tree& t, int level) {
  if (level == 0) return false;
  for (const auto& child : t)
    if (!child.first.empty()) return false;
  return true;
}

bool writable(const Tree& t, bool isRoot) {
  if (!t.data().empty() && (isRoot || !t.empty())) return false;
  for (const auto& child : t)
    if (!writable(child.second, false)) return false;
  return true;
}

std::size_t sizeOf(const Tree& t, int level) {
  if (level > 0 && t.empty()) return escapedSize(t.data()) + 2;
  const bool array = isArray(t, level);
  std::size_t n = 2 + 4 * static_cast<std::size_t>(level) + 1;  // "{\n", the closing indent and brace
  for (const auto& child : t) {
    n += 4 * static_cast<std::size_t>(level + 1) + 2;  // the indent, "," and "\n"
    if (!array) n += escapedSize(child.first) + 4;     // the quoted key and ": "
    n += sizeOf(child.second, level + 1);
  }
  return t.empty() ? n : n - 1;  // the last child has no ","
}

template <class Out>
void write(const Tree& t, int level, Out& out) {
  if (level > 0 && t.empty()) {
    out.put('"');
    putEscaped(t.data(), out);
    out.put('"');
    return;
  }
  const bool array = isArray(t, level);
  out.put(array ? '[' : '{');
  out.put('\n');
  for (auto it = t.begin(); it != t.end();) {
    out.spaces(4 * static_cast<std::size_t>(level + 1));
    if (!array) {
      out.put('"');
      putEscaped(it->first, out);
      out.put("\": ", 3);
    }
    write(it->second, level + 1, out);
    if (++it != t.end()) out.put(',');
    out.put('\n');
  }
  out.spaces(4 * static_cast<std::size_t>(level));
  out.put(array ? ']' : '}');
}

void checkWritable(const Tree& tree) {
  if (!writable(tree, true)) {
    // The reference writer raises its error for such a tree before it
    // writes anything.
    std::ostringstream ignored;
    boost::property_tree::write_json(ignored, tree, true);
  }
}

}  // namespace

std::size_t textSize(const Tree& tree) {
  checkWritable(tree);
  return sizeOf(tree, 0) + 1;
}

char* writeText(const Tree& tree, char* out) {
  BufferOut buffer{out};
  write(tree, 0, buffer);
  buffer.put('\n');
  return buffer.p;
}

void writeText(const Tree& tree, std::ostream& out) {
  checkWritable(tree);
  StreamOut stream(out);
  write(tree, 0, stream);
  stream.flush();
}

bool isUtf8(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (static_cast<unsigned char>(text[i]) < 0x80) continue;
    std::size_t skip = 0;
    const std::size_t len = utf8Length(text, i, skip);
    if (len == 0) return false;
    i += len - 1;
  }
  return true;
}

void appendEscaped(const std::string& text, std::string& out) {
  StringOut sink{out};
  putEscaped(text, sink);
}

bool appendValue(const Tree& tree, int level, std::string& out) {
  if (!writable(tree, false)) return false;
  StringOut sink{out};
  write(tree, level, sink);
  return true;
}

void appendText(const Tree& tree, std::string& out) {
  const std::size_t start = out.size();
  out.resize(start + textSize(tree));
  writeText(tree, &out[start]);
}

}  // namespace zr_json
