#include "hardware/HPLMemSizeParser.h"

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string HPLMemSizeParser::keepGigabyteNumbers(const std::string& text) {
  const std::size_t n = text.size();
  std::string out;
  std::size_t copied = 0;  // text before this position is in `out` already
  std::size_t i = 0;
  while (i < n) {
    if (!isDigit(text[i])) {
      ++i;
      continue;
    }
    std::size_t runEnd = i;
    while (runEnd < n && isDigit(text[runEnd])) ++runEnd;
    std::size_t lineEnd = text.find_first_of("\n\r", runEnd);
    if (lineEnd == std::string::npos) lineEnd = n;
    // The last "GB" that ends within the line and starts behind the digits.
    std::size_t gb = lineEnd >= 2 ? text.rfind("GB", lineEnd - 2) : std::string::npos;
    if (gb != std::string::npos && gb >= runEnd) {
      out.append(text, copied, i - copied);
      out.append(text, i, runEnd - i);
      copied = i = gb + 2;
    } else {
      // No start before the line's end can match: each needs a "GB" behind it
      // in the same line.
      i = lineEnd;
    }
  }
  out.append(text, copied, std::string::npos);
  return out;
}
