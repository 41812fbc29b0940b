#include "platform/JSONObjectWriter.h"

#include <utility>

#include "platform/JSONListWriter.h"
#include "platform/JSONSerializable.h"

namespace teq_platform {

namespace {

using Tree = JSONWriter::Tree;

// A key that names one child directly: no "." to split it into a path, and
// not the empty path, which would name the tree itself.
bool plainKey(const std::string& key) { return !key.empty() && key.find('.') == std::string::npos; }

// The tree's put(), without building a path and walking it twice for the
// common one-level key: the first child with the key takes the value, or a new
// child is appended.
void putValue(Tree& tree, const std::string& key, const std::string& value) {
  if (!plainKey(key)) {
    tree.put(key, value);
    return;
  }
  const auto found = tree.find(key);
  if (found != tree.not_found()) {
    found->second.data() = value;
    return;
  }
  tree.push_back(Tree::value_type(key, Tree()));
  tree.back().second.data() = value;
}

// The tree's add_child() for a new, empty child.
Tree& newChild(Tree& tree, const std::string& key) {
  if (!plainKey(key)) return tree.add_child(key, Tree());
  tree.push_back(Tree::value_type(key, Tree()));
  return tree.back().second;
}

}  // namespace

void JSONObjectWriter::addKey(const std::string& key, const std::string& value) {
  if (value.empty()) return;
  putValue(getTree(), key, value);
}

void JSONObjectWriter::addKey(const std::string& key, bool value) {
  static const std::string kTrue("true"), kFalse("false");
  putValue(getTree(), key, value ? kTrue : kFalse);
}

void JSONObjectWriter::addKey(const std::string& key, const JSONWriter& child) {
  if (child.empty()) return;
  getTree().add_child(key, child.getTree());
}

void JSONObjectWriter::addKey(const std::string& key, const JSONSerializable* object) {
  if (object == nullptr) return;
  JSONObjectWriter child;
  object->toJSON(child);
  addKey(key, std::move(child));
}

void JSONObjectWriter::addKey(const std::string& key, JSONWriter&& child) {
  if (child.empty()) return;
  // The child's tree moves into place instead of being copied: a platform's
  // document nests lists of objects, and copying each level again made
  // writing large platforms slow.
  newChild(getTree(), key).swap(child.getTree());
}

void JSONObjectWriter::addKey(const std::string& key, const Tree& tree) {
  if (tree.empty()) return;
  getTree().add_child(key, tree);
}

void JSONObjectWriter::writeObject(const JSONSerializable* object) {
  if (object != nullptr) object->toJSON(*this);
}

void JSONObjectWriter::writeObject(const JSONSerializable& object) { object.toJSON(*this); }

}  // namespace teq_platform
