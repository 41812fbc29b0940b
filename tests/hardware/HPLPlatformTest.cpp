#include <gtest/gtest.h>

#include <stdexcept>

#include "host/HEXAll.h"
#include "platform/HPLDevice.h"
#include "platform/HPLDriver.h"
#include "platform/HPLFile.h"
#include "platform/HPLInterface.h"
#include "platform/HPLMemory.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQSystemClock.h"
#include "support/TestSupport.h"

using zr_test::flatJson;

TEST(HPLPlatform, NewPlatformKeepsSeparatorsInItsNames) {
  HPLPlatform p;
  using Names = std::vector<std::string>;
  EXPECT_EQ((Names{p.getVersion(), p.getUniqueName(), p.getVBNV(), p.getDeviceName(), p.getPrettyName(),
                   p.getAcceleratorBinaryFormat(), p.getAcceleratorBinaryContent(), p.getDefaultOutputType(),
                   p.getHostArch(), p.getHostInterface()}),
            (Names{"0.0", ":::0.0", ":::0.0", "___0_0", " ()", "rovapk2", "bitstream", "unknown", "unknown",
                   "unknown"}));

  p.setVendor("acme");
  p.setBoardId("brd1");
  p.setName("base_shell");
  p.setVersionMajor(2);
  p.setVersionMinor(10);
  EXPECT_EQ("acme:brd1:base_shell:2.10", p.getUniqueName());
  EXPECT_EQ("acme_brd1_base_shell_2_10", p.getDeviceName());
  EXPECT_EQ("BRD1 (base_shell)", p.getPrettyName());
  p.setExplicitDesignIntent(HTEQDesignIntentStorage::embedded, true);
  EXPECT_EQ("base_shell", p.getPrettyName());
  EXPECT_EQ("a:b:c:d", HPLPlatform::getVBNVAsStr("a", "b", "c", "d"));
  std::vector<std::string> categories;
  p.getTargetCategories(categories);
  EXPECT_EQ((std::vector<std::string>{"Acceleration"}), categories);
}

TEST(HPLPlatform, HostTablesCompareWithoutCase) {
  HPLPlatform p;
  p.setHostArch("X86_64");
  EXPECT_EQ(HPLPlatform::HOST_ARCH_X86_64, p.getHostArchAsEnum());
  EXPECT_EQ("x86_64", p.getHostArch());
  p.setHostArch("AArch64");
  EXPECT_EQ("aarch64", p.getHostArch());
  p.setHostArch("riscv");
  EXPECT_EQ(HPLPlatform::HOST_ARCH_UNKNOWN, p.getHostArchAsEnum());
  EXPECT_EQ("unknown", p.getHostArch());
  // "unknown" is not a text the table matches: it gives the unknown value by falling through.
  EXPECT_EQ(HPLPlatform::HOST_ARCH_UNKNOWN, HPLPlatform::getHostArchType("unknown"));
  EXPECT_EQ((std::vector<std::string>{"x86_64", "armv7l", "ppc64le", "aarch64"}),
            HPLPlatform::getHostArchTypesAsStr());
  p.setHostInterface("AXI");
  EXPECT_EQ(HPLPlatform::HOST_INTERFACE_AXI, p.getHostInterfaceAsEnum());
  EXPECT_EQ("axi", p.getHostInterface());
  p.setHostInterface("Pcie");
  EXPECT_EQ("pcie", p.getHostInterface());
  p.setHostInterface("usb");
  EXPECT_EQ("unknown", p.getHostInterface());
}

