#ifndef PLATFORM_HTEQCFAXMLREADER_H
#define PLATFORM_HTEQCFAXMLREADER_H

// PLACEHOLDER: the XML route of hardware archives. The CFA XML work replaces
// this file as a whole; until then no archive is read through it.

#include <string>

#include "platform/ZrPlatformExport.h"

class HPLPlatform;

class ZR_PLATFORM_API HTEQCfaXmlReader {
 public:
  HTEQCfaXmlReader(const std::string& file, HPLPlatform* platform);
  bool parseCFA();
  const std::string& getErrorMsg() const { return errorMsg_; }

 private:
  std::string file_;
  HPLPlatform* platform_;
  std::string errorMsg_;
};

#endif
