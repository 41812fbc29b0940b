#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "hardware/HwTestPlatform.h"
#include "host/ComMsgMgr.h"
#include "platform/HPLMemory.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"

using hwcore_test::TestPlatform;

namespace {

HTEQHardwareBusInterface* addMemPort(TestPlatform& p, const std::string& port, const std::string& tag,
                                     unsigned segments = 0) {
  HTEQHardwareBusInterface* bi = p.addBusInterface();
  bi->setName(port + "_" + tag);
  bi->setMemPort(port);
  bi->setSPTag(tag);
  for (unsigned i = 0; i < segments; ++i) {
    HTEQHardwareAddressSegment* s = bi->addAddressSegment();
    s->setIndex(10 + i);
    s->setSlr("SLR" + std::to_string(i));
  }
  return bi;
}

}  // namespace

TEST(MemoryIndexState, GeneralPurposePortsLeaveItUndecided) {
  TestPlatform p;
  addMemPort(p, "m_axi_gp", "DDR");
  addMemPort(p, "S_AXI_GP", "DDR");
  addMemPort(p, "", "DDR");
  EXPECT_FALSE(p.isMemoryResourceIndexed());
  EXPECT_FALSE(p.supportsMemoryResourceIndex());
  EXPECT_EQ(p.getMemoryIndexState(), HTEQHardwarePlatform::kIndexUnknown);
  // Still undecided, so an interface added later decides.
  addMemPort(p, "MEMSS", "HBM");
  EXPECT_TRUE(p.isMemoryResourceIndexed());
  EXPECT_EQ(p.getMemoryIndexState(), HTEQHardwarePlatform::kIndexed);
}

TEST(MemoryIndexState, FirstDecidingInterfaceFixesIt) {
  TestPlatform indexed;
  EXPECT_FALSE(indexed.supportsMemoryResourceIndex());
  addMemPort(indexed, "MEMSS", "HBM");
  addMemPort(indexed, "bank0", "DDR");
  EXPECT_FALSE(indexed.supportsMemoryResourceIndex());  // nobody asked yet
  EXPECT_TRUE(indexed.isMemoryResourceIndexed());
  EXPECT_TRUE(indexed.supportsMemoryResourceIndex());

  TestPlatform plain;
  addMemPort(plain, "bank0", "DEFAULT");  // skipped
  addMemPort(plain, "bank1", "");         // an empty tag counts as a bank
  addMemPort(plain, "memss", "HBM");
  EXPECT_FALSE(plain.isMemoryResourceIndexed());
  EXPECT_EQ(plain.getMemoryIndexState(), HTEQHardwarePlatform::kNotIndexed);
  // Fixed once known: later interfaces do not change it.
  addMemPort(plain, "memss", "HBM");
  EXPECT_FALSE(plain.isMemoryResourceIndexed());
}

TEST(MemoryBanks, IndexedPlatformUsesUpperCaseTypes) {
  TestPlatform p;
  addMemPort(p, "memss", "hbm", 3);
  addMemPort(p, "memss", "ddr", 1);
  addMemPort(p, "bank0", "PLRAM", 1);
  std::vector<std::string> types{"kept"};
  EXPECT_EQ(p.getUniqueMemoryTypeStrings(types), 2u);
  EXPECT_EQ(types, (std::vector<std::string>{"kept", "DDR", "HBM"}));
  EXPECT_EQ(p.getUniqueMemoryTypeCount(), 2u);
  EXPECT_EQ(p.getMemoryTypeCount("hbm"), 0u);
  EXPECT_EQ(p.getMemoryTypeCount("HBM"), 3u);
  EXPECT_EQ(p.getMemoryTypeCount("PLRAM"), 0u);
  EXPECT_EQ(p.getMemorySize("HBM", 0), "16GB");
  EXPECT_EQ(p.getMemorySize("HBM", 2), "16GB");
  EXPECT_EQ(p.getMemorySize("HBM", 3), "");
  EXPECT_EQ(p.getMemorySize("hbm", 0), "");
  EXPECT_EQ(p.getMemoryIndex("HBM", 2), 12u);
  EXPECT_EQ(p.getMemoryIndex("HBM", 3), 0u);
  EXPECT_EQ(p.getMemorySLR("HBM", 1), "SLR1");
  EXPECT_EQ(p.getMemorySLR("HBM", 5), "");
  EXPECT_EQ(p.getMemorySLR("DDR", 0), "SLR0");
}

