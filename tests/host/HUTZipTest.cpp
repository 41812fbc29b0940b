#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <thread>

#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "host/IslXp.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using zr_test::makeZip;
using zr_test::readFile;
using zr_test::TempDir;
using Members = std::vector<std::string>;

using zr_test::memberText;

TEST(HUTZip, WritingOneMemberKeepsTheOthers) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  HUTZip::writeMember(zip, "cfa.json", "{}\n");
  HUTZip::writeMember(zip, "bd/top.bd", "block design");
  HUTZip::writeMember(zip, "cfa.json", "{\"v\": 2}\n");

  EXPECT_EQ(HUTZip::getFiles(zip), (Members{"cfa.json", "bd/top.bd"}));
  EXPECT_EQ(memberText(zip, "cfa.json"), "{\"v\": 2}\n");
  EXPECT_EQ(memberText(zip, "bd/top.bd"), "block design");

  const std::string big = zr_test::incompressible(300000);
  HUTZip::writeMember(zip, "bits/full.bit", big);
  EXPECT_EQ(memberText(zip, "bits/full.bit"), big);
}

TEST(HUTZip, UpdatesKeepTheArchivesModeAndFollowALinkToIt) {
  TempDir dir;
  const std::string zip = dir.file("real/p.cfa");
  HUTFile::mkDirRecursive(dir.file("real"));
  makeZip(zip, {{"a", "1"}, {"b", "2"}});
  ::chmod(zip.c_str(), 0640);
  const std::string link = dir.file("p.cfa");
  ASSERT_EQ(::symlink(zip.c_str(), link.c_str()), 0);

  HUTZip::writeMember(link, "c", "3");
  struct stat st;
  ASSERT_EQ(::lstat(link.c_str(), &st), 0);
  EXPECT_TRUE(S_ISLNK(st.st_mode));
  EXPECT_EQ(HUTZip::getFiles(zip), (Members{"a", "b", "c"}));
  HUTZip::deleteFilesFromZip(link, {"a", "b", "c"});
  ASSERT_EQ(::lstat(link.c_str(), &st), 0);
  EXPECT_TRUE(S_ISLNK(st.st_mode));
  ASSERT_EQ(::stat(zip.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0640u);
  EXPECT_TRUE(HUTZip::getFiles(zip).empty());
}

TEST(HUTZip, ContainsFileAnswersOnlyForPlainMembersOfSoundArchives) {
  TempDir dir;
  const std::string zip = dir.file("a.zip");
  makeZip(zip, {{"sw/", ""}, {"sw/a.spfm", "x"}});
  EXPECT_TRUE(HUTZip::containsFile(zip, "sw/a.spfm"));
  EXPECT_FALSE(HUTZip::containsFile(zip, "sw/"));
  EXPECT_FALSE(HUTZip::containsFile(zip, "sw/b.spfm"));
  EXPECT_FALSE(HUTZip::containsFile(zip, ""));
  EXPECT_FALSE(HUTZip::containsFile(dir.file("missing.zip"), "sw/a.spfm"));
  EXPECT_FALSE(HUTZip::containsFile(dir.write("plain.txt", "not a zip"), "sw/a.spfm"));
  EXPECT_FALSE(HUTZip::containsFile(dir.path(), "sw/a.spfm"));
  // Several names at one look give the same answers, in order; a damaged
  // archive answers false for all.
  EXPECT_EQ(HUTZip::containsFiles(zip, {"sw/b.spfm", "sw/a.spfm", "sw/", "sw/a.spfm"}),
            (std::vector<bool>{false, true, false, true}));
  EXPECT_EQ(HUTZip::containsFiles(dir.write("cut.zip", "PK\x03\x04"), {"sw/a.spfm", "x"}),
            (std::vector<bool>{false, false}));
  // The answers follow the file: rewritten in place with another member of
  // the same size, or replaced, the archive is looked into again.
  const std::string other = dir.file("other.zip");
  makeZip(other, {{"sw/", ""}, {"sw/b.spfm", "x"}});
  ASSERT_EQ(readFile(other).size(), readFile(zip).size());
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  {
    std::fstream inPlace(zip, std::ios::in | std::ios::out | std::ios::binary);
    inPlace << readFile(other);
  }
  EXPECT_EQ(HUTZip::containsFiles(zip, {"sw/a.spfm", "sw/b.spfm"}), (std::vector<bool>{false, true}));
  makeZip(dir.file("third.zip"), {{"sw/c.spfm", "x"}});
  ASSERT_EQ(std::rename(dir.file("third.zip").c_str(), zip.c_str()), 0);
  EXPECT_EQ(HUTZip::containsFiles(zip, {"sw/b.spfm", "sw/c.spfm"}), (std::vector<bool>{false, true}));
  // A pipe would block a reader for ever: it is refused at once.
  const std::string fifo = dir.file("pipe.cfa");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  EXPECT_FALSE(HUTZip::containsFile(fifo, "sw/a.spfm"));
  EXPECT_THROW(HUTZip::writeMember(fifo, "x", "y"), HEXUserException);
}

TEST(HUTZip, BrokenArchivesFailWithTheirNameAndReason) {
  TempDir dir;
  EXPECT_THROW(HUTZip::getFiles(dir.file("missing.zip")), HEXFileNotFoundException);
  const std::string text = dir.write("text.cfa", "hello, this is not an archive");
  EXPECT_THROW_MSG(HUTZip::getFiles(text), HEXDataException, "text.cfa");

  const std::string zip = dir.file("cut.zip");
  makeZip(zip, {{"a.txt", "aaaa"}, {"b.txt", std::string(5000, 'b')}});
  const std::string whole = readFile(zip);
  zr_test::writeFile(zip, whole.substr(0, whole.size() - 30));
  EXPECT_THROW(HUTZip::getFiles(zip), HEXDataException);
  zr_test::writeFile(zip, whole.substr(0, whole.size() / 2));
  EXPECT_THROW(HUTZip::getFiles(zip), HEXDataException);
  zr_test::writeFile(zip, "");
  EXPECT_THROW(HUTZip::getFiles(zip), HEXDataException);
}

TEST(HUTZip, DamagedMemberDataFailsWhenRead) {
  TempDir dir;
  const std::string zip = dir.file("a.zip");
  makeZip(zip, {{"a.txt", zr_test::incompressible(4000)}});
  zr_test::damageFirstMemberData(zip);
  std::string content;
  EXPECT_THROW(HUTZip::readMember(zip, "a.txt", content), HEXDataException);
  EXPECT_THROW(HUTZip::uncompressDir(zip, "", dir.file("out"), true), HEXDataException);
  // Neither the file nor its temporary is left.
  EXPECT_TRUE(boost::filesystem::is_empty(dir.file("out")));
}

TEST(HUTZip, DuplicateAndNulNamesAreRefused) {
  TempDir dir;
  const std::string dup = dir.file("dup.zip");
  makeZip(dup, {{"cfa.json", "1"}, {"cfa.jsoX", "2"}});
  ASSERT_EQ(zr_test::patchBytes(dup, "cfa.jsoX", "cfa.json"), 2);
  EXPECT_THROW_MSG(HUTZip::getFiles(dup), HEXDataException, "'cfa.json' twice");
  EXPECT_FALSE(HUTZip::containsFile(dup, "cfa.json"));
  EXPECT_THROW(HUTZip::writeMember(dup, "other.txt", "x"), HEXDataException);

  const std::string nul = dir.file("nul.zip");
  makeZip(nul, {{"safe.txtX../../evil", "x"}});
  ASSERT_EQ(zr_test::patchBytes(nul, "txtX", std::string("txt\0", 4)), 2);
  EXPECT_THROW_MSG(HUTZip::getFiles(nul), HEXDataException, "NUL");
  EXPECT_THROW(HUTZip::uncompressDir(nul, "", dir.file("out"), true), HEXDataException);
}

TEST(HUTZip, CompressCreatesThenAppendsWithRelativeNames) {
  TempDir dir;
  const std::string stage = dir.path() + "/stage";
  zr_test::writeFile(stage + "/lfa.json", "{}");
  zr_test::writeFile(stage + "/hw/top.hpfm", "<hpfm/>");
  const std::string zip = dir.file("out.lfa");
  makeZip(zip, {{"stale.txt", "from an earlier run"}});

  HUTZip::compress(zip, stage + "/lfa.json", stage, HUTZip::ZO_CREATE_RELATIVE);
  HUTZip::compress(zip, stage + "/hw/top.hpfm", stage, HUTZip::ZO_APPEND_RELATIVE);
  EXPECT_EQ(HUTZip::getFiles(zip), (Members{"lfa.json", "hw/top.hpfm"}));
  EXPECT_EQ(memberText(zip, "hw/top.hpfm"), "<hpfm/>");

  // Without the relative bit the member is the bare file name.
  HUTZip::compress(zip, stage + "/hw/top.hpfm", "", HUTZip::ZO_APPEND);
  EXPECT_TRUE(HUTZip::containsFile(zip, "top.hpfm"));

  const std::string outside = dir.write("elsewhere/x.txt", "x");
  EXPECT_THROW(HUTZip::compress(zip, outside, stage, HUTZip::ZO_APPEND_RELATIVE), HEXUserException);
  EXPECT_THROW(HUTZip::compress(zip, stage + "/none", stage, HUTZip::ZO_APPEND_RELATIVE), HEXUserException);
  EXPECT_EQ(HUTZip::getFiles(zip).size(), 3u);
}

TEST(HUTZip, CompressDirAddsTheTreeUnderItsNameAndReplacesMembers) {
  TempDir dir;
  const std::string overlay = dir.path() + "/overlay";
  zr_test::writeFile(overlay + "/emu/emu.xml", "<new/>");
  zr_test::writeFile(overlay + "/emu/emu.bd", "bd");
  zr_test::writeFile(overlay + "/top.tcl", "puts hi");
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"cfa.json", "{}"}, {"overlay/emu/emu.xml", "<old/>"}});

  HUTZip::compressDir(zip, overlay);
  EXPECT_EQ(HUTZip::getFiles(zip),
            (Members{"cfa.json", "overlay/emu/emu.xml", "overlay/emu/emu.bd", "overlay/top.tcl"}));
  EXPECT_EQ(memberText(zip, "overlay/emu/emu.xml"), "<new/>");

  // A script keeps its permission to run.
  ::chmod((overlay + "/top.tcl").c_str(), 0755);
  HUTZip::compressDir(zip, overlay);
  HUTZip::uncompressDir(zip, "overlay", dir.file("out"), true);
  struct stat st;
  ASSERT_EQ(::stat(dir.file("out/overlay/top.tcl").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0100, 0100u);
  ASSERT_EQ(::stat(dir.file("out/overlay/emu/emu.bd").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0100, 0u);

  const std::string flat = dir.file("flat.zip");
  HUTZip::compressDir(flat, overlay + "/", false, HUTZip::ZO_CREATE);
  EXPECT_EQ(HUTZip::getFiles(flat), (Members{"emu/emu.bd", "emu/emu.xml", "top.tcl"}));

  // An archive inside the directory it packs is not packed into itself.
  const std::string inner = overlay + "/self.zip";
  HUTZip::compressDir(inner, overlay, false);
  EXPECT_FALSE(HUTZip::containsFile(inner, "self.zip"));
  EXPECT_THROW(HUTZip::compressDir(zip, dir.file("nothing")), HEXUserException);
}

// uncompress copies a member below a directory under its own path, into
// the file it is given.
TEST(HUTZip, OneMemberIsCopiedBelowADirectoryOrToAFile) {
  TempDir dir;
  const std::string zip = dir.file("q.rqa");
  makeZip(zip, {{"rqa.json", "{}"}, {"ip/core.xci", "new"}, {"hw/", ""}});
  const std::string out = dir.file("out");

  EXPECT_FALSE(HUTZip::uncompress(zip, "ip/none.xci", out, true));
  EXPECT_FALSE(HUTFile::exists(out));
  EXPECT_TRUE(HUTZip::uncompress(zip, "ip/core.xci", out, true));
  EXPECT_EQ(readFile(out + "/ip/core.xci"), "new");
  EXPECT_FALSE(HUTFile::exists(out + "/rqa.json"));
  zr_test::writeFile(out + "/ip/core.xci", "mine");
  EXPECT_TRUE(HUTZip::uncompress(zip, "ip/core.xci", out, false));
  EXPECT_EQ(readFile(out + "/ip/core.xci"), "mine");
  EXPECT_TRUE(HUTZip::uncompress(zip, "ip/core.xci", out, true));
  EXPECT_EQ(readFile(out + "/ip/core.xci"), "new");

  EXPECT_TRUE(HUTZip::extractMember(zip, "ip/core.xci", dir.file("a/b/c.xci")));
  EXPECT_EQ(readFile(dir.file("a/b/c.xci")), "new");
  EXPECT_FALSE(HUTZip::extractMember(zip, "hw/", dir.file("d")));
  EXPECT_FALSE(HUTZip::extractMember(zip, "none", dir.file("e/f")));
  EXPECT_FALSE(HUTFile::exists(dir.file("e")));
  EXPECT_FALSE(HUTZip::extractMember(dir.file("no.zip"), "ip/core.xci", dir.file("g")));
}

TEST(HUTZip, UncompressDirCopiesOnlyWhatLiesBelowTheDirectory) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"cfa.json", "{}"},
                {"bd/", ""},
                {"bd/top.bd", "top"},
                {"bd/ip/", ""},
                {"bd/ip/empty/", ""},
                {"bdx/no.txt", "no"},
                {"boards/b1/board.xml", "b1"}});

  const std::string out = dir.file("out");
  EXPECT_TRUE(HUTZip::uncompressDir(zip, "bd/", out, true));
  EXPECT_EQ(readFile(out + "/bd/top.bd"), "top");
  EXPECT_TRUE(HUTFile::isDir(out + "/bd/ip/empty"));
  EXPECT_FALSE(HUTFile::exists(out + "/bdx"));
  EXPECT_FALSE(HUTFile::exists(out + "/cfa.json"));
  EXPECT_FALSE(HUTZip::uncompressDir(zip, "nothing", out, true));

  const std::string all = dir.file("all");
  EXPECT_TRUE(HUTZip::uncompressDir(zip, "", all, true));
  EXPECT_EQ(readFile(all + "/boards/b1/board.xml"), "b1");
  EXPECT_EQ(readFile(all + "/bdx/no.txt"), "no");
}

