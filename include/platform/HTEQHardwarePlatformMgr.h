#ifndef PLATFORM_HTEQHARDWAREPLATFORMMGR_H
#define PLATFORM_HTEQHARDWAREPLATFORMMGR_H

#include <memory>
#include <string>
#include <vector>

#include "platform/HSTVector.h"
#include "platform/ZrPlatformExport.h"

class HPLPlatform;
class HTEQHardwarePlatform;

// Finds and reads loose hardware archives (.cfa, .lfa). All operations are
// static and never throw: an archive that cannot be read is left out.
class ZR_PLATFORM_API HTEQHardwarePlatformMgr {
 public:
  using StringVector = HSTVector<std::string>;
  using TEQHardwarePlatformVec = HSTVector<HTEQHardwarePlatform*>;

  // The archive read through its JSON member, else its XML member; null when
  // neither can be read. The caller owns the result.
  static HPLPlatform* addPlatform(const std::string& file);

  // Reads every archive below the directories that exist (links to
  // directories not followed), except one that belongs to a descriptor laid
  // out beside it (its grandparent directory holds a descriptor of its stem).
  // Among archives of one VBNV the first read is kept; a later one is deleted
  // and reported ("@74-17@", or "@74-23@" under `flag`). What is kept replaces
  // in `out` any platform of the same unique name, which is deleted, and is
  // appended. The caller owns what `out` holds.
  static void addPlatformsFromDirs(const StringVector& dirs, TEQHardwarePlatformVec& out, bool flag);

 private:
  using OwnedVec = std::vector<std::unique_ptr<HPLPlatform>>;
  static std::unique_ptr<HPLPlatform> parseCFAFile_(const std::string& file);
  static void parseCFAFiles_(const std::string& dir, OwnedVec& parsed);
  static void validateParsedPlatforms_(OwnedVec& parsed, OwnedVec& validated, bool flag);
  static void addPlatforms_(OwnedVec& validated, TEQHardwarePlatformVec& out);
};

#endif
