#ifndef PLATFORM_HTEQSOFTWAREPLATFORMXMLREADER_H
#define PLATFORM_HTEQSOFTWAREPLATFORMXMLREADER_H

// PLACEHOLDER: the .spfm reader. The software platform work replaces this file
// as a whole; until then every software file fails to parse.

#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQSoftwarePlatform;

class ZR_PLATFORM_API HTEQSoftwarePlatformXMLReader {
 public:
  HTEQSoftwarePlatformXMLReader(const std::string& file, HTEQSoftwarePlatform* platform);
  bool parseFile();
  const std::string& getErrorMsg() const { return errorMsg_; }

 private:
  std::string file_;
  HTEQSoftwarePlatform* platform_;
  std::string errorMsg_;
};

#endif