TEST(HUTZip, UnpackingNeverWritesOutsideTheDestination) {
  TempDir dir;
  const std::string out = dir.file("deep/out");
  const std::vector<std::string> hostile = {"../escaped.txt",  "bd/../../escaped.txt", "/tmp/zr-absolute.txt",
                                            "..\\escaped.txt", "C:/escaped.txt",       ".."};
  for (const std::string& name : hostile) {
    const std::string zip = dir.file("bad.zip");
    // A sound member first: nothing at all may be written when any name is bad.
    makeZip(zip, {{"a_first.txt", "ok"}, {name, "evil"}});
    SCOPED_TRACE(name);
    EXPECT_THROW_MSG(HUTZip::uncompressDir(zip, "", out, true), HEXDataException, "refused");
    EXPECT_FALSE(HUTFile::exists(out + "/a_first.txt")) << name;
    EXPECT_THROW(HUTZip::uncompress(zip, name, out, true), HEXDataException) << name;
  }
  EXPECT_FALSE(HUTFile::exists(dir.file("deep/escaped.txt")));
  EXPECT_FALSE(HUTFile::exists(dir.file("escaped.txt")));
  EXPECT_FALSE(HUTFile::exists("/tmp/zr-absolute.txt"));

  // A link already in the destination does not lead the unpacking out of it.
  TempDir elsewhere;
  HUTFile::mkDirRecursive(out);
  ASSERT_EQ(::symlink(elsewhere.path().c_str(), (out + "/link").c_str()), 0);
  const std::string zip = dir.file("link.zip");
  makeZip(zip, {{"link/sub/planted.txt", "evil"}});
  EXPECT_THROW(HUTZip::uncompressDir(zip, "", out, true), HEXDataException);
  EXPECT_FALSE(HUTFile::exists(elsewhere.file("sub")));
}

