#include "platform/NativePlatformRepoService.h"

#include <set>
#include <unordered_set>

#include "host/HSTStringUtils.h"
#include "host/HUTConsole.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "repository/RepoWalk.h"

namespace teq {
namespace platform {

NativePlatformRepoService::~NativePlatformRepoService() = default;

void NativePlatformRepoService::addIfExists_(const std::string& dir, std::vector<std::string>& dirs) {
  if (HUTFile::exists(dir)) dirs.push_back(HUTFile::getCanonicalName(dir));
}

void NativePlatformRepoService::splitToFullDirs_(const std::string& path, std::vector<std::string>& dirs) {
  if (path.empty()) return;
  for (const auto& piece : HSTStringUtils::split(path, ':'))
    if (!piece.empty()) dirs.push_back(HUTFile::getCanonicalName(piece));
}

void NativePlatformRepoService::getDefaultPlatformLookupDirs(std::vector<std::string>& dirs) const {
  // The system-wide repository comes first, the application roots after it.
  addIfExists_(zr_repo::systemPlatformDir(), dirs);
  for (const auto& root : HUTEnv::instance().getKELAppRootList())
    addIfExists_(zr_repo::appRootPlatformDir(root), dirs);
}

std::string NativePlatformRepoService::getPlatformRepoPath(const std::vector<std::string>& dirs,
                                                           bool withDefaults) const {
  std::vector<std::string> all = dirs;
  if (withDefaults) getDefaultPlatformLookupDirs(all);
  std::set<std::string> seen;
  std::string path;
  for (const auto& dir : all) {
    if (!HUTFile::isDir(dir)) continue;
    const std::string canonical = HUTFile::getCanonicalName(dir);
    if (!seen.insert(canonical).second) continue;
    path += ":" + canonical;
  }
  const auto first = path.find_first_not_of(':');
  return first == std::string::npos ? std::string() : path.substr(first);
}

namespace {

// The search of getZdfFiles: each file not yet in `listed` goes there and to
// `found`, in the order met.
void walkZdf(const NativePlatformRepoService& service, const std::string& name,
             const std::vector<std::string>& dirs, bool withDefaults, std::unordered_set<std::string>& listed,
             const NativePlatformRepoService::FileFound& found) {
  if (HSTStringUtils::endsWith(HSTStringUtils::toLower(name), ".zdf") && HUTFile::exists(name)) {
    const std::string file = HUTFile::getCanonicalName(name);
    listed.insert(file);
    found(file);
    return;
  }
  std::vector<std::string> all = dirs;
  if (withDefaults) service.getDefaultPlatformLookupDirs(all);
  // A file met twice (repositories that overlap) is listed once, where it was first met.
  for (const auto& dir : all) {
    if (!HUTFile::isDir(dir) || !HUTFile::exists(dir)) continue;
    std::string error;
    const bool complete = zr_repo::walkZdfFiles(
        dir,
        [&](const std::string& file) {
          if (!name.empty() && !HSTStringUtils::iequals(HUTPathUtils::getStem(file), name)) return;
          if (listed.insert(file).second) found(file);
        },
        error);
    if (!complete) HUTConsole::err("Exception: " + error + "\n");
  }
}

}  // namespace

void NativePlatformRepoService::getZdfFiles(const std::string& name, const std::vector<std::string>& dirs,
                                            bool withDefaults, std::vector<std::string>& files) const {
  std::unordered_set<std::string> listed(files.begin(), files.end());
  walkZdf(*this, name, dirs, withDefaults, listed, [&](const std::string& file) { files.push_back(file); });
}

void NativePlatformRepoService::getZdfFiles(const std::string& name, const std::string& path,
                                            std::vector<std::string>& files) const {
  std::vector<std::string> dirs;
  splitToFullDirs_(path, dirs);
  getZdfFiles(name, dirs, false, files);
}

void NativePlatformRepoService::forEachZdfFile(const std::string& name, const std::string& path,
                                               const FileFound& found) const {
  std::vector<std::string> dirs;
  splitToFullDirs_(path, dirs);
  std::unordered_set<std::string> listed;
  walkZdf(*this, name, dirs, false, listed, found);
}

}  // namespace platform
}  // namespace teq
