#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/HTEQBootImg.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSoftwarePlatformUtils.h"
#include "platform/HTEQSystemConfig.h"
#include "support/TestSupport.h"

using Names = std::vector<std::string>;

namespace {

HTEQSystemConfig* addConfig(HTEQSoftwarePlatform& sw, const std::string& name, const std::string& pretty,
                            const Names& runtimes = {}) {
  HTEQSystemConfig* c = sw.addSystemConfig();
  c->setName(name);
  c->setPrettyName(pretty);
  for (const auto& r : runtimes) c->addRuntime(r);
  return c;
}

HTEQProcessorGroup* addGroup(HTEQSystemConfig* c, const std::string& name, const std::string& os) {
  HTEQProcessorGroup* g = c->addProcessorGroup();
  g->setName(name);
  g->setOSName(os);
  return g;
}

HTEQBootImg* addImage(HTEQSystemConfig* c, const std::string& name) {
  HTEQBootImg* b = c->addBootImg();
  b->setName(name);
  return b;
}

}  // namespace

TEST(HTEQSoftwarePlatform, DefaultConfigurationFollowsTheStoredNameElseTheFirst) {
  HTEQSoftwarePlatform sw;
  EXPECT_EQ(sw.getDefaultSystemConfig(), nullptr);
  EXPECT_EQ(sw.getSystemConfig(), nullptr);
  EXPECT_EQ(sw.getDefaultConfigName(), "");

  HTEQSystemConfig* first = addConfig(sw, "a", "A config");
  HTEQSystemConfig* second = addConfig(sw, "b", "B config");
  EXPECT_EQ(sw.getSystemConfig(), first);
  EXPECT_EQ(sw.getDefaultSystemConfig(), first);
  EXPECT_EQ(sw.getDefaultConfigName(), "a");
  // Without a stored name the JSON names the first configuration.
  sw.setLinuxRootFileSystemPath("/rootfs");
  EXPECT_EQ(zr_test::jsonText(sw).rfind(
                "{\n    \"linuxRootFileSystemPath\": \"\\/rootfs\",\n    \"defaultConfig\": \"a\",\n", 0),
            0u);

  // The stored name may be a pretty name; the answer is the stored text.
  sw.setDefaultConfigName("B config");
  EXPECT_EQ(sw.getDefaultSystemConfig(), second);
  EXPECT_EQ(sw.getDefaultConfigName(), "B config");

  // A name that matches nothing is no error: the first configuration serves.
  sw.setDefaultConfigName("nowhere");
  EXPECT_EQ(sw.getDefaultSystemConfig(), first);
  EXPECT_EQ(sw.getDefaultConfigName(), "nowhere");
}

TEST(HTEQSoftwarePlatform, LookupByNameMatchesNameOrPrettyNameAndTheLastWins) {
  HTEQSoftwarePlatform sw;
  HTEQSystemConfig* a = addConfig(sw, "dup", "First");
  HTEQSystemConfig* b = addConfig(sw, "dup", "Second");
  HTEQSystemConfig* c = addConfig(sw, "other", "dup2");
  EXPECT_EQ(sw.getSystemConfigByName("dup"), b);
  EXPECT_EQ(sw.getSystemConfigByName("First"), a);
  EXPECT_EQ(sw.getSystemConfigByName("dup2"), c);
  EXPECT_EQ(sw.getSystemConfigByName("DUP"), nullptr);
  EXPECT_EQ(sw.getSystemConfigByName(""), nullptr);
  // The member lookup "by pretty name" accepts a plain name too.
  EXPECT_EQ(sw.getSystemConfigByPrettyName("other"), c);
  EXPECT_EQ(sw.getSystemConfigByPrettyName("Second"), b);

  // A name of one configuration equal to the pretty name of a later one: the later wins.
  HTEQSoftwarePlatform mixed;
  addConfig(mixed, "x", "X");
  HTEQSystemConfig* later = addConfig(mixed, "y", "x");
  EXPECT_EQ(mixed.getSystemConfigByName("x"), later);

  HTEQSoftwarePlatform::TEQSystemConfigVec all{nullptr};
  sw.getSystemConfigs(all);
  EXPECT_EQ(all, (HTEQSoftwarePlatform::TEQSystemConfigVec{nullptr, a, b, c}));
}

