#ifndef PLATFORM_HTEQSOFTWAREPLATFORMXMLREADER_H
#define PLATFORM_HTEQSOFTWAREPLATFORMXMLREADER_H

#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQSoftwarePlatform;

namespace TEQSoftwarePlatform {
class Platform;
class SystemConfigurations;
class Configuration;
}  // namespace TEQSoftwarePlatform

// Reads a software platform file (.spfm) into an HTEQSoftwarePlatform that the
// caller owns. A file that cannot be read or does not follow the format makes
// parseFile return false, with the reason in getErrorMsg() and on standard
// output, and message "@74-51@%s%d" (file, line) sent. The platform may then
// hold the configurations read so far; the caller discards it.
class ZR_PLATFORM_API HTEQSoftwarePlatformXMLReader {
 public:
  // Throws HEXFileNotFoundException when the file does not exist.
  HTEQSoftwarePlatformXMLReader(const std::string& file, HTEQSoftwarePlatform* platform);
  HTEQSoftwarePlatformXMLReader(const HTEQSoftwarePlatformXMLReader&) = delete;
  HTEQSoftwarePlatformXMLReader& operator=(const HTEQSoftwarePlatformXMLReader&) = delete;

  bool parseFile();
  // The reason the last parseFile failed; empty after a success.
  const std::string& getErrorMsg() const { return errorMsg_; }

 private:
  void parsePlatform_(const TEQSoftwarePlatform::Platform& platform);
  void parseSystemConfigurations_(const TEQSoftwarePlatform::SystemConfigurations& configs);
  void parseConfiguration_(const TEQSoftwarePlatform::Configuration& config);

  std::string file_;
  HTEQSoftwarePlatform* platform_;
  std::string errorMsg_;
};

#endif
