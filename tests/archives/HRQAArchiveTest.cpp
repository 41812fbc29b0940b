#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HRQAArchive.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using zr_test::TempDir;

namespace {

// A new archive holding only its index, made the documented way.
HRQAArchive newArchive(const TempDir& dir, const std::string& name = "meta.rqa") {
  HRQAArchive rqa;
  rqa.setFile(dir.file(name));
  rqa.writeJSON();
  return rqa;
}

}  // namespace

TEST(HRQAArchive, IndexRoundTripKeepsStringsAndTypeOrder) {
  TempDir dir;
  HRQAArchive rqa = newArchive(dir);
  rqa.setInstPath("top/inst.0");
  rqa.setDrBdInstName("bd_inst");
  rqa.setPfmName("card");
  rqa.setHierName("a/b");
  rqa.registerFile("XDC", "pins.xdc");
  rqa.registerFile("BOARD_REPO_PATH", "boards");
  rqa.registerFile("", "ignored.txt");
  rqa.registerFile("EMPTY", "");
  rqa.writeJSON();

  HRQAArchive back;
  back.setFile(rqa.getFile());
  ASSERT_TRUE(back.parse());
  EXPECT_EQ(back.getInstPath(), "top/inst.0");
  EXPECT_EQ(back.getDrBdInstName(), "bd_inst");
  EXPECT_EQ(back.getPfmName(), "card");
  EXPECT_EQ(back.getHierName(), "a/b");
  EXPECT_EQ(back.getFiles().getFiles(), rqa.getFiles().getFiles());
  std::vector<std::string> types;
  back.getFiles().getTypes(types);
  EXPECT_EQ(types, (std::vector<std::string>{"BOARD_REPO_PATH", "XDC"}));
  EXPECT_FALSE(back.getFiles().contains("EMPTY"));
  EXPECT_EQ(zr_test::jsonTree(back).get<std::string>("version.major"), "1");
}

TEST(HRQAArchive, IndexTextsReadAsTheyShould) {
  struct Case {
    const char* text;
    bool parsed;
    std::vector<std::string> types;
  } cases[] = {
      {"", false, {}},
      {R"({"version":{"major":"9","minor":"9"},"files":[{"name":"a","type":"T"}]})", true, {"T"}},
      {R"({"files":[{"name":"a"},{"type":"T"},{"name":{"x":"y"},"type":"U"},"x",{"name":"b","type":"V"}]})",
       true,
       {"V"}},
      {R"({"files":"none","pfmName":["x"]})", true, {}},
  };
  for (const auto& c : cases) {
    HRQAArchive rqa;
    EXPECT_EQ(rqa.parseJsonString(c.text), c.parsed) << c.text;
    std::vector<std::string> types;
    rqa.getFiles().getTypes(types);
    EXPECT_EQ(types, c.types) << c.text;
    EXPECT_EQ(rqa.getPfmName(), "") << c.text;
  }
  HRQAArchive rqa;
  EXPECT_THROW(rqa.parseJsonString("{\"files\":["), HEXDataException);
}

TEST(HRQAArchive, ParseOfAMissingArchiveOrIndexWarnsAndAnswersFalse) {
  TempDir dir;
  zr_test::makeZip(dir.file("noindex.rqa"), {{"a.txt", "a"}});
  struct Case {
    std::string file;
    const char* id;
  } cases[] = {{"", "@74-89@%s"},
               {dir.file("missing.rqa"), "@74-89@%s"},
               {dir.path(), "@74-89@%s"},
               {dir.file("noindex.rqa"), "@74-67@%s%s"}};
  for (const auto& c : cases) {
    ComMsgCapture capture;
    HRQAArchive rqa;
    rqa.setFile(c.file);
    EXPECT_FALSE(rqa.parse()) << c.file;
    EXPECT_TRUE(capture.has(c.id)) << c.file;
  }
}

TEST(HRQAArchive, ArchivingTwiceWithOneTypeReplacesTheEntryAndKeepsTheDigestValid) {
  TempDir dir;
  HRQAArchive rqa = newArchive(dir);
  EXPECT_EQ(HUTZip::getFiles(rqa.getFile()), (std::vector<std::string>{"rqa.json"}));
  rqa.archive("XDC", "one.xdc", dir.write("src1", "first"));
  EXPECT_EQ(HUTZip::verifyDigest(rqa.getFile()), HUTZip::DIGEST_VALID);
  rqa.archive("XDC", "two.xdc", dir.write("src2", "second"));
  EXPECT_EQ(HUTZip::verifyDigest(rqa.getFile()), HUTZip::DIGEST_VALID);
  EXPECT_EQ(rqa.getFiles().get("XDC"), "two.xdc");
  EXPECT_TRUE(HUTZip::containsFile(rqa.getFile(), "one.xdc")) << "the old member stays";

  HRQAArchive back;
  back.setFile(rqa.getFile());
  ASSERT_TRUE(back.parse());
  EXPECT_EQ(back.getFiles().getFiles(), (HRQAFiles::FileMap{{"XDC", "two.xdc"}}));
  const std::string out = back.extract("XDC", dir.file("out"));
  EXPECT_EQ(out, dir.file("out") + "/two.xdc");
  EXPECT_EQ(zr_test::readFile(out), "second");
}

