#ifndef PLATFORM_DICTSERVICE_H
#define PLATFORM_DICTSERVICE_H

#include <map>
#include <set>
#include <string>

#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// A branch of a platform's document as a map from flattened key to value, and
// that map filtered to the keys a caller wants. NativeDictService is the
// implementation.
class ZR_PLATFORM_API DictService {
 public:
  using Dict = std::map<std::string, std::string>;
  using KeySet = std::set<std::string>;

  virtual ~DictService() = default;
  virtual Dict getAsDict(const std::string& file, const std::string& path, bool& found) const = 0;
  virtual Dict getFilteredDict(const std::string& file, const std::string& path) const = 0;
  virtual Dict getFilteredDict(const std::string& file, const std::string& path,
                               const KeySet& keys) const = 0;
};

}  // namespace platform
}  // namespace teq

#endif
