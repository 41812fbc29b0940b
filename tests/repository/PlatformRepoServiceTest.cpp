#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/NativePlatformRepoService.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"

using namespace zr_test;
using teq::platform::NativePlatformRepoService;

namespace {

const std::string kSystemRepo = "/opt/torvane/platforms";

// The system-wide repository, when this machine has one.
std::vector<std::string> systemRepo() {
  if (!HUTFile::exists(kSystemRepo)) return {};
  return {HUTFile::getCanonicalName(kSystemRepo)};
}

std::vector<std::string> stems(const std::vector<std::string>& files) {
  std::vector<std::string> out;
  for (const auto& f : files) out.push_back(HUTPathUtils::getFileName(f));
  std::sort(out.begin(), out.end());
  return out;
}

// A repository with descriptors at each depth, in each letter case, behind
// links, and things named like descriptors that are not regular files.
class RepoSearch : public ::testing::Test {
 protected:
  RepoSearch() {
    env_.setAppRoots({app_.path()});
    for (const char* f : {"top.zdf", "d1/one.zdf", "d1/d2/two.zdf", "d1/d2/d3/three.zdf", "up/UP.ZDF",
                          "m/MiXeD.zdf", "d1/notes.txt"})
      repo_.write(f, "x");
    outside_.write("linked.zdf", "x");
    app_.write("platforms/p/app.zdf", "x");
    ::mkdir(repo_.file("dir.zdf").c_str(), 0755);
    ::mkfifo(repo_.file("fifo.zdf").c_str(), 0644);
    EXPECT_EQ(0, ::symlink(outside_.path().c_str(), repo_.file("ln").c_str()));
    EXPECT_EQ(0, ::symlink(repo_.file("gone").c_str(), repo_.file("broken.zdf").c_str()));
    EXPECT_EQ(0, ::symlink(repo_.file("d1").c_str(), repo_.file("d1/back").c_str()));  // a loop
  }
  std::vector<std::string> find(const std::string& name, std::vector<std::string> dirs, bool defaults) {
    std::vector<std::string> files;
    service_.getZdfFiles(name, dirs, defaults, files);
    return files;
  }

  TempDir repo_, outside_, app_;
  HUTEnv env_;
  ScopedInstance<HUTEnv> installed_{&env_};
  NativePlatformRepoService service_;
};

TEST_F(RepoSearch, DefaultsPutTheSystemRepositoryFirstAndDropMissingRoots) {
  TempDir bare;
  env_.setAppRoots({bare.path(), app_.path()});
  std::vector<std::string> dirs{"given"};
  service_.getDefaultPlatformLookupDirs(dirs);
  std::vector<std::string> expected{"given"};
  for (const auto& d : systemRepo()) expected.push_back(d);
  expected.push_back(HUTFile::getCanonicalName(app_.file("platforms")));
  EXPECT_EQ(expected, dirs);
}

TEST_F(RepoSearch, SearchPathListsEachDirectoryOnceInOrder) {
  const std::string a = HUTFile::getCanonicalName(repo_.path());
  const std::string b = HUTFile::getCanonicalName(outside_.path());
  const std::string appRepo = HUTFile::getCanonicalName(app_.file("platforms"));
  std::string system;
  for (const auto& d : systemRepo()) system += ":" + d;
  const struct {
    std::vector<std::string> dirs;
    bool withDefaults;
    std::string expected;
  } cases[] = {
      {{}, false, ""},
      // Another spelling of a directory, a link to it, a file and a missing
      // directory add nothing.
      {{b, repo_.file("ln"), a + "/d1/..", repo_.file("top.zdf"), "/no/such/dir"}, false, b + ":" + a},
      // The given directories come first; a default already given keeps its place.
      {{app_.file("platforms"), a}, true, appRepo + ":" + a + system},
      {{}, true, (system + ":" + appRepo).substr(1)},
  };
  for (const auto& c : cases) EXPECT_EQ(c.expected, service_.getPlatformRepoPath(c.dirs, c.withDefaults));
}

TEST_F(RepoSearch, WalkFindsRegularDescriptorsTwoLevelsDownByExactExtensionAndAnyCaseStem) {
  const struct {
    std::string name;
    std::vector<std::string> expected;
  } cases[] = {
      {"two", {"two.zdf"}},        // two levels below the repository
      {"three", {}},               // three levels: not reached
      {"ONE", {"one.zdf"}},        // the stem ignores case
      {"mixed", {"MiXeD.zdf"}},    //
      {"up", {}},                  // the extension does not
      {"linked", {"linked.zdf"}},  // a link to a directory is followed
      {"broken", {}},              // a broken link is skipped
      {"fifo", {}},                // a FIFO is never a descriptor
      {"dir", {}},                 // nor a directory
      {"nothere.zdf", {}},         // a missing path is a plain name
      {"", {"MiXeD.zdf", "linked.zdf", "one.zdf", "top.zdf", "two.zdf"}},
  };
  for (const auto& c : cases) EXPECT_EQ(c.expected, stems(find(c.name, {repo_.path()}, false))) << c.name;
}

TEST_F(RepoSearch, RepositoriesAndDefaultsAreSearchedOnceEachAndAPathIsTheAnswer) {
  // A name that is a path is the answer, whatever its extension's case, and nothing is searched.
  const auto given = find(repo_.file("up/UP.ZDF"), {repo_.path()}, true);
  EXPECT_EQ(std::vector<std::string>{HUTFile::getCanonicalName(repo_.file("up/UP.ZDF"))}, given);
  EXPECT_EQ(1u, find("top", {repo_.path(), repo_.path()}, false).size());
  EXPECT_TRUE(find("app", {}, false).empty());
  EXPECT_EQ(std::vector<std::string>{"app.zdf"}, stems(find("app", {}, true)));
  std::vector<std::string> files;
  service_.getZdfFiles("", ":" + outside_.path() + "::" + app_.file("platforms") + ":", files);
  EXPECT_EQ((std::vector<std::string>{"app.zdf", "linked.zdf"}), stems(files));
}

}  // namespace
