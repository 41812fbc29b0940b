#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/HUTFile.h"
#include "platform/HTEQDevice.h"
#include "platform/HTEQPlatformUtils.h"
#include "platform/HTEQSoftwarePlatformUtils.h"
#include "platform/HTEQSystemConfig.h"
#include "repository/QueryRepo.h"

using namespace zr_test;
using Names = std::vector<std::string>;
using U = HTEQPlatformUtils;

namespace {

class PlatformUtils : public QueryRepo {};

TEST_F(PlatformUtils, KindQuestionsAndPartsFollowTheModelAndInstallDirectory) {
  struct Row {
    std::string name;
    bool duv, wel, unified, fixed, user;
    std::string part, fields;
  } rows[] = {
      // "bare" states no intent; the model computes an embedded one for it.
      {"emb", false, true, false, false, true, "dev2-pkg2-1-i", kPartB},
      {"uni", true, false, true, false, false, "dev1pkg1-2", kPartA},
      {"axi", true, false, true, false, false, "dev2-pkg2-1-i", kPartB},
      {"bare", false, true, true, false, true, "", ""},
      {"nope", false, false, false, true, false, "", ""},  // unknown: fixed, nothing else
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    EXPECT_EQ(r.duv, U::isDUVPlatform(r.name));
    EXPECT_EQ(r.wel, U::isWELPlatform(r.name));
    EXPECT_EQ(r.wel, U::isProcessorGroupRelevant(r.name));
    EXPECT_EQ(r.unified, U::isUnifiedPlatform(r.name));
    EXPECT_EQ(r.fixed, U::isFixedPlatform(r.name));
    EXPECT_EQ(!r.fixed, U::isExpandablePlatform(r.name));
    EXPECT_EQ(r.user, U::isUserPlatform(r.name));
    EXPECT_EQ(r.part, U::getFpgaPart(r.name));
    EXPECT_EQ(r.fields, U::getFpgaPartAsFields(r.name));
    EXPECT_EQ(r.part.empty(), U::getDevice(r.name) == nullptr);
  }
}

TEST_F(PlatformUtils, VbnvLookupTreatsEmptyAsAnyAndLatestKeepsHighestVersion) {
  struct Row {
    std::string vendor, board, name, version;
    bool latest;
    Names expected;
  } rows[] = {
      {"acme", "card", "dc", "", false, {"dc:1.0", "dc:2.0"}},
      {"acme", "card", "dc", "", true, {"dc:2.0"}},
      {"acme", "card", "dc", "1.0", false, {"dc:1.0"}},
      {"", "", "", "", false, {"axi:1.0", "bare:1.0", "dc:1.0", "dc:2.0", "emb:1.0", "uni:1.5"}},
      {"", "", "", "", true, {"axi:1.0", "bare:1.0", "dc:2.0", "emb:1.0", "uni:1.5"}},
      {"beta", "", "", "", false, {"uni:1.5"}},
      {"", "", "nope", "", false, {}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.vendor + ":" + r.board + ":" + r.name + ":" + r.version);
    U::TEQPlatformVec out;
    if (r.latest)
      U::getLatestPlatformsByVBNV(r.vendor, r.board, r.name, r.version, out);
    else
      U::getPlatformsByVBNV(r.vendor, r.board, r.name, r.version, out);
    EXPECT_EQ(r.expected, labels(out));
  }
}

TEST_F(PlatformUtils, PartCategoryAndIntentSelectionsRequireEveryCondition) {
  struct Row {
    std::string category;  // "#N" asks by intent bits N
    std::string part, vendor, board;
    bool latest;
    Names expected;
  } rows[] = {
      {"fennick", "archa", "", "", false, {"dc:1.0", "dc:2.0", "uni:1.5"}},
      {"fennick", "archa", "", "", true, {"dc:2.0", "uni:1.5"}},
      {"fennick", "archa", "beta", "", false, {"uni:1.5"}},
      {"fennick", "archa", "", "card", false, {"dc:1.0", "dc:2.0"}},
      {"fennick", "archb", "", "", false, {"axi:1.0"}},
      {"lorimar", "archb", "", "", false, {"emb:1.0"}},
      {"lorimar", "archa", "", "", false, {}},
      {"other", "archb", "", "", false, {"axi:1.0", "emb:1.0"}},
      {"#9", "archa", "", "", false, {"dc:1.0"}},  // data center and server managed
      {"#8", "archa", "", "", false, {"dc:1.0", "dc:2.0"}},
      {"#2", "archa", "", "", false, {"uni:1.5"}},
      {"#4", "archb", "", "", false, {"emb:1.0"}},
      {"#12", "archb", "", "", false, {}},
      {"#0", "archb", "", "", false, {"axi:1.0", "emb:1.0"}},
      {"#8", "nope", "", "", false, {}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.category + " " + r.part + " " + r.vendor + " " + r.board);
    U::TEQPlatformVec out;
    if (r.category[0] == '#')
      U::getPlatformsByDesignIntent(std::stoul(r.category.substr(1)), r.part, r.vendor, r.board, r.latest,
                                    out);
    else
      U::getPlatformsByCategoryFamilyVendorAndBoard(r.category, r.part, r.vendor, r.board, r.latest, out);
    EXPECT_EQ(r.expected, labels(out));
  }
  Names parts;
  U::getSupportedFpgaParts(parts);
  EXPECT_EQ((Names{"archa", "archb"}), sorted(parts));
}

TEST_F(PlatformUtils, BoardsComeFromTheDescriptorVendorEachOnceWhateverTheCategory) {
  struct Row {
    std::string category, part, vendor;
    Names expected;
  } rows[] = {
      {"", "archa", "acme", {"card", "ucard"}},  // uni's descriptor vendor is acme, its hardware's beta
      {"", "archa", "beta", {}},
      {"lorimar", "archa", "acme", {"card", "ucard"}},
      {"", "archb", "acme", {"aboard", "eboard"}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.category + " " + r.part + " " + r.vendor);
    Names out;
    U::getBoardsByCategoryFamilyAndVendor(r.category, r.part, r.vendor, out);
    EXPECT_EQ(r.expected, sorted(out));
  }
  Names out{"card"};
  U::getBoardsByPartAndVendor("archa", "acme", out);
  EXPECT_EQ((Names{"card", "ucard"}), sorted(out));
}

TEST_F(PlatformUtils, NameAndPathLookups) {
  const std::string dotted = user_ + "/./emb/../emb/emb.zdf";
  struct Row {
    std::string what, key;
    std::string expected;  // platform file, "" for none
  } rows[] = {
      {"unique", "EMB", emb_},
      {"unique", emb_, emb_},
      {"unique", "nope", ""},
      {"base", "emb", emb_},
      {"base", "EMB", ""},
      {"path", dotted, emb_},
      {"path", user_ + "/nope.zdf", ""},
      {"path", "", ""},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.what + " " + r.key);
    HTEQPlatform* p = r.what == "unique" ? U::getPlatformByUniqueName(r.key)
                      : r.what == "base" ? U::getPlatformByZdfFileBaseName(r.key)
                                         : U::getPlatformByFilePath(r.key);
    EXPECT_EQ(r.expected, p ? p->getPlatformFile() : std::string());
  }
  U::TEQPlatformVec both;
  U::getPlatformsByUniqueName("DC", both);
  EXPECT_EQ((Names{"dc:1.0", "dc:2.0"}), labels(both));
}

