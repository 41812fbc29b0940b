#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "formats/HpfmTestDoc.h"
#include "hardware/HwTestPlatform.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HPLBoard.h"
#include "platform/HPLFile.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "support/TestSupport.h"

using teq_platform::PlatformLoader;
using zr_test::readFile;
using zr_test::ScopedTmpDir;
using zr_test::TempDir;

namespace {

// A JSON metadata member with a device, a memory, clocks and a file list.
std::string jsonMember() {
  return R"({
  "vendor": "acme", "boardId": "card", "name": "base", "versionMajor": "3", "versionMinor": "1",
  "usesPR": "true", "hostArchitecture": "x86_64",
  "devices": [{"name": "fpga0", "type": "8", "fpgaPart": "tzq9kp:ptzq9kp:pk676:-2:e",
               "numSLRs": "2", "core": {"name": "OCL", "numComputeUnits": "60"}}],
  "memories": [{"name": "bank0", "type": "ddr4", "size": "16GB", "lowAddress": "4096"}],
  "systemClocks": [{"name": "a", "id": "3"}, {"name": "b", "id": "7", "default": "TRUE"}],
  "files": [{"type": "DR_BD", "name": "bd/dr.tcl"}]
}
)";
}

std::string makeArchive(const std::string& path,
                        const std::vector<std::pair<std::string, std::string>>& members) {
  for (const auto& m : members) HUTZip::writeMember(path, m.first, m.second);
  return path;
}

std::string member(const std::string& archive, const std::string& name) {
  std::string content;
  EXPECT_TRUE(HUTZip::readMember(archive, name, content)) << name;
  return content;
}

// One of the platform's extraction operations that take only a destination.
using ExtractOp = bool (HTEQHardwarePlatform::*)(const std::string&) const;

// Runs f, which must raise E with exactly this text.
template <class E>
void expectThrowText(const std::function<void()>& f, const std::string& text) {
  try {
    f();
    ADD_FAILURE() << "expected: " << text;
  } catch (const E& e) {
    EXPECT_EQ(std::string(e.what()), text);
  }
}

}  // namespace

// ---------------------------------------------------------------------------
// Writing the JSON metadata

TEST(WriteToJSON, RoundTripThroughAnotherArchiveIsEqual) {
  TempDir dir;
  const std::string source = makeArchive(dir.file("card.lfa"), {{"lfa.json", jsonMember()}});
  HPLPlatform original;
  ASSERT_TRUE(HTEQCfaJsonReader(&original).parseCFA(source, PlatformLoader::Default));
  original.setName("renamed");

  // The other archive already holds a member, which the rewrite keeps.
  const std::string target = makeArchive(dir.file("other.lfa"), {{"keep/me.txt", "kept"}});
  original.setPlatformFile(target);
  original.writeToJSON();
  EXPECT_EQ(member(target, "keep/me.txt"), "kept");
  const std::string text = member(target, "lfa.json");
  ASSERT_GE(text.size(), 3u);
  EXPECT_EQ(text.substr(text.size() - 3), "}\n\n");  // the document's own line end and one more

  HPLPlatform reread;
  ASSERT_TRUE(HTEQCfaJsonReader(&reread).parseCFA(target, PlatformLoader::Default));
  EXPECT_EQ(reread.getName(), "renamed");
  EXPECT_EQ(reread.getFile("DR_BD"), "bd/dr.tcl");
  EXPECT_TRUE(reread.isEquals(original));
  EXPECT_TRUE(original.isEquals(reread));

  // The comparison is not blind: the unchanged source differs by its name.
  HPLPlatform unchanged;
  ASSERT_TRUE(HTEQCfaJsonReader(&unchanged).parseCFA(source, PlatformLoader::Default));
  unchanged.setPlatformFile(target);
  EXPECT_FALSE(unchanged.isEquals(reread));
}

TEST(WriteToJSON, NothingWithoutPlatformFileAndRefusals) {
  HPLPlatform none;
  EXPECT_NO_THROW(none.writeToJSON());

  TempDir dir;
  // A file without an extension has no member name: nothing is written.
  HPLPlatform bare;
  bare.setPlatformFile(dir.file("noext"));
  EXPECT_NO_THROW(bare.writeToJSON());
  EXPECT_FALSE(HUTFile::exists(dir.file("noext")));

  hwcore_test::TestPlatform notHpl;
  notHpl.setPlatformFile(dir.file("x.lfa"));
  expectThrowText<HEXAlgException>(
      [&] { notHpl.writeToJSON(); },
      "HTEQHardwarePlatform::writeToJSON() - Could not cast this to HPLPlatform");
  EXPECT_FALSE(HUTFile::exists(dir.file("x.lfa")));
}

