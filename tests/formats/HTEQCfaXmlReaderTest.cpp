#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "formats/CfaXmlReaderTestSupport.h"
#include "formats/HpfmTestDoc.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HPLAddressSegment.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLInterface.h"
#include "platform/HPLMemory.h"
#include "platform/HPLPlatform.h"
#include "platform/HPLPort.h"
#include "platform/HTEQCfaXmlReader.h"
#include "platform/HTEQDesignIPInstance.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQPlatform.h"
#include "platform/PlatformLoader.h"
#include "support/TextPatch.h"

using cfa_test::CfaDoc;
using cfa_test::lineOf;
using cfa_test::makeArchive;
using cfa_test::readInto;
using cfa_test::representativeDoc;
using zr_test::drain;
using zr_test::patched;

namespace {

using Strings = std::vector<std::string>;

// The platform filled from the representative document.
class CfaXmlReaderMapping : public ::testing::Test {
 protected:
  void SetUp() override {
    archive_ = makeArchive(dir_, representativeDoc().text());
    ASSERT_TRUE(readInto(archive_, platform_));
  }
  zr_test::TempDir dir_;
  std::string archive_;
  HPLPlatform platform_;
};

TEST_F(CfaXmlReaderMapping, IdentityGeneratorAndPlatformFlags) {
  EXPECT_EQ(platform_.getPlatformFile(), HUTFile::getCanonicalName(archive_));
  EXPECT_EQ((Strings{platform_.getVendor(), platform_.getBoardId(), platform_.getName(),
                     platform_.getDescription(), platform_.getDefaultOutputType()}),
            (Strings{"acme", "b1", "plat", "d & e", "accbin"}));
  EXPECT_EQ(platform_.getVersionMajor(), 3u);
  EXPECT_EQ(platform_.getVersionMinor(), 4u);
  EXPECT_EQ(platform_.getOldFeatureRomTime(), 42u);
  // Flags are true only for "true" in any case.
  EXPECT_TRUE(platform_.isDcpFuncStripped());
  EXPECT_FALSE(platform_.isDcpEncrypt());
  EXPECT_TRUE(platform_.isUnifiedPlatform());
  EXPECT_TRUE(platform_.isExpandable());

  EXPECT_EQ((Strings{platform_.getGeneratedName(), platform_.getGeneratedVersion(),
                     platform_.getGeneratedTimestamp()}),
            (Strings{"gen", "2.1", "Mon Jan 1"}));
  // 4294967298 keeps its low 32 bits.
  EXPECT_EQ(platform_.getGeneratedChangeList(), 2u);
}

TEST_F(CfaXmlReaderMapping, HostAndBuild) {
  EXPECT_EQ((Strings{platform_.getHostArch(), platform_.getHostInterface(), platform_.getPlatformState(),
                     platform_.getTopModuleName(), platform_.getAcceleratorBinaryFormat(),
                     platform_.getAcceleratorBinaryContent()}),
            (Strings{"aarch64", "axi", "impl", "top", "fmt", "dcp"}));
  EXPECT_TRUE(platform_.usesPR());
  // Two commas in a row give an empty value between the others.
  EXPECT_EQ(platform_.getValidBinaryContentValues(), (Strings{"a", "", "b"}));
  // Only the values are kept, duplicates included.
  EXPECT_EQ(platform_.getZuncCompileXpSwitches(), (Strings{"-O3", "-g"}));
  EXPECT_EQ(platform_.getZuncLinkXpSwitches(), (Strings{"--x", "--x"}));
}

TEST_F(CfaXmlReaderMapping, BoardWithInterfacesMemoriesConnectorsImagesAndPCIeIds) {
  const HPLBoard& board = platform_.getReadOnlyBoard();
  EXPECT_EQ((Strings{board.getName(), board.getVendor(), board.getPart(), board.getBoardPart()}),
            (Strings{"brd", "bv", "pz250-pk2104-2L-e", "acme:brd:1.0"}));

  const auto interfaces = drain(platform_.createInterfaceIter());
  ASSERT_EQ(interfaces.size(), 1u);
  EXPECT_EQ((Strings{interfaces[0]->getId(), interfaces[0]->getName(), interfaces[0]->getType()}),
            (Strings{"int1", "PCIe", "gen3x16"}));

  const auto memories = drain(platform_.createMemoryIter());
  ASSERT_EQ(memories.size(), 2u);
  EXPECT_EQ((Strings{memories[0]->getName(), memories[0]->getType(), memories[0]->getSize()}),
            (Strings{"ddr0", "ddr4", "16GB"}));
  EXPECT_EQ(memories[0]->getLowestAddress(), static_cast<uint64_t>(-1));
  EXPECT_EQ(memories[0]->getHighestAddress(), 4096u);
  // The memory keeps the parameters its family permits.
  EXPECT_EQ(memories[0]->getReadOnlyConfigParamMap(), (HPLMemory::ConfigParamMap{{"MEMORY_PART", "mt40"}}));
  EXPECT_EQ(memories[1]->getName(), "plram");
  EXPECT_EQ(memories[1]->getLowestAddress(), 0u);
  EXPECT_EQ(memories[1]->getHighestAddress(), 0u);

  std::vector<HPLBoard::DimmConnector*> connectors;
  board.getConnectorsVec(connectors);
  ASSERT_EQ(connectors.size(), 2u);
  const HPLBoard::DimmConnector& c0 = *connectors[0];
  EXPECT_EQ((Strings{c0.getName(), c0.getDisplayName(), c0.getType(), c0.getConnectedName(),
                     c0.getConnectedDisplayName()}),
            (Strings{"c0", "C0", "dimm", "m0", "M0"}));
  EXPECT_TRUE(c0.isConnected());
  EXPECT_TRUE(c0.isLocked());
  // An empty connected name is no connection; "no" is not locked.
  EXPECT_EQ(connectors[1]->getConnectedDisplayName(), "");
  EXPECT_FALSE(connectors[1]->isConnected());
  EXPECT_FALSE(connectors[1]->isLocked());

  // The small-letter "hdpi" image is dropped: image types are matched exactly.
  EXPECT_EQ((Strings{board.getImgFileHdpi(), board.getImgFileMdpi(), board.getImgFileLdpi()}),
            (Strings{"h.png", "m.png", "l.png"}));

  const HPLPCIeId& pcie = board.getPCIeId();
  EXPECT_EQ((Strings{pcie.getVendor(), pcie.getDevice(), pcie.getSubsystem(), pcie.getFeatureId()}),
            (Strings{"0x10ee", "0x5000", "0x000e", "0x1"}));
  // Drivers are not read into the model.
  EXPECT_TRUE(drain(board.createDriverIter()).empty());
}

TEST_F(CfaXmlReaderMapping, DevicesCoresPortsAndResources) {
  const auto devices = drain(platform_.createDeviceIter());
  ASSERT_EQ(devices.size(), 2u);
  const HPLDevice& fpga = *devices[0];
  EXPECT_EQ((Strings{fpga.getName(), fpga.getType(), fpga.getFpgaPart(), fpga.getPartDevice()}),
            (Strings{"fpga0", "8", "tarn:pz250:pk2104:-2L:e", "pz250"}));
  EXPECT_EQ(fpga.getSystemClockMap(), (HPLDevice::ClockMap{{"clk0", "300.0"}, {"clk1", "500"}}));
  EXPECT_EQ(devices[1]->getName(), "cpu0");
  EXPECT_EQ(devices[1]->getFpgaPart(), "");
  EXPECT_EQ(devices[1]->getReadOnlyCore().getNumComputeUnits(), 0);

  const HPLCore& core = fpga.getReadOnlyCore();
  // The dynamic region base address is not read.
  EXPECT_EQ(
      (Strings{core.getName(), core.getType(), core.getVlnv(), core.getInstPath(), core.getParentRMInstPath(),
               core.getClockFreq(), core.getDRBDName(), core.getDRBaseAddress()}),
      (Strings{"OCL_REGION_0", "clc_region", "v:l:core:1", "/a", "/p", "250", "bd", ""}));
  EXPECT_EQ(core.getNumComputeUnits(), 255);
  EXPECT_EQ(core.getReadOnlyConfigParamMap(), (HPLCore::ParamMap{{"k", "v"}, {"k2", "v2"}}));

  const auto ports = drain(core.createPortIter());
  ASSERT_EQ(ports.size(), 2u);
  const HPLPort& p = *ports[0];
  EXPECT_EQ(
      (Strings{p.getName(), p.getType(), p.getMode(), p.getProtocol(), p.getBase(), p.getRange(),
               p.getDataWidth(), p.getIdWidth(), p.getUserWidth(), p.getAddrWidth(), p.getAddrOffset(),
               p.getAddrRange(), p.getMaxBurstLength(), p.getFrequency(), p.getDirection(), p.getPolarity()}),
      (Strings{"M_AXI", "addressable", "master", "axi4", "0x0", "0x1000", "512", "4", "1", "64", "0x10",
               "0x20", "256", "300", "out", "high"}));
  const auto segments = drain(p.createAddressSegmentIter());
  ASSERT_EQ(segments.size(), 2u);
  const HPLAddressSegment& s1 = *segments[1];
  EXPECT_EQ((Strings{s1.getName(), s1.getBase(), s1.getRange(), s1.getSlaveName()}),
            (Strings{"s1", "0x300", "0x400", "mem1"}));
  EXPECT_EQ((Strings{ports[1]->getName(), ports[1]->getMode()}), (Strings{"clk", ""}));
  EXPECT_TRUE(drain(ports[1]->createAddressSegmentIter()).empty());

  // Counts go to the core as text and, as numbers, to the platform; the
  // register count to the core only.
  EXPECT_EQ((Strings{core.getBRAMCount(), core.getDSPCount(), core.getLUTCount(), core.getRegisterCount()}),
            (Strings{"12", "4", "100", "200"}));
  EXPECT_EQ((std::vector<int>{platform_.getBRAMCount(), platform_.getDSPCount(), platform_.getLUTCount()}),
            (std::vector<int>{12, 4, 100}));
  // The platform answers the register count from its first core; its own stays 0.
  EXPECT_EQ(platform_.getRegisterCount(), 200);
  EXPECT_EQ(platform_.HTEQHardwarePlatform::getRegisterCount(), 0);

  const HPLCore::PBlockResourceMap& pblocks = core.getReadOnlyPBlockToResourceMap();
  ASSERT_EQ(pblocks.count("pblock_dynamic_region"), 1u);
  EXPECT_EQ(pblocks.at("pblock_dynamic_region"), (HPLCore::ResourceMap{{"LUT", "10"}, {"BRAM", "3"}}));
  std::set<std::string> slrs;
  core.getSLRNames("pblock_dynamic_region", slrs);
  EXPECT_EQ(slrs, (std::set<std::string>{"SLR0", "SLR1"}));
}

TEST_F(CfaXmlReaderMapping, FilesFeatureRomAndDesignIPs) {
  const auto files = drain(platform_.createFileVecIter());
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ((Strings{files[0]->getType(), files[0]->getName(), files[0]->getUsedIn(),
                     files[0]->getProcessingOrder()}),
            (Strings{"BIT", "b.bit", "hw", "2"}));
  EXPECT_EQ((Strings{files[1]->getName(), files[1]->getUsedIn()}), (Strings{"post.tcl", ""}));

  HTEQHardwarePlatform::TEQHardwareFeatureRomVec roms;
  platform_.getFeatureRoms(roms);
  ASSERT_EQ(roms.size(), 1u);
  const HTEQHardwareFeatureRom& rom = *roms[0];
  EXPECT_EQ((std::vector<uint64_t>{rom.getMajorVersion(), rom.getMinorVersion(), rom.getMorwenBuildID(),
                                   rom.getIPBuildID(), rom.getTimeSinceEpoch(), rom.getDDRChannelCount(),
                                   rom.getDDRChannelSize(), rom.getDRBaseAddress(), rom.getFeatureBitMap()}),
            (std::vector<uint64_t>{10, 1, 4294967295u, 7, 1600000000u, 4, 16, 18446744073709551615u, 3}));
  // An unset CDMA address or limit reads 0.
  EXPECT_EQ(
      (std::vector<uint64_t>{rom.getCDMABaseAddress(0), rom.getCDMABaseAddress(1), rom.getCDMABaseAddress(2),
                             rom.getCDMABaseAddress(3), rom.getMaxTempLimit(), rom.getMaxPowerLimit()}),
      (std::vector<uint64_t>{1, 0, 3, 0, 90, 0}));
  EXPECT_STREQ(rom.getFPGAPartName(), "pz250-pk2104-2L-e");
  // A name longer than the ROM holds is cut to its first 63 bytes.
  const std::string longName =
      "acme:brd:plat:3.4_this_name_is_made_long_enough_to_go_beyond_sixty_three_bytes";
  EXPECT_EQ(std::string(rom.getVBNVName()), longName.substr(0, 63));
  EXPECT_EQ(rom.getUUIDAsString(), "01234567-89ab-cdef-0123-456789abcdef");

  const auto ips = drain(platform_.createDesignIPInstanceIter());
  ASSERT_EQ(ips.size(), 2u);
  EXPECT_EQ((Strings{ips[0]->getInstanceName(), ips[0]->getVLNV()}), (Strings{"ip0", "v:l:n:1"}));
  HTEQDesignIPInstance::ConfigMap config;
  ips[0]->getConfigParamMap(config);
  EXPECT_EQ(config, (HTEQDesignIPInstance::ConfigMap{{"P", "1"}, {"Q", "2"}}));
  ips[1]->getConfigParamMap(config);
  EXPECT_TRUE(config.empty());
}

TEST(CfaXmlReaderDefaults, AbsentOptionalPartsLeaveTheModelAtItsDefaults) {
  zr_test::TempDir dir;
  HPLPlatform platform;
  platform.setBRAMCount(9);
  CfaDoc doc;
  // An empty BRAM count leaves the platform's own as it was.
  doc.devices = R"(<Device Name="d" Type="t"><Core Name="c" Type="t" ComputeUnits="1">)"
                R"(<Core><AvailableResources LUT="5" REG="" BRAM="" DSP=""/></Core></Core></Device>)";
  ASSERT_TRUE(readInto(makeArchive(dir, doc.text()), platform));

  EXPECT_EQ(platform.getBRAMCount(), 9);
  EXPECT_EQ(platform.getLUTCount(), 5);
  EXPECT_EQ(platform.getGeneratedName(), "");
  EXPECT_EQ(platform.getGeneratedTimestamp(), "");
  EXPECT_EQ(platform.getGeneratedChangeList(), 0u);
  EXPECT_EQ(platform.getOldFeatureRomTime(), 0u);
  EXPECT_EQ(platform.getDefaultOutputType(), "unknown");
  EXPECT_EQ(platform.getHostArch(), "unknown");
  EXPECT_EQ(platform.getPlatformState(), "");
  EXPECT_EQ(platform.getAcceleratorBinaryFormat(), "rovapk2");
  EXPECT_EQ(platform.getAcceleratorBinaryContent(), "bitstream");
  EXPECT_EQ(platform.getValidBinaryContentValues(), (std::vector<std::string>{"dcp", "bitstream"}));
  EXPECT_FALSE(platform.isDcpFuncStripped());
  EXPECT_FALSE(platform.isUnifiedPlatform());
  EXPECT_EQ(platform.getReadOnlyBoard().getBoardPart(), "");
  EXPECT_EQ(platform.getReadOnlyBoard().getPCIeId().getVendor(), "");
  EXPECT_FALSE(platform.hasDimmConnectors());
  // A board without interfaces gets none.
  EXPECT_TRUE(drain(platform.createInterfaceIter()).empty());
  EXPECT_TRUE(drain(platform.createMemoryIter()).empty());
  EXPECT_TRUE(drain(platform.createFileVecIter()).empty());
  EXPECT_TRUE(drain(platform.createDesignIPInstanceIter()).empty());
  HTEQHardwarePlatform::TEQHardwareFeatureRomVec roms;
  platform.getFeatureRoms(roms);
  EXPECT_TRUE(roms.empty());
}

TEST(CfaXmlReaderBuild, StaticSynthCheckpointMakesTheStateSynthWhateverItsValue) {
  zr_test::TempDir dir;
  for (const std::string attrs :
       {R"(StaticSynthCheckpoint="")", R"(PlatformState="impl" StaticSynthCheckpoint="x")"}) {
    CfaDoc doc;
    doc.buildAttrs = attrs;
    HPLPlatform platform;
    ASSERT_TRUE(readInto(makeArchive(dir, doc.text()), platform)) << attrs;
    EXPECT_EQ(platform.getPlatformState(), "synth") << attrs;
  }
}

// ---- The hpfm listed among the files ----

// A small hardware platform file with this description (BRAM 10, FF 30).
std::string hpfmText(const std::string& description) {
  hpfm_test::HpfmDoc doc;
  doc.description = description;
  return doc.text();
}

// A document that says the platform is fixed and not unified, listing an hpfm of this type.
std::string docWithHpfm(const std::string& type) {
  CfaDoc doc;
  doc.cfaAttrs += R"( Unified="false" Fixed="true")";
  doc.files = R"(<File Type=")" + type + R"(" Name="hw/shell.hpfm"/>)";
  return doc.text();
}

TEST(CfaXmlReaderHpfm, AnHpfmThatParsesFillsThePlatformAndMakesItUnifiedAndExpandable) {
  zr_test::TempDir dir;
  const std::string hpfm = hpfmText("From the hpfm");
  // The type is compared without regard to case.
  for (const std::string type : {"HPFM", "hpfm"}) {
    const std::string archive = makeArchive(dir, docWithHpfm(type), {{"hw/shell.hpfm", hpfm}});
    HPLPlatform platform;
    testing::internal::CaptureStdout();
    const bool ok = readInto(archive, platform);
    const std::string out = testing::internal::GetCapturedStdout();
    ASSERT_TRUE(ok) << type;
    EXPECT_EQ(out, "") << type;
    EXPECT_TRUE(platform.isUnifiedPlatform()) << type;
    EXPECT_TRUE(platform.isExpandable()) << type;
    EXPECT_EQ(platform.getHpfmString(), hpfm);
    // The hpfm's description replaces the document's; its counts come after the core's.
    EXPECT_EQ(platform.getDescription(), "From the hpfm");
    EXPECT_EQ(platform.getFFCount(), 30);
    EXPECT_EQ(platform.getBRAMCount(), 10);
    EXPECT_EQ(platform.getVendor(), "v");
  }
}

TEST(CfaXmlReaderHpfm, AnHpfmThatDoesNotParseIsReportedAndTheReadGoesOn) {
  zr_test::TempDir dir;
  const std::string broken = patched(hpfmText("x"), R"( kp:BRAM="10")", "");
  const std::string archive = makeArchive(dir, docWithHpfm("HPFM"), {{"hw/shell.hpfm", broken}});
  HPLPlatform platform;
  testing::internal::CaptureStdout();
  const bool ok = readInto(archive, platform);
  const std::string out = testing::internal::GetCapturedStdout();
  ASSERT_TRUE(ok);
  const std::string line = "Failed to parse hpfm stream from 'hw/shell.hpfm' in " + archive + "\n";
  EXPECT_NE(out.find(line), std::string::npos) << out;
  EXPECT_EQ(platform.getHpfmString(), broken);
  EXPECT_FALSE(platform.isUnifiedPlatform());
  EXPECT_FALSE(platform.isExpandable());
  EXPECT_EQ(platform.getDescription(), "d");

  // A listed hpfm that the archive does not hold is passed over without a word.
  const std::string missing = makeArchive(dir, docWithHpfm("HPFM"), {}, "missing.cfa");
  HPLPlatform other;
  testing::internal::CaptureStdout();
  EXPECT_TRUE(readInto(missing, other));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(other.getHpfmString(), "");
  EXPECT_FALSE(other.isUnifiedPlatform());
}

// ---- Emulation metadata listed among the files ----

// An emulation metadata document with one emulation holding files of these types.
std::string emulationXml(const std::vector<std::string>& fileTypes) {
  std::string files;
  for (const std::string& type : fileTypes) files += "<File Type=\"" + type + "\" Name=\"emu/x\"/>";
  return "<?xml version=\"1.0\"?>\n<Root VersionMajor=\"1\" VersionMinor=\"0\"><Emulations>"
         "<Emulation Name=\"hw_emu\"><Files>" +
         files + "</Files></Emulation></Emulations></Root>\n";
}

TEST(CfaXmlReaderEmulation, AnEmulationHpfmTurnsHardwareEmulationOn) {
  zr_test::TempDir dir;
  struct Case {
    const char* fileType;  // type of the file entry in the CFA document
    std::vector<std::string> emulationFiles;
    bool supports;
  };
  const Case cases[] = {
      {"EMU_XML", {"TOP_BD", "EMU_HPFM"}, true},
      {"emu_xml", {"emu_hpfm"}, true},
      {"EMU_XML", {"TOP_BD"}, false},
      {"EMU_JSON", {"EMU_HPFM"}, false},
  };
  for (const Case& c : cases) {
    CfaDoc doc;
    doc.files = std::string("<File Type=\"") + c.fileType + R"(" Name="emu/emu.xml"/>)";
    HPLPlatform platform;
    ASSERT_TRUE(
        readInto(makeArchive(dir, doc.text(), {{"emu/emu.xml", emulationXml(c.emulationFiles)}}), platform))
        << c.fileType;
    EXPECT_EQ(platform.supportsHWEmulation(), c.supports) << c.fileType;
    EXPECT_EQ(platform.getFile(c.fileType), "emu/emu.xml");
  }

