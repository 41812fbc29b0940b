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

#endif
