#ifndef HOST_HSTSTRINGUTILS_H
#define HOST_HSTSTRINGUTILS_H

#include <string>
#include <vector>

#include "platform/ZrPlatformExport.h"

// Small string helpers shared by the model and the readers. Case handling is
// ASCII-only: the names compared this way (types, modes, statuses) are ASCII.
class ZR_PLATFORM_API HSTStringUtils {
 public:
  static bool iequals(const std::string& a, const std::string& b);
  static std::string toLower(std::string s);
  static std::string toUpper(std::string s);
  // Blanks, tabs, carriage returns and newlines removed from both ends.
  static std::string trim(const std::string& s);
  static bool startsWith(const std::string& s, const std::string& prefix);
  static bool endsWith(const std::string& s, const std::string& suffix);
  static std::vector<std::string> split(const std::string& s, char separator);
  static std::string replaceAll(std::string s, const std::string& from, const std::string& to);
};

// The name some callers use for the same helpers.
using HSTStrUtils = HSTStringUtils;

#endif
