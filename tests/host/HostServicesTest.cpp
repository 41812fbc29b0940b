#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HSTStringUtils.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTFileUtils.h"
#include "host/HUTPathUtils.h"
#include "support/TestSupport.h"

using zr_test::ScopedEnvVar;
using zr_test::TempDir;

TEST(ComMsgMgr, CaptureKeepsIdArgumentsAndMaskAndRestoresPreviousSink) {
  ComMsgCapture outer;
  {
    ComMsgCapture inner;
    ZR_SEND_MSG("@74-9@%s%d", ComMsgMask::kError, "file.zdf", 12);
    ASSERT_EQ(inner.messages().size(), 1u);
    const ComMsg& m = inner.messages()[0];
    EXPECT_EQ(m.module, "platform");
    EXPECT_EQ(m.id, "@74-9@%s%d");
    EXPECT_EQ(m.args, (std::vector<std::string>{"file.zdf", "12"}));
    EXPECT_EQ(m.mask, ComMsgMask::kError);
  }
  ZR_SEND_MSG("@74-60@%s", ComMsgMask::kCriticalWarning, "x");
  EXPECT_TRUE(outer.has("@74-60@%s"));
  EXPECT_EQ(outer.messages().size(), 1u);
}

TEST(ComMsgMgr, FormatsCatalogueTextAndSeverity) {
  ComMsg m;
  m.id = "@74-60@%s";
  m.args = {"bad thing"};
  EXPECT_EQ(ComMsgMgr::formatText(m), "Failed to load the platform: bad thing.");
  m.id = "@99-99@%s";
  EXPECT_EQ(ComMsgMgr::formatText(m), "@99-99@%s 'bad thing'");
  EXPECT_EQ(ComMsgMgr::severityWord(0x20000000), "ERROR");
  EXPECT_EQ(ComMsgMgr::severityWord(0x10000000), "CRITICAL WARNING");
  EXPECT_EQ(ComMsgMgr::severityWord(0x8000000), "WARNING");
  EXPECT_EQ(ComMsgMgr::severityWord(0x4000000), "INFO");
}

TEST(HUTEnv, DefaultsComeFromTheEnvironmentAndCanBeOverridden) {
  ScopedEnvVar roots("ZR_PLATFORM_APP_ROOTS", "/opt/a::/opt/b");
  ScopedEnvVar tmp("TMPDIR", nullptr);
  HUTEnv env;
  EXPECT_EQ(env.getKELAppRootList(), (std::vector<std::string>{"/opt/a", "/opt/b"}));
  EXPECT_EQ(env.getJUNAppRoot(), "/opt/a");
  EXPECT_EQ(env.getJUNTmpDir(), "/tmp");
  EXPECT_GE(env.getMajor(), 2026);
  env.setAppRoots({"/x"});
  env.setTmpDir("/scratch");
  env.setVersion(2030, 2, "2030.2.1");
  EXPECT_EQ(env.getJUNAppRoot(), "/x");
  EXPECT_EQ(env.getJUNTmpDir(), "/scratch");
  EXPECT_EQ(env.getFullBuildStr(), "2030.2.1");
  // The catalog's workers: a small number from the environment, else 0 (automatic), until set.
  const struct {
    const char* value;
    unsigned workers;
  } kWorkers[] = {{nullptr, 0}, {"3", 3}, {"0", 0}, {"2x", 0}, {"-1", 0}, {"99999", 0}};
  for (const auto& c : kWorkers) {
    ScopedEnvVar workers("ZR_PLATFORM_CATALOG_WORKERS", c.value);
    EXPECT_EQ(c.workers, env.getCatalogWorkers()) << (c.value ? c.value : "unset");
  }
  ScopedEnvVar workers("ZR_PLATFORM_CATALOG_WORKERS", "3");
  env.setCatalogWorkers(1);
  EXPECT_EQ(1u, env.getCatalogWorkers());
}

TEST(HUTEnv, InstanceCanBeReplacedAndRestored) {
  HUTEnv mine;
  mine.setTmpDir("/mine");
  HUTEnv::setInstance(&mine);
  EXPECT_EQ(HUTEnv::instance().getJUNTmpDir(), "/mine");
  HUTEnv::setInstance(nullptr);
  EXPECT_NE(HUTEnv::instance().getJUNTmpDir(), "/mine");
}

TEST(HUTFile, KindsCanonicalNamesAndDirectories) {
  TempDir dir;
  const std::string f = dir.write("sub/file.txt", "abc");
  EXPECT_TRUE(HUTFile::exists(f));
  EXPECT_TRUE(HUTFile::isFile(f));
  EXPECT_FALSE(HUTFile::isDir(f));
  EXPECT_TRUE(HUTFile::isDir(dir.file("sub")));
  EXPECT_FALSE(HUTFile::exists(""));
  EXPECT_EQ(HUTFile::getSize(f), 3);
  EXPECT_EQ(HUTFile::getCanonicalName(dir.file("sub/../sub/./file.txt")), f);
  EXPECT_EQ(HUTFile::getCanonicalName(dir.file("sub/../missing/x.lfa")), dir.file("missing/x.lfa"));
  HUTFile::mkDirRecursive(dir.file("a/b/c"));
  EXPECT_TRUE(HUTFile::isDir(dir.file("a/b/c")));
  EXPECT_NO_THROW(HUTFile::ensureWritableDirectory(dir.file("a/b")));
  EXPECT_THROW(HUTFile::ensureWritableDirectory(f), HEXUserException);
  EXPECT_TRUE(HUTFile::rmRecursive(dir.file("a")));
  EXPECT_FALSE(HUTFile::exists(dir.file("a")));
}

