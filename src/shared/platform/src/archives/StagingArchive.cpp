#include "archives/StagingArchive.h"

#include <sstream>
#include <vector>

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

void packDirectory(const std::string& dir, const std::string& zipFile) {
  const std::vector<std::string> files = HUTFile::listFilesRecursive(dir);
  bool first = true;
  for (const std::string& file : files) {
    HUTZip::compress(zipFile, file, dir, first ? HUTZip::ZO_CREATE_RELATIVE : HUTZip::ZO_APPEND_RELATIVE);
    first = false;
  }
}

}  // namespace zr_staging
