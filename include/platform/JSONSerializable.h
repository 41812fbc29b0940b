#ifndef PLATFORM_JSONSERIALIZABLE_H
#define PLATFORM_JSONSERIALIZABLE_H

#include "platform/ZrPlatformExport.h"

namespace teq_platform {

class JSONObjectWriter;
// Lets the library print the largest model objects without a tree.
struct TextDispatch;

// Base of every object that writes itself as JSON. toJSON adds the object's
// own keys to the writer it is given; it never opens or closes braces.
class ZR_PLATFORM_API JSONSerializable {
 public:
  virtual void toJSON(JSONObjectWriter& writer) const = 0;
  virtual ~JSONSerializable();
};

}  // namespace teq_platform

#endif
