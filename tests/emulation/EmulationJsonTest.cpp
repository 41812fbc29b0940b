#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/json_parser/error.hpp>
#include <boost/property_tree/ptree.hpp>
#include <string>
#include <vector>

#include "emulation/EmuTestSupport.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationExtMetaJsonReader.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationJsonReader.h"
#include "platform/HTEQEmulationJsonWriter.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQJSONUtils.h"
#include "support/TestSupport.h"

using boost::property_tree::ptree_bad_path;
using Names = std::vector<std::string>;

using emu_test::describe;

namespace {

void parseEmuJson(const std::string& text, HTEQEmulations& model) {
  zr_test::TempDir dir;
  HTEQEmulationJsonReader(dir.write("hw_emu.json", text), &model).parseJson();
}

HTEQEmuFeatureRom* parseExtMeta(const std::string& text, HTEQEmulations& model) {
  zr_test::TempDir dir;
  HTEQEmulationExtMetaJsonReader(dir.write("ext.json", text), &model).parseJson();
  return model.getFeatureRoms().empty() ? nullptr : model.getFeatureRoms().back();
}

std::string written(HTEQEmulations& model) {
  zr_test::TempDir dir;
  const std::string file = dir.file("hw_emu.json");
  HTEQEmulationJsonWriter(&model, file).writeJson();
  return zr_test::readFile(file);
}

Names romFields(const HTEQEmuFeatureRom& rom) {
  return {rom.getVBNV(),
          rom.getCdmaBaseAddress0(),
          rom.getCdmaBaseAddress1(),
          rom.getCdmaBaseAddress2(),
          rom.getCdmaBaseAddress3(),
          rom.getBitMapValue(),
          rom.getBitMapBoardSchedular(),
          rom.getBitMapPeerToPeer(),
          rom.getBitMapUnifiedPlatform()};
}

}  // namespace

TEST(HTEQEmulationJsonReader, ReadsVersionEmulationsFilesAndInstallPaths) {
  const std::pair<std::string, std::string> rows[] = {
      {emu_test::standardJson(), "2.1|hw_emu=EMU_HPFM:emu/emu.hpfm@/opt/emu;TOP_BD:emu/emu.bd@;|second="},
      // No version, an emulation without a name, and an empty array written
      // as the empty text, as the property tree's writer prints one.
      {R"({"emulations": [ {"files": [ {"type": "T", "name": "n"} ]}, {"name": "e", "files": ""} ]})",
       "|=T:n@;|e="},
      {R"({"emulations": ""})", ""},
  };
  for (const auto& row : rows) {
    HTEQEmulations model;
    parseEmuJson(row.first, model);
    EXPECT_EQ(describe(model), row.second);
  }
}

TEST(HTEQEmulationJsonReader, ValidityAndRefusals) {
  for (const char* text : {R"({"pfm_metadata_version": "1"})", R"({"emulations": [ {"name": "x"} ]})",
                           R"({"emulations": [ {"files": [ {"name": "n"} ]} ]})",
                           R"({"emulations": [ {"files": [ {"type": "t"} ]} ]})"}) {
    HTEQEmulations model;
    EXPECT_THROW(parseEmuJson(text, model), ptree_bad_path) << text;  // a required key is missing
  }
  zr_test::TempDir dir;
  HTEQEmulations model;
  EXPECT_TRUE(HTEQEmulationJsonReader(dir.write("a.json", R"({"emulations": []})"), &model).isJsonValid());
  EXPECT_FALSE(HTEQEmulationJsonReader(dir.write("b.json", R"({"featureRoms": []})"), &model).isJsonValid());
  EXPECT_THROW(HTEQEmulationJsonReader(dir.file("absent.json"), &model), HEXFileNotFoundException);
  EXPECT_THROW(HTEQEmulationJsonReader(dir.file("absent.json"), nullptr), HEXAlgException);
  EXPECT_THROW(HTEQEmulationJsonReader(nullptr), HEXAlgException);
  // A reader without a file has nothing to parse but a ready tree.
  HTEQEmulationJsonReader treeReader(&model);
  EXPECT_THROW(treeReader.parseJson(), HEXAlgException);
  boost::property_tree::ptree root;
  HTEQJSONUtils::readJSON(std::string(R"({"emulations": [ {"name": "t", "files": []} ]})"), root, "tree");
  treeReader.parseJson(root);
  EXPECT_EQ(describe(model), "|t=");
}

TEST(HTEQEmulationExtMetaJsonReader, ReadsEveryKeyAndLaterElementsOverrideEarlierOnes) {
  HTEQEmulations model;
  const HTEQEmuFeatureRom* rom = parseExtMeta(R"({"featureRoms": [ {
      "vbnvName": "v:b:n:1", "cdmaBaseAddress0": "0x10", "cdmaBaseAddress1": "0x20",
      "cdmaBaseAddress2": "0x30", "cdmaBaseAddress3": "0x40",
      "featureBitMap": [ {"value": "5", "boardScheduler": "enabled", "peerToPeer": "disabled"} ] } ]})",
                                              model);
  ASSERT_EQ(model.getFeatureRoms().size(), 1u);
  EXPECT_EQ(romFields(*rom),
            (Names{"v:b:n:1", "0x10", "0x20", "0x30", "0x40", "5", "enabled", "disabled", ""}));

  // A key the later element leaves out keeps the earlier value.
  HTEQEmulations layered;
  rom = parseExtMeta(R"({"featureRoms": [
      {"vbnvName": "first", "cdmaBaseAddress0": "0x1",
       "featureBitMap": [ {"value": "1", "boardScheduler": "enabled"}, {"value": "2"} ]},
      {"vbnvName": "second", "featureBitMap": [ {"peerToPeer": "enabled"} ]} ]})",
                     layered);
  ASSERT_EQ(layered.getFeatureRoms().size(), 1u);
  EXPECT_EQ(romFields(*rom), (Names{"second", "0x1", "", "", "", "2", "enabled", "enabled", ""}));
}

