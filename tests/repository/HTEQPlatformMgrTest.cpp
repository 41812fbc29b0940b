#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HBOBoardCDataManager.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHardwarePlatformMgr.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformMgr.h"
#include "support/RepoBuilder.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"

using namespace zr_test;

namespace {

// The parsing error texts of a manager, joined.
std::string errorText(const HTEQPlatformMgr& mgr) {
  HTEQPlatformMgr::StringVector texts;
  mgr.getParsingErrorMsgs(texts);
  std::string all;
  for (const auto& t : texts) all += t;
  return all;
}

std::vector<std::string> baseNames(const HTEQPlatformMgr& mgr) {
  std::vector<std::string> names;
  for (HTEQPlatform* p : drain(mgr.createPlatformIter())) names.push_back(p->getPlatformBaseName());
  std::sort(names.begin(), names.end());
  return names;
}

// A repository of two good platforms, a loose archive, two loose archives of
// one VBNV and an archive that belongs to a descriptor's layout.
class PlatformScan : public ::testing::Test {
 protected:
  PlatformScan() {
    repo_ = HUTFile::getCanonicalName(dir_.path());
    zdf1_ = writeRepoPlatform(repo_, namedPlatform("p1"));
    RepoPlatform p2 = namedPlatform("p2");
    p2.designIntent = "embedded";
    p2.unified = true;
    writeRepoPlatform(repo_, p2);
    writeHardwareArchive(repo_ + "/loose.lfa", namedPlatform("loose"));
    writeHardwareArchive(repo_ + "/twins/a/twin.cfa", namedPlatform("twin"));
    writeHardwareArchive(repo_ + "/twins/b/twin.lfa", namedPlatform("twin"));
    mgr_.addPlatformsFromDirs({repo_});
  }