  // Emulation metadata that cannot be read fails the whole read.
  for (const std::string& member : {std::string(), std::string("<Root/>")}) {
    CfaDoc doc;
    doc.files = R"(<File Type="EMU_XML" Name="emu/emu.xml"/>)";
    std::vector<std::pair<std::string, std::string>> members;
    if (!member.empty()) members.emplace_back("emu/emu.xml", member);
    const std::string archive = makeArchive(dir, doc.text(), members, member.empty() ? "a.cfa" : "b.cfa");
    HPLPlatform platform;
    ComMsgCapture cap;
    EXPECT_FALSE(readInto(archive, platform)) << member;
    const ComMsg* msg = cap.find("@74-65@%s%s%s");
    ASSERT_NE(msg, nullptr) << member;
    EXPECT_EQ(msg->args.at(0), "cfa.xml");
    EXPECT_FALSE(platform.supportsHWEmulation());
  }
}

// ---- Design intent ----

TEST(CfaXmlReaderDesignIntent, FollowsUsesPR) {
  zr_test::TempDir dir;
  struct Case {
    const char* buildAttrs;
    bool dataCenter;
    bool usesPR;  // the platform's flag after the read; true is the model's default
  };
  const Case cases[] = {
      {R"(UsesPR="true")", true, true},    {R"(UsesPR="TRUE")", true, true},  {"", false, true},
      {R"(UsesPR="false")", false, false}, {R"(UsesPR="yes")", false, false}, {R"(UsesPR="")", false, false}};
  for (const Case& c : cases) {
    CfaDoc doc;
    doc.buildAttrs = c.buildAttrs;
    HPLPlatform platform;
    ASSERT_TRUE(readInto(makeArchive(dir, doc.text()), platform)) << c.buildAttrs;
    const HTEQDesignIntentStorage& intent = platform.getDesignIntent();
    // A design with partial reconfiguration is a hosted data-center card; any
    // other is embedded. The values are computed, so a later explicit value still wins.
    EXPECT_EQ(
        (std::vector<bool>{intent.getDataCenter(), intent.getExternalHost(), intent.getServerManaged(),
                           intent.getEmbedded(), intent.isExplicit(HTEQDesignIntentStorage::dataCenter),
                           intent.isExplicit(HTEQDesignIntentStorage::embedded), platform.usesPR()}),
        (std::vector<bool>{c.dataCenter, c.dataCenter, c.dataCenter, !c.dataCenter, false, false, c.usesPR}))
        << c.buildAttrs;
  }
}

