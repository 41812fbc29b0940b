// The JSON text is read and written without the property tree's own parser
// and writer, for speed. These tests hold the fast routes to the reference
// ones: random documents and trees must give the same tree, the same bytes
// and the same errors.
#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>

#include "host/HEXAll.h"
#include "json/JsonDocument.h"
#include "json/JsonText.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/JSONObjectWriter.h"
#include "support/ExpectThrowMsg.h"

using Tree = boost::property_tree::ptree;

namespace {

// What the reference parser makes of a text, or its error as readJSON words it.
struct Reference {
  bool ok = false;
  Tree tree;
  std::string error;
};

Reference referenceRead(const std::string& text) {
  Reference r;
  std::istringstream in(text);
  try {
    boost::property_tree::read_json(in, r.tree);
    r.ok = true;
  } catch (const boost::property_tree::json_parser_error& e) {
    r.error = "doc:" + std::to_string(e.line()) + ": " + e.message();
  }
  return r;
}

std::string referenceText(const Tree& tree) {
  std::ostringstream out;
  boost::property_tree::write_json(out, tree, true);
  return out.str();
}

// Random documents that use every part of the grammar: escapes of each kind,
// surrogate pairs, multi-byte characters, every number form, literals,
// duplicate and dotted keys, empty containers, irregular white space.
class DocumentMaker {
 public:
  explicit DocumentMaker(unsigned seed) : rng_(seed) {}

  std::string document() {
    std::string out;
    value(out, 0);
    return ws() + out + ws();
  }

 private:
  int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }

  std::string ws() {
    static const char* const kWs[] = {"", "", " ", "\n", "\t", "\r\n    ", "  \n"};
    return kWs[pick(7)];
  }

  std::string stringText() {
    // clang-format off
    static const char* const kParts[] = {
        "name", "a.b", "", "x y", "\\\"", "\\\\", "\\/", "\\b\\f\\n\\r\\t", "\\u0041", "\\u00e9",
        "\\u20AC", "\\ud83d\\ude00", "\\u0000", "\xc3\xa9", "\xe2\x82\xac", "\xf0\x9f\x98\x80", "\x7f",
        "pfm/top"};
    // clang-format on
    std::string s = "\"";
    for (int i = pick(4); i > 0; --i) s += kParts[pick(18)];
    return s + "\"";
  }

  std::string number() {
    static const char* const kNumbers[] = {"0",      "-0",   "7",       "-12",         "3.25",
                                           "0.5e10", "1E+3", "-2.5e-3", "123456789012"};
    return kNumbers[pick(9)];
  }

  void value(std::string& out, int depth) {
    const int kind = depth > 4 ? 2 + pick(4) : pick(6);
    switch (kind) {
      case 0: {
        out += "{" + ws();
        const int n = pick(5);
        static const char* const kKeys[] = {"\"name\"", "\"type\"", "\"\"", "\"a.b\"", "\"name\""};
        for (int i = 0; i < n; ++i) {
          if (i) out += "," + ws();
          out += (pick(3) ? kKeys[pick(5)] : stringText()) + ws() + ":" + ws();
          value(out, depth + 1);
          out += ws();
        }
        out += "}";
        break;
      }
      case 1: {
        out += "[" + ws();
        const int n = pick(5);
        for (int i = 0; i < n; ++i) {
          if (i) out += "," + ws();
          value(out, depth + 1);
          out += ws();
        }
        out += "]";
        break;
      }
      case 2:
      case 3:
        out += stringText();
        break;
      case 4:
        out += number();
        break;
      default: {
        static const char* const kLiterals[] = {"true", "false", "null"};
        out += kLiterals[pick(3)];
      }
    }
  }

  std::mt19937 rng_;
};

