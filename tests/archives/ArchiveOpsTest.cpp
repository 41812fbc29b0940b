#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <functional>
#include <string>
#include <tuple>
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
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using teq_platform::PlatformLoader;
using zr_test::readFile;
using zr_test::ScopedTmpDir;
using zr_test::TempDir;

namespace {

// A JSON metadata member that lists one file.
std::string jsonMember() {
  return zr_test::lfaJson(",\n \"files\": [{\"type\": \"DR_BD\", \"name\": \"bd/dr.tcl\"}]");
}

// One of the platform's extraction operations that take only a destination.
using ExtractOp = bool (HTEQHardwarePlatform::*)(const std::string&) const;

}  // namespace

// ---------------------------------------------------------------------------
// Writing the JSON metadata

TEST(WriteToJSON, RoundTripThroughAnotherArchiveIsEqual) {
  TempDir dir;
  const std::string source = zr_test::makeZip(dir.file("card.lfa"), {{"lfa.json", jsonMember()}});
  HPLPlatform original;
  ASSERT_TRUE(HTEQCfaJsonReader(&original).parseCFA(source, PlatformLoader::Default));
  original.setName("renamed");

  // The other archive already holds a member, which the rewrite keeps.
  const std::string target = zr_test::makeZip(dir.file("other.lfa"), {{"keep/me.txt", "kept"}});
  original.setPlatformFile(target);
  original.writeToJSON();
  EXPECT_EQ(zr_test::memberText(target, "keep/me.txt"), "kept");
  const std::string text = zr_test::memberText(target, "lfa.json");
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

// ---------------------------------------------------------------------------
// Archiving files

TEST(ArchiveFile, PutsTheFileInRewritesMetadataAndStamps) {
  TempDir dir;
  const std::string archive = zr_test::makeZip(dir.file("card.lfa"), {{"lfa.json", jsonMember()}});
  HPLPlatform p;
  ASSERT_TRUE(HTEQCfaJsonReader(&p).parseCFA(archive, PlatformLoader::Default));
  EXPECT_EQ(HUTZip::verifyDigest(archive), HUTZip::DIGEST_NONE);

  // Larger than one copy block, with every byte value.
  std::string big;
  for (int i = 0; i < 10000; ++i) big.push_back(static_cast<char>(i % 256));
  p.archiveFile("DR_BD", "bd/first.tcl", dir.write("first.tcl", big));
  EXPECT_EQ(zr_test::memberText(archive, "bd/first.tcl"), big);
  EXPECT_EQ(HUTZip::verifyDigest(archive), HUTZip::DIGEST_VALID);

  // A second file of the type replaces the entry; the old member stays.
  p.archiveFile("DR_BD", "bd/second.tcl", dir.write("second.tcl", "second"));
  EXPECT_EQ(zr_test::memberText(archive, "bd/second.tcl"), "second");
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

// Each refusal raises its exception with its words and leaves the files it
// touched as they were (a missing one stays missing).
TEST(ArchiveOps, RefusalsWithTheirWordsChangeNothing) {
  TempDir dir;
  const std::string source = dir.write("x.tcl", "x");
  const std::string sound = zr_test::makeZip(dir.file("sound.lfa"), {{"lfa.json", jsonMember()}});
  const std::string damaged = dir.write("damaged.lfa", "PK\x03\x04 this is no archive");
  HPLPlatform none, bare, missing, broken, parsed;
  bare.setPlatformFile(dir.file("noext"));
  missing.setPlatformFile(dir.file("missing.lfa"));
  broken.setPlatformFile(damaged);
  ASSERT_TRUE(HTEQCfaJsonReader(&parsed).parseCFA(sound, PlatformLoader::Default));
  hwcore_test::TestPlatform notHpl;
  notHpl.setPlatformFile(zr_test::makeZip(dir.file("t.lfa"), {{"lfa.json", "{}"}}));
  const std::vector<std::string> watched = {dir.file("noext"), dir.file("missing.lfa"), damaged, sound,
                                            dir.file("t.lfa")};
  auto snapshot = [&] {
    std::vector<std::string> out;
    for (const auto& f : watched) out.push_back(HUTFile::exists(f) ? readFile(f) : "(none)");
    return out;
  };
  const auto before = snapshot();
  // Without a platform file, or without a member name for the metadata, nothing is written.
  EXPECT_NO_THROW(none.writeToJSON());
  EXPECT_NO_THROW(bare.writeToJSON());
  EXPECT_NO_THROW(none._archiveFile("a.tcl", source));

  const std::string wj = "HTEQHardwarePlatform::writeToJSON() - ",
                    af = "HTEQHardwarePlatform::archiveFile() - ";
  const std::vector<std::tuple<std::function<void()>, bool, std::string>> rows = {
      {[&] { notHpl.writeToJSON(); }, false, wj + "Could not cast this to HPLPlatform"},
      {[&] { broken.writeToJSON(); }, true, wj + "Could not open file for streaming: lfa.json"},
      {[&] { none.archiveFile("DR_BD", "a.tcl", source); }, false, af + "lfaFile is not set"},
      {[&] { bare.archiveFile("DR_BD", "a.tcl", source); }, false, af + "jsonFile is not set"},
      {[&] { missing.archiveFile("DR_BD", "a.tcl", source); }, false, af + "lfaFile does not exist"},
      {[&] { notHpl.archiveFile("DR_BD", "a.tcl", source); }, false,
       af + "Could not cast this to HPLPlatform"},
      // A source that is missing, or a directory, cannot be read.
      {[&] { parsed.archiveFile("DR_BD", "bd/n.tcl", dir.file("no.tcl")); }, true,
       af + "Could not open file for reading: " + dir.file("no.tcl")},
      {[&] { parsed.archiveFile("DR_BD", "bd/n.tcl", dir.path()); }, true,
       af + "Could not open file for reading: " + dir.path()},
      // A member name that would leave the archive's tree, or a damaged archive, cannot be streamed.
      {[&] { parsed._archiveFile("../x.tcl", source); }, true,
       af + "Could not open file for streaming: " + sound},
      {[&] { broken.archiveFile("DR_BD", "bd/x.tcl", source); }, true,
       af + "Could not open file for streaming: " + damaged},
  };
  for (const auto& [op, user, text] : rows) {
    try {
      op();
      ADD_FAILURE() << "no exception: " << text;
    } catch (const HEXAll& e) {
      EXPECT_EQ(std::string(e.what()), text);
      EXPECT_EQ(dynamic_cast<const HEXUserException*>(&e) != nullptr, user) << text;
    }
    EXPECT_EQ(snapshot(), before) << text;
  }
  EXPECT_EQ(parsed.getFile("DR_BD"), "bd/dr.tcl");
}

// A step after the member went in fails (a model whose board has drivers
// cannot be written as JSON): nothing of the change stays, in the archive or
// in the model's file list.
TEST(ArchiveOps, AFailedMetadataWriteUndoesTheWholeChange) {
  TempDir dir;
  const std::string archive = zr_test::makeZip(dir.file("card.lfa"), {{"lfa.json", jsonMember()}});
  const std::string before = readFile(archive);
  HPLPlatform p;
  ASSERT_TRUE(HTEQCfaJsonReader(&p).parseCFA(archive, PlatformLoader::Default));
  p.getBoard().addDriver();
  EXPECT_THROW(p.writeToJSON(), HEXAlgException);
  EXPECT_EQ(readFile(archive), before);
  EXPECT_THROW(p.archiveFile("DR_BD", "bd/new.tcl", dir.write("x.tcl", "x")), HEXAlgException);
  EXPECT_EQ(readFile(archive), before);
  EXPECT_EQ(p.getFile("DR_BD"), "bd/dr.tcl");
  EXPECT_EQ(std::distance(p.getFileVecRange().first, p.getFileVecRange().second), 1);
  EXPECT_FALSE(HUTFile::exists(archive + ".update"));
}

// ---------------------------------------------------------------------------
// Extraction

// Each operation against one archive: a row with content extracts it (the
// destination's directories are made), a row without answers false and
// leaves no file.
TEST(Extract, EachOperationFindsItsMemberOrAnswersFalse) {
  TempDir dir;
  const std::string archive = zr_test::makeZip(dir.file("card.lfa"), {{"lfa.json", "{}"},
                                                                      {"bd/dr.tcl", "dr"},
                                                                      {"emu/emu.xml", "<emu/>"},
                                                                      {"emu/emu.json", "{\"emu\": 1}"},
                                                                      {"noc/traffic.nts", "nts"},
                                                                      {"noc/solution.ncr", "ncr"},
                                                                      {"hw_emu/bd/dr.tcl", "child dr"}});
  HPLPlatform p, absent, child, unset;
  for (HPLPlatform* q : {&p, &absent, &child}) q->setPlatformFile(archive);
  p.addFile("DR_BD", "bd/dr.tcl");
  p.addFile("EMU_XML", "emu/emu.xml");
  p.addFile("EMU_JSON", "emu/emu.json");
  p.addFile("NOC_TRAFFIC", "noc/traffic.nts");
  p.addFile("NOC_SOLUTION", "noc/solution.ncr");
  absent.addFile("DR_BD", "bd/absent.tcl");  // listed, not in the archive
  // A child emulation platform reads below its own directory.
  child.setIsChildHardwareEmuPlatform(true);
  child.addFile("DR_BD", "bd/dr.tcl");
  using Op = std::function<bool(const std::string&)>;
  const std::vector<std::tuple<const char*, Op, const char*>> rows = {
      {"dr_bd", [&](const std::string& d) { return p.extractDrBdFile(d); }, "dr"},
      {"emu_xml", [&](const std::string& d) { return p.extractEmuXmlFile(d); }, "<emu/>"},
      {"nts", [&](const std::string& d) { return p.extractNTSFile(d); }, "nts"},
      {"emu_json", [&](const std::string& d) { return p.extractEmuJsonFile(d); }, "{\"emu\": 1}"},
      {"ncr", [&](const std::string& d) { return p.extractNCRFile(d); }, "ncr"},
      {"by type", [&](const std::string& d) { return p.extractFile("NOC_TRAFFIC", d); }, "nts"},
      {"by name", [&](const std::string& d) { return p.extractFileFromPlatform("bd/dr.tcl", d); }, "dr"},
      {"plain", [&](const std::string& d) { return HPLPlatform::extract("bd/dr.tcl", archive, d); }, "dr"},
      {"child", [&](const std::string& d) { return child.extractDrBdFile(d); }, "child dr"},
      {"unknown type", [&](const std::string& d) { return p.extractFile("NOT_A_TYPE", d); }, nullptr},
      {"absent member", [&](const std::string& d) { return absent.extractDrBdFile(d); }, nullptr},
      {"unlisted", [&](const std::string& d) { return absent.extractEmuXmlFile(d); }, nullptr},
      {"no hpfm", [&](const std::string& d) { return absent.extractHPFMFile(d, true); }, nullptr},
      {"empty name", [&](const std::string& d) { return p.extractFileFromPlatform("", d); }, nullptr},
      {"no archive set", [&](const std::string& d) { return unset.extractFileFromPlatform("lfa.json", d); },
       nullptr},
      {"missing archive",
       [&](const std::string& d) { return HPLPlatform::extract("lfa.json", dir.file("absent.lfa"), d); },
       nullptr},
      {"junk archive",
       [&](const std::string& d) {
         return HPLPlatform::extract("lfa.json", dir.write("junk.lfa", "junk"), d);
       },
       nullptr},
      {"no tile project", [&](const std::string& d) { return p.extractTILPRJFile(d); }, nullptr},
      {"no larch", [&](const std::string& d) { return p.extractLARCHFile(d); }, nullptr},
      {"no tile metadata", [&](const std::string& d) { return p.extractTILMetadataFile(d); }, nullptr},
  };
  for (const auto& [what, op, content] : rows) {
    const std::string dest = dir.file(std::string("out/") + what + "/deep/file");
    EXPECT_EQ(op(dest), content != nullptr) << what;
    if (content != nullptr) {
      EXPECT_EQ(readFile(dest), content) << what;
    } else {
      EXPECT_FALSE(HUTFile::exists(dest)) << what;
    }
  }
  EXPECT_FALSE(HUTFile::exists(dir.file("out/unknown type")));  // no directory made for an unknown type
  // An empty destination, or one that is a directory, cannot be written.
  EXPECT_FALSE(p.extractFileFromPlatform("lfa.json", ""));
  EXPECT_FALSE(HTEQHardwarePlatform::extract("lfa.json", archive, dir.path()));
}

TEST(Extract, ADamagedMemberLeavesNoFile) {
  TempDir dir;
  const std::string archive = dir.file("card.lfa");
  zr_test::makeZip(archive, {{"big.bin", zr_test::incompressible(200000)}});
  zr_test::damageFirstMemberData(archive);
  EXPECT_FALSE(HTEQHardwarePlatform::extract("big.bin", archive, dir.file("out/big.bin")));
  EXPECT_FALSE(HUTFile::exists(dir.file("out/big.bin")));
}

TEST(Extract, HpfmIsRepairedOnlyWithTheFlag) {
  TempDir dir;
  hpfm_test::HpfmDoc doc;
  doc.body = hpfm_test::hbmInterface("S00", "hbm_0", {"true", "preferred", "false"});
  const std::string text = doc.text();
  const std::string archive = zr_test::makeZip(dir.file("card.lfa"), {{"hw/shell.hpfm", text}});
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
  const std::string project = zr_test::makeZip(dir.file("build/project.tilprj"), {{kLarch, "larch"},
                                                                                  {kIntfCst, "intfcst"},
                                                                                  {kIntfSol, "intfsol"},
                                                                                  {kTilCst, "tilcst"},
                                                                                  {kMeta, "meta"}});
  outer.emplace_back(projectMember, readFile(project));
  HUTFile::rmRecursive(dir.file("build"));
  return zr_test::makeZip(dir.file("shell.lfa"), outer);
}

}  // namespace

// The tile-array files come from the project stored in the archive, staged in
// the temporary directory and removed again; an old archive without a
// project falls back to plain members where the file had an old form.
TEST(ExtractNested, FilesOfTheTileArrayProjectOrTheirOldMembers) {
  TempDir dir;
  TempDir tmp;
  ScopedTmpDir scoped(tmp.path());
  HPLPlatform p, old, staged, bad;
  // An old plain member of the same kind is not used when the project has the file.
  p.setPlatformFile(archiveWithProject(dir, "sub/shell.tilprj", {{"old.larch", "old larch"}}));
  p.addFile("TILPRJ", "sub/shell.tilprj");
  p.addFile("ME_LOGICAL_ARCH", "old.larch");
  old.setPlatformFile(zr_test::makeZip(
      dir.file("old.lfa"), {{"me/arch.larch", "old larch"}, {"me/cst.xml", "old cst"}, {"me/a.zip", "old"}}));
  old.addFile("ME_LOGICAL_ARCH", "me/arch.larch");
  old.addFile("ME_CONSTRAINT", "me/cst.xml");
  old.addFile("ME_ARCHIVE", "me/a.zip");
  bad.setPlatformFile(zr_test::makeZip(dir.file("bad.lfa"), {{"bad.tilprj", "not a project"}}));
  bad.addFile("TILPRJ", "bad.tilprj");
  const std::vector<std::tuple<HPLPlatform*, ExtractOp, const char*>> rows = {
      {&p, &HPLPlatform::extractLARCHFile, "larch"},
      {&p, &HPLPlatform::extractINTFCSTFile, "intfcst"},
      {&p, &HPLPlatform::extractINTFSOLFile, "intfsol"},
      {&p, &HPLPlatform::extractTILCSTFile, "tilcst"},
      {&p, &HPLPlatform::extractTILMetadataFile, "meta"},
      {&old, &HPLPlatform::extractLARCHFile, "old larch"},
      {&old, &HPLPlatform::extractINTFCSTFile, "old cst"},
      {&old, &HPLPlatform::extractTILPRJFile, "old"},
      {&old, &HPLPlatform::extractINTFSOLFile, nullptr},
      {&old, &HPLPlatform::extractTILCSTFile, nullptr},
      {&old, &HPLPlatform::extractTILMetadataFile, nullptr},
      {&bad, &HPLPlatform::extractLARCHFile, nullptr},
  };
  int n = 0;
  for (const auto& [platform, op, content] : rows) {
    const std::string dest = dir.file("out/" + std::to_string(n++));
    EXPECT_EQ((platform->*op)(dest), content != nullptr) << n;
    EXPECT_EQ(HUTFile::exists(dest) ? readFile(dest) : "(none)", content ? content : "(none)") << n;
    EXPECT_TRUE(boost::filesystem::is_empty(tmp.path())) << n;  // nothing staged is left behind
  }
  // The project itself; a destination that is already a file is kept as it is.
  ASSERT_TRUE(p.extractTILPRJFile(dir.file("out/p.tilprj")));
  std::string meta;
  EXPECT_TRUE(HUTZip::readMember(dir.file("out/p.tilprj"), kMeta, meta));
  EXPECT_EQ(meta, "meta");
  const std::string existing = dir.write("existing.tilprj", "mine");
  EXPECT_TRUE(p.extractTILPRJFile(existing));
  EXPECT_EQ(readFile(existing), "mine");
  // A project staged beforehand is used and kept.
  ASSERT_TRUE(p.extractTILPRJFile(tmp.file("shell.tilprj")));
  EXPECT_TRUE(p.extractTILCSTFile(dir.file("cst")));
  EXPECT_EQ(readFile(dir.file("cst")), "tilcst");
  EXPECT_TRUE(HUTFile::isFile(tmp.file("shell.tilprj")));
}
