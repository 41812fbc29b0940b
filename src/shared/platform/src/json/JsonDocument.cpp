#include "json/JsonDocument.h"

#include <algorithm>
#include <boost/property_tree/json_parser.hpp>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <sstream>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "host/HEXAll.h"

namespace zr_json {

using Tree = boost::property_tree::ptree;

const JsonNode* JsonNode::child(std::string_view name) const {
  // Length and first byte settle most mismatches without a call to memcmp.
  const std::size_t n = name.size();
  for (const JsonNode* c = first; c != nullptr; c = c->next) {
    if (c->key.size() != n) continue;
    if (n == 0 || (c->key[0] == name[0] && std::memcmp(c->key.data(), name.data(), n) == 0)) return c;
  }
  return nullptr;
}

namespace {

// Bytes a string cannot simply copy: its end, escapes, control characters
// and the start of a multi-byte character.
struct SpecialBytes {
  bool table[256] = {};
  constexpr SpecialBytes() {
    for (int c = 0; c < 0x20; ++c) table[c] = true;
    for (int c = 0x80; c < 0x100; ++c) table[c] = true;
    table[static_cast<int>('"')] = true;
    table[static_cast<int>('\\')] = true;
  }
  bool operator[](unsigned char c) const { return table[c]; }
};
constexpr SpecialBytes kSpecial{};

}  // namespace

// Recursive descent over the grammar the property tree's parser accepts:
// RFC 8259 JSON with its UTF-8 check (a lead byte and the right number of
// continuation bytes, no control characters in strings). Keys, values and
// numbers without escapes stay in the text; strings with escapes are decoded
// into one block no larger than the text plus one byte (a decoded string is
// never longer than its source, and its NUL takes the place of a quote). Any
// deviation answers false; the caller then asks the reference parser, which
// reports the error.
class Document::Parser {
 public:
  Parser(Document& doc, std::string_view text, unsigned maxDepth,
         const std::vector<std::string_view>* skipped)
      : doc_(doc), p_(text.data()), end_(text.data() + text.size()), maxDepth_(maxDepth), skipped_(skipped) {}

  bool run() {
    skipWs();
    if (!value(*doc_.root_, 0)) return false;
    skipWs();
    return p_ == end_;
  }

 private:
  // The scanners work on locals: the parser writes decoded text through char
  // pointers, which the compiler must otherwise assume may change p_.
  void skipWs() { p_ = skipWs(p_, end_); }

  static const char* skipWs(const char* p, const char* end) {
    for (;;) {
      // Pretty-printed documents are mostly runs of indentation blanks:
      // step over them eight at a time.
      while (end - p >= 8) {
        std::uint64_t word;
        std::memcpy(&word, p, 8);
        if (word != 0x2020202020202020ull) break;
        p += 8;
      }
      if (p == end || !(*p == ' ' || *p == '\n' || *p == '\r' || *p == '\t')) return p;
      ++p;
    }
  }

  bool literal(const char* word, std::size_t n) {
    if (static_cast<std::size_t>(end_ - p_) < n || std::memcmp(p_, word, n) != 0) return false;
    p_ += n;
    return true;
  }

  bool value(Node& node, unsigned depth) {
    if (p_ == end_) return false;
    switch (*p_) {
      case '{':
        return container(node, depth + 1, true);
      case '[':
        return container(node, depth + 1, false);
      case '"':
        return string(node.data);
      case 't':
        node.data = "true";
        return literal("true", 4);
      case 'f':
        node.data = "false";
        return literal("false", 5);
      case 'n':
        node.data = "null";
        return literal("null", 4);
      default:
        return number(node.data);
    }
  }

  static bool digit(char c) { return c >= '0' && c <= '9'; }

