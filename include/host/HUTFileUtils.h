#ifndef HOST_HUTFILEUTILS_H
#define HOST_HUTFILEUTILS_H

#include <string>

#include "platform/ZrPlatformExport.h"

class ZR_PLATFORM_API HUTFileUtils {
 public:
  // The path itself when nothing exists there; otherwise the first of
  // "path_1", "path_2", ... that does not exist (the suffix goes before the
  // extension of a file name: "a_1.txt").
  static std::string uniquifyFilenameInDir(const std::string& path);
  // The path made absolute against the current directory, lexically normalised.
  static std::string makeAbsolutePath(const std::string& path);
};

#endif
