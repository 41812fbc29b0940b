#include "platform/JSONObjectWriter.h"

#include <utility>

#include "platform/JSONListWriter.h"
#include "platform/JSONSerializable.h"

namespace teq_platform {

void JSONObjectWriter::addKey(const std::string& key, const std::string& value) {
  if (value.empty()) return;
  getTree().put(key, value);
}

void JSONObjectWriter::addKey(const std::string& key, bool value) { getTree().put(key, value ? "true" : "false"); }

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
  getTree().add_child(key, Tree()).swap(child.getTree());
}

void JSONObjectWriter::addKey(const std::string& key, const Tree& tree) {
  if (tree.empty()) return;
  getTree().add_child(key, tree);
}

void JSONObjectWriter::addKey(const std::string& key, const std::vector<std::string>& values) {
  JSONListWriter list;
  for (const auto& v : values) list.addItem(v);
  addKey(key, std::move(list));
}

void JSONObjectWriter::writeObject(const JSONSerializable* object) {
  if (object != nullptr) object->toJSON(*this);
}

void JSONObjectWriter::writeObject(const JSONSerializable& object) { object.toJSON(*this); }

}  // namespace teq_platform
