#include "archives/PlatformFileExtractor.h"

#include "host/HUTPathUtils.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQHpfmUtl.h"

bool PlatformFileExtractor::extract(const std::string& member, const std::string& dest) const {
  return extract(member, platform_.getPlatformFile(), dest);
}

bool PlatformFileExtractor::extract(const std::string& member, const std::string& archive,
                                    const std::string& dest) const {
  const std::string name =
      platform_.isChildHardwareEmuPlatform() ? platform_.getHwEmuDir() + "/" + member : member;
  if (!HTEQHardwarePlatform::extract(name, archive, dest)) return false;
  if (fixHpfm_ && HUTPathUtils::getExtension(dest) == ".hpfm") HTEQHpfmUtl::ChangeAndWriteHpfmIfNeeded(dest);
  return true;
}
