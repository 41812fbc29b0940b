#ifndef TESTS_HWPARTS_HWPARTSTESTUTIL_H
#define TESTS_HWPARTS_HWPARTSTESTUTIL_H

#include <sstream>
#include <string>

#include "platform/JSONObjectWriter.h"
#include "platform/JSONSerializable.h"

namespace hwparts_test {

// The pretty JSON text of one object, as the entry points make it.
inline std::string jsonText(const teq_platform::JSONSerializable& object) {
  teq_platform::JSONObjectWriter writer;
  object.toJSON(writer);
  std::ostringstream out;
  writer.write(out);
  return out.str();
}

}  // namespace hwparts_test

#endif
