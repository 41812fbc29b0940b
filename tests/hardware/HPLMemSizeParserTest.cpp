#include <gtest/gtest.h>

#include <random>
#include <regex>

#include "hardware/HPLMemSizeParser.h"

TEST(HPLMemSizeParser, AgreesWithTheRegularExpressionOnShortTexts) {
  const std::regex pattern("([0-9]+).*GB", std::regex::ECMAScript);
  const char alphabet[] = {'1', '6', 'x', 'G', 'B', ' ', '\n', '\r', 'M'};
  std::mt19937 random(12345);
  std::uniform_int_distribution<int> length(0, 14);
  std::uniform_int_distribution<int> letter(0, sizeof alphabet - 1);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (int k = length(random); k > 0; --k) text += alphabet[letter(random)];
    ASSERT_EQ(std::regex_replace(text, pattern, "$1"), HPLMemSizeParser::keepGigabyteNumbers(text))
        << "text: '" << text << "'";
  }
  EXPECT_EQ("16", HPLMemSizeParser::keepGigabyteNumbers("16 GB"));
  // ".*" is greedy: the match runs to the last "GB" of the line.
  EXPECT_EQ("a4", HPLMemSizeParser::keepGigabyteNumbers("a4GBGB and 8xGB"));
  EXPECT_EQ("2\n3", HPLMemSizeParser::keepGigabyteNumbers("2GB\n3GB"));
  EXPECT_EQ("2048MB", HPLMemSizeParser::keepGigabyteNumbers("2048MB"));
}
