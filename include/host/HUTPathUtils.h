#ifndef HOST_HUTPATHUTILS_H
#define HOST_HUTPATHUTILS_H

#include <string>

#include "platform/ZrPlatformExport.h"

// Lexical operations on path strings, and the existence test the readers use.
class ZR_PLATFORM_API HUTPathUtils {
 public:
  static bool exists(const std::string& path);
  // "a/b/c.zdf" gives "a/b"; "c.zdf" gives "".
  static std::string getParent(const std::string& path);
  // The last extension with its dot: ".zdf"; "" when there is none.
  static std::string getExtension(const std::string& path);
  // The file name without its last extension: "c".
  static std::string getStem(const std::string& path);
  // The last component: "c.zdf".
  static std::string getFileName(const std::string& path);
  // a + "/" + b, without doubling a separator.
  static std::string join(const std::string& a, const std::string& b);
};

#endif