TEST(HUTZip, ExtractionNeverReplacesWhatIsNotARegularFile) {
  TempDir dir;
  const std::string zip = dir.file("a.zip");
  makeZip(zip, {{"victim.txt", "evil"}});
  const std::string kept = dir.write("kept.txt", "keep");
  const std::string out = dir.file("out");
  HUTFile::mkDirRecursive(out);
  const std::string target = out + "/victim.txt";
  struct Case {
    const char* what;
    std::function<void()> make;
    bool isLink;
  };
  const Case cases[] = {
      {"link", [&] { ASSERT_EQ(::symlink(kept.c_str(), target.c_str()), 0); }, true},
      {"fifo", [&] { ASSERT_EQ(::mkfifo(target.c_str(), 0600), 0); }, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    c.make();
    EXPECT_THROW(HUTZip::uncompress(zip, "victim.txt", out, true), HEXUserException);
    EXPECT_THROW(HUTZip::extractMember(zip, "victim.txt", target), HEXUserException);
    struct stat st;
    ASSERT_EQ(::lstat(target.c_str(), &st), 0);
    EXPECT_EQ(S_ISLNK(st.st_mode), c.isLink);
    EXPECT_EQ(S_ISFIFO(st.st_mode), !c.isLink);
    EXPECT_EQ(readFile(kept), "keep");
    ::unlink(target.c_str());
  }
  // No temporary file is left behind.
  EXPECT_TRUE(boost::filesystem::is_empty(out));
}

TEST(HUTZip, WritingRefusesUnsafeMemberNames) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  for (const std::string& name : {std::string("../x"), std::string("/abs"), std::string(""),
                                  std::string("a\0b", 3), std::string("a/../../b")})
    EXPECT_THROW(HUTZip::writeMember(zip, name, "x"), HEXDataException) << name;
  EXPECT_FALSE(HUTFile::exists(zip));
  // A colon elsewhere is an ordinary character.
  HUTZip::writeMember(zip, "a:b/c:d", "x");
  EXPECT_TRUE(HUTZip::containsFile(zip, "a:b/c:d"));
}

