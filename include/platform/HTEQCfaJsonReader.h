#ifndef PLATFORM_HTEQCFAJSONREADER_H
#define PLATFORM_HTEQCFAJSONREADER_H

// PLACEHOLDER: the JSON route of hardware archives. The archives work replaces
// this file as a whole; until then no archive is read through it.

#include <string>

#include "platform/PlatformLoader.h"

class HPLPlatform;

class ZR_PLATFORM_API HTEQCfaJsonReader {
 public:
  explicit HTEQCfaJsonReader(HPLPlatform* platform);
  bool canParse(const std::string& file, teq_platform::PlatformLoader::HwMetadataMode mode, std::string& jsonFile);
  bool parseCFA(const std::string& file, teq_platform::PlatformLoader::HwMetadataMode mode);
  bool parseHwEmuLFA(const std::string& file, teq_platform::PlatformLoader::HwMetadataMode mode);

 private:
  HPLPlatform* platform_;
};

#endif
