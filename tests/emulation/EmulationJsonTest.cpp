#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>
#include <string>

#include "emulation/EmuTestSupport.h"
#include "host/HEXAll.h"
#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationExtMetaJsonReader.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationJsonReader.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQJSONUtils.h"
#include "support/TestSupport.h"

using boost::property_tree::ptree;
using boost::property_tree::ptree_bad_path;

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

}  // namespace

TEST(HTEQEmulationJsonReader, ReadsVersionEmulationsFilesAndInstallPaths) {
  HTEQEmulations model;
  parseEmuJson(emu_test::standardJson(), model);
  EXPECT_EQ(model.getPfmMetadataVersion(), "2.1");
  ASSERT_EQ(model.getEmulations().size(), 2u);
  const HTEQEmulation* first = model.getEmulations()[0];
  EXPECT_EQ(first->getName(), "hw_emu");
  ASSERT_EQ(first->getFiles().size(), 2u);
  EXPECT_EQ(first->getFiles()[0]->getType(), "EMU_HPFM");
  EXPECT_EQ(first->getFiles()[0]->getName(), "emu/emu.hpfm");
  EXPECT_EQ(first->getFiles()[0]->getInstPath(), "/opt/emu");
  EXPECT_EQ(first->getFiles()[1]->getType(), "TOP_BD");
  EXPECT_EQ(first->getFiles()[1]->getInstPath(), "");
  EXPECT_EQ(model.getEmulations()[1]->getName(), "second");
  EXPECT_TRUE(model.getEmulations()[1]->getFiles().empty());
}

TEST(HTEQEmulationJsonReader, OptionalKeysMayBeMissing) {
  HTEQEmulations model;
  // No version, an emulation without a name, and an empty array written as
  // the empty text, as the property tree's writer prints one.
  parseEmuJson(R"({"emulations": [ {"files": [ {"type": "T", "name": "n"} ]}, {"name": "e", "files": ""} ]})",
               model);
  EXPECT_EQ(model.getPfmMetadataVersion(), "");
  ASSERT_EQ(model.getEmulations().size(), 2u);
  EXPECT_EQ(model.getEmulations()[0]->getName(), "");
  EXPECT_EQ(model.getEmulations()[0]->getFiles().size(), 1u);
  EXPECT_TRUE(model.getEmulations()[1]->getFiles().empty());

  HTEQEmulations none;
  parseEmuJson(R"({"emulations": ""})", none);
  EXPECT_TRUE(none.getEmulations().empty());
}

TEST(HTEQEmulationJsonReader, MissingRequiredKeysRaiseBadPath) {
  const char* cases[] = {
      R"({"pfm_metadata_version": "1"})",
      R"({"emulations": [ {"name": "x"} ]})",
      R"({"emulations": [ {"files": [ {"name": "n"} ]} ]})",
      R"({"emulations": [ {"files": [ {"type": "t"} ]} ]})",
  };
  for (const char* text : cases) {
    HTEQEmulations model;
    EXPECT_THROW(parseEmuJson(text, model), ptree_bad_path) << text;
  }
}

TEST(HTEQEmulationJsonReader, IsJsonValidLooksForEmulations) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  EXPECT_TRUE(HTEQEmulationJsonReader(dir.write("a.json", R"({"emulations": []})"), &model).isJsonValid());
  EXPECT_FALSE(HTEQEmulationJsonReader(dir.write("b.json", R"({"featureRoms": []})"), &model).isJsonValid());
  EXPECT_THROW(HTEQEmulationJsonReader(dir.write("c.json", "{\"emulations\": ["), &model).isJsonValid(),
               HEXDataException);
  EXPECT_TRUE(model.getEmulations().empty());
}

TEST(HTEQEmulationJsonReader, RefusesBadInputWithoutCrashing) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  EXPECT_THROW(HTEQEmulationJsonReader(dir.file("absent.json"), &model), HEXFileNotFoundException);
  EXPECT_THROW(HTEQEmulationJsonReader(dir.file("absent.json"), nullptr), HEXAlgException);
  EXPECT_THROW(HTEQEmulationJsonReader(nullptr), HEXAlgException);
  EXPECT_THROW(parseEmuJson("not json", model), HEXDataException);
  // A directory in place of the file is refused as an unreadable file.
  EXPECT_THROW(HTEQEmulationJsonReader(dir.path(), &model).parseJson(), HEXUserException);
  EXPECT_THROW(HTEQEmulationExtMetaJsonReader(dir.path(), &model).isJsonValid(), HEXUserException);
  // A reader without a file has nothing to parse but a ready tree.
  HTEQEmulationJsonReader treeReader(&model);
  EXPECT_THROW(treeReader.parseJson(), HEXAlgException);
  ptree root;
  HTEQJSONUtils::readJSON(std::string(R"({"emulations": [ {"name": "t", "files": []} ]})"), root, "tree");
  treeReader.parseJson(root);
  ASSERT_EQ(model.getEmulations().size(), 1u);
  EXPECT_EQ(model.getEmulations()[0]->getName(), "t");
}