// ---- Expandable and unified ----

TEST(CfaXmlReaderExpandable, FixedFlagOrTheArchiveDecides) {
  zr_test::TempDir dir;
  struct Case {
    const char* fixedAttr;
    const char* member;  // a further member of the archive, or ""
    bool expandable;
  };
  const Case cases[] = {{R"( Fixed="true")", "", false},
                        {R"( Fixed="True")", "", false},
                        {R"( Fixed="false")", "hwdef.xml", true},
                        {R"( Fixed="")", "sysdef.xml", true},
                        {"", "hwdef.xml", false},
                        {"", "sysdef.xml", false},
                        {"", "hw/hwdef.xml", true},
                        {"", "", true}};
  int n = 0;
  for (const Case& c : cases) {
    CfaDoc doc;
    doc.cfaAttrs += c.fixedAttr;
    std::vector<std::pair<std::string, std::string>> members;
    if (*c.member) members.emplace_back(c.member, "<x/>");
    HPLPlatform platform;
    platform.setExpandable(!c.expandable);
    ASSERT_TRUE(
        readInto(makeArchive(dir, doc.text(), members, "e" + std::to_string(n++) + ".cfa"), platform));
    EXPECT_EQ(platform.isExpandable(), c.expandable) << c.fixedAttr << " " << c.member;
  }
}

