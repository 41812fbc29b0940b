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

// The model's JSON document holds every field the model writes; what it
// leaves out is checked on its own.
TEST_F(CfaXmlReaderMapping, EveryFieldOfTheDocumentReachesTheModel) {
  EXPECT_EQ(platform_.getPlatformFile(), HUTFile::getCanonicalName(archive_));
  EXPECT_EQ(platform_.getOldFeatureRomTime(), 42u);
  // The platform answers the register count from its first core; its own stays 0.
  EXPECT_EQ(platform_.HTEQHardwarePlatform::getRegisterCount(), 0);
  const auto devices = drain(platform_.createDeviceIter());
  ASSERT_EQ(devices.size(), 2u);
  const HPLCore& core = devices[0]->getReadOnlyCore();
  // The dynamic region base address is not read.
  EXPECT_EQ(core.getDRBaseAddress(), "");
  const auto ports = drain(core.createPortIter());
  ASSERT_EQ(ports.size(), 2u);
  const auto segments = drain(ports[0]->createAddressSegmentIter());
  ASSERT_EQ(segments.size(), 2u);
  const HPLAddressSegment& s1 = *segments[1];
  EXPECT_EQ((Strings{s1.getName(), s1.getBase(), s1.getRange(), s1.getSlaveName()}),
            (Strings{"s1", "0x300", "0x400", "mem1"}));
  EXPECT_TRUE(drain(ports[1]->createAddressSegmentIter()).empty());

  // Flags are true only for "true" in any case; two commas in a row give an
  // empty value; switches keep their duplicates; the small-letter "hdpi"
  // image is dropped; 4294967298 keeps its low 32 bits; counts go to the
  // core as text and to the platform as numbers; a ROM name is cut to 63 bytes.
  platform_.setPlatformFile("p");
  EXPECT_EQ(zr_test::flatJson(platform_),
            R"({"versionMajor":"3","versionMinor":"4","hostArchitecture":"aarch64","hostInterface":"axi",)"
            R"("usesPR":"true","platformState":"impl","topModuleName":"top",)"
            R"("acceleratorBinaryFormat":"fmt","acceleratorBinaryContent":"dcp",)"
            R"("validAcceleratorBinaryContentValues":"a,,b","zuncCompileXPSwitches":["-O3","-g"],)"
            R"("zuncLinkXPSwitches":["--x","--x"],"dcpFunctionStripped":"true","dcpEncrypted":"false",)"
            R"("defaultOutputType":"accbin","designIntent":{"dataCenter":{"value":"true",)"
            R"("explicit":"false"},"embedded":{"value":"false","explicit":"false"},)"
            R"("externalHost":{"value":"true","explicit":"false"},"serverManaged":{"value":"true",)"
            R"("explicit":"false"}},"board":{"name":"brd","vendor":"bv","part":"pz250-pk2104-2L-e",)"
            R"("boardPart":"acme:brd:1.0","imageFileHdpi":"h.png","imageFileMdpi":"m.png",)"
            R"("imageFileLdpi":"l.png","connectors":[{"name":"c0","displayName":"C0","type":"dimm",)"
            R"("connectedName":"m0","connectedDisplayName":"M0","connected":"true","locked":"true"},)"
            R"({"name":"c1","displayName":"C1","type":"dimm","connected":"false","locked":"false"}],)"
            R"("pcie":{"vendor":"0x10ee","device":"0x5000","subsystem":"0x000e","featureId":"0x1"}},)"
            R"("devices":[{"name":"fpga0","type":"8","fpgaPart":"tarn:pz250:pk2104:-2L:e",)"
            R"("part":{"name":"pz250-pk2104-2L-e","architecture":"tarn","device":"pz250",)"
            R"("package":"pk2104","speedGrade":"-2L","tempGrade":"e"},)"
            R"("scalableSystemClocks":[{"name":"clk0","frequency":"300.0"},{"name":"clk1",)"
            R"("frequency":"500"}],"core":{"name":"OCL_REGION_0","type":"clc_region","instPath":"\/a",)"
            R"("parentRMInstPath":"\/p","drBDName":"bd","vlnv":"v:l:core:1","clockFreq":"250",)"
            R"("numComputeUnits":"255","availableResources":{"bramCount":"12","dspCount":"4",)"
            R"("lutCount":"100","registerCount":"200","pBlocks":[{"name":"pblock_dynamic_region",)"
            R"("validSlrs":["SLR0","SLR1"],"resources":[{"name":"BRAM","value":"3"},{"name":"LUT",)"
            R"("value":"10"}]}]},"configParams":[{"name":"k","value":"v"},{"name":"k2","value":"v2"}],)"
            R"("ports":[{"name":"M_AXI","type":"addressable","mode":"master","base":"0x0","range":"0x1000",)"
            R"("dataWidth":"512","protocol":"axi4","idWidth":"4","addrWidth":"64","userWidth":"1",)"
            R"("addrOffset":"0x10","addrRange":"0x20","maxBurstLength":"256","frequency":"300",)"
            R"("polarity":"high","direction":"out"},{"name":"clk","type":"clock"}]}},{"name":"cpu0",)"
            R"("type":"cpu","core":{"name":"c","type":"t","numComputeUnits":"0"}}],)"
            R"("interfaces":[{"id":"int1","name":"PCIe","type":"gen3x16"}],"memories":[{"name":"ddr0",)"
            R"("type":"ddr4","size":"16GB","lowAddress":"18446744073709551615","highAddress":"4096",)"
            R"("configParams":[{"name":"MEMORY_PART","value":"mt40"}]},{"name":"plram","type":"sram",)"
            R"("size":"128K"}],"files":[{"name":"b.bit","type":"BIT","usedIn":"hw","processingOrder":"2"},)"
            R"({"name":"post.tcl","type":"TCL"}],"vendor":"acme","boardId":"b1","name":"plat",)"
            R"("description":"d & e","uniqueName":"acme:b1:plat:3.4","fpgaPart":"tarn",)"
            R"("fpgaDevice":"pz250","interfaceDescription":"PCIe gen3x16","platformFile":"p",)"
            R"("unifiedPlatform":"true","expandablePlatform":"true","hardware":"true",)"
            R"("softwareEmulation":"true","hardwareEmulation":"false","hardwareEmuPlatform":"false",)"
            R"("maxAXIMMManagers":"0","maxAXIMMSubordinates":"0","maxInterrupts":"0","usesNIFD":"false",)"
            R"("generatedName":"gen","generatedVersion":"2.1","generatedChangeList":"2",)"
            R"("generatedTimestamp":"Mon Jan 1","designIpInstances":[{"vlnv":"v:l:n:1","instance":"ip0",)"
            R"("configuration":{"P":"1","Q":"2"}},{"vlnv":"v:l:n:2","instance":"ip1"}],)"
            R"("resources":[{"type":"BRAM","count":"12"},{"type":"DSP","count":"4"},{"type":"LUT",)"
            R"("count":"100"},{"type":"REG","count":"200"}],"featureRoms":[{"majorVersion":"10",)"
            R"("minorVersion":"1","morwenBuildID":"4294967295","ipBuildID":"7",)"
            R"("timeSinceEpoch":"1600000000","fpgaPartName":"pz250-pk2104-2L-e",)"
            R"("vbnvName":"acme:brd:plat:3.4_this_name_is_made_long_enough_to_go_beyond_si",)"
            R"("ddrChannelCount":"4","ddrChannelSize":"16","drBaseAddress":"0xffffffffffffffff",)"
            R"("featureBitMap":{"value":"0x3","unifiedPlatform":"enabled","auroraLink":"enabled",)"
            R"("boardMgmt":"disabled","boardScheduler":"disabled","promType":"0x","debugType":"0x",)"
            R"("peerToPeer":"disabled","uuid":"disabled","clockThrottling":"disabled",)"
            R"("passthruTrans":"disabled"},"uuid":"01234567-89ab-cdef-0123-456789abcdef",)"
            R"("cdmaBaseAddress0":"0x1","cdmaBaseAddress1":"0x","cdmaBaseAddress2":"0x3",)"
            R"("cdmaBaseAddress3":"0x","maxTempLimit":"90","maxPowerLimit":"0"}]})");
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

  EXPECT_EQ(platform.getOldFeatureRomTime(), 0u);
  // Nothing absent is written: no generator, state, interfaces, memories,
  // connectors, files, design IPs or feature ROMs; BRAM stays 9.
  platform.setPlatformFile("p");
  EXPECT_EQ(zr_test::flatJson(platform),
            R"({"versionMajor":"0","versionMinor":"0","hostArchitecture":"unknown",)"
            R"("hostInterface":"unknown","usesPR":"true","acceleratorBinaryFormat":"rovapk2",)"
            R"("acceleratorBinaryContent":"bitstream","validAcceleratorBinaryContentValues":"dcp,)"
            R"(bitstream","dcpFunctionStripped":"false","dcpEncrypted":"false",)"
            R"("defaultOutputType":"unknown","designIntent":{"dataCenter":{"value":"false",)"
            R"("explicit":"false"},"embedded":{"value":"true","explicit":"false"},)"
            R"("externalHost":{"value":"false","explicit":"false"},"serverManaged":{"value":"false",)"
            R"("explicit":"false"}},"board":{"name":"b","vendor":"bv","part":"p"},"devices":[{"name":"d",)"
            R"("type":"t","core":{"name":"c","type":"t","numComputeUnits":"1",)"
            R"("availableResources":{"lutCount":"5"}}}],"vendor":"v","boardId":"b","name":"n",)"
            R"("description":"d","uniqueName":"v:b:n:0.0","platformFile":"p","unifiedPlatform":"false",)"
            R"("expandablePlatform":"true","hardware":"true","softwareEmulation":"true",)"
            R"("hardwareEmulation":"false","hardwareEmuPlatform":"false","maxAXIMMManagers":"0",)"
            R"("maxAXIMMSubordinates":"0","maxInterrupts":"0","usesNIFD":"false","generatedChangeList":"0",)"
            R"("resources":[{"type":"BRAM","count":"9"},{"type":"LUT","count":"5"}]})");
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

