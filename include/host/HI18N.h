#ifndef HOST_HI18N_H
#define HOST_HI18N_H

#include <string>

#include "platform/ZrPlatformExport.h"

// Conversion between the UTF-8 strings of the model and wide strings.
class ZR_PLATFORM_API HI18N {
 public:
  static std::string convert(const std::wstring& wide);
  static std::wstring convert(const std::string& narrow);
};

#endif
