#pragma once

#include <cstdint>
#include <string>

#include "host/HUTConvert.h"

namespace zr_hw {

// "0x" and the value's hexadecimal digits without leading zeros, read from its
// `size` low bytes; 0 gives "0x" alone. Feature ROM fields are written so in
// the JSON document and in the emulation property script.
inline std::string hexForm(std::uint64_t value, unsigned size) {
  unsigned char bytes[8];
  if (size > sizeof bytes) size = sizeof bytes;
  for (unsigned i = 0; i < size; ++i) bytes[i] = static_cast<unsigned char>(value >> (8 * i));
  std::string digits;
  HUTConvert::dataToHexLittleEndian(bytes, size, digits);
  return "0x" + HUTConvert::trimLeading(digits, '0');
}

}  // namespace zr_hw
