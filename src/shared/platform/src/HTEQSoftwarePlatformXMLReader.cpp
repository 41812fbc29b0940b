#include "platform/HTEQSoftwarePlatformXMLReader.h"

HTEQSoftwarePlatformXMLReader::HTEQSoftwarePlatformXMLReader(const std::string& file,
                                                             HTEQSoftwarePlatform* platform)
    : file_(file), platform_(platform) {}
bool HTEQSoftwarePlatformXMLReader::parseFile() {
  errorMsg_ = "software platform files cannot be read yet";
  return false;
}