TEST(HUTFile, RmExecutableBitsSortedListingAndAtomicWrite) {
  TempDir dir;
  const std::string file = dir.write("z/b.txt", "b");
  dir.write("a.txt", "a");
  dir.write("z/a/c.txt", "c");
  ASSERT_EQ(::mkfifo(dir.file("fifo").c_str(), 0600), 0);
  // Sorted by relative path; the FIFO and the directories are not listed.
  EXPECT_EQ(HUTFile::listFilesRecursive(dir.path()),
            (std::vector<std::string>{dir.file("a.txt"), dir.file("z/a/c.txt"), dir.file("z/b.txt")}));
  EXPECT_THROW(HUTFile::listFilesRecursive(dir.file("none")), HEXUserException);

  ::chmod(file.c_str(), 0640);
  HUTFile::mkExecutable(file);
  struct stat st;
  ASSERT_EQ(::stat(file.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0750u);
  EXPECT_THROW(HUTFile::mkExecutable(dir.file("none")), HEXUserException);

  // rm: a file goes, a directory stays, nothing there is success.
  EXPECT_TRUE(HUTFile::rm(file));
  EXPECT_FALSE(HUTFile::exists(file));
  EXPECT_TRUE(HUTFile::rm(dir.file("none")));
  EXPECT_TRUE(HUTFile::rm(dir.file("z")));
  EXPECT_TRUE(HUTFile::isDir(dir.file("z")));

  const std::string target = dir.write("t.txt", "old");
  HUTFile::writeAtomically(target, "new");
  EXPECT_EQ(zr_test::readFile(target), "new");
  for (const std::string& bad : {dir.file("z"), dir.file("none/t.txt"), std::string()})
    EXPECT_THROW(HUTFile::writeAtomically(bad, "x"), HEXUserException) << bad;
  EXPECT_EQ(HUTFile::listFilesRecursive(dir.path()).size(), 3u);
}

TEST(HUTFileUtils, UniquifyAddsANumberBeforeTheExtension) {
  TempDir dir;
  EXPECT_EQ(HUTFileUtils::uniquifyFilenameInDir(dir.file("x.txt")), dir.file("x.txt"));
  dir.write("x.txt", "");
  EXPECT_EQ(HUTFileUtils::uniquifyFilenameInDir(dir.file("x.txt")), dir.file("x_1.txt"));
  dir.write("x_1.txt", "");
  EXPECT_EQ(HUTFileUtils::uniquifyFilenameInDir(dir.file("x.txt")), dir.file("x_2.txt"));
  EXPECT_EQ(HUTFileUtils::makeAbsolutePath("/a/./b/../c"), "/a/c");
}

TEST(HUTPathUtils, LexicalParts) {
  EXPECT_EQ(HUTPathUtils::getParent("a/b/c.zdf"), "a/b");
  EXPECT_EQ(HUTPathUtils::getParent("c.zdf"), "");
  EXPECT_EQ(HUTPathUtils::getExtension("a/b/c.tar.zdf"), ".zdf");
  EXPECT_EQ(HUTPathUtils::getExtension("a/b/c"), "");
  EXPECT_EQ(HUTPathUtils::getStem("a/b/c.tar.zdf"), "c.tar");
  EXPECT_EQ(HUTPathUtils::getFileName("a/b/c.zdf"), "c.zdf");
  EXPECT_EQ(HUTPathUtils::join("a/", "/b"), "a/b");
  EXPECT_EQ(HUTPathUtils::join("a", "b"), "a/b");
}

TEST(HSTStringUtils, CaseTrimSplitReplace) {
  EXPECT_TRUE(HSTStringUtils::iequals("AxiMM", "aximm"));
  EXPECT_FALSE(HSTStringUtils::iequals("aximm", "aximm "));
  EXPECT_EQ(HSTStringUtils::trim("  a b\t\n"), "a b");
  EXPECT_EQ(HSTStringUtils::split("a::b", ':'), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(HSTStringUtils::replaceAll("aXbXc", "X", "--"), "a--b--c");
  EXPECT_TRUE(HSTStringUtils::startsWith("platform", "plat"));
  EXPECT_TRUE(HSTStringUtils::endsWith("file.lfa", ".lfa"));
}

TEST(HI18N, RoundTripsUtf8AndReplacesInvalidBytes) {
  const std::string utf8 = "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80";
  EXPECT_EQ(HI18N::convert(HI18N::convert(utf8)), utf8);
  const std::wstring bad = HI18N::convert(std::string("a\xC3"));
  ASSERT_EQ(bad.size(), 2u);
  EXPECT_EQ(bad[1], static_cast<wchar_t>(0xFFFD));
}