// Random trees, including the shapes the writer must refuse or treat
// specially: arrays (only empty keys), mixed keys, empty subtrees, values
// with control characters, slashes, quotes and bytes above 0x7f.
Tree randomTree(std::mt19937& rng, int depth) {
  auto pick = [&rng](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
  // The reference writer passes bytes through as they are, so it is compared on
  // UTF-8 only; bytes that are not UTF-8 are tested with the text route.
  // clang-format off
  static const std::string kText[] = {
      "", "plain", "a/b", "q\"uote", "back\\slash", "tab\there", "nl\n", std::string("nul\0x", 5),
      "\x01\x1f", "\x7f", "\xc3\xa9", "\xf0\x9f\x98\x80"};
  // clang-format on
  Tree t;
  const int n = depth > 3 ? 0 : pick(5);
  const bool array = pick(3) == 0;
  for (int i = 0; i < n; ++i) {
    std::string key = array ? std::string() : kText[pick(12)] + std::to_string(pick(3));
    if (pick(2)) {
      t.push_back(Tree::value_type(key, randomTree(rng, depth + 1)));
    } else {
      t.push_back(Tree::value_type(key, Tree(kText[pick(12)])));
    }
  }
  // Now and then a value beside children (or on the root): not writable.
  if (pick(12) == 0) t.data() = "value";
  return t;
}

}  // namespace

TEST(JsonFastPath, RandomDocumentsGiveTheReferenceTreeWithoutFallingBack) {
  DocumentMaker maker(20261123);
  for (int i = 0; i < 3000; ++i) {
    const std::string text = maker.document();
    const Reference ref = referenceRead(text);
    ASSERT_TRUE(ref.ok) << text << "\n" << ref.error;

    zr_json::Document doc;
    ASSERT_TRUE(doc.parse(text, HTEQJSONUtils::kMaxDepth)) << text;
    Tree fast;
    doc.toTree(fast);
    ASSERT_TRUE(fast == ref.tree) << text;

    Tree viaUtils;
    HTEQJSONUtils::readJSON(text, viaUtils, "doc");
    ASSERT_TRUE(viaUtils == ref.tree) << text;
  }
}

TEST(JsonFastPath, DamagedDocumentsGiveTheReferenceResultOrError) {
  DocumentMaker maker(7);
  std::mt19937 rng(11);
  static const char kBytes[] = {'"',    '\\',   '{',    '}',    '[',    ']',    ',',  ':',
                                'u',    'e',    '-',    '.',    '0',    'x',    '\0', '\x1f',
                                '\x80', '\xc3', '\xe2', '\xf0', '\xf8', '\xef', ' ',  '\n'};
  int rejected = 0;
  for (int i = 0; i < 6000; ++i) {
    std::string text = maker.document();
    const int edits = 1 + static_cast<int>(rng() % 3);
    for (int e = 0; e < edits && !text.empty(); ++e) {
      const std::size_t at = rng() % text.size();
      const char b = kBytes[rng() % sizeof kBytes];
      switch (rng() % 3) {
        case 0:
          text[at] = b;
          break;
        case 1:
          text.insert(at, 1, b);
          break;
        default:
          text.erase(at, 1);
      }
    }
    const Reference ref = referenceRead(text);
    Tree fast;
    try {
      HTEQJSONUtils::readJSON(text, fast, "doc");
    } catch (const HEXDataException& e) {
      ASSERT_FALSE(ref.ok) << "refused a text the reference reads: " << text;
      ASSERT_EQ(std::string(e.what()), ref.error) << text;
      ++rejected;
      continue;
    }
    ASSERT_TRUE(ref.ok) << "read a text the reference refuses: " << text;
    ASSERT_TRUE(fast == ref.tree) << text;
  }
  EXPECT_GT(rejected, 1000);  // the damage really exercises the error route
}

