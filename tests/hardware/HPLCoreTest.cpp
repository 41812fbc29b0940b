#include <gtest/gtest.h>

#include "platform/HPLAddressSegment.h"
#include "platform/HPLCore.h"
#include "platform/HPLInterface.h"
#include "platform/HPLPort.h"
#include "support/TestSupport.h"

namespace {

HPLPort* addClockPort(HPLCore& core, const std::string& type, const std::string& name,
                      const std::string& freq) {
  HPLPort* p = core.addPort();
  p->setType(type);
  p->setName(name);
  p->setFrequency(freq);
  return p;
}

}  // namespace

TEST(HPLCore, ClockFreqFallsBackToTheFirstKernelClockPort) {
  HPLCore core;
  addClockPort(core, "clk", "other_clk", "100");
  EXPECT_EQ("", core.getClockFreq());
  addClockPort(core, "data", "aclk", "150");
  EXPECT_EQ("", core.getClockFreq());
  addClockPort(core, "CLK", "aclk", "300");
  addClockPort(core, "clk", "KERNEL_CLK", "500");
  EXPECT_EQ("300", core.getClockFreq());
  core.setClockFreq("250");
  EXPECT_EQ("250", core.getClockFreq());

  HPLCore data;
  addClockPort(data, "Clk", "Data_Clk", "400");
  EXPECT_EQ("400", data.getClockFreq());
}

TEST(HPLCore, ResourceCountsComeFromTheDynamicPblockUnlessFixed) {
  HPLCore one;
  one.addResourceInfo("pblock_a", "BRAM", "12");
  one.addResourceInfo("pblock_a", "LUT", "0");
  // With a single pblock that pblock is the dynamic region.
  EXPECT_EQ("12", one.getBRAMCount());
  EXPECT_EQ("", one.getLUTCount());
  EXPECT_EQ("", one.getDSPCount());
  one.setBRAMCount("99");
  EXPECT_EQ("99", one.getBRAMCount());

  HPLCore two;
  two.addResourceInfo("pblock_a", "BRAM", "12");
  two.addResourceInfo("pblock_b", "BRAM", "13");
  EXPECT_EQ("", two.getBRAMCount());
  EXPECT_EQ(13, two.getResCount("BRAM", "PBLOCK_B", ""));
  two.addResourceInfo("pblock_dynamic_region", "BRAM", "7");
  EXPECT_EQ("7", two.getBRAMCount());
}

TEST(HPLCore, ResCountBuildsVariantKeysAndFindsPluralDSP) {
  HPLCore core;
  core.addResourceInfo("pblock_dynamic_region", "DSPs", "40");
  core.addResourceInfo("pblock_dynamic_region", "DSPs_58", "8");
  core.addResourceInfo("pblock_dynamic_region", "URAM_288", "5");
  core.addResourceInfo("pblock_dynamic_region", "REG", "1000x");
  EXPECT_EQ("40", core.getDSPCount());
  EXPECT_EQ(40, core.getResCount("DSP", ""));
  EXPECT_EQ(8, core.getResCount("DSP", "58"));
  EXPECT_EQ(5, core.getResCount("URAM", "288"));
  EXPECT_EQ(0, core.getResCount("URAM", ""));
  EXPECT_EQ("1000", core.getRegisterCount());
  // The key itself is compared with case; only the pblock name is not.
  EXPECT_EQ(0, core.getResCount("uram", "288"));
}

TEST(HPLCore, ResourceAndSLRInfoKeepTheirFirstEntries) {
  HPLCore core;
  EXPECT_FALSE(core.hasResourceInfo());
  core.addResourceInfo("pb1", "", "");
  EXPECT_TRUE(core.hasResourceInfo());
  EXPECT_TRUE(core.getReadOnlyPBlockToResourceMap().at("pb1").empty());
  core.addResourceInfo("pb1", "LUT", "1");
  core.addResourceInfo("pb1", "LUT", "2");
  EXPECT_EQ("2", core.getResourceMap("pb1").at("LUT"));

  core.addSLRInfo("pb1", "SLR1,SLR0");
  core.addSLRInfo("pb1", std::vector<std::string>{"SLR2"});
  core.addSLRInfo("pb2", std::vector<std::string>{});
  core.addSLRInfo("pb3", std::set<std::string>{"SLR2", "SLR1"});
  std::set<std::string> names{"stale"};
  core.getSLRNames("PB1", names);
  EXPECT_EQ((std::set<std::string>{"SLR0", "SLR1"}), names);
  names = {"kept"};
  core.getSLRNames("pb2", names);
  EXPECT_EQ((std::set<std::string>{"kept"}), names);

  // pb3 has SLRs but no resources, so it is not looked at.
  std::vector<std::string> valid;
  core.getValidSLRNames(valid);
  EXPECT_EQ((std::vector<std::string>{"SLR0", "SLR1"}), valid);
  core.addResourceInfo("pb3", "", "");
  valid = {"SLR1"};
  core.getValidSLRNames(valid);
  EXPECT_EQ((std::vector<std::string>{"SLR1", "SLR0", "SLR2"}), valid);
}

