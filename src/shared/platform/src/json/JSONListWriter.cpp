#include "platform/JSONListWriter.h"

#include <utility>

#include "host/HEXAll.h"
#include "platform/JSONObjectWriter.h"
#include "platform/JSONSerializable.h"

namespace teq_platform {

void JSONListWriter::addItem(const JSONWriter& item) {
  if (item.empty()) return;
  getTree().push_back(Tree::value_type(std::string(), item.getTree()));
}

void JSONListWriter::addItem(const JSONSerializable* object) {
  if (object == nullptr) return;
  JSONObjectWriter child;
  object->toJSON(child);
  addItem(std::move(child));
}

void JSONListWriter::addItem(JSONWriter&& item) {
  if (item.empty()) return;
  getTree().push_back(Tree::value_type(std::string(), Tree()));
  getTree().back().second.swap(item.getTree());
}

void JSONListWriter::addItem(const std::string& value) {
  if (value.empty()) return;
  getTree().push_back(Tree::value_type(std::string(), Tree()));
  getTree().back().second.data() = value;
}

void JSONListWriter::addItem(bool) {
  // This form has never produced an item: a Boolean list item would only call
  // itself again. Refuse it instead of recursing until the stack is gone.
  throw HEXAlgException("a Boolean list item cannot be written: JSON lists hold only strings and objects");
}

}  // namespace teq_platform
