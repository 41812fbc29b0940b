#ifndef PLATFORM_SRC_PLATFORMARCHIVEACCESS_H
#define PLATFORM_SRC_PLATFORMARCHIVEACCESS_H

#include <string>

// Whether the hardware platform's archive has a member. Does not throw: a
// missing or damaged archive answers false. Members are copied out through
// PlatformFileExtractor and PlatformTilprjFileExtractor.
class PlatformArchiveAccess {
 public:
  static bool hasMember(const std::string& archive, const std::string& member);
};

#endif