  bool number(std::string_view& out) {
    const char* start = p_;
    if (p_ != end_ && *p_ == '-') ++p_;
    if (p_ == end_) return false;
    if (*p_ == '0') {
      ++p_;
    } else if (*p_ >= '1' && *p_ <= '9') {
      while (p_ != end_ && digit(*p_)) ++p_;
    } else {
      return false;
    }
    if (p_ != end_ && *p_ == '.') {
      ++p_;
      if (p_ == end_ || !digit(*p_)) return false;
      while (p_ != end_ && digit(*p_)) ++p_;
    }
    if (p_ != end_ && (*p_ == 'e' || *p_ == 'E')) {
      ++p_;
      if (p_ != end_ && (*p_ == '+' || *p_ == '-')) ++p_;
      if (p_ == end_ || !digit(*p_)) return false;
      while (p_ != end_ && digit(*p_)) ++p_;
    }
    // The text itself holds the number; the byte after it is a delimiter or
    // the text's terminating NUL.
    out = std::string_view(start, static_cast<std::size_t>(p_ - start));
    return true;
  }

  static int hex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
  }

  bool hexQuad(unsigned& cp) {
    if (end_ - p_ < 4) return false;
    cp = 0;
    for (int i = 0; i < 4; ++i) {
      const int v = hex(*p_++);
      if (v < 0) return false;
      cp = cp * 16 + static_cast<unsigned>(v);
    }
    return true;
  }

  static char* utf8(unsigned cp, char* dst) {
    if (cp <= 0x7f) {
      *dst++ = static_cast<char>(cp);
    } else if (cp <= 0x7ff) {
      *dst++ = static_cast<char>(0xc0 | (cp >> 6));
      *dst++ = static_cast<char>(0x80 | (cp & 0x3f));
    } else if (cp <= 0xffff) {
      *dst++ = static_cast<char>(0xe0 | (cp >> 12));
      *dst++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3f));
      *dst++ = static_cast<char>(0x80 | (cp & 0x3f));
    } else {
      *dst++ = static_cast<char>(0xf0 | (cp >> 18));
      *dst++ = static_cast<char>(0x80 | ((cp >> 12) & 0x3f));
      *dst++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3f));
      *dst++ = static_cast<char>(0x80 | (cp & 0x3f));
    }
    return dst;
  }

  bool escape(char*& dst) {
    if (p_ == end_) return false;
    const char c = *p_++;
    switch (c) {
      case '"':
        *dst++ = '"';
        return true;
      case '\\':
        *dst++ = '\\';
        return true;
      case '/':
        *dst++ = '/';
        return true;
      case 'b':
        *dst++ = '\b';
        return true;
      case 'f':
        *dst++ = '\f';
        return true;
      case 'n':
        *dst++ = '\n';
        return true;
      case 'r':
        *dst++ = '\r';
        return true;
      case 't':
        *dst++ = '\t';
        return true;
      case 'u':
        break;
      default:
        return false;
    }
    unsigned cp;
    if (!hexQuad(cp)) return false;
    if ((cp & 0xfc00) == 0xdc00) return false;
    if ((cp & 0xfc00) == 0xd800) {
      unsigned low;
      if (end_ - p_ < 2 || p_[0] != '\\' || p_[1] != 'u') return false;
      p_ += 2;
      if (!hexQuad(low) || (low & 0xfc00) != 0xdc00) return false;
      cp = 0x010000 + (((cp & 0x3ff) << 10) | (low & 0x3ff));
    }
    dst = utf8(cp, dst);
    return true;
  }

  // One encoded character starting with a byte above 0x7f: a lead byte
  // followed by its continuation bytes. Steps over it.
  bool checkMultiByte() {
    static const signed char kTrailing[] = {-1, -1, -1, -1, -1, -1, -1, -1, 1, 1, 1, 1, 2, 2, 3, -1};
    const unsigned char lead = static_cast<unsigned char>(*p_);
    const int trailing = kTrailing[(lead & 0x7f) >> 3];
    if (trailing < 0 || end_ - p_ <= trailing) return false;
    ++p_;
    for (int i = 0; i < trailing; ++i, ++p_)
      if ((static_cast<unsigned char>(*p_) & 0xc0) != 0x80) return false;
    return true;
  }

  // Steps over plain bytes (printable ASCII other than '"' and '\\'), eight
  // at a time where it can.
  void skipPlain() { p_ = skipPlain(p_, end_); }

  static const char* skipPlain(const char* p, const char* end) {
#ifdef __SSE2__
    // Sixteen at a time: a signed compare below 0x20 flags both the control
    // characters and the bytes with their high bit set.
    const __m128i quotes = _mm_set1_epi8('"'), backslashes = _mm_set1_epi8('\\'),
                  spaces = _mm_set1_epi8(0x20);
    while (end - p >= 16) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
      const __m128i special = _mm_or_si128(
          _mm_or_si128(_mm_cmpeq_epi8(v, quotes), _mm_cmpeq_epi8(v, backslashes)), _mm_cmplt_epi8(v, spaces));
      const int mask = _mm_movemask_epi8(special);
      if (mask != 0) return p + __builtin_ctz(static_cast<unsigned>(mask));
      p += 16;
    }
