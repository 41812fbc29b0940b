// Key listing, flattening and filtering, the key documentation file.

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <regex>
#include <sstream>
#include <string>

#include "SampleGenerator.h"
#include "host/HUTEnv.h"
#include "platform/NativeDictService.h"
#include "platform/NativeDocService.h"
#include "platform/NativeKeyService.h"
#include "platform/NativeObjectService.h"
#include "support/TestSupport.h"

using namespace teq::platform;
using Tree = boost::property_tree::ptree;

namespace {

Tree parse(const std::string& text) {
  Tree tree;
  std::istringstream in(text);
  boost::property_tree::read_json(in, tree);
  return tree;
}

std::string joined(const std::set<std::string>& keys) {
  std::string out;
  for (const auto& k : keys) out += k + ";";
  return out;
}

std::string joined(const std::map<std::string, std::string>& dict) {
  std::string out;
  for (const auto& e : dict) out += e.first + "=" + e.second + ";";
  return out;
}

TEST(NativeKeyService, ListsKeysAndFlattensDocuments) {
  struct Case {
    const char* doc;
    const char* keys;
    const char* dict;
  } cases[] = {
      {R"({"a": [{"b": "1"}, {"b": "2", "c": "3"}]})", "a;a[];a[].b;a[].c;", "a[0].b=1;a[1].b=2;a[1].c=3;"},
      // Plain values land one place behind: the first under the empty key.
      {R"({"a": ["s1", "s2", "s3"]})", "a;a[];", "=s1;a[0]=s2;a[1]=s3;"},
      {R"({"a": [["x"]]})", "a;a[];a[][];", "=x;"},
      {R"({"e": [], "o": {"p": {"q": "v"}}})", "e;o;o.p;o.p.q;", "e=;o.p.q=v;"},
      {R"({"d": "first", "d": "second"})", "d;", "d=first;"},
      {R"({})", "", ""},
  };
  const NativeKeyService keys;
  const NativeDictService dicts;
  for (const auto& c : cases) {
    const Tree tree = parse(c.doc);
    EXPECT_EQ(joined(keys.get(tree)), c.keys) << c.doc;
    EXPECT_EQ(joined(dicts.getAsDict(tree, "")), c.dict) << c.doc;
  }
  EXPECT_EQ(joined(dicts.getAsDict(parse(R"({"x": "1", "l": ["a", "b"]})"), "p")), "=a;p.l[0]=b;p.x=1;");
}

TEST(NativeDictService, NormalisesKeysAsTheRegularExpressionDoes) {
  const std::regex pattern("\\[.*\\]");
  const std::string keys[] = {"a[0].b[1].c", "files[12].name", "plain", "a[",      "a]b[", "[]",
                              "x[1]\n[2]y",  "x[1\n]y[3]",     "[[]]]", "a[0\r]b", "",     "]["};
  for (const auto& key : keys)
    EXPECT_EQ(NativeDictService::normalizeKey(key), std::regex_replace(key, pattern, "[*]")) << key;
}

TEST(NativeDictService, FiltersSamplePlatforms) {
  zr_test::TempDir dir;
  zr_cli::SampleOptions options;
  options.scale = 0.05;
  zr_cli::generateSample(dir.path(), options);
  const NativeDictService dicts;
  const std::string zdf = dir.file("acme_dc/acme_dc.zdf");
  bool found = false;
  const auto whole = dicts.getAsDict(zdf, "", found);
  EXPECT_TRUE(found);
  EXPECT_EQ(whole.at("name"), "acme_dc");
  const auto branch = dicts.getAsDict(zdf, "hardwarePlatform.files", found);
  ASSERT_TRUE(found);
  ASSERT_FALSE(branch.empty());
  EXPECT_TRUE(branch.count("hardwarePlatform.files[0].name"));
  dicts.getAsDict(zdf, "hardwarePlatform.nothing", found);
  EXPECT_FALSE(found);

  // A lone archive's document has the hardware platform at the top, where
  // the default keys stand.
  const std::string lfa = dir.file("acme_card/acme_card.lfa");
  const auto filtered = dicts.getFilteredDict(lfa, "");
  const auto all = dicts.getAsDict(lfa, "", found);
  ASSERT_TRUE(filtered.count("files[1].name"));
  for (const auto& entry : all)
    EXPECT_EQ(filtered.count(entry.first),
              NativeDictService::defaultIncludeKeys().count(NativeDictService::normalizeKey(entry.first)))
        << entry.first;
  EXPECT_TRUE(dicts.getFilteredDict(zdf, "hardwarePlatform", {}).empty());
  const auto names =
      dicts.getFilteredDict(zdf, "", {"name", "hardwarePlatforms.hardwarePlatform.files[*].type"});
  EXPECT_EQ(names.at("name"), "acme_dc");
  EXPECT_GT(names.size(), 2u);

  // An empty path sets the flag even for a file that is not there.
  found = false;
  EXPECT_TRUE(dicts.getAsDict(dir.file("gone.zdf"), "", found).empty());
  EXPECT_TRUE(found);
}

TEST(NativeDocService, ChecksKeysAndBranches) {
  const NativeDocService docs;
  Tree tree = parse(R"({"a": [{"b": "x"}], "c": "y",
                        "documentation_keys": {"a": {"b": "text of b"}, "c": "text of c"}})");
  struct Case {
    const char* key;
    bool valid;
  } cases[] = {{"all", true},  {"list_keys", true}, {"a[3].b", true}, {"a[].b", true},
               {"a.b", false}, {"c", true},         {"d", false},     {"documentation_keys.c", true}};
  for (const auto& c : cases) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(docs.isValidDocKey(tree, c.key), c.valid) << c.key;
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(err, c.valid ? "" : "Could not find the specified key: <" + std::string(c.key) + ">.\n");
  }
  Tree empty;
  EXPECT_TRUE(docs.isValidDocKey(empty, "all"));
  EXPECT_THROW(docs.isValidDocKey(tree, "a[3.b"), std::out_of_range);

  EXPECT_TRUE(docs.getDocKeyBranch(tree, "a.b").empty());
  EXPECT_EQ(docs.getDocKeyBranch(tree, "documentation_keys.a.b").data(), "text of b");
  EXPECT_EQ(docs.getDocKeyBranch(tree, "documentation_keys.zz.c").data(), "text of c");
  EXPECT_EQ(docs.getDocKeyBranch(tree, "documentation_keys.a.nothing").get<std::string>("b"), "text of b");
  bool found = false;
  EXPECT_EQ(docs.getBranch(tree, "a[0].b", found).data(), "x");
  EXPECT_TRUE(found);
  docs.getBranch(tree, "a..c", found);
  EXPECT_FALSE(found);
}

