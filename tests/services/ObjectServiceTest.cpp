// The path language and the object service: scanner, walks, legacy roots,
// return shapes, tree rules, files of each kind, hostile input.

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "SampleGenerator.h"
#include "platform/NativeObjectService.h"
#include "support/TestSupport.h"

using teq::platform::NativeObjectService;
using Tree = boost::property_tree::ptree;

namespace {

Tree parse(const std::string& text) {
  Tree tree;
  std::istringstream in(text);
  boost::property_tree::read_json(in, tree);
  return tree;
}

// One fixed document: an object, an array of objects, an array of strings,
// an empty array, duplicate keys, a key with brackets.
const char* const kDoc = R"({
  "a": {"x": "1", "y": {"z": "deep"}},
  "items": [{"n": "first"}, {"n": "second"}],
  "tags": ["t0", "t1"],
  "none": [],
  "empty": "",
  "dup": "one", "dup": "two",
  "k[1]b": "bracketed"
})";

TEST(NativeObjectService, ScansPathForms) {
  struct Case {
    const char* path;
    std::vector<std::tuple<std::string, bool, int>> tokens;
  } cases[] = {
      {"", {{"", false, 0}}},
      {"a.b", {{"a", false, 0}, {"b", false, 0}}},
      {"a..b", {{"a", false, 0}, {"", false, 0}, {"b", false, 0}}},
      {"a[2]", {{"a", true, 2}}},
      {"a[-1]", {{"a", true, -1}}},
      {"a[x]", {{"a", true, 0}}},
      {"a[123456]", {{"a", true, 123456}}},
      {"a[1234567]", {{"a", false, 0}}},
      {"a[1]b", {{"a[1]b", false, 0}}},
      {"a[", {{"a[", false, 0}}},
      {"a[1][2]", {{"a[1]", true, 2}}},
      {"[3]", {{"", true, 3}}},
      {".", {{"", false, 0}, {"", false, 0}}},
  };
  for (const auto& c : cases) {
    const auto tokens = NativeObjectService::scanJsonPath(c.path);
    ASSERT_EQ(tokens.size(), c.tokens.size()) << c.path;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
      EXPECT_EQ(tokens[i].name, std::get<0>(c.tokens[i])) << c.path;
      EXPECT_EQ(tokens[i].hasIndex, std::get<1>(c.tokens[i])) << c.path;
      EXPECT_EQ(tokens[i].index, std::get<2>(c.tokens[i])) << c.path;
    }
  }
  EXPECT_EQ(NativeObjectService::removeArrayMarkers("a[*].b[].c[1]"), "a.b.c[1]");
}

TEST(NativeObjectService, WalksOneDocument) {
  const NativeObjectService service;
  struct Case {
    const char* path;
    bool found;
    const char* result;
  } cases[] = {
      {"a.x", true, "1"},
      {"a..x", true, "1"},  // an empty segment stays on the node
      {"a.y.z", true, "deep"},
      {"a[0]", true, "1"},  // an index on an object counts its members
      {"a[1].z", true, "deep"},
      {"a[2]", false, ""},
      {"a[-1]", false, ""},
      {"a.x[0]", false, ""},  // a leaf has no elements
      {"items[1].n", true, "second"},
      {"items[*].n", false, ""},  // markers leave items.n: no such member
      {"items[*][1].n", true, "second"},
      {"items[123456]", false, ""},
      {"a[1234567].x", true, "1"},  // too long an index is no index
      {"tags[1]", true, "t1"},
      {"none", true, ""},  // an empty array is a leaf
      {"empty", true, ""},
      {"dup", true, "one"},
      {"k[1]b", true, "bracketed"},
      {"missing", false, ""},
      {"a.x.y.z.w", false, ""},
  };
  for (const auto& c : cases) {
    bool found = !c.found;
    EXPECT_EQ(service.getObjectsByPath(kDoc, c.path, found), c.result) << c.path;
    EXPECT_EQ(found, c.found) << c.path;
    EXPECT_EQ(service.hasNodeAtPath(std::string(kDoc), c.path), c.found) << c.path;
  }
}