// A newer major version is refused with a sentence that names it, before
// anything of the document reaches the model; a pre-synthesis platform opens
// whatever its version, and the minor version never counts.
TEST(CfaXmlReaderVersion, ANewerMajorVersionIsRefusedUnlessPreSynth) {
  cfa_test::ScopedToolVersion version(2026, 1, "2026.1 (build 77)");
  zr_test::TempDir dir;
  struct Case {
    const char* major;
    const char* minor;
    const char* buildAttrs;
    bool ok;
  };
  const Case cases[] = {
      {"2", "0", R"(PlatformState="pre_synth")", true},
      {"7", "0", R"(PlatformState="PRE_SYNTH")", true},
      {"2", "0", R"(PlatformState="synth")", false},
      {"1", "4294967295", "", true},
      {"0", "99", "", true},
      // Compared as signed numbers, the largest value reads as -1.
      {"4294967295", "0", "", true},
      {"2147483648", "0", "", true},
      {"2147483647", "0", "", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.major) + " " + c.buildAttrs);
    CfaDoc doc;
    doc.rootAttrs = std::string("VersionMajor=\"") + c.major + "\" VersionMinor=\"" + c.minor + "\"";
    doc.buildAttrs = c.buildAttrs;
    const std::string archive = makeArchive(dir, doc.text());
    HPLPlatform platform;
    ComMsgCapture cap;
    std::string error;
    EXPECT_EQ(readInto(archive, platform, &error), c.ok);
    EXPECT_EQ(platform.getVendor(), c.ok ? "v" : "");
    if (c.ok) {
      EXPECT_TRUE(cap.messages().empty());
      continue;
    }
    const std::string sentence = "Hardware Platform '" + archive + "' (version " + c.major +
                                 ") is newer than the current version 1 (2026.1 (build 77))";
    EXPECT_EQ(error, sentence);
    ASSERT_EQ(cap.messages().size(), 1u);
    const ComMsg& msg = cap.messages()[0];
    EXPECT_EQ(msg.id, "@74-52@%s");
    EXPECT_EQ(msg.args, std::vector<std::string>{sentence});
    EXPECT_EQ(msg.mask, ComMsgMask::kError);
    EXPECT_EQ(msg.module, "platform");
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

// The parser's text and line reach the message; which line each kind of
// violation names is the records' business, checked with them.
TEST(CfaXmlReaderFailure, AViolationIsReportedWithItsLine) {
  zr_test::TempDir dir;
  const std::string doc = patched(representativeDoc().text(), R"( Slave="mem1")", "");
  const std::string archive = makeArchive(dir, doc);
  HPLPlatform platform;
  ComMsgCapture cap;
  std::string error;
  EXPECT_FALSE(readInto(archive, platform, &error));
  EXPECT_FALSE(error.empty());
  const ComMsg* msg = cap.find("@74-62@%s%s%d");
  ASSERT_NE(msg, nullptr);
  EXPECT_EQ(msg->mask, ComMsgMask::kCriticalWarning);
  EXPECT_EQ(msg->args, (std::vector<std::string>{error, archive + "/cfa.xml",
                                                 std::to_string(lineOf(doc, R"(Name="s1")"))}));
  EXPECT_EQ(cap.messages().size(), 1u);
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
}

}  // namespace
