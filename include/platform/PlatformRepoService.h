#ifndef PLATFORM_PLATFORMREPOSERVICE_H
#define PLATFORM_PLATFORMREPOSERVICE_H

#include <string>
#include <vector>

#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// Where platforms are looked for: the default repositories, the search path
// as one ":"-joined string, and the descriptors (.zdf) that answer to a name.
class ZR_PLATFORM_API PlatformRepoService {
 public:
  virtual ~PlatformRepoService();
  // Appends the default repositories that exist to `dirs`.
  virtual void getDefaultPlatformLookupDirs(std::vector<std::string>& dirs) const = 0;
  // The directories of `dirs` (then the defaults, if asked), each once, joined with ":".
  virtual std::string getPlatformRepoPath(const std::vector<std::string>& dirs, bool withDefaults) const = 0;
  // Appends every descriptor that answers to `name`; an empty name answers all.
  virtual void getZdfFiles(const std::string& name, const std::vector<std::string>& dirs, bool withDefaults,
                           std::vector<std::string>& files) const = 0;
  // The same over the directories of a ":"-joined search path, without defaults.
  virtual void getZdfFiles(const std::string& name, const std::string& path,
                           std::vector<std::string>& files) const = 0;
};

}  // namespace platform
}  // namespace teq

#endif