TEST(HTEQEmulationExtMetaJsonReader, ValidityAndFailures) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  // Any JSON object is valid, whatever its keys; without "featureRoms" the one
  // feature ROM stays empty.
  EXPECT_TRUE(HTEQEmulationExtMetaJsonReader(dir.write("a.json", R"({"other": 1})"), &model).isJsonValid());
  EXPECT_TRUE(model.getFeatureRoms().empty());
  const HTEQEmuFeatureRom* rom = parseExtMeta(R"({"other": 1})", model);
  ASSERT_NE(rom, nullptr);
  EXPECT_EQ(rom->getVBNV(), "");
  HTEQEmulations missingBitmap;
  EXPECT_THROW(parseExtMeta(R"({"featureRoms": [ {"vbnvName": "x"} ]})", missingBitmap), ptree_bad_path);
  EXPECT_THROW(HTEQEmulationExtMetaJsonReader(dir.file("absent.json"), &model), HEXFileNotFoundException);
  EXPECT_THROW(HTEQEmulationExtMetaJsonReader(&model).parseJson(), HEXAlgException);
}

TEST(HTEQEmulationJsonWriter, WritesTheTextTheReaderReads) {
  HTEQEmulations empty;
  HTEQEmulations bare;
  bare.createEmulation("e");
  HTEQEmulations full;
  full.setPfmMetadataVersion("2.1");
  HTEQEmulation* e = full.createEmulation("hw/emu");
  e->createFile("EMU_HPFM", "a.hpfm")->setInstPath("/opt");
  e->createFile("TOP_BD", "b.bd");
  const std::pair<HTEQEmulations*, std::string> rows[] = {
      // An empty version keeps its key; empty lists are the empty string.
      {&empty, "{\n    \"pfm_metadata_version\": \"\",\n    \"emulations\": \"\"\n}\n"},
      {&bare,
       "{\n    \"pfm_metadata_version\": \"\",\n    \"emulations\": [\n        {\n"
       "            \"name\": \"e\",\n            \"files\": \"\"\n        }\n    ]\n}\n"},
      // Keys in reader order, "inst_path" only where set, "/" escaped.
      {&full,
       "{\n    \"pfm_metadata_version\": \"2.1\",\n    \"emulations\": [\n        {\n"
       "            \"name\": \"hw\\/emu\",\n            \"files\": [\n                {\n"
       "                    \"type\": \"EMU_HPFM\",\n                    \"name\": \"a.hpfm\",\n"
       "                    \"inst_path\": \"\\/opt\"\n                },\n                {\n"
       "                    \"type\": \"TOP_BD\",\n                    \"name\": \"b.bd\"\n"
       "                }\n            ]\n        }\n    ]\n}\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(written(*row.first), row.second);
}

TEST(HTEQEmulationJsonWriter, UnwritableTargetRaisesAndLeavesNoFile) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  model.createEmulation("e");
  const std::string existing = dir.write("keep.json", "old");
  zr_test::writeFile(dir.file("sub/x"), "");
  const std::string targets[] = {dir.file("missing/hw_emu.json"), dir.file("sub"), ""};
  for (const std::string& target : targets) {
    EXPECT_THROW(HTEQEmulationJsonWriter(&model, target).writeJson(),
                 boost::property_tree::json_parser::json_parser_error)
        << target;
  }
  EXPECT_EQ(zr_test::readFile(existing), "old");
  // No temporary is left behind.
  EXPECT_EQ(HUTFile::listFilesRecursive(dir.path()).size(), 2u);
}

TEST(HTEQEmulationFile, CStringSettersTakeNullAsEmpty) {
  HTEQEmulationFile file("T", "N");
  file.setInstPath("/inst");
  file.setType(static_cast<const char*>(nullptr));
  file.setName(static_cast<const char*>(nullptr));
  file.setInstPath(static_cast<const char*>(nullptr));
  EXPECT_EQ(file.getType() + file.getName() + file.getInstPath(), "");
}

TEST(HTEQEmuFeatureRom, FeatureBitMapCountsOnlyEnabledSchedulerAndPeerToPeer) {
  const struct {
    const char* scheduler;
    const char* peerToPeer;
    std::uint32_t word;
  } cases[] = {{"", "", 0x1},
               {"enabled", "", 0x9},
               {"", "enabled", 0x10001},
               {"enabled", "enabled", 0x10009},
               {"Enabled", "ENABLED", 0x1},
               {"disabled", "true", 0x1},
               {"enabled ", " enabled", 0x1}};
  for (const auto& c : cases) {
    HTEQEmuFeatureRom rom;
    rom.setBitMapBoardSchedular(c.scheduler);
    rom.setBitMapPeerToPeer(c.peerToPeer);
    // The unified platform switch and the value text play no part.
    rom.setBitMapUnifiedPlatform("enabled");
    rom.setBitMapValue("0xffffffff");
    EXPECT_EQ(rom.getFeatureBitMap(), c.word) << c.scheduler << "/" << c.peerToPeer;
  }
}