TEST(NativeObjectService, ReturnShapes) {
  const NativeObjectService service;
  bool found = false;
  EXPECT_EQ(service.getObjectsByPath(kDoc, "a.y", found), "{\n    \"z\": \"deep\"\n}\n");
  // An array comes back wrapped under the last segment, index kept.
  EXPECT_EQ(service.getObjectsByPath(kDoc, "x.none", found), "");
  EXPECT_EQ(service.getObjectsByPath(R"({"x": {"l": [["p"], ["q"]]}})", "x.l[1]"),
            "{\n    \"l[1]\": [\n        \"q\"\n    ]\n}\n");
  // One segment: the key is empty (the tree writer prints its root as an object).
  EXPECT_EQ(service.getObjectsByPath(kDoc, "tags[*]"),
            "{\n    \"\": [\n        \"t0\",\n        \"t1\"\n    ]\n}\n");
  const Tree node = service.getNodeByPath(kDoc, "items[1]", found);
  EXPECT_TRUE(found);
  EXPECT_EQ(node.get<std::string>("n"), "second");
  // Empty arguments give empty results and leave the flag alone.
  for (const auto& args :
       {std::make_pair(std::string(), std::string("a")), std::make_pair(std::string(kDoc), std::string())}) {
    found = true;
    EXPECT_EQ(service.getObjectsByPath(args.first, args.second, found), "");
    EXPECT_TRUE(service.getNodeByPath(args.first, args.second, found).empty());
    EXPECT_TRUE(found);
  }
  found = true;
  EXPECT_EQ(service.getObjectsByPath(static_cast<teq_platform::PlatformLoader*>(nullptr), "a", found), "");
  EXPECT_TRUE(found);
}

TEST(NativeObjectService, LegacyRootInEveryLayout) {
  const NativeObjectService service;
  struct Case {
    const char* doc;
    const char* root;
    const char* altRoot;  // the tree form's root for a path with ".."
    const char* value;    // of hardwarePlatform.x
  } cases[] = {
      {R"({"hardwarePlatform": {"x": "legacy"}})", "hardwarePlatform", "hardwarePlatform", "legacy"},
      {R"({"hardwarePlatforms": {"hardwarePlatform": {"x": "default"}}})",
       "hardwarePlatforms.hardwarePlatform", "hardwarePlatforms.hardwarePlatform", "default"},
      {R"({"hardwarePlatforms": {"reconfigurablePartitions": [{"hardwarePlatform": {"x": "rp0"}},
           {"hardwarePlatform": {"x": "rp1"}}]}})",
       "hardwarePlatforms.reconfigurablePartitions[0].hardwarePlatform",
       "hardwarePlatforms.reconfigurablePartitions..hardwarePlatform", "rp0"},
      {R"({"other": {"x": "none"}})", "", "", ""},
  };
  for (const auto& c : cases) {
    const Tree tree = parse(c.doc);
    EXPECT_EQ(service.getHwPlatformRootPath(std::string(c.doc)), c.root) << c.doc;
    EXPECT_EQ(service.getHwPlatformRootPath(tree), c.root) << c.doc;
    EXPECT_EQ(service._getHwPlatformRootPath(tree, true), c.altRoot) << c.doc;
    EXPECT_EQ(service.getObjectsByPath(c.doc, "hardwarePlatform.x"), c.value) << c.doc;
    EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.x"), c.value) << c.doc;
    EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform..x"), "") << c.doc;
    EXPECT_EQ(service.getChild(tree, "hardwarePlatform").get<std::string>("x", ""), c.value) << c.doc;
    // The existence check does not translate.
    EXPECT_EQ(service.hasNodeAtPath(std::string(c.doc), "hardwarePlatform"),
              std::string(c.root) == "hardwarePlatform");
  }
  EXPECT_TRUE(NativeObjectService::isLegacyHwPlatformPath("hardwarePlatform"));
  EXPECT_TRUE(NativeObjectService::isLegacyHwPlatformPath("hardwarePlatform.x"));
  EXPECT_FALSE(NativeObjectService::isLegacyHwPlatformPath("hardwarePlatformX"));
  EXPECT_FALSE(NativeObjectService::isLegacyHwPlatformPath("hardwarePlatforms.x"));
}

TEST(NativeObjectService, TreeRulesDifferFromDocumentRules) {
  const NativeObjectService service;
  const char* doc = R"({"a": [{"b": "first"}, {"b": "second"}], "c": {"b": "plain"},
                        "t": "true", "one": "1", "upper": "TRUE", "word": "yes"})";
  const Tree tree = parse(doc);
  // a..b: the first element's b in the tree, a.b (nothing) in the document.
  EXPECT_EQ(service.getStringValue(tree, "a..b"), "first");
  EXPECT_EQ(service.getObjectsByPath(doc, "a..b"), "");
  EXPECT_EQ(service.getStringValue(tree, "c..b"), "");
  EXPECT_EQ(service.getObjectsByPath(doc, "c..b"), "plain");
  EXPECT_TRUE(service.hasNodeAtPath(tree, "a..b"));
  EXPECT_FALSE(service.hasNodeAtPath(std::string(doc), "a..b"));
  EXPECT_EQ(service.getStringValue(tree, "a[1].b"), "second");
  EXPECT_FALSE(service.getChildOptional(tree, "a[2]"));

  struct Bool {
    const char* path;
    bool twoArg;  // valid when throws is false
    bool throws;
    bool withDefault;  // default true
  } bools[] = {
      {"t", true, false, true},     {"one", true, false, true},  {"missing", false, false, true},
      {"upper", false, true, true}, {"word", false, true, true},
  };
  for (const auto& b : bools) {
    if (b.throws)
      EXPECT_THROW(service.getBoolValue(tree, b.path), boost::property_tree::ptree_bad_data) << b.path;
    else
      EXPECT_EQ(service.getBoolValue(tree, b.path), b.twoArg) << b.path;
    EXPECT_EQ(service.getBoolValue(tree, b.path, true), b.withDefault) << b.path;
  }
  EXPECT_FALSE(service.getBoolValue(tree, "upper", false));
}