TEST(HRQAArchive, ArchiveFailuresComeInOrderAndLeaveEverythingAsItWas) {
  TempDir dir;
  const std::string source = dir.write("src", "x");
  struct Case {
    std::string file;
    std::string name;
    std::string source;
    const char* fragment;
  } cases[] = {
      {"", "a", source, "rqaFile is not set"},
      {dir.file("missing.rqa"), "a", source, "rqaFile does not exist"},
      {dir.path(), "a", source, "rqaFile does not exist"},
      {dir.file("meta.rqa"), "a", dir.file("nosource"), "Could not open file for reading: "},
      {dir.file("meta.rqa"), "a", dir.path(), "Could not open file for reading: "},
      {dir.file("meta.rqa"), "../up", source, "refused member name"},
      {dir.file("meta.rqa"), "/abs", source, "refused member name"},
  };
  HRQAArchive made = newArchive(dir);
  made.archive("KEEP", "keep.txt", source);
  const std::string before = zr_test::readFile(made.getFile());
  for (const auto& c : cases) {
    HRQAArchive rqa;
    rqa.setFile(c.file);
    rqa.registerFile("KEEP", "keep.txt");
    try {
      rqa.archive("NEW", c.name, c.source);
      ADD_FAILURE() << "no exception for " << c.fragment;
    } catch (const HEXAll& e) {
      EXPECT_NE(std::string(e.what()).find(c.fragment), std::string::npos) << e.what();
    }
    EXPECT_FALSE(rqa.getFiles().contains("NEW")) << c.fragment;
    EXPECT_EQ(zr_test::readFile(made.getFile()), before) << c.fragment;
  }
}

TEST(HRQAArchive, ExtractsEachKindIntoItsPlace) {
  TempDir dir;
  const std::string file = dir.file("meta.rqa");
  zr_test::makeZip(file, {{"bd/x.tcl", "x"},
                          {"bd/sub/y.tcl", "y"},
                          {"boards/b1/board.xml", "b"},
                          {"ips/ip.xml", "i"},
                          {"pins.xdc", "p"},
                          {"other/z.txt", "z"}});
  HRQAArchive rqa;
  rqa.setFile(file);
  rqa.registerFile("DR_BD", "any_name");
  rqa.registerFile("BOARD_REPO_PATH", "boards");
  rqa.registerFile("IP_REPO_PATH", "ips/");
  rqa.registerFile("XDC", "pins.xdc");
  rqa.registerFile("GONE", "gone.txt");
  struct Case {
    const char* type;
    const char* result;
    const char* present;
    const char* absent;
  } cases[] = {
      {"DR_BD", "bd", "bd/sub/y.tcl", "boards"},
      {"BOARD_REPO_PATH", "boards", "boards/b1/board.xml", "ips"},
      {"IP_REPO_PATH", "ips", "ips/ip.xml", "pins.xdc"},
      {"XDC", "pins.xdc", "pins.xdc", "bd"},
      {"GONE", "", "", "gone.txt"},
      {"UNLISTED", "", "", "other"},
  };
  for (const auto& c : cases) {
    const std::string dest = dir.file(std::string("out_") + c.type);
    const std::string got = rqa.extract(c.type, dest);
    EXPECT_EQ(got, *c.result ? dest + "/" + c.result : std::string()) << c.type;
    EXPECT_TRUE(HUTFile::isDir(dest)) << c.type;
    if (*c.present) {
      EXPECT_TRUE(HUTFile::exists(dest + "/" + c.present)) << c.type;
    }
    EXPECT_FALSE(HUTFile::exists(dest + "/" + c.absent)) << c.type;
  }
  EXPECT_THROW_MSG(rqa.extract("XDC", ""), HEXUserException, "destDir argument must not be empty");
  rqa.registerFile("BOARD_REPO_PATH", "nodir");
  EXPECT_THROW_MSG(rqa.extract("BOARD_REPO_PATH", dir.file("o2")), HEXUserException, "not extracted");
}

TEST(HRQAArchive, HostileNamesInTheIndexWriteNothingOutsideTheDestination) {
  TempDir dir;
  const std::string file = dir.file("meta.rqa");
  zr_test::makeZip(file, {{"a.txt", "a"}});
  for (const char* type : {"XDC", "BOARD_REPO_PATH"}) {
    for (const char* name : {"../escape.txt", "/etc/passwd", "a/../../x"}) {
      HRQAArchive rqa;
      rqa.setFile(file);
      rqa.registerFile(type, name);
      EXPECT_THROW(rqa.extract(type, dir.file("dest/in")), HEXUserException) << name;
    }
  }
  EXPECT_FALSE(HUTFile::exists(dir.file("dest/escape.txt")));
}