TEST(HUTZip, MembersBeyondTheSizeLimitOrTheirRecordedSizeAreRefused) {
  TempDir dir;
  // A member that inflates past the size its headers record is refused.
  const std::string liar = dir.file("liar.zip");
  makeZip(liar, {{"liar.bin", std::string(1 << 20, 'z')}});
  zr_test::patchFirstRecordedSize(liar, 100);
  std::string content;
  EXPECT_THROW(HUTZip::readMember(liar, "liar.bin", content), HEXDataException);
  EXPECT_LE(content.size(), 100u);

  const std::string zip = dir.file("bomb.zip");
  makeZip(zip, {{"small.txt", "fine"}, {"zeros.bin", std::string(1 << 20, '\0')}});
  ASSERT_LT(HUTFile::getSize(zip), 20000);
  zr_test::ScopedMemberLimit limit(64 * 1024);
  EXPECT_TRUE(HUTZip::readMember(zip, "small.txt", content));
  EXPECT_THROW_MSG(HUTZip::readMember(zip, "zeros.bin", content), HEXDataException, "zeros.bin");
  EXPECT_THROW_MSG(HUTZip::readMember(zip, "zeros.bin", content), HEXDataException, "limit");
  EXPECT_THROW(HUTZip::uncompress(zip, "zeros.bin", dir.file("out"), true), HEXDataException);
  EXPECT_FALSE(HUTFile::exists(dir.file("out/zeros.bin")));
  EXPECT_TRUE(boost::filesystem::is_empty(dir.file("out")));
  EXPECT_FALSE(HUTZip::extractMember(zip, "none", dir.file("x")));
  EXPECT_THROW(HUTZip::extractMember(zip, "zeros.bin", dir.file("x/zeros.bin")), HEXDataException);
  EXPECT_TRUE(boost::filesystem::is_empty(dir.file("x")));
}