// ---- Version of the format ----

TEST(CfaXmlReaderVersion, ANewerMajorVersionIsRefusedWithItsSentence) {
  cfa_test::ScopedToolVersion version(2026, 1, "2026.1 (build 77)");
  zr_test::TempDir dir;
  CfaDoc doc;
  doc.rootAttrs = R"(VersionMajor="2" VersionMinor="0")";
  const std::string archive = makeArchive(dir, doc.text());
  HPLPlatform platform;
  ComMsgCapture cap;
  std::string error;
  EXPECT_FALSE(readInto(archive, platform, &error));

  const std::string sentence = "Hardware Platform '" + archive +
                               "' (version 2) is newer than the current version 1 (2026.1 (build 77))";
  EXPECT_EQ(error, sentence);
  const ComMsg* msg = cap.find("@74-52@%s");
  ASSERT_NE(msg, nullptr);
  EXPECT_EQ(msg->args, std::vector<std::string>{sentence});
  EXPECT_EQ(msg->mask, ComMsgMask::kError);
  EXPECT_EQ(msg->module, "platform");
  EXPECT_EQ(cap.messages().size(), 1u);
  // Nothing of the document reached the model.
  EXPECT_EQ(platform.getVendor(), "");
}

TEST(CfaXmlReaderVersion, PreSynthOpensAnyVersionAndTheMinorNeverCounts) {
  zr_test::TempDir dir;
  struct Case {
    const char* rootAttrs;
    const char* buildAttrs;
    bool ok;
  };
  const Case cases[] = {
      {R"(VersionMajor="2" VersionMinor="0")", R"(PlatformState="pre_synth")", true},
      {R"(VersionMajor="7" VersionMinor="0")", R"(PlatformState="PRE_SYNTH")", true},
      {R"(VersionMajor="2" VersionMinor="0")", R"(PlatformState="synth")", false},
      {R"(VersionMajor="1" VersionMinor="4294967295")", "", true},
      {R"(VersionMajor="0" VersionMinor="99")", "", true},
      // Compared as signed numbers, the largest value reads as -1.
      {R"(VersionMajor="4294967295" VersionMinor="0")", "", true},
      {R"(VersionMajor="2147483648" VersionMinor="0")", "", true},
      {R"(VersionMajor="2147483647" VersionMinor="0")", "", false},
  };
  for (const Case& c : cases) {
    CfaDoc doc;
    doc.rootAttrs = c.rootAttrs;
    doc.buildAttrs = c.buildAttrs;
    HPLPlatform platform;
    ComMsgCapture cap;
    EXPECT_EQ(readInto(makeArchive(dir, doc.text()), platform), c.ok) << c.rootAttrs << " " << c.buildAttrs;
    EXPECT_EQ(cap.has("@74-52@%s"), !c.ok) << c.rootAttrs;
    EXPECT_EQ(platform.getVendor(), c.ok ? "v" : "") << c.rootAttrs;
  }
}

