#include <gtest/gtest.h>

#include "hardware/HwTestPlatform.h"
#include "host/ComMsgMgr.h"
#include "host/HHSMHwManager.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/HTEQDesignIPInstance.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQReconfigPartition.h"
#include "platform/HTEQSystemClock.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using hwcore_test::jsonTree;
using hwcore_test::keysOf;
using hwcore_test::TestPlatform;
using zr_test::makeZip;

TEST(HTEQHardwarePlatform, NewPlatformWritesItsDefaults) {
  TestPlatform p;
  EXPECT_EQ(
      zr_test::flatJson(p),
      R"({"unifiedPlatform":"false","expandablePlatform":"true","hardware":"true","softwareEmulation":)"
      R"("true","hardwareEmulation":"false","hardwareEmuPlatform":"false","maxAXIMMManagers":"0",)"
      R"("maxAXIMMSubordinates":"0","maxInterrupts":"0","usesNIFD":"false","generatedChangeList":"0"})");
}

TEST(HTEQHardwarePlatform, FilledPlatformWritesKeysInOrder) {
  TestPlatform p;
  p.setVendor("acme");
  p.setBoardId("b1");
  p.setName("shell");
  p.setDescription("d");
  p.setDetailedDescription("dd");
  p.interfaceDesc = "PCIe gen3x8";
  p.setPlatformFile("/x/p.lfa");
  p.setStatic(true);
  p.setRM(true);
  p.setDrBdInstName("dr");
  p.setGeneratedName("gen");
  p.setGeneratedVersion("2");
  p.setGeneratedChangeList(7);
  p.setGeneratedIpChangeList("ip");
  p.setGeneratedSharedDataChangeList("sd");
  p.setGeneratedTimestamp("ts");
  p.setHasExternalSources(true);
  p.setHasRQAContent(true);
  p.setGeneratedByLink(true);
  p.setGeneratedBySwEmuLink(true);
  p.setIdCode("0x1");
  p.setExtendedIdCode("0x2");
  p.setFlashSize("64");
  p.setDesignID(5);
  p.addReconfigPartition()->setNodeID(9);
  p.getTilHardware().setArch(HTEQTilHardware::TIL1);
  p.addTilPartition(1, 2).tilInst("t");
  p.addDesignIPInstance()->setVLNV("v:l:n:1");
  p.setBRAMCount(3);
  p.addSystemClock()->setName("c");
  p.addHardwareIPParam()->setName("ip");
  p.addBusInterface()->setName("bi");
  p.addNocConnectivity()->setInstanceRef("noc");
  // clang-format off
  const std::vector<std::string> expected = {
      "vendor", "boardId", "name", "description", "detailedDescription", "uniqueName", "interfaceDescription",
      "platformFile", "unifiedPlatform", "expandablePlatform", "hardware", "softwareEmulation",
      "hardwareEmulation", "hardwareEmuPlatform", "maxAXIMMManagers", "maxAXIMMSubordinates", "maxInterrupts",
      "usesNIFD", "static", "rm", "drBdInstName", "generatedName", "generatedVersion", "generatedChangeList",
      "generatedIpChangeList", "generatedSharedDataChangeList", "generatedTimestamp", "hasExternalSources",
      "hasRQAContent", "genLink", "genSwEmuLink", "idCode", "extendedIdCode", "flash", "designIDs",
      "reconfigPartitionIDs", "tilHardware", "tilPartitions", "designIpInstances", "resources",
      "systemClocks", "ipParameters", "busInterfaces", "nocConnectivity"};
  // clang-format on
  const auto tree = jsonTree(p);
  EXPECT_EQ(keysOf(tree), expected);
  EXPECT_EQ(tree.get<std::string>("uniqueName"), "shell");
  EXPECT_EQ(tree.get<std::string>("generatedChangeList"), "7");
  EXPECT_EQ(keysOf(tree.get_child("flash")), std::vector<std::string>{"size"});
  EXPECT_EQ(tree.get<std::string>("designIDs.designID"), "5");
  EXPECT_EQ(tree.get_child("reconfigPartitionIDs").front().second.get<std::string>("nodeID"), "9");
  EXPECT_EQ(tree.get_child("tilPartitions").front().second.get<std::string>("tilInst"), "t");
}

