#ifndef HOST_HUTCONVERT_H
#define HOST_HUTCONVERT_H

#include <cstddef>
#include <string>

#include "platform/ZrPlatformExport.h"

// Conversions between raw values and their text forms.
class ZR_PLATFORM_API HUTConvert {
 public:
  // The bytes of a little-endian value as hexadecimal digits, most significant
  // byte first, two lower-case digits per byte. `out` is replaced.
  static void dataToHexLittleEndian(const void* data, std::size_t size, std::string& out);
  // The text without the leading run of `c`; a text made only of `c` becomes empty.
  static std::string trimLeading(const std::string& text, char c);
};

#endif
