// A load looks at each file once and keeps an archive it listed open for the
// read that follows; what it learnt must never outlive a change of the file
// or the load itself.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/NativeCatalogService.h"
#include "support/RepoBuilder.h"
#include "support/TestSupport.h"

using namespace zr_test;

namespace {

std::string archiveWith(const TempDir& dir, const std::string& name, const std::string& content) {
  const std::string path = dir.file(name);
  HUTZip::writeMember(path, "m", content);
  return path;
}

// A path as the report's JSON text writes it.
std::string inReport(const std::string& path) {
  std::string out;
  for (char c : path) out += c == '/' ? std::string("\\/") : std::string(1, c);
  return out;
}

TEST(RepeatedLooks, AnArchiveListedBeforeIsReadAsItIsNow) {
  const struct {
    const char* change;
    bool present;
  } cases[] = {{"replaced", true}, {"rewritten in place", true}, {"removed", false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.change);
    TempDir dir;
    const std::string path = archiveWith(dir, "a.zip", "old");
    const std::string newer = archiveWith(dir, "b.zip", "newer");
    ASSERT_TRUE(HUTZip::containsFiles(path, {"m"}).front());
    const std::string change = c.change;
    if (change == "replaced") {
      ASSERT_EQ(0, std::rename(newer.c_str(), path.c_str()));
    } else if (change == "rewritten in place") {
      writeFile(path, readFile(newer));
    } else {
      ASSERT_EQ(0, ::unlink(path.c_str()));
    }
    std::string content;
    EXPECT_EQ(c.present, HUTZip::readMember(path, "m", content));
    EXPECT_EQ(c.present ? "newer" : "", content);
  }
}

// Names resolved for one platform are not taken for another catalog: an
// archive moved behind a link is reported where it now lies.
TEST(RepeatedLooks, ACatalogResolvesNamesAgain) {
  TempDir repo, other;
  RepoPlatform p;
  p.name = "moved";
  writeRepoPlatform(repo.path(), p);
  const std::string archive = HUTFile::getCanonicalName(repo.file("moved/hw/moved.lfa"));
  const std::string target = HUTFile::getCanonicalName(other.path()) + "/moved.lfa";
  const teq::platform::NativeCatalogService service;
  EXPECT_NE(std::string::npos, service.getAllAsJsonStr(repo.path(), true, false).find(inReport(archive)));
  ASSERT_EQ(0, std::rename(archive.c_str(), target.c_str()));
  ASSERT_EQ(0, ::symlink(target.c_str(), archive.c_str()));
  const std::string again = service.getAllAsJsonStr(repo.path(), true, false);
  EXPECT_NE(std::string::npos, again.find(inReport(target))) << again;
}

}  // namespace