TEST(WriteToJSON, FailureLeavesTheArchiveUnchanged) {
  TempDir dir;
  // A damaged archive cannot be opened for the update, and keeps its bytes.
  const std::string damaged = dir.write("damaged.lfa", "PK\x03\x04 this is no archive");
  HPLPlatform p;
  p.setPlatformFile(damaged);
  expectThrowText<HEXUserException>(
      [&] { p.writeToJSON(); },
      "HTEQHardwarePlatform::writeToJSON() - Could not open file for streaming: lfa.json");
  EXPECT_EQ(readFile(damaged), std::string("PK\x03\x04 this is no archive"));

  // A model that cannot be written as JSON (its board has drivers) writes nothing.
  const std::string sound = makeArchive(dir.file("sound.lfa"), {{"lfa.json", jsonMember()}});
  const std::string before = readFile(sound);
  HPLPlatform withDriver;
  ASSERT_TRUE(HTEQCfaJsonReader(&withDriver).parseCFA(sound, PlatformLoader::Default));
  withDriver.getBoard().addDriver();
  EXPECT_THROW(withDriver.writeToJSON(), HEXAlgException);
  EXPECT_EQ(readFile(sound), before);
}

// ---------------------------------------------------------------------------
// Archiving files

TEST(ArchiveFile, PutsTheFileInRewritesMetadataAndStamps) {
  TempDir dir;
  const std::string archive = makeArchive(dir.file("card.lfa"), {{"lfa.json", jsonMember()}});
  HPLPlatform p;
  ASSERT_TRUE(HTEQCfaJsonReader(&p).parseCFA(archive, PlatformLoader::Default));
  EXPECT_EQ(HUTZip::verifyDigest(archive), HUTZip::DIGEST_NONE);

  // Larger than one copy block, with every byte value.
  std::string big;
  for (int i = 0; i < 10000; ++i) big.push_back(static_cast<char>(i % 256));
  p.archiveFile("DR_BD", "bd/first.tcl", dir.write("first.tcl", big));
  EXPECT_EQ(member(archive, "bd/first.tcl"), big);
  EXPECT_EQ(HUTZip::verifyDigest(archive), HUTZip::DIGEST_VALID);

  // A second file of the type replaces the entry; the old member stays.
  p.archiveFile("DR_BD", "bd/second.tcl", dir.write("second.tcl", "second"));
  EXPECT_EQ(member(archive, "bd/second.tcl"), "second");
  EXPECT_TRUE(HUTZip::containsFile(archive, "bd/first.tcl"));
  EXPECT_EQ(p.getFile("DR_BD"), "bd/second.tcl");
  int drBd = 0;
  for (auto it = p.getFileVecRange().first; it != p.getFileVecRange().second; ++it)
    drBd += (*it)->getType() == "DR_BD";
  EXPECT_EQ(drBd, 1);
  EXPECT_EQ(HUTZip::verifyDigest(archive), HUTZip::DIGEST_VALID);

  // The metadata in the archive names the new member.
  HPLPlatform reread;
  ASSERT_TRUE(HTEQCfaJsonReader(&reread).parseCFA(archive, PlatformLoader::Default));
  EXPECT_EQ(reread.getFile("DR_BD"), "bd/second.tcl");
  EXPECT_TRUE(reread.isEquals(p));

  // The stamp notices a later change.
  HUTZip::writeMember(archive, "extra.txt", "x");
  EXPECT_EQ(HUTZip::verifyDigest(archive), HUTZip::DIGEST_MISMATCH);
  p.attachDigest();
  EXPECT_EQ(HUTZip::verifyDigest(archive), HUTZip::DIGEST_VALID);
  HPLPlatform none;
  EXPECT_NO_THROW(none.attachDigest());
}