TEST(HTEQSoftwarePlatformUtils, PrettyNameLookupComparesPrettyNamesOnly) {
  HTEQSoftwarePlatform sw;
  HTEQSystemConfig* a = addConfig(sw, "a", "Same");
  HTEQSystemConfig* b = addConfig(sw, "b", "Same");
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigByPrettyName(&sw, "Same"), b);
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigByPrettyName(&sw, "a"), nullptr);
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigByPrettyName(&sw, "same"), nullptr);
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigByPrettyName(nullptr, "Same"), nullptr);

  a->setSupportsQemu(true);
  EXPECT_FALSE(HTEQSoftwarePlatformUtils::isQemuSupported(&sw, "Same"));  // the later one decides
  b->setSupportsQemu(true);
  EXPECT_TRUE(HTEQSoftwarePlatformUtils::isQemuSupported(&sw, "Same"));
  EXPECT_FALSE(HTEQSoftwarePlatformUtils::isQemuSupported(&sw, "b"));
  EXPECT_FALSE(HTEQSoftwarePlatformUtils::isQemuSupported(nullptr, "Same"));
}

TEST(HTEQSystemConfig, DefaultGroupAndImageNamesFallBackToTheFirstAndAreNotChecked) {
  HTEQSoftwarePlatform sw;
  HTEQSystemConfig* c = addConfig(sw, "c", "C");
  EXPECT_EQ(c->getDefaultProcGrpName(), "");
  EXPECT_EQ(c->getDefaultBootImgName(), "");

  addGroup(c, "g1", "linux");
  addGroup(c, "g2", "standalone");
  addImage(c, "i1");
  addImage(c, "i2");
  EXPECT_EQ(c->getDefaultProcGrpName(), "g1");
  EXPECT_EQ(c->getDefaultBootImgName(), "i1");

  c->setDefaultProcGrpName("ghost");
  c->setDefaultBootImgName("i2");
  EXPECT_EQ(c->getDefaultProcGrpName(), "ghost");
  EXPECT_EQ(c->getProcGrpByName("ghost"), nullptr);
  EXPECT_EQ(c->getDefaultBootImgName(), "i2");
}

TEST(HTEQSystemConfig, GroupAndImageLookupsAreExactAndTheLastWins) {
  HTEQSoftwarePlatform sw;
  HTEQSystemConfig* c = addConfig(sw, "c", "C");
  addGroup(c, "cpu", "linux");
  HTEQProcessorGroup* later = addGroup(c, "cpu", "standalone");
  HTEQProcessorGroup* other = addGroup(c, "Other", "linux");
  EXPECT_EQ(c->getProcGrpByName("cpu"), later);
  EXPECT_EQ(c->getProcGrpByName("Other"), other);
  EXPECT_EQ(c->getProcGrpByName("other"), nullptr);
  EXPECT_EQ(c->getProcGrpByName("CPU"), nullptr);

  addImage(c, "img");
  HTEQBootImg* laterImg = addImage(c, "img");
  EXPECT_EQ(c->getBootImgByName("img"), laterImg);
  EXPECT_EQ(c->getBootImgByName("IMG"), nullptr);

  // Names recorded by name only make no group.
  c->addProcessorGroup(std::string("named"));
  Names names;
  c->getProcessorGroups(names);
  EXPECT_EQ(names, Names{"named"});
  HTEQSystemConfig::TEQProcessorGroupVec groups;
  c->getProcessorGroups(groups);
  EXPECT_EQ(groups.size(), 3u);
}

TEST(HTEQSoftwarePlatform, RuntimesKeepFileOrderAndMapToPrettyNames) {
  HTEQSoftwarePlatform sw;
  for (const char* known : {"OCL", "opencl", "Cpp", "c/c++"}) EXPECT_TRUE(sw.isRuntimeSupported(known));
  for (const char* unknown : {"ocl ", "python", ""}) EXPECT_FALSE(sw.isRuntimeSupported(unknown));

  HTEQSystemConfig* a = addConfig(sw, "a", "A", {"OCL", "cpp", "ocl", "rust"});
  addConfig(sw, "b", "B", {"cpp", "java", "OCL"});
  Names runtimes;
  a->getRuntimes(runtimes);
  EXPECT_EQ(runtimes, (Names{"OCL", "cpp", "ocl", "rust"}));
  Names pretty;
  a->getRuntimesByPrettyName(pretty);
  EXPECT_EQ(pretty, (Names{"OpenCL", "C/C++", "OpenCL", "rust"}));

  // First-seen order without duplicates, exact comparison, and what the
  // vector held before counts as seen.
  Names supported{"java"};
  sw.getSupportedRuntimes(supported);
  EXPECT_EQ(supported, (Names{"java", "OCL", "cpp", "ocl", "rust"}));
  Names supportedPretty;
  sw.getSupportedRuntimesByPrettyName(supportedPretty);
  EXPECT_EQ(supportedPretty, (Names{"OpenCL", "C/C++", "rust", "java"}));
  EXPECT_EQ(sw.getNumRuntimes(), 5);
}

