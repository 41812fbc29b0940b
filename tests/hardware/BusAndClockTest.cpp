#include <gtest/gtest.h>

#include "hardware/HwTestPlatform.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQSystemClock.h"

using hwcore_test::jsonTree;
using hwcore_test::keysOf;
using hwcore_test::TestPlatform;
using zr_test::flatJson;

namespace {
HTEQSystemClock* addClock(TestPlatform& p, const std::string& name, int id, const std::string& freq) {
  HTEQSystemClock* c = p.addSystemClock();
  c->setName(name);
  c->setId(id);
  c->setFrequency(freq);
  return c;
}
}  // namespace

TEST(HTEQHardwareBusInterface, JsonKeyOrderAndNumbersAsText) {
  HTEQHardwareBusInterface bi;
  EXPECT_EQ(flatJson(bi), R"({"dataWidth":"0","numIdBits":"0","isrId":"0"})");
  bi.setName("n");
  bi.setMode("m");
  bi.setBusTypeRef("t");
  bi.setBusInterfaceRef("i");
  bi.setCompRef("c");
  bi.setInstRef("in");
  bi.setClockRef("clk");
  bi.setResetRef("rst");
  bi.setMemPort("mp");
  bi.setSPTag("sp");
  bi.setDirection("d");
  bi.setAddressSegment("as");
  bi.setMemoryInstance("mi");
  bi.setSLR("s");
  bi.setSize("16GB");
  bi.setPeakMemoryBandwidth("19200");
  bi.setMaxMasters(4);
  bi.setCategory("cat");
  bi.setDataWidth(512);
  bi.setISRId(-2);
  bi.addAddressSegment()->setIndex(1);
  EXPECT_EQ(keysOf(jsonTree(bi)),
            (std::vector<std::string>{"name", "mode", "instRef", "compRef", "typeRef", "interfaceRef",
                                      "clockRef", "resetRef", "memPort", "spTag", "slr", "memoryInstance",
                                      "dataWidth", "numIdBits", "addressSegment", "direction", "isrId",
                                      "category", "addressSegments"}));
  EXPECT_EQ(jsonTree(bi).get<std::string>("isrId"), "-2");
}

TEST(HTEQHardwareBusInterface, SegmentsOutOfRangeGiveEmptyAnswers) {
  HTEQHardwareBusInterface bi;
  EXPECT_EQ(bi.getMemoryIndex(0), 0u);
  EXPECT_EQ(bi.getMemorySLR(0), "");
  HTEQHardwareAddressSegment* s = bi.addAddressSegment();
  s->setIndex(7);
  s->setSlr("SLR2");
  EXPECT_EQ(bi.getNumAddressSegments(), 1u);
  EXPECT_EQ(bi.getMemoryIndex(0), 7u);
  EXPECT_EQ(bi.getMemorySLR(0), "SLR2");
  EXPECT_EQ(bi.getMemoryIndex(1), 0u);
  HTEQHardwareBusInterface::AddressSegmentVec out{nullptr, nullptr};
  bi.getAddressSegments(out);
  EXPECT_EQ(out, HTEQHardwareBusInterface::AddressSegmentVec{s});
}

TEST(HTEQHardwareAddressSegment, JsonKeyOrder) {
  HTEQHardwareAddressSegment s;
  s.setBaseName("b");
  s.setIndex(3);
  s.setMemoryInstance("mi");
  s.setAuto("preferred");
  s.setSpTag("HBM[3]");
  s.setSlr("SLR0");
  s.setMaxMasters(2);
  s.setName("n");
  s.setInstanceRef("i");
  s.setRegion("r");
  s.setReadBwUsed(-1);
  s.setWriteBwUsed(5);
  s.setInterleave(4);
  EXPECT_EQ(
      flatJson(s),
      R"({"baseName":"b","index":"3","memoryInstance":"mi","auto":"preferred","spTag":"HBM[3]","slr":"SLR0",)"
      R"("maxMasters":"2","name":"n","instRef":"i","region":"r","readBwUsed":"-1","writeBwUsed":"5",)"
      R"("interleave":"4"})");
}

TEST(HTEQSystemClock, StatusIgnoresCaseAndIdDefaultsToMinusOne) {
  HTEQSystemClock c;
  EXPECT_EQ(c.getId(), -1);
  EXPECT_FALSE(c.isScalable());
  EXPECT_FALSE(c.isFixed());
  EXPECT_FALSE(c.isReserved());
  c.setStatus("SCALABLE");
  EXPECT_TRUE(c.isScalable());
  c.setStatus("Changeable");
  EXPECT_TRUE(c.isScalable());
  c.setStatus("FIXED");
  EXPECT_TRUE(c.isFixed());
  EXPECT_FALSE(c.isScalable());
  c.setStatus("Reserved");
  EXPECT_TRUE(c.isReserved());
  EXPECT_EQ(flatJson(HTEQSystemClock()), R"({"id":"-1"})");
  HTEQSystemClock full;
  full.setName("n");
  full.setOrigName("o");
  full.setId(2);
  full.setFrequency("300");
  full.setInstRef("i");
  full.setCompRef("c");
  full.setPeriod("3.333");
  full.setNormalizedPeriod("3.3");
  full.setStatus("fixed");
  EXPECT_EQ(keysOf(jsonTree(full)),
            (std::vector<std::string>{"name", "origName", "id", "frequency", "instRef", "compRef", "period",
                                      "normalizedPeriod", "status"}));
}