#endif
    constexpr std::uint64_t kOnes = 0x0101010101010101ull, kHigh = 0x8080808080808080ull;
    while (end - p >= 8) {
      std::uint64_t w;
      std::memcpy(&w, p, 8);
      // The usual word tricks flag a byte below 0x20, a byte equal to '"' or
      // '\\' (a zero after the XOR) and one with its high bit set. A borrow
      // can also flag bytes after a real match, never before one, so the
      // lowest flag (the first byte in memory) is exact.
      const std::uint64_t quote = w ^ (kOnes * '"'), backslash = w ^ (kOnes * '\\');
      const std::uint64_t special =
          (((w - kOnes * 0x20) & ~w) | ((quote - kOnes) & ~quote) | ((backslash - kOnes) & ~backslash) | w) &
          kHigh;
      if (special != 0) return p + (__builtin_ctzll(special) >> 3);
      p += 8;
    }
    while (p != end && !kSpecial[static_cast<unsigned char>(*p)]) ++p;
    return p;
  }

  // A string without escapes is a view into the text (its closing quote
  // follows it). One with escapes is decoded into the document's own block
  // and ended with a NUL there.
  bool string(std::string_view& out) {
    ++p_;  // the opening quote
    const char* const start = p_;
    for (;;) {
      skipPlain();
      if (p_ == end_) return false;
      const unsigned char c = static_cast<unsigned char>(*p_);
      if (c == '"') {
        out = std::string_view(start, static_cast<std::size_t>(p_ - start));
        ++p_;
        return true;
      }
      if (c == '\\') break;
      if (c < 0x20 || !checkMultiByte()) return false;
    }
    char* const begin = doc_.decodeBlock() + doc_.used_;
    std::memcpy(begin, start, static_cast<std::size_t>(p_ - start));
    char* dst = begin + (p_ - start);
    for (;;) {
      const char* run = p_;
      skipPlain();
      std::memcpy(dst, run, static_cast<std::size_t>(p_ - run));
      dst += p_ - run;
      if (p_ == end_) return false;
      const unsigned char c = static_cast<unsigned char>(*p_);
      if (c == '"') break;
      if (c == '\\') {
        ++p_;
        if (!escape(dst)) return false;
      } else if (c < 0x20) {
        return false;
      } else {
        const char* lead = p_;
        if (!checkMultiByte()) return false;
        std::memcpy(dst, lead, static_cast<std::size_t>(p_ - lead));
        dst += p_ - lead;
      }
    }
    ++p_;
    *dst = '\0';
    out = std::string_view(begin, static_cast<std::size_t>(dst - begin));
    doc_.used_ += out.size() + 1;
    return true;
  }

  // An object or an array: its members are keyed, its items are not.
  bool container(Node& node, unsigned depth, bool keyed) {
    if (depth > maxDepth_) return false;
    const char close = keyed ? '}' : ']';
    // Only the root object's members are ever left out.
    const bool filtered = keyed && depth == 1 && skipped_ != nullptr;
    ++p_;
    skipWs();
    if (p_ != end_ && *p_ == close) {
      ++p_;
      return true;
    }
    Node* last = nullptr;
    for (;;) {
      skipWs();
      std::string_view key;
      if (keyed) {
        if (p_ == end_ || *p_ != '"' || !string(key)) return false;
        skipWs();
        if (p_ == end_ || *p_ != ':') return false;
        ++p_;
        skipWs();
      }
      if (filtered && std::find(skipped_->begin(), skipped_->end(), key) != skipped_->end()) {
        if (!skipValue(depth)) return false;
      } else {
        Node* child = doc_.newNode();
        (last ? last->next : node.first) = child;
        last = child;
        child->key = key;
        if (!value(*child, depth)) return false;
      }
      skipWs();
      if (p_ == end_) return false;
      if (*p_ == ',') {
        ++p_;
        continue;
      }
      if (*p_ != close) return false;
      ++p_;
      return true;
    }
  }

  // What value() accepts, stepped over without a node or a decoded string.
  bool skipValue(unsigned depth) {
    if (p_ == end_) return false;
    std::string_view unused;
    switch (*p_) {
      case '{':
        return skipContainer(depth + 1, true);
      case '[':
        return skipContainer(depth + 1, false);
      case '"':
        return skipString();
      case 't':
        return literal("true", 4);
      case 'f':
        return literal("false", 5);
      case 'n':
        return literal("null", 4);
      default:
        return number(unused);
    }
  }

  bool skipString() {
    ++p_;  // the opening quote
    for (;;) {
      skipPlain();
      if (p_ == end_) return false;
      const unsigned char c = static_cast<unsigned char>(*p_);
      if (c == '"') {
        ++p_;
        return true;
      }
      if (c == '\\') {
        ++p_;
        char decoded[4];  // the longest character an escape gives
        char* dst = decoded;
        if (!escape(dst)) return false;
      } else if (c < 0x20 || !checkMultiByte()) {
        return false;
      }
    }
  }

  bool skipContainer(unsigned depth, bool keyed) {
    if (depth > maxDepth_) return false;
    const char close = keyed ? '}' : ']';
    ++p_;
    skipWs();
    if (p_ != end_ && *p_ == close) {
      ++p_;
      return true;
    }
    for (;;) {
      skipWs();
      if (keyed) {
        if (p_ == end_ || *p_ != '"' || !skipString()) return false;
        skipWs();
        if (p_ == end_ || *p_ != ':') return false;
        ++p_;
        skipWs();
      }
      if (!skipValue(depth)) return false;
      skipWs();
      if (p_ == end_) return false;
      if (*p_ == ',') {
        ++p_;
        continue;
      }
      if (*p_ != close) return false;
      ++p_;
      return true;
    }
  }

  Document& doc_;
  const char* p_;
  const char* const end_;
  const unsigned maxDepth_;
  const std::vector<std::string_view>* const skipped_;
};

