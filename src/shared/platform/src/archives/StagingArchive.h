#ifndef PLATFORM_STAGINGARCHIVE_H
#define PLATFORM_STAGINGARCHIVE_H

#include <string>

class HPLPlatform;

// The steps shared by the creators that build a hardware archive from a
// staging directory.
namespace zr_staging {

// The platform's JSON metadata, with a line end, written whole to `file`
// (through a temporary renamed into place). HEXUserException when it cannot
// be written; HEXAlgException when the platform cannot be written as JSON.
void writePlatformJson(const HPLPlatform& platform, const std::string& file);

// Packs every regular file below `dir` into the archive `zipFile` under its
// path relative to `dir`, in sorted order: the first file starts a new
// archive, each further one is added. An empty directory makes no archive.
// Each step replaces the archive whole, so a failure never leaves half a file.
void packDirectory(const std::string& dir, const std::string& zipFile);

}  // namespace zr_staging

#endif