TEST(HTEQEmulationExtMetaJsonReader, ReadsEveryKeyIntoOneFeatureRom) {
  HTEQEmulations model;
  HTEQEmuFeatureRom* rom = parseExtMeta(R"({"featureRoms": [ {
      "vbnvName": "v:b:n:1", "cdmaBaseAddress0": "0x10", "cdmaBaseAddress1": "0x20",
      "cdmaBaseAddress2": "0x30", "cdmaBaseAddress3": "0x40",
      "featureBitMap": [ {"value": "5", "boardScheduler": "enabled", "peerToPeer": "disabled"} ] } ]})",
                                        model);
  ASSERT_EQ(model.getFeatureRoms().size(), 1u);
  EXPECT_EQ(rom->getVBNV(), "v:b:n:1");
  EXPECT_EQ(rom->getCdmaBaseAddress0(), "0x10");
  EXPECT_EQ(rom->getCdmaBaseAddress1(), "0x20");
  EXPECT_EQ(rom->getCdmaBaseAddress2(), "0x30");
  EXPECT_EQ(rom->getCdmaBaseAddress3(), "0x40");
  EXPECT_EQ(rom->getBitMapValue(), "5");
  EXPECT_EQ(rom->getBitMapBoardSchedular(), "enabled");
  EXPECT_EQ(rom->getBitMapPeerToPeer(), "disabled");
  EXPECT_EQ(rom->getBitMapUnifiedPlatform(), "");
}

TEST(HTEQEmulationExtMetaJsonReader, LaterElementsOverrideEarlierOnes) {
  HTEQEmulations model;
  HTEQEmuFeatureRom* rom = parseExtMeta(R"({"featureRoms": [
      {"vbnvName": "first", "cdmaBaseAddress0": "0x1",
       "featureBitMap": [ {"value": "1", "boardScheduler": "enabled"}, {"value": "2"} ]},
      {"vbnvName": "second",
       "featureBitMap": [ {"peerToPeer": "enabled"} ]} ]})",
                                        model);
  ASSERT_EQ(model.getFeatureRoms().size(), 1u);
  EXPECT_EQ(rom->getVBNV(), "second");
  // A key the later element leaves out keeps the earlier value.
  EXPECT_EQ(rom->getCdmaBaseAddress0(), "0x1");
  EXPECT_EQ(rom->getBitMapValue(), "2");
  EXPECT_EQ(rom->getBitMapBoardSchedular(), "enabled");
  EXPECT_EQ(rom->getFeatureBitMap(), 0x10009u);
}

TEST(HTEQEmulationExtMetaJsonReader, ValidityAndFailures) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  // Any JSON object is valid, whatever its keys.
  EXPECT_TRUE(HTEQEmulationExtMetaJsonReader(dir.write("a.json", R"({"other": 1})"), &model).isJsonValid());
  EXPECT_THROW(HTEQEmulationExtMetaJsonReader(dir.write("b.json", "{"), &model).isJsonValid(),
               HEXDataException);
  EXPECT_TRUE(model.getFeatureRoms().empty());

  // Without "featureRoms" the one feature ROM stays empty.
  HTEQEmuFeatureRom* rom = parseExtMeta(R"({"other": 1})", model);
  ASSERT_NE(rom, nullptr);
  EXPECT_EQ(rom->getVBNV(), "");

  HTEQEmulations missingBitmap;
  EXPECT_THROW(parseExtMeta(R"({"featureRoms": [ {"vbnvName": "x"} ]})", missingBitmap), ptree_bad_path);
  EXPECT_THROW(HTEQEmulationExtMetaJsonReader(dir.file("absent.json"), &model), HEXFileNotFoundException);
  EXPECT_THROW(HTEQEmulationExtMetaJsonReader(&model).parseJson(), HEXAlgException);
}