TEST(CfaXmlReaderVersion, GetRootVersionReportsTheFormatVersionOrFails) {
  zr_test::TempDir dir;
  CfaDoc doc;
  doc.rootAttrs = R"(VersionMajor="2" VersionMinor="17")";
  HPLPlatform platform;
  HTEQCfaXmlReader reader(makeArchive(dir, doc.text()), &platform);
  int major = 0;
  int minor = 0;
  ASSERT_TRUE(reader.getRootVersion(major, minor));
  EXPECT_EQ(major, 2);
  EXPECT_EQ(minor, 17);

  const std::string broken =
      makeArchive(dir, patched(doc.text(), R"( VersionMinor="17")", ""), {}, "broken.lfa");
  HTEQCfaXmlReader brokenReader(broken, &platform);
  ComMsgCapture cap;
  major = minor = -5;
  EXPECT_FALSE(brokenReader.getRootVersion(major, minor));
  EXPECT_EQ(major, -5);
  const ComMsg* msg = cap.find("@74-62@%s%s%d");
  ASSERT_NE(msg, nullptr);
  // The member is named after the archive's own extension.
  EXPECT_EQ(msg->args.at(1), broken + "/lfa.xml");
  EXPECT_EQ(msg->args.at(2), "2");
}

// ---- Failures ----