TEST(HTEQHardwarePlatform, HwEmuFlagTurnsEmulationOnButNotOff) {
  TestPlatform p;
  p.setIsHWEmuPlatform(true);
  EXPECT_TRUE(p.supportsHWEmulation());
  EXPECT_EQ(jsonTree(p).get<std::string>("hardwareEmulation"), "true");
  p.setIsHWEmuPlatform(false);
  EXPECT_FALSE(p.isHWEmuPlatform());
  EXPECT_TRUE(p.supportsHWEmulation());
}

TEST(HTEQHardwarePlatform, StateNamesAreExact) {
  TestPlatform p;
  p.setPlatformState("PRE_SYNTH");
  EXPECT_EQ(p.getState(), 3);
  p.setPlatformState("pre_synth");
  EXPECT_EQ(p.getState(), HTEQHardwarePlatform::pre_synth);
  p.setState(1);
  EXPECT_EQ(p.getPlatformState(), "impl");
  p.setState(0);
  EXPECT_EQ(p.getPlatformState(), "synth");
  p.setState(7);
  EXPECT_EQ(p.getPlatformState(), "");
  EXPECT_EQ(p.getState(), 3);
}

TEST(HTEQHardwarePlatform, FlatShellNeedsStateExpandableNoPRAndDataCenter) {
  TestPlatform p;
  p.setState(HTEQHardwarePlatform::synth);
  p.setComputedDesignIntent(HTEQDesignIntentStorage::dataCenter, true);
  EXPECT_FALSE(p.isFlatShell());  // usesPR keeps its default
  p.setUsesPR(false);
  EXPECT_TRUE(p.isSynthFlatShell());
  EXPECT_FALSE(p.isPreSynthFlatShell());
  EXPECT_TRUE(p.isFlatShell());
  p.setState(HTEQHardwarePlatform::pre_synth);
  EXPECT_TRUE(p.isPreSynthFlatShell());
  EXPECT_TRUE(p.isFlatShell());
  p.setState(HTEQHardwarePlatform::impl);
  EXPECT_FALSE(p.isFlatShell());
  p.setState(HTEQHardwarePlatform::synth);
  p.setExpandable(false);
  EXPECT_FALSE(p.isFlatShell());
  p.setExpandable(true);
  p.setExplicitDesignIntent(HTEQDesignIntentStorage::dataCenter, false);
  EXPECT_FALSE(p.isFlatShell());
}

TEST(HTEQHardwarePlatform, ResourcesSkipCountsNotAboveZero) {
  TestPlatform p;
  p.setBRAMCount(10);
  p.setDSPCount(0);
  p.setLUTCount(-4);
  p.setFFCount(20);
  std::vector<std::string> types, counts;
  p.getAllResources(types, counts);
  EXPECT_EQ(types, (std::vector<std::string>{"BRAM", "FF"}));
  EXPECT_EQ(counts, (std::vector<std::string>{"10", "20"}));
  const auto resources = jsonTree(p).get_child("resources");
  ASSERT_EQ(resources.size(), 2u);
  EXPECT_EQ(resources.back().second.get<std::string>("type"), "FF");
  EXPECT_EQ(resources.back().second.get<std::string>("count"), "20");
}

