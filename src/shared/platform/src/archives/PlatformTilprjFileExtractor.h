#ifndef PLATFORM_SRC_PLATFORMTILPRJFILEEXTRACTOR_H
#define PLATFORM_SRC_PLATFORMTILPRJFILEEXTRACTOR_H

#include <string>

class HTEQHardwarePlatform;

// Copies files out of the tile-array project, an archive stored as the
// "TILPRJ" member of the platform archive. The project is staged as a file in
// a private directory below the tool's temporary directory, removed when the
// extraction ends.
class PlatformTilprjFileExtractor {
 public:
  explicit PlatformTilprjFileExtractor(const HTEQHardwarePlatform& platform) : platform_(platform) {}
  PlatformTilprjFileExtractor(const PlatformTilprjFileExtractor&) = delete;
  PlatformTilprjFileExtractor& operator=(const PlatformTilprjFileExtractor&) = delete;

  // One member of an archive file; false when the archive is not a file. A
  // child emulation platform reads the members of its own archive below the
  // emulation directory.
  bool extract(const std::string& member, const std::string& archive, const std::string& dest) const;
  // The file at pathInProject inside the project, copied to dest.
  bool extractFile(const std::string& pathInProject, const std::string& dest);

 private:
  const HTEQHardwarePlatform& platform_;
};

#endif