struct ViolationCase {
  const char* kind;
  std::string doc;
  std::string lineOfThis;  // text on the line the failure names
};

// Each kind of violation and the line the parser names for it are checked
// with the document records; these cases follow the failure from the parser
// into the message: at the top, deep inside, at a parent, in an attribute.
std::vector<ViolationCase> violationCases() {
  const std::string minimal = CfaDoc().text();
  const std::string full = representativeDoc().text();
  return {
      {"root element", patched(patched(minimal, "<Root ", "<Top "), "</Root>", "</Top>"), "<Top "},
      {"required attribute deep", patched(full, R"( Slave="mem1")", ""), R"(Name="s1")"},
      // A missing child is reported at the element that lacks it.
      {"required child", patched(minimal, "<Images/>", ""), "<Board "},
      {"below the minimum", patched(full, R"(CL="4294967298")", R"(CL="-1")"), "<GenAppInfo"},
  };
}

TEST(CfaXmlReaderFailure, EveryViolationKindIsReportedWithItsLine) {
  zr_test::TempDir dir;
  int n = 0;
  for (const ViolationCase& c : violationCases()) {
    const std::string archive = makeArchive(dir, c.doc, {}, "v" + std::to_string(n++) + ".cfa");
    HPLPlatform platform;
    ComMsgCapture cap;
    std::string error;
    EXPECT_FALSE(readInto(archive, platform, &error)) << c.kind;
    const ComMsg* msg = cap.find("@74-62@%s%s%d");
    ASSERT_NE(msg, nullptr) << c.kind;
    EXPECT_EQ(msg->mask, ComMsgMask::kCriticalWarning) << c.kind;
    ASSERT_EQ(msg->args.size(), 3u) << c.kind;
    EXPECT_EQ(msg->args[0], error) << c.kind;
    EXPECT_FALSE(error.empty()) << c.kind;
    EXPECT_EQ(msg->args[1], archive + "/cfa.xml") << c.kind;
    const int expectedLine = lineOf(c.doc, c.lineOfThis);
    EXPECT_EQ(msg->args[2], std::to_string(expectedLine)) << c.kind << "\n" << error;
    EXPECT_EQ(cap.messages().size(), 1u) << c.kind;
  }
}

