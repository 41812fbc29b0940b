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
// archive, each further one is added; with `digest` the finished archive is
// stamped. The archive is built in a temporary file beside `zipFile` and
// renamed over it at the end, so a failure leaves `zipFile` as it was. An
// empty directory makes no archive: the answer is false. HEXUserException
// when something other than a regular file is at `zipFile` or it cannot be
// written.
bool packDirectory(const std::string& dir, const std::string& zipFile, bool digest);

}  // namespace zr_staging

#endif