TEST(HUTZip, ANestedArchiveYieldsItsMembersAndLeavesNoTemporary) {
  TempDir dir, tmp;
  zr_test::ScopedTmpDir scoped(tmp.path());
  const std::string inner = dir.file("inner.tilprj");
  makeZip(inner, {{"tilarchive/morwen/til_constraints.tilcst", "constraints"}});
  const std::string zip = dir.file("p.lfa");
  makeZip(zip, {{"lfa.json", "{}"}, {"til/p.tilprj", readFile(inner)}});

  EXPECT_TRUE(HUTZip::extractNestedMember(zip, "til/p.tilprj", "tilarchive/morwen/til_constraints.tilcst",
                                          dir.file("out/c.tilcst")));
  EXPECT_EQ(readFile(dir.file("out/c.tilcst")), "constraints");
  EXPECT_FALSE(HUTZip::extractNestedMember(zip, "til/p.tilprj", "tilarchive/none", dir.file("out/n")));
  EXPECT_FALSE(HUTZip::extractNestedMember(zip, "til/none.tilprj", "tilarchive/morwen/til_constraints.tilcst",
                                           dir.file("out/n")));
  // A member that is no archive is damaged input, and still leaves no temporary behind.
  EXPECT_THROW(HUTZip::extractNestedMember(zip, "lfa.json", "x", dir.file("out/n")), HEXDataException);
  EXPECT_FALSE(HUTFile::exists(dir.file("out/n")));
  EXPECT_TRUE(boost::filesystem::is_empty(tmp.path()));
}

