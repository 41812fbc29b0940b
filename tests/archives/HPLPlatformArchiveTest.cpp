// The platform's reads from its own archive: extended metadata and the board
// repository.

#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>

#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HPLPlatform.h"
#include "support/TestSupport.h"

TEST(HPLPlatformArchive, ExtendedMetadataComesFromTheArchiveIntoExtensions) {
  zr_test::TempDir dir;
  const std::string archive = dir.file("p.lfa");
  HUTZip::writeMember(archive, "meta/ext.json", "{\"emu\": {\"kind\": \"hw\"}}");
  HUTZip::writeMember(archive, "meta/bad.json", "{\"emu\": ");
  HPLPlatform p;
  p.setPlatformFile(archive);
  p.addFile("EXT_META_JSON", "meta/ext.json");
  EXPECT_EQ("{\"emu\": {\"kind\": \"hw\"}}", p.getExtMetaJsonAsString());
  EXPECT_NE(zr_test::flatJson(p).find(R"("files":[{"name":"meta\/ext.json","type":"EXT_META_JSON"}],)"
                                      R"("extensions":{"emu":{"kind":"hw"}},)"),
            std::string::npos);

  // META_JSON takes precedence; invalid JSON reaches the caller and the
  // platform then writes nothing.
  p.addFile("META_JSON", "meta/bad.json");
  boost::property_tree::ptree tree;
  EXPECT_THROW(p.getExtMetaJsonAsPtree(tree), HEXDataException);
  teq_platform::JSONObjectWriter writer;
  EXPECT_THROW(p.toJSON(writer), HEXDataException);
  EXPECT_TRUE(writer.empty());

  // A member that is not in the archive reads as nothing.
  p.removeFileType("META_JSON");
  p.removeFileType("EXT_META_JSON");
  p.addFile("META_JSON", "meta/missing.json");
  EXPECT_EQ("", p.getExtMetaJsonAsString());
}

TEST(HPLPlatformArchive, BoardRepositoryIsUnpackedIntoTheTemporaryDirectory) {
  zr_test::TempDir dir;
  zr_test::TempDir tmp;
  zr_test::ScopedTmpDir scoped(tmp.path());
  const std::string archive = dir.file("p.lfa");
  HUTZip::writeMember(archive, "repo/boards/u2/board.xml", "<board/>");
  HUTZip::writeMember(archive, "other/x.txt", "x");
  HPLPlatform p;
  p.setPlatformFile(archive);
  EXPECT_EQ("", p.getBoardRepo());
  p.addFile("BOARD_REPO_PATH", "repo");
  EXPECT_EQ(tmp.path() + "/repo", p.getBoardRepo());
  EXPECT_EQ("<board/>", zr_test::readFile(tmp.path() + "/repo/boards/u2/board.xml"));
  EXPECT_FALSE(HUTFile::exists(tmp.path() + "/other"));

  HPLPlatform missing;
  missing.setPlatformFile(archive);
  missing.addFile("BOARD_REPO_PATH", "absent");
  EXPECT_EQ("", missing.getBoardRepo());

  // A file that is no archive answers empty as well.
  const std::string notZip = dir.write("broken.lfa", "not a zip");
  HPLPlatform broken;
  broken.setPlatformFile(notZip);
  broken.addFile("BOARD_REPO_PATH", "repo");
  broken.addFile("META_JSON", "m.json");
  EXPECT_EQ("", broken.getBoardRepo());
  EXPECT_EQ("", broken.getExtMetaJsonAsString());
  boost::property_tree::ptree tree;
  tree.put("kept", "1");
  broken.getExtMetaJsonAsPtree(tree);
  EXPECT_EQ("1", tree.get<std::string>("kept"));
  // Without an archive there is nothing to unpack.
  HPLPlatform none;
  none.addFile("BOARD_REPO_PATH", "repo");
  EXPECT_EQ("", none.getBoardRepo());
}
