#ifndef PLATFORM_SRC_JSONTEXTWRITER_H
#define PLATFORM_SRC_JSONTEXTWRITER_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

class HTEQPlatform;

namespace teq_platform {

class JSONSerializable;
class TextListWriter;
struct TextDispatch;

// Text made in pieces: a writer's own text and, moved in whole, the pieces of
// the children added to it, so that a large list is never copied from level
// to level.
class TextPieces {
 public:
  std::size_t size() const;
  // Copies the text to `out`, which has room for size() bytes; the end.
  char* copyTo(char* out) const;

 protected:
  // The piece being written. A piece that has grown large is closed and the
  // next one is made at its full size at once, so that no large text is
  // ever grown by copying.
  std::string& tail() {
    if (pieces_.empty()) {
      pieces_.emplace_back();
    } else if (pieces_.back().size() >= kPieceSize) {
      pieces_.emplace_back();
      pieces_.back().reserve(kPieceSize + kPieceSize / 4);
    }
    return pieces_.back();
  }
  // Appends `child`'s text between `open` and `close`.
  void adopt(const std::string& open, TextPieces&& child, const std::string& close);

 private:
  static constexpr std::size_t kPieceSize = 64 * 1024;
  std::vector<std::string> pieces_;
};

// Raised when a document needs what only the property tree does: a key that
// is a path or empty, a value put again under a key already written. The
// caller then writes the document through the tree.
struct TextNeedsTree {};

// The object writer's operations, writing the text the tree writer would
// print instead of building the tree: every member is printed as it is added,
// at the nesting level the writer was made for. The model's largest toJSON
// bodies are written once for both writer types; objects without such a
// body are written into a small tree and printed from it at once.
class TextObjectWriter : public TextPieces {
 public:
  explicit TextObjectWriter(int level) : level_(level) {}

  bool empty() const { return count_ == 0; }
  int level() const { return level_; }

  void addKey(const std::string& key, const std::string& value);
  void addKey(const std::string& key, const char* value) { addKey(key, std::string(value ? value : "")); }
  void addKey(const std::string& key, bool value);
  template <class T, std::enable_if_t<std::is_integral<T>::value && !std::is_same<T, bool>::value, int> = 0>
  void addKey(const std::string& key, T value) {
    addKey(key, std::to_string(value));
  }
  void addKey(const std::string& key, TextObjectWriter&& child);
  void addKey(const std::string& key, TextListWriter&& child);
  void addKey(const std::string& key, const JSONSerializable* object);
  void addKey(const std::string& key, const boost::property_tree::ptree& tree);
  void addKey(const std::string& key, const std::vector<std::string>& values);
  void writeObject(const JSONSerializable* object);
  void writeObject(const JSONSerializable& object);

  // The closing text of this object at its level.
  std::string close() const;

 private:
  friend class TextListWriter;
  friend struct TextDispatch;
  // Starts a member: the separator, the indent and the quoted key.
  void member(const std::string& key, bool put);
  // The members of a tree, as writeObject through the tree would add them.
  void addTreeMembers(const boost::property_tree::ptree& tree);

  int level_;
  std::size_t count_ = 0;
  std::vector<std::string> keys_;
};

// The list writer's operations, as text.
class TextListWriter : public TextPieces {
 public:
  explicit TextListWriter(int level) : level_(level) {}

  bool empty() const { return count_ == 0; }
  int level() const { return level_; }

  void addItem(TextObjectWriter&& item);
  void addItem(const JSONSerializable* object);
  void addItem(const std::string& value);
  void addItem(const char* value) { addItem(std::string(value ? value : "")); }
  void addItem(bool value);

  std::string close() const;

 private:
  friend class TextObjectWriter;
  void item();

  int level_;
  std::size_t count_ = 0;
};

// The writers for a child of `parent`, of either kind: the toJSON bodies make
// their nested objects and lists through these.
inline JSONObjectWriter objectFor(const JSONObjectWriter&) { return JSONObjectWriter(); }
inline JSONObjectWriter objectFor(const JSONListWriter&) { return JSONObjectWriter(); }
inline JSONListWriter listFor(const JSONObjectWriter&) { return JSONListWriter(); }
inline TextObjectWriter objectFor(const TextObjectWriter& parent) {
  return TextObjectWriter(parent.level() + 1);
}
inline TextObjectWriter objectFor(const TextListWriter& parent) {
  return TextObjectWriter(parent.level() + 1);
}
inline TextListWriter listFor(const TextObjectWriter& parent) { return TextListWriter(parent.level() + 1); }

// The platform's JSON text exactly as writing its tree prints it, trailing
// line end included, without building the tree, in an array the caller
// releases with delete[]; TextNeedsTree when the document needs the tree.
char* platformText(const HTEQPlatform& platform);

}  // namespace teq_platform

#endif