TEST(HUTZip, DeleteFilesKeepsTheRestAndAnEmptyArchiveStaysAnArchive) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"a", "1"}, {"b", "2"}, {"c", "3"}});
  EXPECT_EQ(HUTZip::deleteFilesFromZip(zip, {"b", "none"}), 1);
  EXPECT_EQ(HUTZip::getFiles(zip), (Members{"a", "c"}));
  EXPECT_EQ(memberText(zip, "c"), "3");
  EXPECT_EQ(HUTZip::deleteFilesFromZip(zip, {"none"}), 0);
  EXPECT_EQ(HUTZip::deleteFilesFromZip(zip, {"a", "c"}), 2);
  EXPECT_TRUE(HUTFile::isFile(zip));
  EXPECT_TRUE(HUTZip::getFiles(zip).empty());
  HUTZip::writeMember(zip, "again", "x");
  EXPECT_EQ(HUTZip::getFiles(zip), (Members{"again"}));
  EXPECT_THROW(HUTZip::deleteFilesFromZip(dir.file("none.zip"), {"a"}), HEXFileNotFoundException);
}

TEST(HUTZip, UpdateFilesIsOneUpdateThatFailsWhole) {
  TempDir dir;
  const std::string zip = dir.file("real/p.cfa"), link = dir.file("p.cfa");
  HUTFile::mkDirRecursive(dir.file("real"));
  makeZip(zip, {{"a", "1"}, {"o/b", "2"}});
  ::chmod(zip.c_str(), 0640);
  ASSERT_EQ(::symlink(zip.c_str(), link.c_str()), 0);
  const std::string b = dir.write("b", "new b"), c = dir.write("c", "c");
  HUTZip::updateFiles(link, {{"o/b", b}, {"o/c", c}}, true);
  EXPECT_EQ(HUTZip::getFiles(zip), (Members{"a", "o/b", "o/c"}));
  EXPECT_EQ(memberText(zip, "o/b"), "new b");
  EXPECT_EQ(HUTZip::verifyDigest(link), HUTZip::DIGEST_VALID);
  struct stat st;
  ASSERT_EQ(::stat(zip.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0640u);

  const std::string before = readFile(zip);
  EXPECT_THROW(HUTZip::updateFiles(link, {{"o/d", c}, {"o/e", dir.file("missing")}}, true), HEXAll);
  EXPECT_THROW(HUTZip::updateFiles(link, {{"../up", c}}, true), HEXDataException);
  EXPECT_EQ(readFile(zip), before);
  EXPECT_EQ(std::distance(boost::filesystem::directory_iterator(dir.file("real")), {}), 1)
      << "no copy is left beside the archive";
}

TEST(HUTZip, DigestVerifiesUntilAMemberChanges) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"cfa.json", "{}"}, {"hw/top.hpfm", "<hpfm/>"}});
  EXPECT_EQ(HUTZip::verifyDigest(zip), HUTZip::DIGEST_NONE);
  HUTZip::attachDigestEn(zip);
  EXPECT_EQ(HUTZip::verifyDigest(zip), HUTZip::DIGEST_VALID);
  EXPECT_EQ(memberText(zip, "hw/top.hpfm"), "<hpfm/>");

  HUTZip::writeMember(zip, "hw/top.hpfm", "<hpfm changed=\"1\"/>");
  EXPECT_EQ(HUTZip::verifyDigest(zip), HUTZip::DIGEST_MISMATCH);
  HUTZip::attachDigestEn(zip);
  EXPECT_EQ(HUTZip::verifyDigest(zip), HUTZip::DIGEST_VALID);

  // A renamed member changes the digest though every content is the same.
  const std::string copy = dir.file("copy.cfa");
  makeZip(copy, {{"cfa.json", "{}"}, {"hw/top.hpfX", "<hpfm changed=\"1\"/>"}});
  HUTZip::attachDigestEn(copy);
  EXPECT_EQ(HUTZip::verifyDigest(copy), HUTZip::DIGEST_VALID);
  zr_test::patchBytes(copy, "hw/top.hpfX", "hw/top.hpfm");
  EXPECT_EQ(HUTZip::verifyDigest(copy), HUTZip::DIGEST_MISMATCH);

  HUTZip::deleteFilesFromZip(zip, {"cfa.json"});
  EXPECT_EQ(HUTZip::verifyDigest(zip), HUTZip::DIGEST_MISMATCH);
  EXPECT_EQ(HUTZip::verifyDigest(dir.file("none.zip")), HUTZip::DIGEST_NONE);
  EXPECT_THROW(HUTZip::attachDigestEn(dir.file("none.zip")), HEXFileNotFoundException);
}

