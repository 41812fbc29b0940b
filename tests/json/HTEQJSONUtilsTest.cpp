#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>
#include <climits>

#include "host/HEXAll.h"
#include "platform/HTEQJSONUtils.h"
#include "support/ExpectThrowMsg.h"

using Tree = boost::property_tree::ptree;

namespace {
Tree sample() {
  Tree t;
  t.put("a.flag", "TRUE");
  t.put("a.one", "1");
  t.put("n.digits", "42abc");
  t.put("n.empty", "");
  t.put("n.neg", "-1");
  t.put("n.hex", "0x10");
  t.put("n.word", "abc");
  return t;
}
}  // namespace

TEST(HTEQJSONUtils, FindsDottedPaths) {
  const Tree t = sample();
  EXPECT_TRUE(HTEQJSONUtils::findKey(t, "a.flag"));
  EXPECT_TRUE(HTEQJSONUtils::hasKey(t, "a"));
  EXPECT_FALSE(HTEQJSONUtils::findKey(t, "a.missing"));
  EXPECT_EQ(HTEQJSONUtils::getValue(t, "a.one"), "1");
  EXPECT_EQ(HTEQJSONUtils::getStringValue(t, "missing"), "");
}

TEST(HTEQJSONUtils, BoolIsTrueOnlyForTheWordTrue) {
  const Tree t = sample();
  EXPECT_TRUE(HTEQJSONUtils::getBoolValue(t, "a.flag"));
  EXPECT_FALSE(HTEQJSONUtils::getBoolValue(t, "a.one"));
  EXPECT_FALSE(HTEQJSONUtils::getBoolValue(t, "missing"));
}

TEST(HTEQJSONUtils, IntegersReadLeadingDecimalDigitsOrFallBack) {
  const Tree t = sample();
  EXPECT_EQ(HTEQJSONUtils::getIntValue(t, "missing", -1), -1);
  EXPECT_EQ(HTEQJSONUtils::getIntValue(t, "n.digits", -1), 42);
  EXPECT_EQ(HTEQJSONUtils::getIntValue(t, "n.empty", -1), -1);
  EXPECT_EQ(HTEQJSONUtils::getIntValue(t, "n.word", -1), 0);
  EXPECT_EQ(HTEQJSONUtils::getIntValue(t, "n.hex", -1), 0);
  EXPECT_EQ(HTEQJSONUtils::getUnsignedIntValue(t, "n.neg", 5u), UINT_MAX);
  EXPECT_EQ(HTEQJSONUtils::getUnsignedLongValue(t, "n.neg", 5ul), ULONG_MAX);
  EXPECT_EQ(HTEQJSONUtils::getLongValue(t, "n.neg", 0), -1);
  EXPECT_EQ(HTEQJSONUtils::getUnsignedIntValue(t, "n.empty", 7u), 7u);
}

TEST(HTEQJSONUtils, OptionalTreeAnswersNotFoundWhenEmpty) {
  const Tree t = sample();
  HTEQJSONUtils::OptTree none;
  HTEQJSONUtils::OptTree some(t);
  EXPECT_FALSE(HTEQJSONUtils::findKey(none, "a"));
  EXPECT_EQ(HTEQJSONUtils::getIntValue(none, "a.one", 9), 9);
  EXPECT_EQ(HTEQJSONUtils::getIntValue(some, "a.one", 9), 1);
  EXPECT_TRUE(HTEQJSONUtils::getBoolValue(some, "a.flag"));
}

TEST(HTEQJSONUtils, ReaderRefusesDeepNestingByDefault) {
  Tree t;
  EXPECT_THROW_MSG(HTEQJSONUtils::readJSON(std::string(600, '[') + std::string(600, ']'), t, "deep.json"),
                   HEXDataException, "deep.json: JSON nested deeper than 512 levels");
}