TEST(CfaXmlReaderFailure, AMissingOrDamagedMemberFailsAsAParseError) {
  zr_test::TempDir dir;
  // The archive holds the document under another name only.
  const std::string archive = dir.file("other.cfa");
  HUTZip::writeMember(archive, "lfa.xml", CfaDoc().text());
  const std::string notZip = dir.write("plain.cfa", CfaDoc().text());
  // A member that inflates past the ratio limit is reported with that limit,
  // not as an empty document.
  const std::string bomb = dir.file("bomb.cfa");
  HUTZip::writeMember(bomb, "cfa.xml", CfaDoc().text() + std::string(4 << 20, ' '));
  const zr_test::ScopedReadLimits limits(64 << 20, 200);
  for (const std::string& file : {archive, notZip, bomb}) {
    HPLPlatform platform;
    ComMsgCapture cap;
    EXPECT_FALSE(readInto(file, platform)) << file;
    const ComMsg* msg = cap.find("@74-62@%s%s%d");
    ASSERT_NE(msg, nullptr) << file;
    ASSERT_EQ(msg->args.size(), 3u);
    EXPECT_FALSE(msg->args[0].empty());
    EXPECT_EQ(msg->args[0].find("compression-ratio limit") != std::string::npos, file == bomb)
        << msg->args[0];
    EXPECT_EQ(msg->args[1], file + "/cfa.xml");
    // The platform file was named before the member was read.
    EXPECT_EQ(platform.getPlatformFile(), HUTFile::getCanonicalName(file));
  }
}