TEST(ArchiveFile, RefusalsWithTheirWords) {
  TempDir dir;
  const std::string source = dir.write("a.tcl", "a");
  HPLPlatform none;
  expectThrowText<HEXAlgException>([&] { none.archiveFile("DR_BD", "a.tcl", source); },
                                   "HTEQHardwarePlatform::archiveFile() - lfaFile is not set");
  HPLPlatform bare;
  bare.setPlatformFile(dir.write("noext", "x"));
  expectThrowText<HEXAlgException>([&] { bare.archiveFile("DR_BD", "a.tcl", source); },
                                   "HTEQHardwarePlatform::archiveFile() - jsonFile is not set");
  HPLPlatform missing;
  missing.setPlatformFile(dir.file("missing.lfa"));
  expectThrowText<HEXAlgException>([&] { missing.archiveFile("DR_BD", "a.tcl", source); },
                                   "HTEQHardwarePlatform::archiveFile() - lfaFile does not exist");
  EXPECT_FALSE(HUTFile::exists(dir.file("missing.lfa")));
  hwcore_test::TestPlatform notHpl;
  notHpl.setPlatformFile(makeArchive(dir.file("t.lfa"), {{"lfa.json", "{}"}}));
  expectThrowText<HEXAlgException>(
      [&] { notHpl.archiveFile("DR_BD", "a.tcl", source); },
      "HTEQHardwarePlatform::archiveFile() - Could not cast this to HPLPlatform");
  // Without a platform file, the plain copy does nothing.
  EXPECT_NO_THROW(none._archiveFile("a.tcl", source));
}

TEST(ArchiveFile, FailureLeavesTheArchiveReadableAndUnchanged) {
  TempDir dir;
  const std::string archive = makeArchive(dir.file("card.lfa"), {{"lfa.json", jsonMember()}});
  const std::string before = readFile(archive);
  HPLPlatform p;
  ASSERT_TRUE(HTEQCfaJsonReader(&p).parseCFA(archive, PlatformLoader::Default));

  // A source that is missing, or a directory, cannot be read.
  for (const std::string& source : {dir.file("absent.tcl"), dir.path()}) {
    expectThrowText<HEXUserException>(
        [&] { p.archiveFile("DR_BD", "bd/new.tcl", source); },
        "HTEQHardwarePlatform::archiveFile() - Could not open file for reading: " + source);
    EXPECT_EQ(readFile(archive), before);
  }
  // A member name that would leave the archive's tree cannot be streamed.
  const std::string source = dir.write("x.tcl", "x");
  expectThrowText<HEXUserException>(
      [&] { p._archiveFile("../x.tcl", source); },
      "HTEQHardwarePlatform::archiveFile() - Could not open file for streaming: " + archive);
  EXPECT_EQ(readFile(archive), before);
  HPLPlatform reread;
  EXPECT_TRUE(HTEQCfaJsonReader(&reread).parseCFA(archive, PlatformLoader::Default));

  // A step after the member went in fails (a model whose board has drivers
  // cannot be written as JSON): nothing of the change stays, in the archive or
  // in the model's file list.
  auto fileList = [&p] {
    std::vector<std::string> names;
    for (auto r = p.getFileVecRange(); r.first != r.second; ++r.first)
      names.push_back((*r.first)->getType() + "=" + (*r.first)->getName());
    return names;
  };
  const std::vector<std::string> filesBefore = fileList();
  p.getBoard().addDriver();
  EXPECT_THROW(p.archiveFile("DR_BD", "bd/new.tcl", source), HEXAlgException);
  EXPECT_EQ(readFile(archive), before);
  EXPECT_EQ(fileList(), filesBefore);
  EXPECT_EQ(HUTZip::getFiles(archive), std::vector<std::string>{"lfa.json"});
  EXPECT_FALSE(HUTFile::exists(archive + ".update"));

  // A damaged archive is refused the same way and keeps its bytes.
  const std::string damaged = dir.write("damaged.lfa", "not a zip at all");
  HPLPlatform q;
  q.setPlatformFile(damaged);
  expectThrowText<HEXUserException>(
      [&] { q.archiveFile("DR_BD", "bd/x.tcl", source); },
      "HTEQHardwarePlatform::archiveFile() - Could not open file for streaming: " + damaged);
  EXPECT_EQ(readFile(damaged), "not a zip at all");
}

// ---------------------------------------------------------------------------
// Extraction

