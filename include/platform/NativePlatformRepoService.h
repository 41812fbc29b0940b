#ifndef PLATFORM_NATIVEPLATFORMREPOSERVICE_H
#define PLATFORM_NATIVEPLATFORMREPOSERVICE_H

#include <functional>
#include <string>
#include <vector>

#include "platform/PlatformRepoService.h"
#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// The repository search over the local disk. It keeps no state: every call
// looks at the disk afresh, and no call reports a failure. The defaults are
// the system-wide repository /opt/torvane/platforms, then "platforms" below
// each application root, those that exist, by canonical name.
//
// getZdfFiles: a name that ends in ".zdf" (any case) and exists is itself the
// answer, canonical, and nothing is searched. Otherwise each repository is
// walked, following links to directories and skipping broken links, down to
// two levels of subdirectories; a regular file whose extension is ".zdf"
// exactly and whose stem equals the name ignoring case answers. Results keep
// the order of the repositories and of the walk, each path once.
class ZR_PLATFORM_API NativePlatformRepoService : public PlatformRepoService {
 public:
  ~NativePlatformRepoService() override;
  void getDefaultPlatformLookupDirs(std::vector<std::string>& dirs) const override;
  std::string getPlatformRepoPath(const std::vector<std::string>& dirs, bool withDefaults) const override;
  void getZdfFiles(const std::string& name, const std::vector<std::string>& dirs, bool withDefaults,
                   std::vector<std::string>& files) const override;
  void getZdfFiles(const std::string& name, const std::string& path,
                   std::vector<std::string>& files) const override;
  // The same search over a ":"-joined path, handing each file to `found` as
  // the walk meets it, so that a caller can start on the first files while
  // the walk goes on.
  using FileFound = std::function<void(const std::string& file)>;
  void forEachZdfFile(const std::string& name, const std::string& path, const FileFound& found) const;

 private:
  static void addIfExists_(const std::string& dir, std::vector<std::string>& dirs);
  // Each non-empty piece of a ":"-joined path, by canonical name.
  static void splitToFullDirs_(const std::string& path, std::vector<std::string>& dirs);
};

}  // namespace platform
}  // namespace teq

#endif
