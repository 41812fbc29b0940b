#include "json/JsonText.h"

#include <algorithm>
#include <boost/property_tree/json_parser.hpp>
#include <cstring>
#include <ostream>
#include <sstream>

namespace zr_json {

namespace {

using Tree = boost::property_tree::ptree;

// Bytes that are written as they are; everything else is escaped.
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

std::size_t escapedSize(const std::string& s) {
  std::size_t n = s.size();
  for (const char ch : s) {
    const unsigned char c = static_cast<unsigned char>(ch);
    if (!plain(c)) n += shortEscape(c) ? 1 : 5;
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