TEST(HUTZip, AFailedWriteLeavesTheOriginalArchiveIntact) {
  TempDir dir;
  const std::string zip = dir.file("p.cfa");
  makeZip(zip, {{"cfa.json", "{\"v\": 1}"}, {"hw/top.hpfm", "<hpfm/>"}});
  const std::string before = readFile(zip);

  {
    // The temporary archive cannot grow past 64 KiB.
    zr_test::ScopedFileSizeLimit limit(64 * 1024);
    EXPECT_THROW_MSG(HUTZip::writeMember(zip, "big.bit", zr_test::incompressible(512 * 1024)),
                     HEXUserException, "left as it was");
  }
  EXPECT_EQ(readFile(zip), before);
  EXPECT_EQ(HUTZip::getFiles(zip), (Members{"cfa.json", "hw/top.hpfm"}));
  EXPECT_EQ(memberText(zip, "cfa.json"), "{\"v\": 1}");
  // No temporary file is left behind.
  EXPECT_EQ(std::distance(boost::filesystem::directory_iterator(dir.path()), {}), 1);
}

TEST(HUTZip, MembersPastTheMetadataOrRatioLimitAreRefusedNamingIt) {
  TempDir dir;
  const zr_test::ScopedReadLimits limits(64 << 10, 200);
  const std::string zip = dir.file("a.cfa");
  const std::string random = zr_test::incompressible(2 << 20);
  makeZip(zip, {{"small.xml", std::string(512 << 10, 'z')},  // below the ratio floor
                {"dense.bit", std::string(2 << 20, '\0')},   // past the ratio limit
                {"random.bit", random}});                    // past the metadata limit only
  const struct {
    std::string member;
    std::string readRefusal;     // "" when read whole
    std::string extractRefusal;  // "" when unpacked
  } cases[] = {
      {"small.xml", "beyond the metadata size limit of 65536 bytes", ""},
      {"dense.bit", "beyond the compression-ratio limit of 200 to 1",
       "beyond the compression-ratio limit of 200 to 1"},
      {"random.bit", "beyond the metadata size limit of 65536 bytes", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.member);
    std::string content;
    const std::string read =
        zr_test::thrownText<HEXDataException>([&] { HUTZip::readMember(zip, c.member, content); });
    EXPECT_NE(read.find(c.readRefusal), std::string::npos) << read;
    const std::string out = dir.file("out/" + c.member);
    const std::string extract =
        zr_test::thrownText<HEXDataException>([&] { HUTZip::extractMember(zip, c.member, out); });
    if (c.extractRefusal.empty()) {
      EXPECT_EQ(extract, "");
      EXPECT_EQ(HUTFile::getSize(out), static_cast<long long>(c.member == "small.xml" ? 512 << 10 : 2 << 20));
    } else {
      EXPECT_NE(extract.find(c.extractRefusal), std::string::npos) << extract;
      EXPECT_FALSE(HUTFile::exists(out));
    }
  }
  // Within the limits, the same members read whole.
  const zr_test::ScopedReadLimits lifted(64 << 20, 0);
  EXPECT_EQ(memberText(zip, "dense.bit").size(), 2u << 20);
  EXPECT_EQ(memberText(zip, "random.bit"), random);
}