TEST(MemoryBanks, IndexedLookupsLetTheLastInterfaceWin) {
  TestPlatform p;
  addMemPort(p, "memss", "HBM", 2);
  HTEQHardwareBusInterface* later = addMemPort(p, "memss", "hbm", 3);
  later->addAddressSegment();
  // Count: the first interface with the tag.
  EXPECT_EQ(p.getMemoryTypeCount("HBM"), 2u);
  // Index and SLR: the last interface with enough segments.
  EXPECT_EQ(p.getMemoryIndex("HBM", 1), 11u);
  EXPECT_EQ(p.getMemoryIndex("HBM", 3), 0u);
  later->setSPTag("other");
  EXPECT_EQ(p.getMemoryIndex("HBM", 1), 11u);
}

TEST(MemoryBanks, NonIndexedPlatformTakesTagsAsTheyStand) {
  TestPlatform p;
  HTEQHardwareBusInterface* first = addMemPort(p, "bank0", "ddr");
  first->setSize("4GB");
  first->setSLR("SLR0");
  HTEQHardwareBusInterface* second = addMemPort(p, "bank1", "DDR");
  second->setSize("8GB");
  second->setSLR("SLR1");
  addMemPort(p, "bank2", "default");
  std::vector<std::string> types;
  EXPECT_EQ(p.getUniqueMemoryTypeStrings(types), 2u);
  EXPECT_EQ(types, (std::vector<std::string>{"DDR", "ddr"}));
  EXPECT_EQ(p.getMemoryTypeCount("ddr"), 1u);
  EXPECT_EQ(p.getMemoryTypeCount("Ddr"), 0u);
  EXPECT_EQ(p.getMemoryIndex("ddr", 0), 0u);
  // The walk compares without case, so the last of both interfaces decides.
  EXPECT_EQ(p.getMemorySize("ddr", 99), "8GB");
  EXPECT_EQ(p.getMemorySLR("ddr", 0), "SLR1");
  EXPECT_EQ(p.getMemorySize("HBM", 0), "");
}

TEST(MemoryBanks, MemoryInterfacesListIndexedFirst) {
  TestPlatform p;
  HTEQHardwareBusInterface* bank = addMemPort(p, "bank0", "DDR");
  addMemPort(p, "m_axi_gp", "DDR");
  HTEQHardwareBusInterface* memss = addMemPort(p, "MemSS", "HBM");
  HTEQHardwareBusInterface* untagged = addMemPort(p, "bank1", "");
  HTEQHardwarePlatform::TEQHardwareBusInterfaceVec out;
  p.getMemoryBusInterfaces(out);
  EXPECT_EQ(out, (HTEQHardwarePlatform::TEQHardwareBusInterfaceVec{memss, bank, untagged}));
  HTEQHardwarePlatform::TEQHardwareBusInterfaceVec some{nullptr};
  EXPECT_EQ(p.getMemoryResourceBusInterfacesNonIndexed_(some), 3u);
}

TEST(HBMBanks, CountsOnlyTheFirstInstance) {
  TestPlatform p;
  ComMsgCapture cap;
  p.setHBMPresent();
  p.updateHBMBankInfo("hbm0", true);
  p.updateHBMBankInfo("hbm0", false);
  EXPECT_FALSE(cap.has("@74-261@"));
  p.updateHBMBankInfo("hbm1", true);
  ASSERT_TRUE(cap.has("@74-261@"));
  EXPECT_EQ(cap.find("@74-261@")->mask, ComMsgMask::kError);
  EXPECT_EQ(cap.find("@74-261@")->module, "platform");
  EXPECT_EQ(p.getHBMBankCount(), 2u);
  EXPECT_EQ(p.getHBMDefaultBankCount(), 1u);
  EXPECT_EQ(p.getHBMInstanceName(), "hbm0");
}

TEST(HBMBanks, AdviceOnlyForAPartlyDefaultInstance) {
  auto advice = [](std::vector<bool> preferred, bool present) {
    TestPlatform p;
    if (present) p.setHBMPresent();
    for (bool b : preferred) p.updateHBMBankInfo("hbm_inst", b);
    std::ostringstream out;
    p.issueNormalizeMemoryBanksMessage(out);
    return out.str();
  };
  EXPECT_EQ(advice({true, true, false}, true),
            "\n\nThe HBM instance 'hbm_inst' has only a subset of its auto-assignable memory banks tagged as "
            "'default'. To attain better HBM bandwidth, use mirac parameter '--advanced.param "
            "compiler.normalizeDefaultMemoryBanks=true' to change all HBM memory banks to 'default'.\n\n");
  EXPECT_EQ(advice({true, true}, true), "");
  EXPECT_EQ(advice({false, false}, true), "");
  EXPECT_EQ(advice({true, false}, false), "");
}