TEST(Extract, EachTypedMemberIntoItsDestination) {
  TempDir dir;
  const std::string archive = makeArchive(dir.file("card.lfa"), {{"lfa.json", "{}"},
                                                                 {"bd/dr.tcl", "dr"},
                                                                 {"emu/emu.xml", "<emu/>"},
                                                                 {"emu/emu.json", "{\"emu\": 1}"},
                                                                 {"noc/traffic.nts", "nts"},
                                                                 {"noc/solution.ncr", "ncr"}});
  HPLPlatform p;
  p.setPlatformFile(archive);
  p.addFile("DR_BD", "bd/dr.tcl");
  p.addFile("EMU_XML", "emu/emu.xml");
  p.addFile("EMU_JSON", "emu/emu.json");
  p.addFile("NOC_TRAFFIC", "noc/traffic.nts");
  p.addFile("NOC_SOLUTION", "noc/solution.ncr");
  const std::vector<std::pair<ExtractOp, const char*>> cases = {
      {&HPLPlatform::extractDrBdFile, "dr"},
      {&HPLPlatform::extractEmuXmlFile, "<emu/>"},
      {&HPLPlatform::extractNTSFile, "nts"},
      {&HPLPlatform::extractEmuJsonFile, "{\"emu\": 1}"},
      {&HPLPlatform::extractNCRFile, "ncr"}};
  int n = 0;
  for (const auto& c : cases) {
    // The destination's directories are made.
    const std::string dest = dir.file("out/" + std::to_string(n++) + "/deep/file");
    EXPECT_TRUE((p.*c.first)(dest)) << c.second;
    EXPECT_EQ(readFile(dest), c.second);
  }
  EXPECT_TRUE(p.extractFile("NOC_TRAFFIC", dir.file("by/type")));
  EXPECT_EQ(readFile(dir.file("by/type")), "nts");
  EXPECT_TRUE(p.extractFileFromPlatform("bd/dr.tcl", dir.file("by/name")));
  EXPECT_EQ(readFile(dir.file("by/name")), "dr");
  EXPECT_TRUE(HTEQHardwarePlatform::extract("bd/dr.tcl", archive, dir.file("plain")));
  EXPECT_EQ(readFile(dir.file("plain")), "dr");
}

TEST(Extract, MissingTypesMembersAndArchivesAnswerFalse) {
  TempDir dir;
  const std::string archive = makeArchive(dir.file("card.lfa"), {{"lfa.json", "{}"}});
  HPLPlatform p;
  p.setPlatformFile(archive);
  p.addFile("DR_BD", "bd/absent.tcl");  // listed, not in the archive
  const std::string dest = dir.file("out/sub/file");
  EXPECT_FALSE(p.extractFile("NOT_A_TYPE", dest));
  EXPECT_FALSE(HUTFile::exists(dir.file("out")));  // no directory made for an unknown type
  EXPECT_FALSE(p.extractHPFMFile(dest, true));
  EXPECT_FALSE(p.extractEmuXmlFile(dest));
  EXPECT_FALSE(p.extractDrBdFile(dest));
  EXPECT_FALSE(p.extractFileFromPlatform("", dest));
  EXPECT_FALSE(p.extractFileFromPlatform("lfa.json", ""));
  EXPECT_FALSE(HUTFile::exists(dest));
  EXPECT_FALSE(HTEQHardwarePlatform::extract("lfa.json", dir.file("absent.lfa"), dest));
  EXPECT_FALSE(HTEQHardwarePlatform::extract("lfa.json", dir.write("junk.lfa", "junk"), dest));
  EXPECT_FALSE(HUTFile::exists(dest));
  // A destination that is a directory cannot be written.
  EXPECT_FALSE(HTEQHardwarePlatform::extract("lfa.json", archive, dir.path()));
  // The tile-array operations, without any project.
  EXPECT_FALSE(p.extractTILPRJFile(dest));
  EXPECT_FALSE(p.extractLARCHFile(dest));
  EXPECT_FALSE(p.extractTILMetadataFile(dest));
  HPLPlatform unset;
  EXPECT_FALSE(unset.extractFileFromPlatform("lfa.json", dest));
  EXPECT_FALSE(HUTFile::exists(dest));
}