TEST(HPLPlatform, FilesByTypeLastMatchForGetFileFirstExactForFindFile) {
  HPLPlatform p;
  HPLFile* first = p.addFile("HPFM", "a.hpfm");
  p.addFile("hpfm", "b.hpfm");
  p.addFile("SIM_BINARY", "");
  EXPECT_EQ("HPFM", first->getType());
  EXPECT_EQ("a.hpfm", first->getName());
  EXPECT_EQ("b.hpfm", p.getFile("Hpfm"));
  EXPECT_EQ("b.hpfm", p.getFile(HTEQPfmFileTypes::HPFM));
  EXPECT_TRUE(p.hasFile(HTEQPfmFileTypes::HPFM));
  EXPECT_EQ(first, p.findFile("HPFM"));
  EXPECT_EQ("b.hpfm", p.findFile("hpfm")->getName());
  EXPECT_EQ(nullptr, p.findFile("Hpfm"));
  // A file with an empty name does not count.
  EXPECT_FALSE(p.hasFile("SIM_BINARY"));
  EXPECT_FALSE(p.hasSimContent());
  EXPECT_EQ(3u, p.getNumFiles());

  HPLFile stranger;
  p.removeFile(&stranger);
  EXPECT_EQ(3u, p.getNumFiles());
  p.addFile("HPFM", "c.hpfm");
  p.removeFileType("HPFM");
  EXPECT_EQ(2u, p.getNumFiles());
  EXPECT_EQ("b.hpfm", p.getFile("HPFM"));
  auto range = p.getFileVecRange();
  ASSERT_EQ(2, range.second - range.first);
  EXPECT_EQ("b.hpfm", (*range.first)->getName());
  EXPECT_EQ(2u, zr_test::drain(p.createFileVecIter()).size());
  p.addFile("SIM_BINARY", "sim/model.so");
  EXPECT_TRUE(p.hasSimContent());
}

TEST(HPLPlatform, InterfaceDescriptionNeedsAHostedDesignIntent) {
  HPLPlatform p;
  HPLInterface* intf = p.addInterface();
  intf->setName("gen4x8");
  intf->setType("dma");
  EXPECT_EQ("", p.getInterfaceDesc());
  p.setExplicitDesignIntent(HTEQDesignIntentStorage::dataCenter, true);
  EXPECT_EQ("", p.getInterfaceDesc());
  p.setComputedDesignIntent(HTEQDesignIntentStorage::externalHost, true);
  EXPECT_EQ("gen4x8 dma", p.getInterfaceDesc());
  intf->setType("");
  EXPECT_EQ("PCIe gen3x8", p.getInterfaceDesc());
  p.addDevice()->setFpgaPart("arch:TZQ9KP:pkg:-2");
  EXPECT_EQ("PCIe gen3x16", p.getInterfaceDesc());

  HPLPlatform managed;
  managed.setExplicitDesignIntent(HTEQDesignIntentStorage::serverManaged, true);
  EXPECT_EQ("PCIe gen3x8", managed.getInterfaceDesc());
}

TEST(HPLPlatform, DevicesAndTheFirstCore) {
  HPLPlatform p;
  EXPECT_EQ(10u, p.getNumComputeUnits());
  EXPECT_EQ(0, p.getRegisterCount());
  EXPECT_FALSE(p.usesExpandedPR());
  EXPECT_EQ("", p.getOclInstPath());

  HPLDevice* other = p.addDevice();
  other->setName("fpga1");
  EXPECT_EQ(0u, p.getNumComputeUnits());
  other->getCore().setNumComputeUnits(3);
  HPLDevice* fpga0 = p.addDevice();
  fpga0->setName("fpga0");
  fpga0->getCore().setNumComputeUnits(7);
  fpga0->getCore().setInstPath("top/ulp");
  fpga0->getCore().addResourceInfo("pblock_dynamic_region", "REG", "2048");
  fpga0->getCore().addSLRInfo("pblock_dynamic_region", "SLR1,SLR0");
  HPLDevice* duplicate = p.addDevice();
  duplicate->setName("fpga0");
  duplicate->getCore().setParentRMInstPath("top/rm");

  // The last device decides the compute units; the first "fpga0" is the first core.
  EXPECT_EQ(0u, p.getNumComputeUnits());
  EXPECT_EQ(fpga0, p.getDevice("fpga0"));
  EXPECT_EQ(nullptr, p.getDevice("FPGA0"));
  EXPECT_EQ(2048, p.getRegisterCount());
  EXPECT_EQ("top/ulp", p.getOclInstPath());
  EXPECT_FALSE(p.usesExpandedPR());
  EXPECT_EQ(3u, p.getOCLRegionCount());
  std::vector<std::string> slrs;
  p.getValidSLRNames(slrs);
  EXPECT_EQ((std::vector<std::string>{"SLR0", "SLR1"}), slrs);
  HTEQHardwarePlatform::TEQDeviceVec devices;
  p.getDevices(devices);
  ASSERT_EQ(3u, devices.size());
  EXPECT_EQ("fpga1", devices[0]->getName());
  // The base platform's part name comes from the first device.
  other->setFpgaPart("arch:dev:pkg:-1");
  EXPECT_EQ("devpkg-1", p.getPartName());
}

