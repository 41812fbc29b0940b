#ifndef PLATFORM_SRC_PLATFORMARCHIVEACCESS_H
#define PLATFORM_SRC_PLATFORMARCHIVEACCESS_H

#include <string>

// What the hardware platform needs of its archive: whether a member exists,
// and copying one member out to a file. Neither throws: a missing archive or
// member, a damaged archive or a member too large to be metadata answers false.
class PlatformArchiveAccess {
 public:
  static bool hasMember(const std::string& archive, const std::string& member);
  // Writes the member to dest; on failure nothing is left at dest.
  static bool extractMember(const std::string& archive, const std::string& member, const std::string& dest);
};

#endif
