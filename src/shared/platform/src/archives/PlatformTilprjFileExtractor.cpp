#include "archives/PlatformTilprjFileExtractor.h"

#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/HTEQHardwarePlatform.h"

PlatformTilprjFileExtractor::~PlatformTilprjFileExtractor() { removeStaged_(); }

bool PlatformTilprjFileExtractor::extract(const std::string& member, const std::string& archive,
                                          const std::string& dest) const {
  if (!HUTFile::isFile(archive)) return false;
  const bool ownArchive = archive == platform_.getPlatformFile();
  const std::string name =
      ownArchive && platform_.isChildHardwareEmuPlatform() ? platform_.getHwEmuDir() + "/" + member : member;
  return HTEQHardwarePlatform::extract(name, archive, dest);
}

bool PlatformTilprjFileExtractor::extractFile(const std::string& pathInProject, const std::string& dest) {
  const std::string project = platform_.getFile("TILPRJ");
  const std::string tmpDir = HUTEnv::instance().getJUNTmpDir();
  if (project.empty() || tmpDir.empty()) return false;
  // Staged under its file name only: a member name with directories (or "..")
  // must not lead the copy out of the temporary directory.
  const std::string staged = tmpDir + "/" + HUTPathUtils::getFileName(project);
  if (!HUTFile::exists(staged)) {
    if (!platform_.extractTILPRJFile(staged)) return false;
    stagedProject_ = staged;
    stagedHere_ = true;
  }
  const bool ok = extract(pathInProject, staged, dest);
  removeStaged_();
  return ok;
}

void PlatformTilprjFileExtractor::removeStaged_() {
  if (!stagedHere_) return;
  stagedHere_ = false;
  HUTFile::rmRecursive(stagedProject_);
  stagedProject_.clear();
}
