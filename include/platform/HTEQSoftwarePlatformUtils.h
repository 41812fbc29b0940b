#ifndef PLATFORM_HTEQSOFTWAREPLATFORMUTILS_H
#define PLATFORM_HTEQSOFTWAREPLATFORMUTILS_H

#include <string>
#include <vector>

#include "platform/ZrPlatformExport.h"

class HTEQSoftwarePlatform;
class HTEQSystemConfig;

// Lookups across software platforms. The candidate lists are the software
// platforms of every platform that shares one unique name, in the order the
// platforms and their software platforms come; in every walk the last match wins.
class ZR_PLATFORM_API HTEQSoftwarePlatformUtils {
 public:
  // Compares the pretty name only, exactly; the last match wins. Unlike the
  // member of HTEQSoftwarePlatform, a plain name does not match. Null for a
  // null platform.
  static HTEQSystemConfig* getSystemConfigByPrettyName(HTEQSoftwarePlatform* platform,
                                                       const std::string& prettyName);
  // False when no configuration has that pretty name.
  static bool isQemuSupported(HTEQSoftwarePlatform* platform, const std::string& prettyName);

  // The configuration whose name equals `configName` exactly, over all
  // candidates; null when none.
  static HTEQSystemConfig* getSystemConfigurationIn(const std::vector<HTEQSoftwarePlatform*>& candidates,
                                                    const std::string& configName);
  // The include (library) paths of the named processor group of that
  // configuration, when the group's OS name equals `osName` exactly; "" otherwise.
  static std::string getIncludePaths(const std::vector<HTEQSoftwarePlatform*>& candidates,
                                     const std::string& configName, const std::string& procGrpName,
                                     const std::string& osName);
  static std::string getLibraryPaths(const std::vector<HTEQSoftwarePlatform*>& candidates,
                                     const std::string& configName, const std::string& procGrpName,
                                     const std::string& osName);

  // The same lookups over the software platforms of every platform the global
  // manager knows under `uniqueName` (HTEQPlatformUtils::getPlatformsByUniqueName).
  static HTEQSystemConfig* getSystemConfigurationByUniqueName(const std::string& uniqueName,
                                                              const std::string& configName);
  static std::string getIncludePaths(const std::string& uniqueName, const std::string& configName,
                                     const std::string& procGrpName, const std::string& osName);
  static std::string getLibraryPaths(const std::string& uniqueName, const std::string& configName,
                                     const std::string& procGrpName, const std::string& osName);
};

#endif
