#ifndef PLATFORM_SRC_PLATFORMFILEEXTRACTOR_H
#define PLATFORM_SRC_PLATFORMFILEEXTRACTOR_H

#include <string>

class HTEQHardwarePlatform;

// Copies members out of a platform's archive. For a child hardware emulation
// platform the members live below the archive's emulation directory. A
// copied hpfm file can be repaired on the way (its HBM address segments).
class PlatformFileExtractor {
 public:
  PlatformFileExtractor(const HTEQHardwarePlatform& platform, bool fixHpfm)
      : platform_(platform), fixHpfm_(fixHpfm) {}

  // From the platform's own archive.
  bool extract(const std::string& member, const std::string& dest) const;
  bool extract(const std::string& member, const std::string& archive, const std::string& dest) const;

 private:
  const HTEQHardwarePlatform& platform_;
  bool fixHpfm_;
};

#endif