// An environment that reports the trace variable as set.
class TracingEnv : public HUTEnv {
 public:
  bool isSet(const std::string& name) const override {
    return name == "GET_PLATFORM_BY_PATH_DEBUG_VAR" || HUTEnv::isSet(name);
  }
};

TEST_F(PlatformUtils, PathLookupTracesOneLinePerCandidate) {
  TracingEnv tracing;
  tracing.setAppRoots({root_ + "/app"});
  ScopedInstance<HUTEnv> installed(&tracing);
  testing::internal::CaptureStdout();
  EXPECT_EQ(nullptr, U::getPlatformByFilePath(user_ + "/nope.zdf"));
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_EQ(1u, countOf(out, "sZdfFileCanonical is: " + user_ + "/nope.zdf\n"));
  EXPECT_EQ(6u, countOf(out, "sPlatFileCanonical is: "));
  EXPECT_EQ(6u, countOf(out, "Does not match\n"));
  testing::internal::CaptureStdout();
  EXPECT_NE(nullptr, U::getPlatformByFilePath(emb_));
  EXPECT_EQ(1u, countOf(testing::internal::GetCapturedStdout(), "Found a match\n"));
}

TEST_F(PlatformUtils, InstallAndUserDirectories) {
  Names roots;
  U::getRootInstallPlatformDirs(roots);
  EXPECT_EQ((Names{factory_, "/opt/torvane/platforms"}), roots);
  struct Row {
    std::string dir;
    bool install;
  } rows[] = {
      {factory_, true}, {factory_ + "/uni", true}, {factory_ + "x/uni", false}, {user_ + "/emb", false}};
  for (const Row& r : rows) EXPECT_EQ(r.install, U::isInstallPlatformDir(r.dir)) << r.dir;

  Names factory, user, unified;
  U::getAllFactoryPlatformDirs(factory);
  U::getAllUserPlatformDirs(user);
  U::getUnifiedPlatformDirs(unified);
  EXPECT_EQ((Names{factory_ + "/axi", factory_ + "/uni"}), sorted(factory));
  EXPECT_EQ((Names{user_ + "/bare", user_ + "/emb", user_ + "/new/dc", user_ + "/old/dc"}), sorted(user));
  EXPECT_EQ(sorted(factory), sorted(unified));

  // Replacing the user platforms by an empty directory keeps the factory ones.
  TempDir empty;
  EXPECT_EQ(0u, U::setUserPlatformDirs({empty.path()}).rfind("No Platforms Found.\n\n", 0));
  EXPECT_EQ(2u, mgr()->getNumPlatforms());
  EXPECT_EQ("", U::setUserPlatformDirs({user_ + "/old"}));
  EXPECT_EQ(3u, mgr()->getNumPlatforms());
  writeFile(user_ + "/broken/broken.zdf", "<not a descriptor");
  const std::string text = U::setUserPlatformDirs({user_});
  EXPECT_EQ(6u, mgr()->getNumPlatforms());
  EXPECT_NE(std::string::npos, text.find("broken.zdf")) << text;
  EXPECT_EQ(std::string::npos, text.find("No Platforms Found")) << text;
  EXPECT_EQ((Names{user_, root_}), U::splitToFullDirs(user_ + "/.::" + user_ + "/.."));
}