// The size texts themselves are read by HPLMemory; the platform sums its memories.
TEST(HPLPlatform, MemorySizesInGigabytes) {
  HPLPlatform p;
  EXPECT_EQ("ddr4", p.getMemType());
  EXPECT_EQ("8 GB", p.getMemSize());
  EXPECT_EQ(0u, p.getNumDDRs());

  HPLMemory* a = p.addMemory();
  a->setSize("16GB");
  HPLMemory* b = p.addMemory();
  b->setType("ddr3");
  b->setSize("512MB");
  EXPECT_EQ("", p.getMemType());
  EXPECT_EQ(2u, p.getNumDDRs());
  EXPECT_EQ(16, p.getMemSizeInGb(0));
  EXPECT_EQ("16 GB", p.getMemSize());
  b->setSize("16 GB");
  EXPECT_EQ(32, p.getTotalMemSizeInGb());
  EXPECT_EQ("32 GB", p.getMemSize());
  EXPECT_THROW(p.getMemSizeInGb(2), std::out_of_range);
}

TEST(HPLPlatform, ValueListsBoardForwardingAndPaths) {
  HPLPlatform p;
  EXPECT_EQ("", p.getValidBinaryContentValuesAsStr());
  p.addValidBinaryContentValue("bitstream");
  p.addValidBinaryContentValue("pdi");
  p.addValidBinaryContentValue("bitstream");
  EXPECT_EQ("bitstream,pdi", p.getValidBinaryContentValuesAsStr());
  p.addValidOutputTypeValue("binfile");
  p.addValidOutputTypeValue("binfile");
  EXPECT_EQ("binfile", p.getValidOutputTypeValuesAsStr());
  p.addZuncCompileXpSwitch("-a");
  p.addZuncCompileXpSwitch("-a");
  EXPECT_EQ(2u, p.getZuncCompileXpSwitches().size());

  p.getBoard().setImgFileHdpi("h.png");
  p.getBoard().setImgFileLdpi("l.png");
  p.getBoard().setBoardPart("acme:brd1:1.3");
  p.getBoard().addDimmConnector("c0", "Slot", "DIMM", "m0", "Module", true, true);
  std::vector<std::string> images;
  p.getBoardImgZipEntries(images);
  EXPECT_EQ((std::vector<std::string>{"l.png", "", "h.png"}), images);
  EXPECT_EQ("acme:brd1:1.3", p.getBoardPart());
  EXPECT_TRUE(p.hasDimmConnectors());
  EXPECT_EQ("c0 m0", p.getBoardConnectionsString());
  EXPECT_EQ("c0 m0", p.getLockedBoardConnectionsString());
  EXPECT_EQ("", p.getUnlockedBoardConnectionsString());
  EXPECT_EQ("Module", p.getConnectorDisplayName("M0"));

  EXPECT_EQ("", p.getXmlFile());
  EXPECT_EQ("", p.getDirectory());
  p.setXmlFile("/opt/pfm/hw/../hw/meta.xml");
  EXPECT_EQ("/opt/pfm/hw/../hw", p.getDirectory());
  EXPECT_EQ("/opt/pfm/hw/meta.xml", p.getXmlFile());
}