TEST(CfaXmlReaderFailure, ModelRefusalsAreReportedAsReadFailures) {
  zr_test::TempDir dir;
  const CfaDoc base = representativeDoc();
  struct Case {
    const char* what;
    std::string doc;
  };
  const Case cases[] = {
      {"device part of two fields", patched(base.text(), "tarn:pz250:pk2104:-2L:e", "pz:250")},
      {"design IP parameter given twice", patched(base.text(), R"(Name="Q")", R"(Name="P")")},
      {"UUID that is none", patched(base.text(), "01234567-89ab-cdef-0123-456789abcdef", "not-a-uuid")},
  };
  for (const Case& c : cases) {
    const std::string archive = makeArchive(dir, c.doc);
    HPLPlatform platform;
    ComMsgCapture cap;
    std::string error;
    EXPECT_FALSE(readInto(archive, platform, &error)) << c.what;
    const ComMsg* msg = cap.find("@74-65@%s%s%s");
    ASSERT_NE(msg, nullptr) << c.what;
    EXPECT_EQ(msg->mask, ComMsgMask::kCriticalWarning);
    EXPECT_EQ(msg->args, (std::vector<std::string>{"cfa.xml", archive, error})) << c.what;
    EXPECT_FALSE(error.empty()) << c.what;
    // What was filled before the failure stays in the platform.
    EXPECT_EQ(platform.getVendor(), "acme") << c.what;
  }

  // A reader given no platform fails the same way instead of crashing.
  const std::string archive = makeArchive(dir, CfaDoc().text());
  HTEQCfaXmlReader reader(archive, nullptr);
  ComMsgCapture cap;
  EXPECT_FALSE(reader.parseCFA());
  EXPECT_TRUE(cap.has("@74-65@%s%s%s"));
  int major = 0;
  int minor = 0;
  EXPECT_FALSE(reader.getRootVersion(major, minor));
}

TEST(CfaXmlReaderFailure, TheConstructorRefusesAnEmptyOrMissingPath) {
  zr_test::TempDir dir;
  HPLPlatform platform;
  EXPECT_THROW(HTEQCfaXmlReader("", &platform), HEXFileNotFoundException);
  try {
    HTEQCfaXmlReader reader(dir.file("missing.cfa"), &platform);
    FAIL() << "no exception";
  } catch (const HEXFileNotFoundException& e) {
    EXPECT_EQ(e.getFileName(), dir.file("missing.cfa"));
  }
}

// ---- Through the loader ----

TEST(CfaXmlReaderLoader, ALoneArchiveWithoutJsonLoadsThroughTheXmlMember) {
  zr_test::TempDir dir;
  const std::string good = makeArchive(dir, representativeDoc().text(), {}, "good.cfa");
  teq_platform::PlatformLoader loader(good, teq_platform::PlatformLoader::Default);
  const std::shared_ptr<HTEQPlatform> platform = loader.load();
  ASSERT_NE(platform, nullptr);
  ASSERT_NE(platform->getHardwarePlatform(), nullptr);
  EXPECT_EQ(platform->getHardwarePlatform()->getVendor(), "acme");
  EXPECT_EQ(platform->getHardwarePlatform()->getPlatformFile(), HUTFile::getCanonicalName(good));

  CfaDoc refused;
  refused.rootAttrs = R"(VersionMajor="3" VersionMinor="0")";
  const std::string newer = makeArchive(dir, refused.text(), {}, "newer.cfa");
  teq_platform::PlatformLoader refusing(newer, teq_platform::PlatformLoader::Default);
  ComMsgCapture cap;
  EXPECT_EQ(refusing.load(), nullptr);
  EXPECT_TRUE(cap.has("@74-52@%s"));
  const ComMsg* msg = cap.find("@74-60@%s");
  ASSERT_NE(msg, nullptr);
  EXPECT_EQ(msg->args, std::vector<std::string>{"Failed to parse Hardware Platform metadata file"});
}

}  // namespace
