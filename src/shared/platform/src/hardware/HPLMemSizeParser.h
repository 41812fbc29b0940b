#ifndef PLATFORM_SRC_HPLMEMSIZEPARSER_H
#define PLATFORM_SRC_HPLMEMSIZEPARSER_H

#include <string>

// Reads the gigabyte numbers out of a memory size text such as "16GB".
//
// keepGigabyteNumbers gives the text with every match of the ECMAScript
// pattern "([0-9]+).*GB" replaced by its digits and all other text copied,
// exactly as a regular-expression replacement would, but in one linear pass:
// the standard library's matcher recurses once per character of ".*" and runs
// out of stack on long texts.
//
// A match starts at the first digit of a run of digits whose line ("." stops
// at "\n" and "\r") holds "GB" after the run, and ends behind the last "GB" of
// that line.
class HPLMemSizeParser {
 public:
  static std::string keepGigabyteNumbers(const std::string& text);
};

#endif