Document::Document() { clear(); }

void Document::clear() {
  blocks_.clear();
  blockUsed_ = 0;
  blockSize_ = 0;
  extra_.clear();
  strings_.reset();
  used_ = 0;
  textSize_ = 0;
  root_ = newNode();
}

char* Document::decodeBlock() {
  // Decoded strings are never longer than their source, so one block of the
  // text's size (plus NULs, one per string, each taking a quote's place) holds
  // them all. Only the part used is ever touched.
  if (!strings_) strings_.reset(new char[textSize_ + 1]);
  return strings_.get();
}

Document::Node* Document::newNode() {
  // Blocks grow from 32 nodes to 2048, so that a small document stays small
  // and every block comes from the heap, where the memory is used again once
  // the document is gone.
  if (blockUsed_ == blockSize_) {
    blockSize_ = blockSize_ == 0 ? 32 : std::min<std::size_t>(blockSize_ * 2, 2048);
    blocks_.emplace_back(new Node[blockSize_]);
    blockUsed_ = 0;
  }
  return &blocks_.back()[blockUsed_++];
}

bool Document::parse(std::string_view text, unsigned maxDepth) { return parse_(text, maxDepth, nullptr); }

bool Document::parse(std::string_view text, unsigned maxDepth, const std::vector<std::string_view>& skipped) {
  return parse_(text, maxDepth, &skipped);
}

