#ifndef PLATFORM_SRC_PLATFORMTILPRJFILEEXTRACTOR_H
#define PLATFORM_SRC_PLATFORMTILPRJFILEEXTRACTOR_H

#include <string>

class HTEQHardwarePlatform;

// Copies files out of the tile-array project, an archive stored as the
// "TILPRJ" member of the platform archive. The project is staged as a file in
// the tool's temporary directory; a copy staged by this object is removed
// when the extraction ends (or, at the latest, with the object).
class PlatformTilprjFileExtractor {
 public:
  explicit PlatformTilprjFileExtractor(const HTEQHardwarePlatform& platform) : platform_(platform) {}
  ~PlatformTilprjFileExtractor();
  PlatformTilprjFileExtractor(const PlatformTilprjFileExtractor&) = delete;
  PlatformTilprjFileExtractor& operator=(const PlatformTilprjFileExtractor&) = delete;

  // One member of an archive file; false when the archive is not a file. A
  // child emulation platform reads the members of its own archive below the
  // emulation directory.
  bool extract(const std::string& member, const std::string& archive, const std::string& dest) const;
  // The file at pathInProject inside the project, copied to dest.
  bool extractFile(const std::string& pathInProject, const std::string& dest);

 private:
  void removeStaged_();

  const HTEQHardwarePlatform& platform_;
  std::string stagedProject_;
  bool stagedHere_ = false;
};

#endif