TEST_F(PlatformUtils, VocabularyAndRuntimes) {
  EXPECT_EQ("Fennick", U::getPrettyNameForProductType("fennick"));
  EXPECT_EQ("Lorimar", U::getPrettyNameForProductType("lorimar"));
  EXPECT_EQ("Teq", U::getPrettyNameForProductType("Fennick"));
  const std::pair<std::string, std::string> libs[] = {{"c-callable", "C-Callable Library"},
                                                      {"shared", "Shared Library"},
                                                      {"static", "Static Library"},
                                                      {"Static", ""}};
  for (const auto& l : libs) EXPECT_EQ(l.second, U::getPrettyNameForLibType(l.first)) << l.first;
  Names types{"x"};
  U::getAllLibraryTypes(types);
  EXPECT_EQ((Names{"x", "c-callable", "shared", "static"}), types);

  struct Row {
    std::string name, config;
    Names runtimes, pretty;
  } rows[] = {
      {"uni", "", {"cpp"}, {"C/C++"}},           // from the software platform
      {"uni", "Linux", {"cpp"}, {"C/C++"}},      // configuration by display name
      {dcNew_, "", {"ocl"}, {"OpenCL"}},         // no runtimes in software: data center
      {"emb", "linux_cfg", {"cpp"}, {"C/C++"}},  // embedded
      {"bare", "", {"cpp"}, {"C/C++"}},          // computed embedded intent
      {"uni", "nope", {"cpp"}, {"C/C++"}},       // unknown configuration: all of the software's
      {"nope", "", {}, {}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name + " " + r.config);
    Names runtimes, pretty;
    U::getRuntimes(r.name, r.config, runtimes);
    U::getRuntimesByPrettyName(r.name, r.config, pretty);
    EXPECT_EQ(r.runtimes, runtimes);
    EXPECT_EQ(r.pretty, pretty);
    EXPECT_EQ(r.pretty.size(), U::getNumRuntimes(r.name, r.config));
    EXPECT_EQ(!r.pretty.empty(), U::supportsMultipleRuntimes(r.name));
  }
}

TEST_F(PlatformUtils, LatestFilterKeepsPlatformsWithoutHardware) {
  U::TEQPlatformVec all;
  mgr()->getPlatforms(all);
  HTEQPlatform noHardware;
  all.push_back(&noHardware);
  EXPECT_TRUE(U::isLatestVersion(&noHardware, all));
  U::filterOutOldPlatforms(all);
  EXPECT_EQ(6u, all.size());
  EXPECT_EQ(&noHardware, all.back());
  EXPECT_FALSE(U::isLatestVersion(U::getPlatform(dcOld_)));
  EXPECT_TRUE(U::isLatestVersion(U::getPlatform(dcNew_)));
}

TEST_F(PlatformUtils, SoftwareLookupsByUniqueName) {
  using S = HTEQSoftwarePlatformUtils;
  ASSERT_NE(nullptr, S::getSystemConfigurationByUniqueName("emb", "linux_cfg"));
  EXPECT_EQ("Linux", S::getSystemConfigurationByUniqueName(emb_, "linux_cfg")->getPrettyName());
  EXPECT_EQ(nullptr, S::getSystemConfigurationByUniqueName("emb", "Linux"));  // name only
  EXPECT_EQ(nullptr, S::getSystemConfigurationByUniqueName("nope", "linux_cfg"));
  EXPECT_EQ("/inc/emb", S::getIncludePaths("emb", "linux_cfg", "apu", "linux"));
  EXPECT_EQ("", S::getIncludePaths("emb", "linux_cfg", "apu", "Linux"));
  EXPECT_EQ("", S::getIncludePaths("uni", "linux_cfg", "apu", "linux"));
  EXPECT_EQ("", S::getLibraryPaths("nope", "linux_cfg", "apu", "linux"));
}

}  // namespace