TEST(NativeDocService, ReadsTheFileUnderTheApplicationRoot) {
  zr_test::TempDir root;
  HUTEnv& env = HUTEnv::instance();
  const auto previous = env.getKELAppRootList();
  env.setAppRoots({root.path()});
  const NativeDocService docs;
  const std::string path = root.path() + "/platforms/platform_keys_doc.json";
  Tree tree = parse(R"({"kept": "1"})");

  testing::internal::CaptureStderr();
  EXPECT_EQ(docs.getFromFile(tree), "");
  EXPECT_EQ(
      testing::internal::GetCapturedStderr(),
      "\nCould not find the <" + path + " >. Check the install area.\n  Can not continue with this task.\n");
  EXPECT_EQ(tree.get<std::string>("kept"), "1");

  root.write("platforms/platform_keys_doc.json", R"({"documentation_keys": {"k": "v"}})");
  EXPECT_EQ(docs.getFromFile(tree), path);
  EXPECT_EQ(tree.get<std::string>("documentation_keys.k"), "v");

  // Something that is not a regular file is not read; the tree stays.
  std::remove(path.c_str());
  root.write("platforms/platform_keys_doc.json/inside", "");
  EXPECT_EQ(docs.getFromFile(tree), path);
  EXPECT_EQ(tree.get<std::string>("documentation_keys.k"), "v");
  env.setAppRoots(previous);
}

// Every key the model writes for the sample platforms is in the shipped
// documentation file, and has a text under documentation_keys (hardware
// platform keys under the legacy root, once, whatever layout they came from).
TEST(NativeDocService, ShippedFileDocumentsEveryModelKey) {
  const Tree doc = parse(zr_test::readFile(std::string(ZR_SOURCE_DIR) + "/data/platform_keys_doc.json"));
  const auto documented = NativeKeyService().get(doc);
  const auto texts = NativeKeyService().get(doc.get_child("documentation_keys"));
  zr_test::TempDir dir;
  zr_cli::SampleOptions options;
  options.scale = 0.05;
  const NativeKeyService keys;
  NativeDocService docs;
  Tree mutableDoc = doc;
  std::size_t checked = 0;
  for (const auto& file : zr_cli::generateSample(dir.path(), options)) {
    for (const auto& key : keys.get(file)) {
      ++checked;
      EXPECT_TRUE(documented.count(key)) << "not mirrored: " << key;
      std::string relative = key;
      for (const std::string root : {"hardwarePlatforms.reconfigurablePartitions[].hardwarePlatform",
                                     "hardwarePlatforms.hardwarePlatform"})
        if (key.compare(0, root.size(), root) == 0 && key.size() > root.size() && key[root.size()] == '.')
          relative = "hardwarePlatform" + key.substr(root.size());
      EXPECT_TRUE(texts.count(relative)) << "no text for: " << relative;
    }
  }
  EXPECT_GT(checked, 200u);
  testing::internal::CaptureStderr();
  EXPECT_TRUE(docs.isValidDocKey(mutableDoc, "hardwarePlatform.memories[2].name"));
  testing::internal::GetCapturedStderr();
}

}  // namespace
