#ifndef PLATFORM_CATALOGSERVICE_H
#define PLATFORM_CATALOGSERVICE_H

#include <string>

#include "platform/ZrPlatformExport.h"

namespace teq_platform {
class PlatformLoader;
}

namespace teq {
namespace platform {

// What platforms exist and what each of them is, as flat JSON reports.
// NativeCatalogService is the implementation. The second bool of the report
// operations is accepted and has no effect.
class ZR_PLATFORM_API CatalogService {
 public:
  virtual ~CatalogService() = default;
  virtual std::string getAllAsJsonStr(const std::string& pathList, bool detailed, bool unused) const = 0;
  virtual std::string getAsJsonStr(const std::string& file, bool detailed, bool unused) const = 0;
  virtual std::string getAsJsonStr(teq_platform::PlatformLoader* loader, bool detailed,
                                   bool unused) const = 0;
  virtual std::string getValue(const std::string& file, const std::string& keyPath) const = 0;
  virtual std::string getValue(teq_platform::PlatformLoader* loader, const std::string& keyPath) const = 0;
};

}  // namespace platform
}  // namespace teq

#endif