TEST(HTEQHardwarePlatform, BusInterfaceCountsIgnoreCase) {
  TestPlatform p;
  auto add = [&p](const char* type, const char* mode, int width) {
    HTEQHardwareBusInterface* bi = p.addBusInterface();
    bi->setBusTypeRef(type);
    bi->setMode(mode);
    bi->setDataWidth(width);
  };
  add("AXIMM", "Master", 512);
  add("aximm", "master", -1);
  add("aximm", "SLAVE", 64);
  add("Interrupt", "", 0);
  add("axis", "master", 1024);
  EXPECT_EQ(p.getMaxAXIMMManagers(), 2u);
  EXPECT_EQ(p.getMaxAXIMMSubordinates(), 1u);
  EXPECT_EQ(p.getMaxInterrupts(), 1u);
  EXPECT_EQ(p.getBusInterfaceMaxDataWidth(), 1024);
  const auto tree = jsonTree(p);
  EXPECT_EQ(tree.get<std::string>("maxAXIMMManagers"), "2");
  EXPECT_EQ(tree.get<std::string>("maxInterrupts"), "1");
  TestPlatform empty;
  empty.addBusInterface()->setDataWidth(-8);
  EXPECT_EQ(empty.getBusInterfaceMaxDataWidth(), 0);
}

TEST(HTEQHardwarePlatform, MemberNamesFollowThePlatformExtension) {
  TestPlatform p;
  EXPECT_EQ(p.getJsonFileName(), "");
  EXPECT_EQ(p.getAltJsonFileName(), "alt_");
  EXPECT_EQ(p.getHwEmuDir(), "hw_emu");
  EXPECT_EQ(p.getHwEmuJsonFileName(), "");
  EXPECT_EQ(p.getXmlFileName(), "");
  p.setPlatformFile("/a/b/shell.lfa");
  EXPECT_EQ(p.getPlatformExt(), "lfa");
  EXPECT_EQ(p.getJsonFileName(), "lfa.json");
  EXPECT_EQ(p.getAltJsonFileName(), "alt_lfa.json");
  EXPECT_EQ(p.getHwEmuJsonFileName(), "hw_emu/lfa.json");
  EXPECT_EQ(p.getAltHwEmuJsonFileName(), "hw_emu/alt_lfa.json");
  EXPECT_EQ(p.getHwEmuXmlFileName(), "hw_emu/lfa.xml");
  EXPECT_EQ(p.getXmlFileName(), "lfa.xml");
  p.setIsChildHardwareEmuPlatform(true);
  EXPECT_EQ(p.getXmlFileName(), "hw_emu/lfa.xml");
  p.setPlatformFile("/a/b/noext");
  EXPECT_EQ(p.getXmlFileName(), "");
  EXPECT_EQ(p.getAltJsonFileName(), "alt_");
}

TEST(HTEQHardwarePlatform, ChildEmulationPlatformIsFoundInTheArchive) {
  zr_test::TempDir dir;
  const std::string with = dir.file("with.cfa");
  const std::string without = dir.file("without.cfa");
  makeZip(with, {{"cfa.xml", "<x/>"}, {"hw_emu/cfa.json", "{}"}});
  makeZip(without, {{"cfa.xml", "<x/>"}});
  TestPlatform p;
  EXPECT_FALSE(p.containsChildHardwareEmuPlatform());
  p.setPlatformFile(with);
  EXPECT_TRUE(p.containsChildHardwareEmuPlatform());
  p.setIsChildHardwareEmuPlatform(true);
  EXPECT_FALSE(p.containsChildHardwareEmuPlatform());
  p.setIsChildHardwareEmuPlatform(false);
  p.setPlatformFile(without);
  EXPECT_FALSE(p.containsChildHardwareEmuPlatform());
  p.setPlatformFile(dir.write("broken.cfa", "not a zip"));
  EXPECT_FALSE(p.containsChildHardwareEmuPlatform());
}

TEST(HTEQHardwarePlatform, FindReconfigPartitionTakesTheFirstNodeId) {
  TestPlatform p;
  p.addReconfigPartition()->setNodeID(4);
  HTEQReconfigPartition* second = p.addReconfigPartition();
  second->setNodeID(5);
  p.addReconfigPartition()->setNodeID(5);
  EXPECT_EQ(p.findReconfigPartition(5), second);
  EXPECT_EQ(p.findReconfigPartition(6), nullptr);
}