  TempDir dir_;
  std::string repo_, zdf1_;
  ComMsgCapture messages_;
  HTEQPlatformMgr mgr_;
};

TEST_F(PlatformScan, RegistersDescriptorsAndLooseArchivesOnceWithOneArchivePerVbnv) {
  EXPECT_EQ((std::vector<std::string>{"p1", "p2"}), baseNames(mgr_));
  HTEQPlatformMgr::TEQPlatformVec cfa;
  mgr_.getCFAPlatforms(cfa);
  ASSERT_EQ(2u, cfa.size());  // loose, and one twin; the descriptors' own archives are no platforms
  const ComMsg* dup = messages_.find("@74-17@%s%s%s");
  ASSERT_NE(nullptr, dup);
  EXPECT_EQ("acme:card:twin:1.0", dup->args[0]);
  EXPECT_TRUE(mgr_.getPlatform(dup->args[1]) == nullptr);  // teq list active
  mgr_.setProjectType(HTEQPlatformMgr::PLATFORM_PROJECT);
  EXPECT_NE(nullptr, mgr_.getPlatform(dup->args[1]));
  EXPECT_EQ(nullptr, mgr_.getPlatform(dup->args[2]));
  mgr_.setProjectType(HTEQPlatformMgr::TEQ_PROJECT);

  mgr_.addPlatformsFromDirs({repo_});  // a second scan adds nothing
  EXPECT_EQ(2u, mgr_.getNumPlatforms());
  mgr_.getCFAPlatforms(cfa);
  EXPECT_EQ(2u, cfa.size());
  HTEQPlatformMgr::TEQPlatformVec unified;
  mgr_.getUnifiedPlatforms(unified);
  ASSERT_EQ(1u, unified.size());
  EXPECT_EQ("p2", unified[0]->getPlatformBaseName());
  EXPECT_EQ("", errorText(mgr_));
}

TEST_F(PlatformScan, NameFilterAndRemovalWorkOnDirectories) {
  HTEQPlatformMgr other;
  other.addPlatformsFromDirs("P2", {repo_});
  EXPECT_EQ(std::vector<std::string>{"p2"}, baseNames(other));

  mgr_.removePlatformsFromDirs({repo_ + "/p1", repo_});
  EXPECT_EQ(std::vector<std::string>{"p2"}, baseNames(mgr_));
  HTEQPlatformMgr::TEQPlatformVec cfa;
  mgr_.getCFAPlatforms(cfa);
  EXPECT_EQ(1u, cfa.size());  // the loose archive at the top went, the twin stays
  mgr_.clearAllPlatforms();
  EXPECT_EQ(0u, mgr_.getNumPlatforms());
}

TEST_F(PlatformScan, LookupsFollowTheActiveList) {
  const struct {
    std::string name;
    bool found;
  } cases[] = {
      {zdf1_, true},                        // unique name
      {"P1", true},                         // base name in another case
      {repo_ + "/p2/../p1//p1.zdf", true},  // another spelling of the path
      {"p3", false},
      {"", false},
  };
  for (const auto& c : cases) {
    HTEQPlatform* p = mgr_.getPlatform(c.name);
    EXPECT_EQ(c.found, p != nullptr) << c.name;
    if (p) {
      EXPECT_EQ(zdf1_, p->getPlatformFile());
    }
  }
  const struct {
    HTEQPlatformMgr::TEQProjectType type;
    std::string text;
    bool p1Found;
    bool looseFound;
  } types[] = {
      {HTEQPlatformMgr::PLATFORM_PROJECT, "platform", false, true},
      {static_cast<HTEQPlatformMgr::TEQProjectType>(7), "", false, true},  // the list stays
      {HTEQPlatformMgr::TEQ_PROJECT, "teq", true, false},
  };
  for (const auto& t : types) {
    mgr_.setProjectType(t.type);
    EXPECT_EQ(t.type, mgr_.getProjectTypeAsEnumVal());
    EXPECT_EQ(t.text, mgr_.getProjectTypeAsStr());
    EXPECT_EQ(t.p1Found, mgr_.getPlatform("p1") != nullptr) << t.text;
    EXPECT_EQ(t.looseFound, mgr_.getPlatform(repo_ + "/loose.lfa") != nullptr) << t.text;
  }
}

// Each bad platform is left out with its message and one text for the user,
// and the scan goes on to the good one beside it.
TEST(PlatformMgrErrors, EachBadPlatformBecomesAnErrorText) {
  const auto hwSw = [](const std::string& hw, const std::string& sw) {
    return [=](const std::string& d) { writeFile(d + "/x/x.zdf", repoZdfText(hw, sw)); };
  };
  const auto withSw = [](const std::string& d) { writeFile(d + "/x/sw/x.spfm", spfmText()); };
  const auto withHw = [](const std::string& d) {
    writeHardwareArchive(d + "/x/hw/x.lfa", namedPlatform("x"));
  };
  const struct {
    const char* what;
    std::function<void(const std::string&)> make;
    std::string id;
    std::string text;
  } cases[] = {
      {"missing hardware", [&](const std::string& d) { hwSw("x.lfa", "x.spfm")(d), withSw(d); },
       "@74-14@%s%s", "/x/hw/x.lfa for platform "},
      {"wrong extension",
       [&](const std::string& d) {
         hwSw("x.zip", "x.spfm")(d), withSw(d), writeFile(d + "/x/hw/x.zip", "z");
       },
       "@74-55@%s%s%s", "Supported extensions are .cfa .lfa. Unable to load platform.\n"},
      {"broken hardware",
       [&](const std::string& d) {
         hwSw("x.lfa", "x.spfm")(d), withSw(d), writeFile(d + "/x/hw/x.lfa", "nozip");
       },
       "", "Failed to read hardware platform file "},
      {"hardware is a directory",
       [&](const std::string& d) {
         hwSw("x.lfa", "x.spfm")(d), withSw(d), HUTFile::mkDirRecursive(d + "/x/hw/x.lfa");
       },
       "", "Failed to read hardware platform file "},
      {"missing software", [&](const std::string& d) { hwSw("x.lfa", "x.spfm")(d), withHw(d); }, "",
       "/x/sw/x.spfm for platform "},
      {"broken software",
       [&](const std::string& d) {
         hwSw("x.lfa", "x.spfm")(d), withHw(d), writeFile(d + "/x/sw/x.spfm", "<bad");
       },
       "@74-4@%s", "Encountered Errors while parsing software platform for: "},
      {"broken descriptor", [&](const std::string& d) { writeFile(d + "/x/x.zdf", "<teq:platform"); },
       "@74-3@%s", "Encountered Errors while parsing platform: "},
  };
  for (const auto& c : cases) {
    TempDir dir;
    const std::string repo = HUTFile::getCanonicalName(dir.path());
    c.make(repo);
    writeRepoPlatform(repo, namedPlatform("good"));
    ComMsgCapture messages;
    HTEQPlatformMgr mgr;
    mgr.addPlatformsFromDirs({repo});
    EXPECT_EQ(std::vector<std::string>{"good"}, baseNames(mgr)) << c.what;
    EXPECT_NE(std::string::npos, errorText(mgr).find(c.text)) << c.what << ": " << errorText(mgr);
    if (!c.id.empty()) {
      EXPECT_TRUE(messages.has(c.id)) << c.what;
    }
    mgr.clearParsingErrorMsgs();
    EXPECT_EQ("", errorText(mgr));
  }
}

TEST(PlatformMgrErrors, NonRegularDescriptorsAndFileRepositoriesEndNothing) {
  TempDir dir;
  const std::string repo = HUTFile::getCanonicalName(dir.path());
  HUTFile::mkDirRecursive(repo + "/f");
  GuardedFifo fifo(repo + "/f/f.zdf");
  ::symlink((repo + "/gone").c_str(), (repo + "/b.zdf").c_str());
  for (int i = 0; i < 3; ++i) ::symlink(repo.c_str(), (repo + "/loop" + std::to_string(i)).c_str());
  const std::string file = dir.write("plain.txt", "x");
  ComMsgCapture messages;
  HTEQPlatformMgr mgr;
  mgr.addPlatformsFromDirs({repo, file, repo + "/missing"});
  EXPECT_EQ(0u, mgr.getNumPlatforms());
  EXPECT_EQ("", errorText(mgr));
  const ComMsg* walk = messages.find("@74-5@%s");
  ASSERT_NE(nullptr, walk);
  EXPECT_EQ(file, walk->args[0]);
}

TEST(HardwarePlatformMgr, NewScanReplacesSameNameInOutAndReportsDuplicatesUnderFlag) {
  TempDir dir;
  writeHardwareArchive(dir.file("one/hw.lfa"), namedPlatform("hw"));
  writeHardwareArchive(dir.file("two/hw.lfa"), namedPlatform("hw"));
  auto* old = new HPLPlatform();
  old->setVendor("acme");
  old->setBoardId("card");
  old->setName("hw");
  old->setVersionMajor(1);
  auto* other = new HPLPlatform();
  HTEQHardwarePlatformMgr::TEQHardwarePlatformVec out{old, other};
  ComMsgCapture messages;
  HTEQPlatformMgr mgr;
  mgr.getHardwarePlatformsFromDirs({dir.path()}, out, true);
  ASSERT_EQ(2u, out.size());
  EXPECT_EQ(other, out[0]);
  EXPECT_EQ("acme:card:hw:1.0", out[1]->getUniqueName());
  EXPECT_TRUE(messages.has("@74-23@%s"));
  EXPECT_FALSE(messages.has("@74-17@%s%s%s"));
  for (auto* hw : out) delete hw;
}

// Records the paths handed to the board store.
std::vector<std::string> gBoardPaths;
class FakeBoardStore : public HBOBoardCDataManager {
 public:
  void setBoardPartRepoPaths(const std::vector<std::string>& paths) override { gBoardPaths = paths; }
  std::vector<std::string> getBoardPartRepoPaths() const override { return gBoardPaths; }
  HBOBoard* getBoard(const std::string&) override { return nullptr; }
};

TEST(PlatformMgrGlobal, BoardPathsReachTheInstalledStoreAndNoInitDoesNotScan) {
  {
    ScopedBoardStoreFactory factory(
        []() -> std::unique_ptr<HBOBoardCDataManager> { return std::make_unique<FakeBoardStore>(); });
    HTEQPlatformMgr mgr;
    mgr.setBoardRepoPaths({"/boards/a", "/boards/b"});
    HTEQPlatformMgr::StringVector paths;
    mgr.getBoardRepoPaths(paths);
    EXPECT_EQ(paths, gBoardPaths);
    EXPECT_EQ(2u, gBoardPaths.size());
  }

  TempDir app;
  writeRepoPlatform(app.file("platforms"), namedPlatform("app"));
  HUTEnv env;
  env.setAppRoots({app.path()});
  ScopedInstance<HUTEnv> installed(&env);
  HTEQPlatformMgr::StringVector defaults;
  HTEQPlatformMgr::getGlobalNoInit()->getDefaultTeqPlatformDirs(defaults);
  HTEQPlatformMgr::StringVector expected{app.file("platforms")};
  if (HUTFile::exists("/opt/torvane/platforms")) expected.push_back("/opt/torvane/platforms");
  EXPECT_EQ(expected, defaults);
  HTEQPlatformMgr* global = HTEQPlatformMgr::getGlobalNoInit();
  EXPECT_EQ(global, HTEQPlatformMgr::getGlobal());
  EXPECT_EQ(0u, global->getNumPlatforms());  // no scan, then or later
  global->addPlatformsFromDirs(defaults);
  EXPECT_EQ(std::vector<std::string>{"app"}, baseNames(*global));
  global->clearAllPlatforms();
}

}  // namespace