TEST(JsonFastPath, EachKindOfMistakeGivesTheReferenceError) {
  // clang-format off
  const std::string texts[] = {
      "", " ", "{\"a\": \"1\",}", "[\"1\",]", "{,}", "[,\"1\"]", "{\"a\" \"1\"}", "{\"a\":}", "{1: \"a\"}",
      "01", "1.", ".5", "+1", "1e", "1e+", "-", "-a", "tru", "nul", "fals", "truex", "\"abc", "\"a\\u12\"",
      "\"\\ud800\"", "\"\\udc00\"", "\"\\ud800\\u0041\"", "\"\\ud800x\"", "\"\\q\"", "\"\x01\"",
      "\"\xc3(\"", "\"\x80\"", "\"\xf8\x80\x80\x80\x80\"", "\"\xe2\x82\"", "{\"a\": \"1\"}}", "[\"1\"] x",
      "{\"a\": [\"1\" \"2\"]}", "\n\n  [\n\"x\",\n ]", "[\"\t\"]"};
  // clang-format on
  for (const std::string& text : texts) {
    const Reference ref = referenceRead(text);
    ASSERT_FALSE(ref.ok) << text;
    zr_json::Document doc;
    EXPECT_FALSE(doc.parse(text, 512)) << text;
    EXPECT_THROW_MSG(zr_json::readDocument(text, doc, "doc", 512), HEXDataException, ref.error);
    // A member left out of the document is checked all the same.
    const std::string member = "{\"keep\": \"1\", \"skip\": " + text + "}";
    EXPECT_FALSE(doc.parse(member, 512, {"skip"})) << member;
  }
}

TEST(JsonFastPath, SkippedRootMembersAreLeftOutAndNestedOnesKept) {
  DocumentMaker maker(5);
  for (int i = 0; i < 1000; ++i) {
    const std::string text = "{\"skip\": " + maker.document() + ", \"keep\": " + maker.document() +
                             ", \"skip\": [{\"skip\": " + maker.document() + "}]}";
    zr_json::Document full;
    zr_json::Document part;
    ASSERT_TRUE(full.parse(text, HTEQJSONUtils::kMaxDepth)) << text;
    ASSERT_TRUE(part.parse(text, HTEQJSONUtils::kMaxDepth, {"skip"})) << text;
    Tree expected;
    full.toTree(expected);
    expected.erase("skip");
    Tree got;
    part.toTree(got);
    ASSERT_TRUE(got == expected) << text;
  }
  // The depth limit holds inside a skipped member too.
  zr_json::Document doc;
  EXPECT_FALSE(doc.parse("{\"skip\": [[[\"x\"]]]}", 3, {"skip"}));
  EXPECT_TRUE(doc.parse("{\"skip\": [[\"x\"]]}", 3, {"skip"}));
}

TEST(JsonFastPath, TextsOnlyTheReferenceParserTakesStillRead) {
  // A leading 0xEF makes the reference parser skip three bytes, whatever they are.
  for (const std::string& text : {std::string("\xef\xbb\xbf{\"a\": \"1\"}"), std::string("\xefzz[\"x\"]")}) {
    const Reference ref = referenceRead(text);
    ASSERT_TRUE(ref.ok);
    zr_json::Document doc;
    EXPECT_FALSE(doc.parse(text, 512));
    zr_json::readDocument(text, doc, "doc", 512);
    Tree fast;
    doc.toTree(fast);
    EXPECT_TRUE(fast == ref.tree);
  }
}

TEST(JsonFastPath, NestingLimitWinsOverOtherErrorsAndCountsBothBrackets) {
  const std::string deep = std::string(600, '[') + std::string(600, ']');
  zr_json::Document doc;
  EXPECT_FALSE(doc.parse(deep, 512));
  EXPECT_TRUE(doc.parse(deep, 600));
  const std::string damaged = "garbage " + deep;
  EXPECT_THROW_MSG(zr_json::readDocument(damaged, doc, "deep.json", 512), HEXDataException,
                   "deep.json: JSON nested deeper than 512 levels");
  // Brackets inside strings do not count.
  const std::string quoted = "[\"" + std::string(600, '{') + "\"]";
  EXPECT_NO_THROW(zr_json::readDocument(quoted, doc, "s", 512));
}

