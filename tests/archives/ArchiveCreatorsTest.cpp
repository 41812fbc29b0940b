#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/PlatformLoader.h"
#include "platform/SimpleFixedLFACreator.h"
#include "support/TestSupport.h"

using teq_platform::PlatformLoader;
using zr_test::ScopedTmpDir;
using zr_test::TempDir;

TEST(SimpleFixedLFACreator, MakesAFixedUnifiedLinkedPlatformWithSortedMembers) {
  TempDir dir;
  ScopedTmpDir tmp(dir.path());
  for (const std::string name : {"card.lfa", "card.cfa", "card.zip"}) {
    const std::string out = dir.write(name, "an old file");
    std::string staging;
    {
      SimpleFixedLFACreator creator(out);
      EXPECT_FALSE(HUTFile::exists(out)) << "the old output goes when the creator is made";
      staging = creator.getStagingDir();
      zr_test::writeFile(staging + "/z/late.txt", "z");
      zr_test::writeFile(staging + "/a.txt", "a");
      EXPECT_TRUE(creator.writeLFA());
    }
    EXPECT_FALSE(HUTFile::exists(staging)) << "the staging directory lives as long as the creator";
    // "lfa.json" whatever the extension, and every member in sorted order.
    EXPECT_EQ(HUTZip::getFiles(out), (std::vector<std::string>{"a.txt", "lfa.json", "z/late.txt"})) << name;

    const std::string asLfa = dir.file("copy.lfa");
    HUTFile::copyFile(out, asLfa);
    HPLPlatform platform;
    ASSERT_TRUE(HTEQCfaJsonReader(&platform).parseCFA(asLfa, PlatformLoader::Default)) << name;
    EXPECT_TRUE(platform.isUnifiedPlatform());
    EXPECT_FALSE(platform.isExpandable());
    EXPECT_TRUE(platform.isGeneratedByLink());
    EXPECT_TRUE(platform.isGeneratedBySwEmuLink());
  }
}

TEST(SimpleFixedLFACreator, TheSameStagingContentMakesTheSameBytes) {
  TempDir dir;
  ScopedTmpDir tmp(dir.path());
  std::string archives[2];
  for (int i = 0; i < 2; ++i) {
    archives[i] = dir.file("out" + std::to_string(i) + ".lfa");
    SimpleFixedLFACreator creator(archives[i]);
    // Dropped in different orders.
    for (const std::string name : {i ? "b/x" : "a", i ? "a" : "b/x"})
      zr_test::writeFile(creator.getStagingDir() + "/" + name, name);
    creator.writeLFA();
  }
  EXPECT_EQ(HUTZip::getFiles(archives[0]), HUTZip::getFiles(archives[1]));
  for (const std::string member : {"a", "b/x", "lfa.json"}) {
    std::string first, second;
    ASSERT_TRUE(HUTZip::readMember(archives[0], member, first));
    ASSERT_TRUE(HUTZip::readMember(archives[1], member, second));
    EXPECT_EQ(first, second) << member;
  }
}

TEST(SimpleFixedLFACreator, AnUnwritableMetadataFileRaisesAndMakesNoArchive) {
  TempDir dir;
  ScopedTmpDir tmp(dir.path());
  const std::string out = dir.file("card.lfa");
  SimpleFixedLFACreator creator(out);
  // A directory where the metadata file belongs.
  zr_test::writeFile(creator.getStagingDir() + "/lfa.json/inside", "x");
  EXPECT_THROW(creator.writeLFA(), HEXUserException);
  EXPECT_FALSE(HUTFile::exists(out));
  // An output path that is a directory is refused at once.
  EXPECT_THROW(SimpleFixedLFACreator{dir.path()}, HEXUserException);
}