TEST(Extract, ADamagedMemberLeavesNoFile) {
  TempDir dir;
  std::string data;
  for (int i = 0; i < 200000; ++i) data += std::to_string(i * 7919 % 10007);
  const std::string archive = makeArchive(dir.file("card.lfa"), {{"big.bin", data}});
  // Flip bytes in the middle of the compressed data.
  std::string bytes = readFile(archive);
  for (std::size_t k = bytes.size() / 2; k < bytes.size() / 2 + 64; ++k)
    bytes[k] = static_cast<char>(~bytes[k]);
  zr_test::writeFile(archive, bytes);
  const std::string dest = dir.file("out/big.bin");
  EXPECT_FALSE(HTEQHardwarePlatform::extract("big.bin", archive, dest));
  EXPECT_FALSE(HUTFile::exists(dest));
}

TEST(Extract, ChildEmulationPlatformReadsBelowItsDirectory) {
  TempDir dir;
  const std::string archive =
      makeArchive(dir.file("card.lfa"), {{"x", "parent"}, {"hw_emu/x", "child"}, {"hw_emu/bd/dr.tcl", "dr"}});
  HPLPlatform p;
  p.setPlatformFile(archive);
  EXPECT_TRUE(p.extractFileFromPlatform("x", dir.file("parent")));
  EXPECT_EQ(readFile(dir.file("parent")), "parent");
  p.setIsChildHardwareEmuPlatform(true);
  p.addFile("DR_BD", "bd/dr.tcl");
  EXPECT_TRUE(p.extractFileFromPlatform("x", dir.file("child")));
  EXPECT_EQ(readFile(dir.file("child")), "child");
  EXPECT_TRUE(p.extractDrBdFile(dir.file("dr")));
  EXPECT_EQ(readFile(dir.file("dr")), "dr");
}

TEST(Extract, HpfmIsRepairedOnlyWithTheFlag) {
  TempDir dir;
  hpfm_test::HpfmDoc doc;
  doc.body = hpfm_test::hbmInterface("S00", "hbm_0", {"true", "preferred", "false"});
  const std::string text = doc.text();
  const std::string archive = makeArchive(dir.file("card.lfa"), {{"hw/shell.hpfm", text}});
  HPLPlatform p;
  p.setPlatformFile(archive);
  p.addFile("HPFM", "hw/shell.hpfm");
  ComMsgCapture cap;
  ASSERT_TRUE(p.extractHPFMFile(dir.file("plain.hpfm"), false));
  EXPECT_EQ(readFile(dir.file("plain.hpfm")), text);
  ASSERT_TRUE(p.extractHPFMFile(dir.file("fixed.hpfm"), true));
  const std::string fixed = readFile(dir.file("fixed.hpfm"));
  EXPECT_NE(fixed, text);
  EXPECT_EQ(zr_test::countOf(text, "\"preferred\""), 1u);
  EXPECT_EQ(zr_test::countOf(fixed, "\"preferred\""), 2u);
  // Only a destination named .hpfm is repaired.
  ASSERT_TRUE(p.extractHPFMFile(dir.file("other.xml"), true));
  EXPECT_EQ(readFile(dir.file("other.xml")), text);
}

namespace {

const char* const kLarch = "tilarchive/morwen/logical_arch_til.larch";
const char* const kIntfCst = "tilarchive/morwen/til_interface.tilintfcst";
const char* const kIntfSol = "tilarchive/morwen/til_interface.tilintfsol";
const char* const kTilCst = "tilarchive/morwen/til_constraints.tilcst";
const char* const kMeta = "tilarchive/morwen/tilprj_meta_data.json";

// A platform archive with a tile-array project stored as projectMember.
std::string archiveWithProject(const TempDir& dir, const std::string& projectMember,
                               std::vector<std::pair<std::string, std::string>> outer = {}) {
  HUTFile::mkDirRecursive(dir.file("build"));
  const std::string project = makeArchive(dir.file("build/project.tilprj"), {{kLarch, "larch"},
                                                                             {kIntfCst, "intfcst"},
                                                                             {kIntfSol, "intfsol"},
                                                                             {kTilCst, "tilcst"},
                                                                             {kMeta, "meta"}});
  outer.emplace_back(projectMember, readFile(project));
  HUTFile::rmRecursive(dir.file("build"));
  return makeArchive(dir.file("shell.lfa"), outer);
}

}  // namespace

