#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HDFToCFAConverter.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQCfaXmlReader.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/PlatformLoader.h"
#include "platform/SimpleFixedLFACreator.h"
#include "support/ExpectThrowMsg.h"
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

namespace {

// What tells converted platforms apart, as one line.
std::string identity(const HTEQHardwarePlatform& p) {
  return p.getVendor() + "|" + p.getName() + "|" + p.getVersion() + "|" + p.getPlatformState() + "|" +
         (p.isUnifiedPlatform() ? "unified" : "") + (p.isExpandable() ? "expandable" : "fixed");
}

}  // namespace

TEST(HDFToCFAConverter, PacksTheHdfWithBothMetadataDocumentsAndADigest) {
  const std::pair<std::string, std::string> rows[] = {
      {"card.lfa", "lfa"}, {"card.cfa", "cfa"}, {"card.LFA", "cfa"}, {"lfa", "cfa"}};
  for (const auto& row : rows) {
    TempDir dir;
    ScopedTmpDir tmp(dir.file("tmp"));
    HUTFile::mkDirRecursive(dir.file("tmp"));
    const std::string hdf = dir.write("in/top_design.hdf", "handoff bytes");
    HUTFile::mkDirRecursive(dir.file("out"));
    HDFToCFAConverter converter(hdf, dir.file("out"), row.first);
    EXPECT_EQ(converter.getHwPfmFile(), dir.file("out/" + row.first));
    ASSERT_TRUE(converter.writeCFA()) << row.first;
    const std::string out = converter.getHwPfmFile();
    EXPECT_EQ(HUTZip::getFiles(out),
              (std::vector<std::string>{row.second + ".json", row.second + ".xml", "top_design.hdf"}))
        << row.first;
    EXPECT_EQ(HUTZip::verifyDigest(out), HUTZip::DIGEST_VALID);
    EXPECT_FALSE(HUTFile::exists(converter.getStagingDir())) << "the staging directory is removed";

    // Both routes read one platform from the archive under the name of its stem.
    const std::string asArchive = dir.file("copy." + row.second);
    HUTFile::copyFile(out, asArchive);
    PlatformLoader loader(asArchive, PlatformLoader::Default);
    const auto loaded = loader.load();
    ASSERT_NE(loaded, nullptr) << row.first;
    ASSERT_NE(loaded->getHardwarePlatform(), nullptr);
    HPLPlatform fromXml;
    ASSERT_TRUE(HTEQCfaXmlReader(asArchive, &fromXml).parseCFA()) << row.first;
    const std::string expected = "platforms.zr.example|top_design|1.0|pre_synth|unifiedfixed";
    EXPECT_EQ(identity(*loaded->getHardwarePlatform()), expected);
    EXPECT_EQ(identity(fromXml), expected);
  }
}

TEST(HDFToCFAConverter, RefusalsAndFailedStepsLeaveNoArchive) {
  TempDir dir;
  ScopedTmpDir tmp(dir.path());
  const std::string hdf = dir.write("top.hdf", "h");
  EXPECT_THROW_MSG(HDFToCFAConverter(dir.file("none.hdf"), dir.path(), "x.cfa"), HEXAlgException,
                   "Could not find specified file: '" + dir.file("none.hdf") + "'on disk.");
  EXPECT_THROW_MSG(HDFToCFAConverter(hdf, dir.file("none"), "x.cfa"), HEXAlgException,
                   "Could not find specified dir: '" + dir.file("none") + "'on disk.");

  // An HDF gone before it is copied, and a top module name XML cannot carry.
  const std::string badName = dir.write(std::string("a\x01"
                                                    "b.hdf"),
                                        "h");
  struct Row {
    std::string hdf;
    bool removeFirst;
    const char* id;
  };
  const Row rows[] = {{hdf, true, "@74-46@"}, {badName, false, "@74-47@"}};
  for (const Row& row : rows) {
    HDFToCFAConverter converter(row.hdf, dir.path(), "out.lfa");
    if (row.removeFirst) HUTFile::rm(row.hdf);
    ComMsgCapture capture;
    EXPECT_FALSE(converter.writeCFA()) << row.id;
    EXPECT_TRUE(capture.has(row.id));
    EXPECT_FALSE(HUTFile::exists(dir.file("out.lfa")));
    EXPECT_FALSE(HUTFile::exists(converter.getStagingDir()));
  }
  // The output in the temporary directory itself: the staging directory takes another name.
  HDFToCFAConverter converter(dir.write("again.hdf", "h"), dir.path(), "out.lfa");
  EXPECT_TRUE(converter.writeCFA());
  EXPECT_EQ(HUTZip::getFiles(dir.file("out.lfa")).size(), 3u);
}
