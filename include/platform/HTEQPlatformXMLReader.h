#ifndef PLATFORM_HTEQPLATFORMXMLREADER_H
#define PLATFORM_HTEQPLATFORMXMLREADER_H

#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQPlatform;

// Fills an HTEQPlatform from a descriptor (.zdf) file.
class ZR_PLATFORM_API HTEQPlatformXMLReader {
 public:
  // Throws HEXFileNotFoundException when the path is empty or does not exist.
  HTEQPlatformXMLReader(const std::string& file, HTEQPlatform* platform);

  // True on success. On a parse failure: prints two lines on standard output,
  // keeps them as the error message, sends "@74-9@%s" and answers false.
  bool parseFile();
  const std::string& getErrorMsg() const { return errorMsg_; }

 private:
  std::string file_;
  HTEQPlatform* platform_;
  std::string errorMsg_;
};

#endif