TEST(HUTFile, EveryReaderRefusesWhatIsNoRegularFileWithoutBlocking) {
  TempDir dir;
  const std::string fifo = dir.file("pipe.cfa");
  const zr_test::GuardedFifo guard(fifo);
  const auto start = std::chrono::steady_clock::now();
  for (const std::string& path : {fifo, std::string("/dev/null"), dir.path()}) {
    SCOPED_TRACE(path);
    for (const std::string& text :
         {zr_test::thrownText<HEXUserException>([&] { HUTFile::readAll(path, 1 << 20); }),
          zr_test::thrownText<HEXUserException>([&] { HUTZip::getFiles(path); }),
          zr_test::thrownText<HEXUserException>([&] { isl::iostreams::xp::read_file(path); })})
      EXPECT_TRUE(text.find("not a regular file") != std::string::npos ||
                  text.find("is a directory") != std::string::npos)
          << text;
    EXPECT_FALSE(isl::iostreams::zip_istream("x", path).is_open());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  // A file is read whole up to its limit, and refused one byte past it.
  const std::string file = dir.write("f", "0123456789");
  EXPECT_EQ(HUTFile::readAll(file, 10), "0123456789");
  EXPECT_NE(zr_test::thrownText<HEXDataException>([&] {
              HUTFile::readAll(file, 9, "test limit");
            }).find("test limit of 9"),
            std::string::npos);
}