TEST(ExtractNested, FilesOfTheTileArrayProject) {
  TempDir dir;
  TempDir tmp;
  ScopedTmpDir scoped(tmp.path());
  HPLPlatform p;
  // An old plain member of the same kind is not used when the project has the file.
  p.setPlatformFile(archiveWithProject(dir, "sub/shell.tilprj", {{"old.larch", "old larch"}}));
  p.addFile("TILPRJ", "sub/shell.tilprj");
  p.addFile("ME_LOGICAL_ARCH", "old.larch");
  const std::vector<std::pair<ExtractOp, const char*>> cases = {
      {&HPLPlatform::extractLARCHFile, "larch"},
      {&HPLPlatform::extractINTFCSTFile, "intfcst"},
      {&HPLPlatform::extractINTFSOLFile, "intfsol"},
      {&HPLPlatform::extractTILCSTFile, "tilcst"},
      {&HPLPlatform::extractTILMetadataFile, "meta"}};
  for (const auto& c : cases) {
    const std::string dest = dir.file(std::string("out/") + c.second);
    EXPECT_TRUE((p.*c.first)(dest)) << c.second;
    EXPECT_EQ(readFile(dest), c.second);
    // The staged project is gone again.
    EXPECT_FALSE(HUTFile::exists(tmp.file("shell.tilprj"))) << c.second;
  }
  // The project itself; a destination that is already a file is kept as it is.
  ASSERT_TRUE(p.extractTILPRJFile(dir.file("out/p.tilprj")));
  std::string meta;
  EXPECT_TRUE(HUTZip::readMember(dir.file("out/p.tilprj"), kMeta, meta));
  EXPECT_EQ(meta, "meta");
  const std::string existing = dir.write("existing.tilprj", "mine");
  EXPECT_TRUE(p.extractTILPRJFile(existing));
  EXPECT_EQ(readFile(existing), "mine");
}

TEST(ExtractNested, AProjectStagedBeforehandIsUsedAndKept) {
  TempDir dir;
  TempDir tmp;
  ScopedTmpDir scoped(tmp.path());
  HPLPlatform p;
  p.setPlatformFile(archiveWithProject(dir, "shell.tilprj"));
  p.addFile("TILPRJ", "shell.tilprj");
  ASSERT_TRUE(p.extractTILPRJFile(tmp.file("shell.tilprj")));
  EXPECT_TRUE(p.extractTILCSTFile(dir.file("cst")));
  EXPECT_EQ(readFile(dir.file("cst")), "tilcst");
  EXPECT_TRUE(HUTFile::isFile(tmp.file("shell.tilprj")));
  // The file missing from the project answers false, and nothing is left behind.
  HPLPlatform q;
  q.setPlatformFile(makeArchive(dir.file("q.lfa"), {{"q.tilprj", "not a project"}}));
  q.addFile("TILPRJ", "q.tilprj");
  EXPECT_FALSE(q.extractLARCHFile(dir.file("larch")));
  EXPECT_FALSE(HUTFile::exists(dir.file("larch")));
  EXPECT_FALSE(HUTFile::exists(tmp.file("q.tilprj")));
}

TEST(ExtractNested, OldArchivesFallBackToPlainMembers) {
  TempDir dir;
  TempDir tmp;
  ScopedTmpDir scoped(tmp.path());
  HPLPlatform p;
  p.setPlatformFile(makeArchive(
      dir.file("old.lfa"), {{"me/arch.larch", "old larch"}, {"me/cst.xml", "old cst"}, {"me/a.zip", "old"}}));
  p.addFile("ME_LOGICAL_ARCH", "me/arch.larch");
  p.addFile("ME_CONSTRAINT", "me/cst.xml");
  p.addFile("ME_ARCHIVE", "me/a.zip");
  // Those without an old form (no content here) have no fallback.
  const std::vector<std::pair<ExtractOp, const char*>> cases = {
      {&HPLPlatform::extractLARCHFile, "old larch"}, {&HPLPlatform::extractINTFCSTFile, "old cst"},
      {&HPLPlatform::extractTILPRJFile, "old"},      {&HPLPlatform::extractINTFSOLFile, nullptr},
      {&HPLPlatform::extractTILCSTFile, nullptr},    {&HPLPlatform::extractTILMetadataFile, nullptr}};
  int n = 0;
  for (const auto& c : cases) {
    const std::string dest = dir.file("out" + std::to_string(n++));
    EXPECT_EQ((p.*c.first)(dest), c.second != nullptr) << n;
    if (c.second != nullptr) {
      EXPECT_EQ(readFile(dest), c.second) << n;
    }
  }
}