TEST(HTEQSoftwarePlatform, ConfigurationIsSupportedWithoutRuntimesOrWithOneKnownRuntime) {
  HTEQSoftwarePlatform sw;
  addConfig(sw, "none", "None");
  addConfig(sw, "bad", "Bad", {"java", "python"});
  addConfig(sw, "mixed", "Mixed", {"java", "OCL"});
  EXPECT_TRUE(sw.isSystemConfigSupported("none"));
  EXPECT_FALSE(sw.isSystemConfigSupported("bad"));
  EXPECT_TRUE(sw.isSystemConfigSupported("mixed"));
  EXPECT_TRUE(sw.isSystemConfigSupported("Mixed"));
  EXPECT_FALSE(sw.isSystemConfigSupported("missing"));
}

TEST(HTEQSoftwarePlatform, ConfigurationNamesByLibraryType) {
  HTEQSoftwarePlatform sw;
  HTEQSystemConfig* lin = addConfig(sw, "lin", "Lin");
  addGroup(lin, "g1", "Linux");
  addGroup(lin, "g2", "linux");
  HTEQSystemConfig* bare = addConfig(sw, "bare", "Bare");
  addGroup(bare, "g1", "freertos");
  addGroup(bare, "g2", "STANDALONE");
  addConfig(sw, "empty", "Empty");

  const std::vector<std::pair<const char*, Names>> rows = {{"Static", {"lin", "bare", "empty"}},
                                                           {"SHARED", {"lin"}},
                                                           {"c-callable", {"lin", "bare"}},
                                                           {"dynamic", {}}};
  for (const auto& row : rows) {
    Names names;
    EXPECT_EQ(sw.getSystemConfigNames(names, row.first), static_cast<int>(row.second.size())) << row.first;
    EXPECT_EQ(names, row.second) << row.first;
  }
  // What the vector held before is kept and counted.
  Names names{"kept"};
  EXPECT_EQ(sw.getSystemConfigNames(names, "shared"), 2);
  EXPECT_EQ(names, (Names{"kept", "lin"}));
}

TEST(HTEQSoftwarePlatformUtils, ConfigurationAcrossPlatformsAndItsPaths) {
  HTEQSoftwarePlatform one;
  HTEQSoftwarePlatform two;
  HTEQSystemConfig* early = addConfig(one, "cfg", "Shared pretty");
  HTEQProcessorGroup* g = addGroup(early, "a53", "linux");
  g->setIncludePaths("/early/inc");
  HTEQSystemConfig* late = addConfig(two, "cfg", "Late");
  g = addGroup(late, "a53", "linux");
  g->setIncludePaths("/usr/include:/opt/inc");
  g->setLibraryPaths("/usr/lib");
  addConfig(two, "other", "cfg2");
  const std::vector<HTEQSoftwarePlatform*> candidates{&one, nullptr, &two};

  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigurationIn(candidates, "cfg"), late);
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigurationIn({&one}, "cfg"), early);
  // The name only: a pretty name does not match here.
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigurationIn(candidates, "Late"), nullptr);
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getSystemConfigurationIn({}, "cfg"), nullptr);

  EXPECT_EQ(HTEQSoftwarePlatformUtils::getIncludePaths(candidates, "cfg", "a53", "linux"),
            "/usr/include:/opt/inc");
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getLibraryPaths(candidates, "cfg", "a53", "linux"), "/usr/lib");
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getIncludePaths(candidates, "cfg", "a53", "Linux"), "");
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getLibraryPaths(candidates, "cfg", "a53", "LINUX"), "");
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getIncludePaths(candidates, "cfg", "r5", "linux"), "");
  EXPECT_EQ(HTEQSoftwarePlatformUtils::getIncludePaths(candidates, "nope", "a53", "linux"), "");
}
