#ifndef PLATFORM_JSONOBJECTWRITER_H
#define PLATFORM_JSONOBJECTWRITER_H

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/JSONListWriter.h"
#include "platform/JSONWriter.h"

namespace teq_platform {

class JSONSerializable;

// Fills its tree with named children. A key is a path: "." separates levels.
// Empty things are left out: an empty string, an empty child writer or tree, a
// null object, an object that writes nothing, a list of only empty strings.
// Booleans and integers are always written, as text.
class ZR_PLATFORM_API JSONObjectWriter : public JSONWriter {
 public:
  // Replaces the value in place when the path exists, so the key keeps its
  // position; otherwise adds it at the end.
  void addKey(const std::string& key, const std::string& value);
  void addKey(const std::string& key, const char* value) { addKey(key, std::string(value ? value : "")); }
  void addKey(const std::string& key, bool value);
  // Decimal text of any integer type.
  template <class T, std::enable_if_t<std::is_integral<T>::value && !std::is_same<T, bool>::value, int> = 0>
  void addKey(const std::string& key, T value) {
    addKey(key, std::to_string(value));
  }
  // Adds a copy of the child at the path, again if the key is already there.
  void addKey(const std::string& key, const JSONWriter& child);
  // The same, taking the child's tree over instead of copying it.
  void addKey(const std::string& key, JSONWriter&& child);
  void addKey(const std::string& key, const JSONSerializable* object);
  void addKey(const std::string& key, const Tree& tree);
  // A list of the values, each added as JSONListWriter::addItem adds it (so
  // empty strings are left out); nothing when no item remains. Called as
  // addKey<std::string>(key, values) or with the type deduced.
  template <class T>
  void addKey(const std::string& key, const std::vector<T>& values) {
    JSONListWriter list;
    for (const auto& v : values) list.addItem(v);
    addKey(key, std::move(list));
  }

  // Lets the object add its keys directly to this writer.
  void writeObject(const JSONSerializable* object);
  void writeObject(const JSONSerializable& object);
};

}  // namespace teq_platform

#endif