TEST(HPLMemory, ConfigParamsFollowTheFamily) {
  HPLMemory m;
  m.setType("ddr4");
  m.addConfigParam("C0.DDR4_tCK", "833");
  m.addConfigParam("C0.DDR3_tCK", "1250");
  m.addConfigParam("DATA_WIDTH", "64");
  m.addConfigParam("DATA_WIDTH", "72");
  m.addConfigParam("UNKNOWN", "1");
  EXPECT_EQ(m.getReadOnlyConfigParamMap(),
            (HPLMemory::ConfigParamMap{{"C0.DDR4_tCK", "833"}, {"DATA_WIDTH", "72"}}));

  HPLMemory ddr3;
  ddr3.setType("ddr3");
  ddr3.addConfigParam("C0.DDR4_tZQINIT", "1");
  ddr3.addConfigParam("C0.DDR3_tZQINIT", "2");
  ddr3.addConfigParam("C0.ControllerType", "DDR3_SDRAM");
  EXPECT_EQ(ddr3.getReadOnlyConfigParamMap(),
            (HPLMemory::ConfigParamMap{{"C0.ControllerType", "DDR3_SDRAM"}, {"C0.DDR3_tZQINIT", "2"}}));

  HPLMemory untyped;  // an empty type counts as the DDR4 family
  untyped.addConfigParam("C0.DDR4_AxiNarrowBurst", "1");
  untyped.addConfigParam("C0.DDR3_AxiNarrowBurst", "1");
  EXPECT_EQ(untyped.getReadOnlyConfigParamMap().size(), 1u);
}

TEST(HPLMemory, JsonWritesAddressesOnlyWhenSet) {
  HPLMemory m;
  m.setName("ddr0");
  m.setType("ddr4");
  m.setSize("16GB");
  m.addConfigParam("MEMORY_PART", "mt40");
  m.addConfigParam("BURST_LENGTH", "8");
  EXPECT_EQ(zr_test::flatJson(m), R"({"name":"ddr0","type":"ddr4","size":"16GB","configParams":[{"name":)"
                                  R"("BURST_LENGTH","value":"8"},{"name":"MEMORY_PART","value":"mt40"}]})");
  HPLMemory a;
  a.setHighestAddress(18446744073709551615ull);
  EXPECT_EQ(zr_test::flatJson(a), R"({"lowAddress":"0","highAddress":"18446744073709551615"})");
}

TEST(HPLMemory, SizeTextInGigabytes) {
  EXPECT_EQ(HPLMemory::sizeTextToGb("16GB"), 16);
  EXPECT_EQ(HPLMemory::sizeTextToGb("16 GB"), 16);
  EXPECT_EQ(HPLMemory::sizeTextToGb("2048MB"), 0);
  EXPECT_EQ(HPLMemory::sizeTextToGb("1TB"), 0);
  EXPECT_EQ(HPLMemory::sizeTextToGb(""), 0);
  EXPECT_EQ(HPLMemory::sizeTextToGb("4GB and 8GB"), 4);
  EXPECT_EQ(HPLMemory::sizeTextToGb("16\nGB"), 0);
  EXPECT_THROW(HPLMemory::sizeTextToGb("x4GB"), std::invalid_argument);
  EXPECT_THROW(HPLMemory::sizeTextToGb("99999999999GB"), std::out_of_range);
  // A long text is handled without exhausting the stack.
  EXPECT_EQ(HPLMemory::sizeTextToGb("7" + std::string(2000000, ' ') + "GB"), 7);
}

TEST(HPLMemory, PlatformSizesAndType) {
  HPLMemory big, small;
  big.setSize("16GB");
  big.setType("");
  small.setSize("512MB");
  small.setType("ddr3");
  const std::vector<HPLMemory*> none;
  const std::vector<HPLMemory*> two{&big, &small};
  EXPECT_EQ(HPLMemory::getMemSizeInGb(none, 3), 0);
  EXPECT_EQ(HPLMemory::getMemSizeInGb(two, 0), 16);
  EXPECT_THROW(HPLMemory::getMemSizeInGb(two, 2), std::out_of_range);
  EXPECT_EQ(HPLMemory::getTotalMemSizeInGb(two), 16);
  EXPECT_EQ(HPLMemory::totalGbToText(HPLMemory::getTotalMemSizeInGb(two)), "16 GB");
  EXPECT_EQ(HPLMemory::totalGbToText(HPLMemory::getTotalMemSizeInGb(none)), "8 GB");
  EXPECT_EQ(HPLMemory::getMemType(none), "ddr4");
  EXPECT_EQ(HPLMemory::getMemType(two), "");
}