TEST(HPLPlatform, WholeDocumentKeyOrderOfASmallPlatform) {
  HPLPlatform p;
  p.setVendor("acme");
  p.setBoardId("u2");
  p.setName("base");
  p.setVersionMajor(1);
  p.setVersionMinor(2);
  p.setHostArch("x86_64");
  p.setHostInterface("pcie");
  p.setPlatformState("impl");
  p.setTopModuleName("top");
  p.addValidBinaryContentValue("bitstream");
  p.addValidBinaryContentValue("pdi");
  p.addZuncCompileXpSwitch("-c");
  p.addZuncLinkXpSwitch("-l");
  p.setDcpEncrypt(true);
  p.setComputedDesignIntent(HTEQDesignIntentStorage::dataCenter, true);
  p.getBoard().setName("u2");
  HPLDevice* d = p.addDevice();
  d->setName("fpga0");
  HPLInterface* i = p.addInterface();
  i->setId("0");
  HPLMemory* m = p.addMemory();
  m->setName("ddr0");
  p.addFile("HPFM", "p.hpfm");
  p.addFeatureRom()->setMajorVersion(1);
  p.setExpandable(false);

  // The archive's keys come first, then the base platform's; the feature ROM's
  // own text is its suite's business.
  const std::string text = flatJson(p);
  const auto roms = text.find(R"(,"featureRoms":[{"majorVersion":"1",)");
  ASSERT_NE(roms, std::string::npos) << text;
  EXPECT_EQ(
      text.substr(0, roms),
      R"({"versionMajor":"1","versionMinor":"2","hostArchitecture":"x86_64","hostInterface":"pcie",)"
      R"("usesPR":"true","platformState":"impl","topModuleName":"top","acceleratorBinaryFormat":"rovapk2",)"
      R"("acceleratorBinaryContent":"bitstream","validAcceleratorBinaryContentValues":"bitstream,pdi",)"
      R"("zuncCompileXPSwitches":["-c"],"zuncLinkXPSwitches":["-l"],"dcpFunctionStripped":"false",)"
      R"("dcpEncrypted":"true","defaultOutputType":"unknown","designIntent":{"dataCenter":{"value":"true",)"
      R"("explicit":"false"},"embedded":{"value":"false","explicit":"false"},"externalHost":{"value":)"
      R"("false","explicit":"false"},"serverManaged":{"value":"false","explicit":"false"}},"board":{"name":)"
      R"("u2"},"devices":[{"name":"fpga0","core":{"numComputeUnits":"0"}}],"interfaces":[{"id":"0"}],)"
      R"("memories":[{"name":"ddr0"}],"files":[{"name":"p.hpfm","type":"HPFM"}],"vendor":"acme","boardId":)"
      R"("u2","name":"base","uniqueName":"acme:u2:base:1.2","unifiedPlatform":"false","expandablePlatform":)"
      R"("false","hardware":"true","softwareEmulation":"true","hardwareEmulation":"false",)"
      R"("hardwareEmuPlatform":"false","usesNIFD":"false","generatedChangeList":"0")");
  // Without partial reconfiguration the host keys go.
  p.setUsesPR(false);
  EXPECT_EQ(flatJson(p).find(R"("host)"), std::string::npos);
  EXPECT_NE(flatJson(p).find(R"("usesPR":"false")"), std::string::npos);
}

// No board, device, interface, memory or file keys for a new platform; the base's keys follow the intent.
TEST(HPLPlatform, JSONOfANewPlatform) {
  EXPECT_EQ(
      flatJson(HPLPlatform()),
      R"({"versionMajor":"0","versionMinor":"0","hostArchitecture":"unknown","hostInterface":"unknown",)"
      R"("usesPR":"true","acceleratorBinaryFormat":"rovapk2","acceleratorBinaryContent":"bitstream",)"
      R"("dcpFunctionStripped":"false","dcpEncrypted":"false","defaultOutputType":"unknown",)"
      R"("designIntent":{"dataCenter":{"value":"false","explicit":"false"},"embedded":{"value":"false",)"
      R"("explicit":"false"},"externalHost":{"value":"false","explicit":"false"},"serverManaged":{)"
      R"("value":"false","explicit":"false"}},"uniqueName":":::0.0","unifiedPlatform":"false",)"
      R"("expandablePlatform":"true","hardware":"true","softwareEmulation":"true","hardwareEmulation":)"
      R"("false","hardwareEmuPlatform":"false","maxAXIMMManagers":"0","maxAXIMMSubordinates":"0",)"
      R"("maxInterrupts":"0","usesNIFD":"false","generatedChangeList":"0"})");
}

TEST(HPLPlatform, BoardWithADriverIsRefusedBeforeAnyKey) {
  HPLPlatform p;
  p.setName("x");
  p.getBoard().addDriver();
  teq_platform::JSONObjectWriter writer;
  EXPECT_THROW(p.toJSON(writer), HEXAlgException);
  EXPECT_TRUE(writer.empty());
}

TEST(HPLPlatform, EqualityComparesTheJSONTextWithoutCase) {
  HPLPlatform a;
  HPLPlatform b;
  EXPECT_TRUE(a.isEquals(b));
  a.setName("Base");
  b.setName("BASE");
  EXPECT_TRUE(a.isEquals(b));
  b.setVersionMinor(1);
  EXPECT_FALSE(a.isEquals(b));
}
