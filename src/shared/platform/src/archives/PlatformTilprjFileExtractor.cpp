#include "archives/PlatformTilprjFileExtractor.h"

#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQTmpDirObject.h"

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
  if (project.empty() || HUTEnv::instance().getJUNTmpDir().empty()) return false;
  // The project is staged in a private directory of its own, removed at the
  // end: nothing already lying in the shared temporary directory is used. It
  // is staged under its file name only, so that a member name with
  // directories (or "..") cannot lead the copy out of that directory.
  HTEQTmpDirObject staging;
  try {
    staging.create("zr-tilprj");
  } catch (const HEXUserException&) {
    return false;
  }
  const std::string staged = staging.get() + "/" + HUTPathUtils::getFileName(project);
  return platform_.extractTILPRJFile(staged) && extract(pathInProject, staged, dest);
}
