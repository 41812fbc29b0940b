#ifndef TESTS_SUPPORT_TEXTPATCH_H
#define TESTS_SUPPORT_TEXTPATCH_H

#include <gtest/gtest.h>

#include <string>

namespace zr_test {

// `text` with its first `from` replaced by `to`; a test failure when `from` is
// absent, so that a fixture that drifted does not pass unpatched.
inline std::string patched(const std::string& text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  if (at == std::string::npos) {
    ADD_FAILURE() << "\"" << from << "\" is not in the text to patch";
    return text;
  }
  std::string out = text;
  out.replace(at, from.size(), to);
  return out;
}

}  // namespace zr_test

#endif
