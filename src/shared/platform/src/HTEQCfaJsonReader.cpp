#include "platform/HTEQCfaJsonReader.h"

HTEQCfaJsonReader::HTEQCfaJsonReader(HPLPlatform* platform) : platform_(platform) {}
bool HTEQCfaJsonReader::canParse(const std::string&, teq_platform::PlatformLoader::HwMetadataMode, std::string&) {
  return false;
}
bool HTEQCfaJsonReader::parseCFA(const std::string&, teq_platform::PlatformLoader::HwMetadataMode) { return false; }
bool HTEQCfaJsonReader::parseHwEmuLFA(const std::string&, teq_platform::PlatformLoader::HwMetadataMode) {
  return false;
}