TEST(HPLCore, WidestPortsAndPortRemoval) {
  HPLCore core;
  EXPECT_EQ(0u, core.getMaxAddrWidth());
  HPLPort* a = core.addPort();
  a->setAddrWidth("64");
  a->setDataWidth("junk");
  HPLPort* b = core.addPort();
  b->setAddrWidth("40");
  b->setDataWidth("512");
  EXPECT_EQ(64u, core.getMaxAddrWidth());
  EXPECT_EQ(512u, core.getMaxDataWidth());
  core.removePort(a);
  EXPECT_EQ(40u, core.getMaxAddrWidth());
  HPLPort stranger;
  core.removePort(&stranger);
  EXPECT_EQ(zr_test::drain(core.createPortIter()), std::vector<HPLPort*>{b});
}

TEST(HPLCore, JSONKeyOrderWithResourcesParamsAndPorts) {
  HPLCore core;
  core.setVlnv("v:l:n:1");
  core.setName("core0");
  core.setDRBaseAddress("0x100");  // never written
  core.setDRBDName("ulp");
  core.setInstPath("top/ulp");
  core.setNumComputeUnits(60);
  core.addConfigParam("Z", "1");
  core.addConfigParam("A", "2");
  core.addResourceInfo("pblock_b", "", "");
  core.addResourceInfo("pblock_a", "LUT", "5");
  core.addSLRInfo("pblock_a", "SLR0");
  HPLPort* p = addClockPort(core, "clk", "ACLK", "300");
  p->setDirection("in");
  HPLAddressSegment* s = new HPLAddressSegment();
  s->setName("seg");
  p->addAddressSegment(s);
  EXPECT_EQ(
      zr_test::flatJson(core),
      R"({"name":"core0","instPath":"top\/ulp","drBDName":"ulp","vlnv":"v:l:n:1","clockFreq":"300",)"
      R"("numComputeUnits":"60","availableResources":{"pBlocks":[{"name":"pblock_a","validSlrs":["SLR0"],)"
      R"("resources":[{"name":"LUT","value":"5"}]},{"name":"pblock_b"}]},"configParams":[{"name":"A",)"
      R"("value":"2"},{"name":"Z","value":"1"}],"ports":[{"name":"ACLK","type":"clk","frequency":"300",)"
      R"("direction":"in"}]})");
}

TEST(HPLPort, WritesEveryAttributeInDeclaredOrder) {
  // Set in the reverse order of the keys, so that the text follows the declaration.
  HPLPort port;
  port.setDirection("15");
  port.setPolarity("14");
  port.setFrequency("13");
  port.setMaxBurstLength("12");
  port.setAddrRange("11");
  port.setAddrOffset("10");
  port.setUserWidth("9");
  port.setAddrWidth("8");
  port.setIdWidth("7");
  port.setProtocol("6");
  port.setDataWidth("5");
  port.setRange("4");
  port.setBase("3");
  port.setMode("2");
  port.setType("1");
  port.setName("0");
  EXPECT_EQ(zr_test::flatJson(port),
            R"({"name":"0","type":"1","mode":"2","base":"3","range":"4","dataWidth":"5","protocol":"6",)"
            R"("idWidth":"7","addrWidth":"8","userWidth":"9","addrOffset":"10","addrRange":"11",)"
            R"("maxBurstLength":"12","frequency":"13","polarity":"14","direction":"15"})");

  HPLInterface intf;
  intf.setType("pcie");
  intf.setId("0");
  intf.setName("gen3x16");
  EXPECT_EQ(zr_test::flatJson(intf), R"({"id":"0","name":"gen3x16","type":"pcie"})");
}
