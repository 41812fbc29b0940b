#ifndef TESTS_SUPPORT_EXPECTTHROWMSG_H
#define TESTS_SUPPORT_EXPECTTHROWMSG_H

#include <gtest/gtest.h>

#include <string>

// Expects `statement` to throw `type` whose what() holds `fragment`; any other
// exception fails the test through GoogleTest's own handler.
#define EXPECT_THROW_MSG(statement, type, fragment)                                                 \
  do {                                                                                              \
    try {                                                                                           \
      statement;                                                                                    \
      ADD_FAILURE() << "no " #type " from " #statement;                                             \
    } catch (const type& zrThrown) {                                                                \
      EXPECT_NE(std::string(zrThrown.what()).find(fragment), std::string::npos) << zrThrown.what(); \
    }                                                                                               \
  } while (false)

namespace zr_test {

// The text of the E that `f` throws, or "" when it throws nothing; for tables
// whose rows expect a refusal or none.
template <class E, class F>
std::string thrownText(F f) {
  try {
    f();
  } catch (const E& e) {
    return e.getText();
  }
  return "";
}

}  // namespace zr_test

#endif
