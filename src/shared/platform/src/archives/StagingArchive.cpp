#include "archives/StagingArchive.h"

#include <sys/stat.h>

#include <sstream>
#include <vector>

#include "ZrTempFile.h"
#include "ZrZipArchive.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HPLPlatform.h"
#include "platform/JSONObjectWriter.h"

namespace zr_staging {

void writePlatformJson(const HPLPlatform& platform, const std::string& file) {
  teq_platform::JSONObjectWriter writer;
  platform.toJSON(writer);
  std::ostringstream text;
  writer.write(text);
  text << "\n";
  HUTFile::writeAtomically(file, text.str());
}

bool packDirectory(const std::string& dir, const std::string& zipFile, bool digest) {
  const std::vector<std::string> files = HUTFile::listFilesRecursive(dir);
  if (files.empty()) return false;
  if (!HUTFile::isReplaceable(zipFile))
    throw HEXUserException("cannot write the archive '" + zipFile +
                           "': something other than a file is there");
  zr_zip::TempFile built(zr_zip::directoryOf(zipFile), ".zr-pack-", zipFile);
  built.close();
  bool first = true;
  for (const std::string& file : files) {
    HUTZip::compress(built.path(), file, dir,
                     first ? HUTZip::ZO_CREATE_RELATIVE : HUTZip::ZO_APPEND_RELATIVE);
    first = false;
  }
  if (digest) HUTZip::attachDigestEn(built.path());
  ::chmod(built.path().c_str(), static_cast<mode_t>(zr_zip::newFileMode(0666)));
  built.commitTo(zipFile, 0);
  return true;
}

}  // namespace zr_staging
