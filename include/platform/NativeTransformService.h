#ifndef PLATFORM_NATIVETRANSFORMSERVICE_H
#define PLATFORM_NATIVETRANSFORMSERVICE_H

#include <cstdint>
#include <string>

#include "platform/TransformService.h"
#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// Reads and checks transform specifications; no transformation is applied
// yet. A transform specification is a regular file whose name ends in ".json"; one that
// cannot be read, or has another name, is the same as an empty one.
class ZR_PLATFORM_API NativeTransformService : public TransformService {
 public:
  std::string getAsJsonStr(const std::string& file) const override;
  std::string getAsJsonStr(teq_platform::PlatformLoader* loader) const override;
  // The file's text, unparsed, or "".
  std::string getTransformSpecAsJsonStr(const std::string& specFile) const override;
  // The number of entries of "spec"; 0 for an empty transform specification. Malformed
  // JSON raises json_parser_error, a missing "spec" ptree_bad_path. The
  // platform file is not looked at.
  std::int32_t getObjectsBySpec(const std::string& file, const std::string& specFile) const override;
  // The transform specification's text; the loader is not touched.
  std::string getObjectsBySpec(teq_platform::PlatformLoader* loader,
                               const std::string& specFile) const override;
};

}  // namespace platform
}  // namespace teq

#endif