TEST(ClockSelection, LastMatchWinsForClocks) {
  TestPlatform p;
  EXPECT_EQ(p.getDefaultClock(), nullptr);
  EXPECT_EQ(p.getDefaultClockId(), "0");
  EXPECT_EQ(p.getDefaultClockName(), "");
  EXPECT_EQ(p.getDefaultClockFrequency(), "");
  addClock(p, "a", 0, "100");
  HTEQSystemClock* later = addClock(p, "b", 0, "200");
  addClock(p, "a", 3, "300");
  addClock(p, "noid", -1, "50");  // without an id, never the default
  EXPECT_EQ(p.getDefaultClock(), later);
  EXPECT_EQ(p.getDefaultClockName(), "b");
  EXPECT_EQ(p.getDefaultClockFrequency(), "200");
  EXPECT_EQ(p.getClockFrequency("a"), "300");
  EXPECT_EQ(p.getClockId("a"), "3");
  EXPECT_EQ(p.getClockId("missing"), "");
  EXPECT_EQ(p.getClockFrequency("missing"), "");
  EXPECT_EQ(p.getPlatformFrequency(0), "200");
  EXPECT_EQ(p.getPlatformFrequency(9), "");
  p.setDefaultClkId(3);
  EXPECT_EQ(p.getDefaultClockName(), "a");
  EXPECT_EQ(p.getDefaultClockId(), "3");
  p.setDefaultClkId(42);
  EXPECT_EQ(p.getDefaultClock(), nullptr);
  EXPECT_EQ(p.getDefaultClockId(), "42");
}

TEST(ClockSelection, ListsAndDefaultFlagInJson) {
  TestPlatform p;
  addClock(p, "k0", 0, "100")->setStatus("scalable");
  addClock(p, "k1", 1, "250")->setStatus("fixed");
  std::vector<std::string> names{"x"}, freqs;
  p.getSystemClockNames(names);
  EXPECT_EQ(names, (std::vector<std::string>{"x", "k0", "k1"}));
  names.clear();
  p.getAllClockFrequencies(names, freqs);
  EXPECT_EQ(freqs, (std::vector<std::string>{"100", "250"}));
  std::vector<std::string> cpu;
  p.getCpuClockNames(cpu);
  EXPECT_EQ(cpu, std::vector<std::string>{"CPU"});
  EXPECT_TRUE(p.hasScalableClocks());
  EXPECT_TRUE(p.hasFixedClocks());
  const auto clocks = jsonTree(p).get_child("systemClocks");
  ASSERT_EQ(clocks.size(), 2u);
  EXPECT_EQ(keysOf(clocks.front().second).front(), "default");
  EXPECT_EQ(clocks.front().second.get<std::string>("default"), "true");
  EXPECT_EQ(clocks.back().second.get<std::string>("default"), "false");
  EXPECT_EQ(clocks.back().second.get<std::string>("frequency"), "250");

  TestPlatform plain;
  addClock(plain, "r", 0, "1")->setStatus("reserved");
  EXPECT_FALSE(plain.hasScalableClocks());
  EXPECT_FALSE(plain.hasFixedClocks());
}

TEST(BusInterfaceSelection, FirstMatchWinsForBusInterfaces) {
  TestPlatform p;
  EXPECT_EQ(p.getBusInterfaceByName("S_AXI"), nullptr);
  HTEQHardwareBusInterface* first = p.addBusInterface();
  first->setName("S_AXI");
  p.addBusInterface()->setName("S_AXI");
  EXPECT_EQ(p.getBusInterfaceByName("S_AXI"), first);
  EXPECT_EQ(p.getBusInterfaceByName("s_axi"), nullptr);
  // NoC interfaces are not the platform's own.
  p.addNocConnectivity()->addBusInterface()->setName("NOC_S");
  EXPECT_EQ(p.getBusInterfaceByName("NOC_S"), nullptr);
  HTEQHardwarePlatform::TEQHardwareBusInterfaceVec all{nullptr};
  p.getBusInterfaces(all);
  EXPECT_EQ(all.size(), 3u);
}

TEST(HTEQHardwareIPParam, JsonKeyOrder) {
  HTEQHardwareIPParam ip;
  ip.setName("n");
  ip.setValue("v");
  ip.setCompRef("c");
  ip.setInstRef("i");
  ip.setIsValid("true");
  EXPECT_EQ(flatJson(ip), R"({"name":"n","value":"v","instRef":"i","compRef":"c","valid":"true"})");
}

TEST(HTEQHardwareNocConnectivity, WritesInstanceAndInterfaces) {
  HTEQHardwareNocConnectivity empty;
  EXPECT_EQ(flatJson(empty), "{}");
  HTEQHardwareNocConnectivity noc;
  noc.setInstanceRef("noc0");
  EXPECT_EQ(flatJson(noc), R"({"instRef":"noc0"})");
  HTEQHardwareBusInterface* a = noc.addBusInterface();
  a->setName("A");
  noc.addBusInterface()->setName("A");
  EXPECT_EQ(noc.getBusInterfaceByName("A"), a);
  EXPECT_EQ(noc.getBusInterfaceByName("B"), nullptr);
  EXPECT_EQ(zr_test::drain(noc.createBusInterfaceIter()).front(), a);
  const auto tree = jsonTree(noc);
  EXPECT_EQ(keysOf(tree), (std::vector<std::string>{"instRef", "busInterfaces"}));
  EXPECT_EQ(tree.get_child("busInterfaces").size(), 2u);

  TestPlatform p;
  p.addNocConnectivity()->setInstanceRef("n1");
  p.addNocConnectivity();
  HTEQHardwarePlatform::TEQHardwareNocConnectivityVec nocs;
  p.getNocConnectivity(nocs);
  EXPECT_EQ(nocs.size(), 2u);
  // The empty record disappears from the list.
  EXPECT_EQ(jsonTree(p).get_child("nocConnectivity").size(), 1u);
}