// Files that hold no loadable platform have node id 0, so both name the
// partition with node id 0; each partition takes one file only.
TEST(HTEQHardwarePlatform, RmFileListsTakeOneFilePerPartition) {
  zr_test::TempDir dir;
  const std::string a = dir.write("a.lfa", "not an archive");
  const std::string b = dir.write("b.lfa", "not an archive");
  ComMsgCapture quiet;  // loading the files reports their failure
  TestPlatform p;
  EXPECT_FALSE(p.validateRmLfaFiles({a}));  // no partition with node id 0 yet
  p.addReconfigPartition()->setNodeID(0);
  EXPECT_TRUE(p.isValidRmLfa(a));
  EXPECT_TRUE(p.validateRmLfaFiles({}));
  EXPECT_TRUE(p.validateRmLfaFiles({a}));
  EXPECT_FALSE(p.validateRmLfaFiles({dir.file("missing.lfa")}));
  EXPECT_FALSE(p.isValidRmLfa(dir.file("missing.lfa")));
  EXPECT_FALSE(p.validateRmLfaFiles({a, b}));
  // Nor does a file the loader cannot even open as a descriptor.
  const std::string notADescriptor = dir.write("c.zdf", "<not-a-descriptor");
  EXPECT_EQ(p.getNodeIDFromLfa(notADescriptor), 0u);
  EXPECT_EQ(p.getNodeIDFromLfa(dir.file("missing.zdf")), 0u);
}

TEST(HTEQHardwarePlatform, HardwareDatabaseComesFromADefinitionInTheArchive) {
  zr_test::TempDir dir;
  const std::string withDef = dir.file("withdef.lfa");
  makeZip(withDef, {{"lfa.xml", "<x/>"}, {"sysdef.xml", "<def/>"}});
  const std::string noDef = dir.file("nodef.lfa");
  makeZip(noDef, {{"lfa.xml", "<x/>"}});
  HHSMHwManager manager;
  zr_test::ScopedInstance<HHSMHwManager> installed(&manager);

  TestPlatform none;
  none.setPlatformFile(noDef);
  EXPECT_EQ(none.getHwDbName(), "");
  EXPECT_EQ(none.getHwDb(), nullptr);
  EXPECT_EQ(none.createHwDb(), nullptr);

  TestPlatform p;
  p.setPlatformFile(withDef);
  const std::string name = p.getHwDbName();
  EXPECT_EQ(name, "withdef");
  EXPECT_EQ(p.getHwDbName(), name);  // cached, no second database
  ASSERT_NE(p.getHwDb(), nullptr);
  EXPECT_EQ(p.getHwDb()->getName(), name);
  EXPECT_EQ(p.getHwDb(name), p.getHwDb());
  EXPECT_EQ(p.createHwDb(name), p.getHwDb());  // an existing name is reused
  HHSMHardwareDb* fresh = p.createHwDb();
  ASSERT_NE(fresh, nullptr);
  EXPECT_EQ(fresh->getName(), "withdef_1");

  // Module files need a static platform.
  EXPECT_EQ(p.createHwDb(std::vector<std::string>{}), nullptr);
  p.setStatic(true);
  HHSMHardwareDb* forModules = p.createHwDb(std::vector<std::string>{});
  ASSERT_NE(forModules, nullptr);
  EXPECT_EQ(forModules->getSourceFile(), withDef);
  EXPECT_TRUE(forModules->getRmFiles().empty());
  EXPECT_EQ(p.createHwDb(std::vector<std::string>{dir.file("missing.lfa")}), nullptr);

  // A hardware definition counts as well as a system definition.
  const std::string hwDef = dir.file("hw.cfa");
  makeZip(hwDef, {{"hwdef.xml", "<def/>"}});
  TestPlatform withHwDef;
  withHwDef.setPlatformFile(hwDef);
  EXPECT_EQ(withHwDef.getHwDbName(), "hw");
}