bool Document::parse_(std::string_view text, unsigned maxDepth,
                      const std::vector<std::string_view>* skipped) {
  clear();
  // The reference parser skips three bytes after a leading 0xEF whatever
  // they are; such texts are left to it.
  if (!text.empty() && static_cast<unsigned char>(text[0]) == 0xef) return false;
  textSize_ = text.size();
  Parser parser(*this, text, maxDepth, skipped);
  if (parser.run()) return true;
  clear();
  return false;
}

std::string_view Document::store(const std::string& text) {
  if (text.empty()) return std::string_view();
  extra_.push_back(text);
  return extra_.back();
}

void Document::assign(const Tree& tree) {
  clear();
  struct Copier {
    Document& doc;
    void operator()(const Tree& from, Node& to) {
      to.data = doc.store(from.data());
      Node* last = nullptr;
      for (const auto& child : from) {
        Node* n = doc.newNode();
        (last ? last->next : to.first) = n;
        last = n;
        n->key = doc.store(child.first);
        (*this)(child.second, *n);
      }
    }
  };
  Copier{*this}(tree, *root_);
}

void Document::toTree(const Node& node, Tree& tree) {
  tree.data().assign(node.data.data(), node.data.size());
  for (const Node* c = node.first; c != nullptr; c = c->next) {
    tree.push_back(Tree::value_type(std::string(c->key), Tree()));
    toTree(*c, tree.back().second);
  }
}

std::string readText(std::istream& in, const std::string& name) {
  std::string text;
  try {
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  } catch (const std::exception&) {
    throw HEXDataException(name + ": cannot read the JSON text");
  }
  if (in.bad()) throw HEXDataException(name + ": cannot read the JSON text");
  return text;
}

namespace {

// True when some object or array of the text lies more than maxDepth levels
// deep, counting brackets outside strings.
bool nestedDeeperThan(const std::string& text, unsigned maxDepth) {
  unsigned depth = 0;
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (inString) {
      if (c == '\\')
        ++i;
      else if (c == '"')
        inString = false;
      continue;
    }
    if (c == '"') {
      inString = true;
    } else if (c == '{' || c == '[') {
      if (++depth > maxDepth) return true;
    } else if ((c == '}' || c == ']') && depth > 0) {
      --depth;
    }
  }
  return false;
}

std::string depthMessage(unsigned maxDepth) {
  return "JSON nested deeper than " + std::to_string(maxDepth) + " levels";
}

}  // namespace

void readDocument(const std::string& text, Document& doc, const std::string& name, unsigned maxDepth) {
  static const std::vector<std::string_view> kNone;
  readDocument(text, doc, name, maxDepth, kNone);
}

void readDocument(const std::string& text, Document& doc, const std::string& name, unsigned maxDepth,
                  const std::vector<std::string_view>& skipped) {
  // The parser keeps to the depth limit itself, so a text it takes is no
  // deeper than allowed.
  if (skipped.empty() ? doc.parse(text, maxDepth) : doc.parse(text, maxDepth, skipped)) return;
  // Otherwise nesting is measured first, so that a hostile document is
  // refused with the same message whatever else is wrong with it (and the
  // recursive reference parser never sees it).
  if (nestedDeeperThan(text, maxDepth)) throw HEXDataException(name + ": " + depthMessage(maxDepth));
  // Malformed text (or a form only the reference parser takes): its parser
  // says what is wrong, with the line.
  Tree tree;
  std::istringstream in(text);
  try {
    boost::property_tree::read_json(in, tree);
  } catch (const boost::property_tree::json_parser_error& e) {
    throw HEXDataException(name + ":" + std::to_string(e.line()) + ": " + e.message());
  }
  doc.assign(tree);
}

void parseTree(const std::string& text, Tree& tree, unsigned maxDepth, const std::string& name) {
  Document doc;
  if (doc.parse(text, maxDepth)) {
    Tree result;
    doc.toTree(result);
    tree.swap(result);
    return;
  }
  if (nestedDeeperThan(text, maxDepth))
    throw boost::property_tree::json_parser_error(depthMessage(maxDepth), name, 0);
  Tree result;
  std::istringstream in(text);
  boost::property_tree::read_json(in, result);
  tree.swap(result);
}

}  // namespace zr_json
