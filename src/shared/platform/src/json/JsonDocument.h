#ifndef PLATFORM_SRC_JSONDOCUMENT_H
#define PLATFORM_SRC_JSONDOCUMENT_H

#include <boost/property_tree/ptree.hpp>
#include <cstddef>
#include <deque>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zr_json {

struct JsonNode;

// The children of a node, in document order.
class JsonChildren {
 public:
  class iterator {
   public:
    explicit iterator(const JsonNode* n) : n_(n) {}
    const JsonNode& operator*() const { return *n_; }
    const JsonNode* operator->() const { return n_; }
    inline iterator& operator++();
    bool operator!=(const iterator& o) const { return n_ != o.n_; }
    bool operator==(const iterator& o) const { return n_ == o.n_; }

   private:
    const JsonNode* n_;
  };
  explicit JsonChildren(const JsonNode* first) : first_(first) {}
  iterator begin() const { return iterator(first_); }
  iterator end() const { return iterator(nullptr); }

 private:
  const JsonNode* first_;
};

// One value of a document with its key (empty for array items and the root).
struct JsonNode {
  std::string_view key;
  // Empty for objects and arrays. The byte after a non-empty value is one no
  // number can continue (a NUL, a quote, a delimiter or white space), so the
  // C library's number parsers can read it in place.
  std::string_view data;
  const JsonNode* first = nullptr;
  const JsonNode* next = nullptr;

  JsonChildren children() const { return JsonChildren(first); }
  bool empty() const { return first == nullptr; }
  // The first child with this key, as the property tree's lookup of a
  // one-segment path answers; null when there is none.
  const JsonNode* child(std::string_view name) const;
};

JsonChildren::iterator& JsonChildren::iterator::operator++() {
  n_ = n_->next;
  return *this;
}

// A read-only JSON document that holds what the property tree's parser would
// build (every value as text, arrays as children with empty keys, duplicate
// keys kept in order) in a few flat blocks instead of several allocations per
// node. Reading a platform's metadata through it avoids most of the cost of
// the property tree while giving the same results.
class Document {
 public:
  using Node = JsonNode;

  Document();
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  // Parses `text`, which must be valid JSON as the property tree's parser
  // accepts it and be followed by a NUL (as a std::string's text is). Keys and
  // values without escapes are views into the text, which must outlive the
  // document. Returns false, and leaves the document empty, for anything
  // else: malformed text, nesting deeper than `maxDepth`, or a leading byte
  // order mark. Callers then let the reference parser report the error.
  bool parse(std::string_view text, unsigned maxDepth);
  bool parse(std::string&& text, unsigned maxDepth) = delete;  // would leave views into a temporary

  // The same, except that the values of the root object's members named in
  // `skipped` are checked as strictly as the rest but not kept: a reader that
  // needs only part of a large document does not build the rest. A text that
  // parse() refuses is refused here too.
  bool parse(std::string_view text, unsigned maxDepth, const std::vector<std::string_view>& skipped);

  // Rebuilds the document from a property tree (used when only the reference
  // parser could read a text).
  void assign(const boost::property_tree::ptree& tree);

  const Node& root() const { return *root_; }

  // The property tree the reference parser would have built.
  void toTree(boost::property_tree::ptree& tree) const { toTree(root(), tree); }
  static void toTree(const Node& node, boost::property_tree::ptree& tree);

 private:
  class Parser;
  bool parse_(std::string_view text, unsigned maxDepth, const std::vector<std::string_view>* skipped);
  void clear();
  Node* newNode();
  char* decodeBlock();
  std::string_view store(const std::string& text);

  // Nodes live in blocks that never move, so that they can point at each other.
  std::vector<std::unique_ptr<Node[]>> blocks_;
  std::size_t blockUsed_ = 0;
  std::size_t blockSize_ = 0;
  std::unique_ptr<char[]> strings_;
  std::size_t used_ = 0;
  std::size_t textSize_ = 0;
  std::deque<std::string> extra_;  // texts copied in by assign()
  Node* root_;
};

// The whole text of a stream, or HEXDataException naming `name` when it
// cannot be read (a stream on a directory fails while reading).
std::string readText(std::istream& in, const std::string& name);

// Reads `text` into `doc` exactly as HTEQJSONUtils::readJSON reads it into a
// property tree, with the same errors: HEXDataException naming `name` and
// the line, or the depth limit.
void readDocument(const std::string& text, Document& doc, const std::string& name, unsigned maxDepth);
void readDocument(std::string&& text, Document& doc, const std::string& name, unsigned maxDepth) = delete;
// The same with the root members named in `skipped` left out of the document
// (a text that only the reference parser reads is kept whole).
void readDocument(const std::string& text, Document& doc, const std::string& name, unsigned maxDepth,
                  const std::vector<std::string_view>& skipped);

// Parses JSON text into `tree` (replacing what it held) with the property
// tree parser's own error: boost::property_tree::json_parser_error for text
// nested deeper than `maxDepth` (a message naming the limit, checked before the
// recursive reference parser could see it) and, for anything else it refuses,
// the reference parser's message and line. This is how the query services and
// the policy list read JSON handed to them; `name` becomes the error's file name.
void parseTree(const std::string& text, boost::property_tree::ptree& tree, unsigned maxDepth,
               const std::string& name = std::string());

}  // namespace zr_json

#endif
