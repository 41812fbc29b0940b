#include "archives/PlatformArchiveAccess.h"

#include "host/HEXAll.h"
#include "host/HUTZip.h"

// Thin answers over the archive layer: its checks (member names, size
// limit, damaged data) apply, and its failures become a plain false here.

bool PlatformArchiveAccess::hasMember(const std::string& archive, const std::string& member) {
  return !archive.empty() && !member.empty() && HUTZip::containsFile(archive, member);
}
