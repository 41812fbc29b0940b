#ifndef PLATFORM_TRANSFORMSERVICE_H
#define PLATFORM_TRANSFORMSERVICE_H

#include <cstdint>
#include <string>

#include "platform/ZrPlatformExport.h"

namespace teq_platform {
class PlatformLoader;
}

namespace teq {
namespace platform {

// Questions put as a JSON transform specification file: an object with an
// optional "operation" string and a required "spec" object or array.
// NativeTransformService is the implementation.
class ZR_PLATFORM_API TransformService {
 public:
  virtual ~TransformService() = default;
  virtual std::string getAsJsonStr(const std::string& file) const = 0;
  virtual std::string getAsJsonStr(teq_platform::PlatformLoader* loader) const = 0;
  virtual std::string getTransformSpecAsJsonStr(const std::string& specFile) const = 0;
  virtual std::int32_t getObjectsBySpec(const std::string& file, const std::string& specFile) const = 0;
  virtual std::string getObjectsBySpec(teq_platform::PlatformLoader* loader,
                                       const std::string& specFile) const = 0;
};

}  // namespace platform
}  // namespace teq

#endif
