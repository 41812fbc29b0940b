#include <gtest/gtest.h>

#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulations.h"

TEST(HTEQEmulations, NamesTheEmulationFilesOfAnArchive) {
  EXPECT_EQ(HTEQEmulations::getEmulationXmlFilename(), "hw_emu.xml");
  EXPECT_EQ(HTEQEmulations::getEmulationJsonFilename(), "hw_emu.json");
  EXPECT_EQ(HTEQEmulations::getEmuDirName(), "hw_emu");
  EXPECT_EQ(HTEQEmulations::getEmulationPropJsonFilename(), "prop.json");
}

TEST(HTEQEmulations, FactoriesAppendInOrderAndStartEmpty) {
  HTEQEmulations model;
  EXPECT_EQ(model.getVersionMajor(), 0u);
  EXPECT_EQ(model.getVersionMinor(), 0u);
  EXPECT_TRUE(model.getPfmMetadataVersion().empty());

  HTEQEmulation* first = model.createEmulation();
  HTEQEmulation* second = model.createEmulation("named");
  ASSERT_EQ(model.getEmulations().size(), 2u);
  EXPECT_EQ(model.getEmulations()[0], first);
  EXPECT_EQ(model.getEmulations()[1], second);
  EXPECT_EQ(first->getName(), "");
  EXPECT_EQ(second->getName(), "named");

  HTEQEmulationFile* plain = second->createFile();
  HTEQEmulationFile* typed = second->createFile("EMU_HPFM", "a.hpfm");
  ASSERT_EQ(second->getFiles().size(), 2u);
  EXPECT_EQ(second->getFiles()[0], plain);
  EXPECT_EQ(second->getFiles()[1], typed);
  EXPECT_EQ(plain->getType(), "");
  EXPECT_EQ(typed->getType(), "EMU_HPFM");
  EXPECT_EQ(typed->getName(), "a.hpfm");
  EXPECT_TRUE(typed->getInstPath().empty());

  HTEQEmuFeatureRom* rom = model.createFeatureRom();
  ASSERT_EQ(model.getFeatureRoms().size(), 1u);
  EXPECT_EQ(model.getFeatureRoms()[0], rom);
}

TEST(HTEQEmulationFile, CStringSettersTakeNullAsEmpty) {
  HTEQEmulationFile file("T", "N");
  file.setInstPath("/inst");
  EXPECT_EQ(file.getInstPath(), "/inst");
  file.setType(static_cast<const char*>(nullptr));
  file.setName(static_cast<const char*>(nullptr));
  file.setInstPath(static_cast<const char*>(nullptr));
  EXPECT_EQ(file.getType(), "");
  EXPECT_EQ(file.getName(), "");
  EXPECT_EQ(file.getInstPath(), "");
}

TEST(HTEQEmuFeatureRom, FeatureBitMapCountsOnlyEnabledSchedulerAndPeerToPeer) {
  struct Case {
    const char* scheduler;
    const char* peerToPeer;
    std::uint32_t word;
  };
  const Case cases[] = {
      {"", "", 0x1},
      {"enabled", "", 0x9},
      {"", "enabled", 0x10001},
      {"enabled", "enabled", 0x10009},
      {"Enabled", "ENABLED", 0x1},
      {"disabled", "true", 0x1},
      {"enabled ", " enabled", 0x1},
  };
  for (const Case& c : cases) {
    HTEQEmuFeatureRom rom;
    rom.setBitMapBoardSchedular(c.scheduler);
    rom.setBitMapPeerToPeer(c.peerToPeer);
    // The unified platform switch and the value text play no part.
    rom.setBitMapUnifiedPlatform("enabled");
    rom.setBitMapValue("0xffffffff");
    EXPECT_EQ(rom.getFeatureBitMap(), c.word) << c.scheduler << "/" << c.peerToPeer;
  }
}
