#include "repository/RepoWalk.h"

#include "host/HSTStringUtils.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"

namespace zr_repo {

const std::string& systemPlatformDir() {
  static const std::string dir = [] {
    const std::string s = HUTFile::getSeparator();
    return s + "opt" + s + "torvane" + s + "platforms";
  }();
  return dir;
}

std::string appRootPlatformDir(const std::string& root) {
  return root + HUTFile::getSeparator() + "platforms";
}

bool walkZdfFiles(const std::string& repo, const std::function<void(const std::string&)>& visit,
                  std::string& error) {
  HUTDirWalker::Options options;
  options.followDirLinks = true;
  options.maxDepth = 2;
  return HUTDirWalker::walk(
      repo, options,
      [&](const HUTDirEntry& entry) {
        // Only a regular file counts: a FIFO, socket or device named "x.zdf"
        // would block whoever opened it.
        if (!entry.isRegularFile || HUTPathUtils::getExtension(entry.path) != ".zdf") return;
        visit(HSTStringUtils::replaceAll(entry.path, "\\", "/"));
      },
      error);
}

}  // namespace zr_repo
