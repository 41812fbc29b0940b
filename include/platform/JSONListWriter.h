#ifndef PLATFORM_JSONLISTWRITER_H
#define PLATFORM_JSONLISTWRITER_H

#include <string>

#include "platform/JSONWriter.h"

namespace teq_platform {

class JSONSerializable;

// Fills its tree with children whose key is empty: a JSON array. Empty items
// are left out.
class ZR_PLATFORM_API JSONListWriter : public JSONWriter {
 public:
  void addItem(const JSONWriter& item);
  // The same, taking the item's tree over instead of copying it.
  void addItem(JSONWriter&& item);
  void addItem(const JSONSerializable* object);
  void addItem(const std::string& value);
  void addItem(const char* value) { addItem(std::string(value ? value : "")); }
  // A list of Booleans has no form in this writer: the call raises
  // HEXAlgException and adds nothing.
  void addItem(bool value);
};

}  // namespace teq_platform

#endif
