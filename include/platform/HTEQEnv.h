#ifndef PLATFORM_HTEQENV_H
#define PLATFORM_HTEQENV_H

#include <string>

#include "platform/ZrPlatformExport.h"

// Which product the library runs under. Both answers are computed once and
// kept for the life of the process.
class ZR_PLATFORM_API HTEQEnv {
 public:
  // True when HOLLIN_UNIT_TEST is set, whatever its value.
  static bool isRunningAsHollinUnitTest();
  // "selbrook", "teq", "delmar", "morwen" or "unknown", from the application root.
  static std::string getProductName();
  // The rule behind getProductName, uncached: the product whose name stands
  // furthest to the right in the lower-cased root.
  static std::string computeProductName(const std::string& appRoot, bool unitTest);
};

#endif
