#include <gtest/gtest.h>

#include <string>

#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"

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
