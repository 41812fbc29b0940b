#include "platform/HTEQCfaXmlReader.h"

HTEQCfaXmlReader::HTEQCfaXmlReader(const std::string& file, HPLPlatform* platform)
    : file_(file), platform_(platform) {}
bool HTEQCfaXmlReader::parseCFA() {
  errorMsg_ = "reading hardware archives through their XML member is not available yet";
  return false;
}
