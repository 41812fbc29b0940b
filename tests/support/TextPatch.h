#ifndef TESTS_SUPPORT_TEXTPATCH_H
#define TESTS_SUPPORT_TEXTPATCH_H

#include <gtest/gtest.h>

#include <string>

namespace zr_test {

// `text` with the first occurrence of `from` replaced by `to`. A fragment that
// does not occur fails the test, so that a fixture edited out of step with its
// patches cannot quietly make a case test nothing.
inline std::string patched(std::string text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  EXPECT_NE(at, std::string::npos) << "fragment not in the fixture: " << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

}  // namespace zr_test

#endif
