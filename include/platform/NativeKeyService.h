#ifndef PLATFORM_NATIVEKEYSERVICE_H
#define PLATFORM_NATIVEKEYSERVICE_H

#include <string>

#include "platform/KeyService.h"
#include "platform/PlatformLoader.h"
#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// Lists every key path of a document: members joined with '.', and "[]"
// after an array, so that an array a of objects with a member b gives a, a[]
// and a[].b. All elements of an array give the same keys. The loader and file
// forms load the platform (exceptions of the loader and the JSON parser pass
// to the caller); a load that gives nothing gives the empty set.
class ZR_PLATFORM_API NativeKeyService : public KeyService {
 public:
  NativeKeyService() : mode_(teq_platform::PlatformLoader::Default) {}
  explicit NativeKeyService(teq_platform::PlatformLoader::HwMetadataMode mode) : mode_(mode) {}

  KeySet get(const std::string& file) const override;
  KeySet get(const Tree& tree) const override;
  KeySet get(teq_platform::PlatformLoader* loader) const override;
  // {"keys": [every key in set order]} in pretty JSON.
  std::string getAsJsonStr(const std::string& file) const override;
  std::string getAsJsonStr(teq_platform::PlatformLoader* loader) const override;

 private:
  teq_platform::PlatformLoader::HwMetadataMode mode_;
};

}  // namespace platform
}  // namespace teq

#endif
