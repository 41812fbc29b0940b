#ifndef PLATFORM_KEYSERVICE_H
#define PLATFORM_KEYSERVICE_H

#include <boost/property_tree/ptree.hpp>
#include <set>
#include <string>

#include "platform/ZrPlatformExport.h"

namespace teq_platform {
class PlatformLoader;
}

namespace teq {
namespace platform {

// Every key path of a platform's document, arrays marked with "[]".
// NativeKeyService is the implementation.
class ZR_PLATFORM_API KeyService {
 public:
  using Tree = boost::property_tree::ptree;
  using KeySet = std::set<std::string>;

  virtual ~KeyService() = default;
  virtual KeySet get(const std::string& file) const = 0;
  virtual KeySet get(const Tree& tree) const = 0;
  virtual KeySet get(teq_platform::PlatformLoader* loader) const = 0;
  virtual std::string getAsJsonStr(const std::string& file) const = 0;
  virtual std::string getAsJsonStr(teq_platform::PlatformLoader* loader) const = 0;
};

}  // namespace platform
}  // namespace teq

#endif
