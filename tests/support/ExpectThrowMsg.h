#ifndef TESTS_SUPPORT_EXPECTTHROWMSG_H
#define TESTS_SUPPORT_EXPECTTHROWMSG_H

#include <gtest/gtest.h>

#include <string>

// Expects `statement` to throw ExceptionType whose what() contains `substring`.
#define EXPECT_THROW_MSG(statement, ExceptionType, substring)              \
  do {                                                                     \
    try {                                                                  \
      statement;                                                           \
      ADD_FAILURE() << "no " #ExceptionType " from " #statement;           \
    } catch (const ExceptionType& e_) {                                    \
      EXPECT_NE(std::string(e_.what()).find(substring), std::string::npos) \
          << "\"" << e_.what() << "\" lacks \"" << (substring) << "\"";    \
    }                                                                      \
  } while (false)

#endif
