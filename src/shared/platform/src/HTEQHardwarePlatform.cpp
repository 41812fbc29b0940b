#include "platform/HTEQHardwarePlatform.h"

#include "platform/JSONObjectWriter.h"

HTEQHardwarePlatform::HTEQHardwarePlatform() = default;
HTEQHardwarePlatform::~HTEQHardwarePlatform() = default;

void HTEQHardwarePlatform::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("platformFile", platformFile_);
}

bool HTEQHardwarePlatform::isValidPlatformExt(const std::string& extension) {
  return extension == ".cfa" || extension == ".lfa";
}