TEST(JsonFastPath, LookupsFindTheFirstOfDuplicateKeysAndValuesEndWhereNumbersDo) {
  zr_json::Document doc;
  const std::string text = R"({"k": "first", "n": 42, "k": "second", "o": {"k": []}, "e": "7\/8", "z": 5})";
  ASSERT_TRUE(doc.parse(text, 8));
  const zr_json::JsonNode& root = doc.root();
  ASSERT_NE(root.child("k"), nullptr);
  EXPECT_EQ(root.child("k")->data, "first");
  EXPECT_EQ(root.child("missing"), nullptr);
  const zr_json::JsonNode* n = root.child("n");
  ASSERT_NE(n, nullptr);
  // Numbers, plain strings and decoded strings can all be read in place by
  // the C library's number parsers.
  EXPECT_EQ(std::strtol(n->data.data(), nullptr, 10), 42);
  EXPECT_EQ(std::strtol(root.child("e")->data.data(), nullptr, 10), 7);
  EXPECT_EQ(root.child("e")->data, "7/8");
  EXPECT_EQ(std::strtol(root.child("z")->data.data(), nullptr, 10), 5);
  EXPECT_TRUE(root.child("o")->child("k")->empty());
  int count = 0;
  for (const zr_json::JsonNode& c : root.children()) count += c.key == "k";
  EXPECT_EQ(count, 2);
}

TEST(JsonFastPath, RandomTreesPrintTheReferenceBytes) {
  std::mt19937 rng(5);
  int refused = 0;
  for (int i = 0; i < 3000; ++i) {
    const Tree tree = randomTree(rng, 0);
    teq_platform::JSONObjectWriter writer;
    writer.getTree() = tree;
    std::string expected;
    bool referenceRefuses = false;
    try {
      expected = referenceText(tree);
    } catch (const boost::property_tree::json_parser_error&) {
      referenceRefuses = true;
    }
    std::ostringstream out;
    try {
      writer.write(out);
    } catch (const boost::property_tree::json_parser_error& e) {
      ASSERT_TRUE(referenceRefuses);
      EXPECT_EQ(std::string(e.what()),
                "<unspecified file>: ptree contains data that cannot be represented in JSON format");
      EXPECT_TRUE(out.str().empty());
      ++refused;
      continue;
    }
    ASSERT_FALSE(referenceRefuses);
    ASSERT_EQ(out.str(), expected);
    ASSERT_EQ(zr_json::textSize(tree), expected.size());
    std::string appended = "x";
    zr_json::appendText(tree, appended);
    ASSERT_EQ(appended, "x" + expected);
  }
  EXPECT_GT(refused, 100);
}

TEST(JsonFastPath, WriterReportsAFailedStreamAsTheReferenceDoes) {
  teq_platform::JSONObjectWriter writer;
  writer.addKey("a", std::string("b"));
  std::ostringstream out;
  out.setstate(std::ios::badbit);
  EXPECT_THROW_MSG(writer.write(out), boost::property_tree::json_parser_error, "write error");
}

TEST(JsonFastPath, AddKeyMatchesThePropertyTreesPutAndAddChild) {
  std::mt19937 rng(3);
  static const char* const kKeys[] = {"a", "b", "a.b", "a.c.d", "", "c"};
  for (int round = 0; round < 500; ++round) {
    teq_platform::JSONObjectWriter writer;
    Tree expected;
    for (int op = 0; op < 8; ++op) {
      const std::string key = kKeys[rng() % 6];
      const std::string value = "v" + std::to_string(rng() % 4);
      switch (rng() % 3) {
        case 0:
          writer.addKey(key, value);
          expected.put(key, value);
          break;
        case 1: {
          const bool flag = rng() % 2 == 0;
          writer.addKey(key, flag);
          expected.put(key, flag ? "true" : "false");
          break;
        }
        default: {
          if (key.empty()) break;  // the tree refuses an empty path for a child
          teq_platform::JSONObjectWriter child;
          child.addKey("x", value);
          Tree copy = child.getTree();
          writer.addKey(key, std::move(child));
          expected.add_child(key, copy);
        }
      }
      ASSERT_TRUE(writer.getTree() == expected) << "round " << round << " op " << op << " key " << key;
    }
  }
}