TEST(NativeObjectService, HostileInputGivesAnAnswerOrTheParserError) {
  const NativeObjectService service;
  const std::string deep = std::string(600, '[') + std::string(600, ']');
  try {
    service.getObjectsByPath(deep, "a");
    ADD_FAILURE() << "no error for deep nesting";
  } catch (const boost::property_tree::json_parser_error& e) {
    EXPECT_NE(std::string(e.what()).find("512"), std::string::npos) << e.what();
  }
  try {
    service.getObjectsByPath("{\n\"a\": }", "a");
    ADD_FAILURE() << "no error for malformed text";
  } catch (const boost::property_tree::json_parser_error& e) {
    EXPECT_EQ(e.line(), 2u);
  }
  std::string manySegments;
  for (int i = 0; i < 5000; ++i) manySegments += "a.";
  struct Case {
    std::string path;
    bool found;
  } cases[] = {{manySegments, false},   {"a[99999999999]", true}, {"a[-2147483648]", true},
               {"a[-99999]", false},    {"a[[[", false},          {"a]]]", false},
               {"\xff\xfe.\xc3", false}};
  for (const auto& c : cases) {
    bool found = !c.found;
    EXPECT_EQ(!service.getObjectsByPath(kDoc, c.path, found).empty(), c.found) << c.path;
    EXPECT_EQ(found, c.found) << c.path;
  }
  EXPECT_EQ(service.getObjectsByPath(R"({"\u00e9": "v"})", "\xc3\xa9"), "v");
  EXPECT_THROW(service.getObjectsByPath(R"({"\ud800": "v"})", "a"), boost::property_tree::json_parser_error);
}

TEST(NativeObjectService, FilesOfEachKind) {
  zr_test::TempDir dir;
  zr_cli::SampleOptions options;
  options.scale = 0.05;
  const auto files = zr_cli::generateSample(dir.path(), options);
  const NativeObjectService service;
  const std::string zdf = dir.file("acme_rp/acme_rp.zdf");
  const std::string whole = service.getAsJsonStr(zdf);
  ASSERT_FALSE(whole.empty());
  const Tree wholeTree = service.getAsPropertyTree(zdf);
  EXPECT_EQ(wholeTree.get<std::string>("name"), "acme_rp");
  // The legacy path reaches partition 0 in a partitioned platform.
  EXPECT_EQ(service.getObjectsByPath(whole, "hardwarePlatform.versionMajor"),
            service.getObjectsByPath(
                whole, "hardwarePlatforms.reconfigurablePartitions[0].hardwarePlatform.versionMajor"));
  EXPECT_FALSE(service.getStringValue(wholeTree, "hardwarePlatform.versionMajor").empty());

  const std::string lfa = dir.file("acme_card/acme_card.lfa");
  const Tree hw = parse(service.getAsJsonStr(lfa));
  EXPECT_FALSE(hw.get<std::string>("versionMajor", "").empty());
  EXPECT_FALSE(hw.count("hardwarePlatforms"));
  const std::string cfa = dir.file("acme_emb/hw/acme_emb.cfa");
  EXPECT_FALSE(parse(service.getAsJsonStr(cfa)).get<std::string>("versionMajor", "").empty());
  const Tree sw = parse(service.getAsJsonStr(dir.file("acme_dc/sw/acme_dc.spfm")));
  EXPECT_TRUE(sw.count("systemConfigurations"));

  teq_platform::PlatformLoader loader(zdf, teq_platform::PlatformLoader::Default);
  bool found = false;
  EXPECT_EQ(service.getObjectsByPath(&loader, "name", found), "acme_rp");
  EXPECT_TRUE(found);

  for (const std::string& other : {std::string(), dir.file("notes.txt"), dir.file("gone.lfa")})
    EXPECT_TRUE(service.getAsPropertyTree(other).empty()) << other;
  EXPECT_EQ(service.getAsJsonStr(dir.file("notes.txt")), "");
}

}  // namespace
