#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "formats/TEQCfaXmlLMX.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "support/TestSupport.h"

using BasePlatform::Root;

namespace {

// The smallest valid document. Each element sits on a line of its own so that
// the tests can name the line of a failure: Root 2, CFA 3, Build 4, Board 5,
// Images 6, Devices 8, Device 9, Core 10, Files 13.
const std::string kMinimal = R"(<?xml version="1.0"?>
<Root VersionMajor="1" VersionMinor="15">
  <CFA Vendor="v" BoardId="b" Name="n" VersionMajor="0" VersionMinor="0" Description="d">
    <Build/>
    <Board Name="b" Vendor="v" Part="p">
      <Images/>
    </Board>
    <Devices>
      <Device Name="d" Type="t">
        <Core Name="c" Type="t" ComputeUnits="1"/>
      </Device>
    </Devices>
    <Files/>
  </CFA>
</Root>
)";

// kMinimal with one piece of text replaced; the piece must occur.
std::string minimalWith(const std::string& from, const std::string& to) {
  std::string doc = kMinimal;
  const auto at = doc.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) doc.replace(at, from.size(), to);
  return doc;
}

// A document that uses every element and attribute of the format.
const std::string kFull = R"(<?xml version="1.0" encoding="UTF-8"?>
<Root VersionMajor="1" VersionMinor="15">
  <GenAppInfo Name="gen" Version="2.1" CL=" 18446744073709551615 " TimeStamp="Mon"/>
  <CFA Vendor="acme" BoardId="b1" Name="plat" VersionMajor="3" VersionMinor="4" Description="d &amp; e"
       FeatureRomTimestamp="42" DcpLogicFunctionStripped="TRUE" DcpEncrypt="false" Unified="true" Fixed="x"
       DefaultOutputType="accbin">
    <Host Architecture="x86_64" Interface="pcie"/>
    <Build Flow="f" UsesPR="true" UsesDCP="no" StaticSynthCheckpoint="" PlatformState="pre_synth"
           AcceleratorBinaryFormat="fmt" AcceleratorBinaryContent="bit" ValidBinaryContentValues="a,,b"
           TopModuleName="top">
      <ZuncCompileSwitches><ZuncCompileSwitch Name="c1" Value="-O3"/></ZuncCompileSwitches>
      <ZuncLinkSwitches><ZuncLinkSwitch Name="l1" Value="--x"/><ZuncLinkSwitch Name="l2" Value="--y"/></ZuncLinkSwitches>
    </Build>
    <DesignIPs>
      <IP InstanceName="ip0" VLNV="v:l:n:1"><Configuration><Parameter Name="P" Value="1"/></Configuration></IP>
      <IP InstanceName="ip1" VLNV="v:l:n:2"/>
    </DesignIPs>
    <Board Name="brd" Vendor="bv" Part="part" BoardPart="bp">
      <Interfaces><Interface Id="int1" Name="PCIe" Type="gen3x16"/></Interfaces>
      <Memories>
        <Memory Name="ddr0" Type="ddr4" Size="16GB" LowestAddress="-9223372036854775808"
                HighestAddress="9223372036854775807"><Config><Param Name="ch" Value="2"/></Config></Memory>
        <Memory Name="plram" Type="sram" Size="128K"/>
      </Memories>
      <Connectors><Connector Name="c" DisplayName="C" Type="dimm" ConnectedConnector="d"
                             ConnectedConnectorDisplayName="D" IsLocked="True"/></Connectors>
      <Images><Img Type="HDPI" File="h.png"/><Img Type="hdpi" File="x.png"/></Images>
      <Drivers><Driver Name="drv" Vendor="dv" Version="1" Platform="linux" File="drv.ko"/></Drivers>
      <PCIeId Vendor="0x10ee" Device="0x5000" Subsystem="0x000e" FeatureId="0x1"/>
    </Board>
    <Devices>
      <Device Name="dev0" Type="fpga" FpgaDevice="xc">
        <SystemClocks><SystemClock Name="clk0" Frequency="300.0"/></SystemClocks>
        <Core Name="OCL_REGION_0" Type="clc_region" ComputeUnits="255" VLNV="v" InstancePath="/a"
              ParentRMInstancePath="/p" ClockFreq="250" DRBaseAddress="0x0" DRBDName="bd">
          <Core>
            <Config><Param Name="k" Value="v"/></Config>
            <Port Name="M_AXI" Type="addressable" Mode="master" Protocol="axi4" Base="0x0" Range="0x1000"
                  DataWidth="512" IdWidth="4" UserWidth="0" AddressWidth="64" AddressOffset="0x10"
                  AddressRange="0x20" MaxBurstLength="256" Frequency="300" Direction="out" Polarity="high">
              <AddressSegments><AddressSegment Name="s" Base="0x0" Range="0x100" Slave="mem"/></AddressSegments>
            </Port>
            <Port Name="clk" Type="clock"/>
            <AvailableResources LUT="100" REG="200" BRAM="" DSP="4">
              <PBlock Name="pb0" ValidSLRs="SLR0,SLR1"><Resource Name="LUT" Val="10"/></PBlock>
              <PBlock Name="pb1"/>
            </AvailableResources>
          </Core>
        </Core>
      </Device>
      <Device Name="dev1" Type="cpu"><Core Name="c" Type="t" ComputeUnits="0"/></Device>
    </Devices>
    <Files>
      <File Type="HPFM" Name="a.hpfm" UsedIn="syn" ProcessingOrder="early"/>
      <File Type="BIT" Name="b.bit"/>
    </Files>
    <FeatureRom MajorVersion="10" MinorVersion="1" MorwenBuildID="4294967295" IPBuildID="0" TimeSinceEpoch="7"
                FPGAPartName="part" VBNVName="a:b:c:1" DDRChannelCount="4" DDRChannelSize="16"
                DRBaseAddress="18446744073709551615" FeatureBitMap="3" UUID="u" CDMABaseAddress0="1"
                CDMABaseAddress1="0" CDMABaseAddress2="3" CDMABaseAddress3="4294967295" MaxTempLimit="90"
                MaxPowerLimit="75"/>
  </CFA>
</Root>
)";

Root parse(const std::string& doc) {
  Root root;
  root.Unmarshal(doc.data(), doc.size());
  return root;
}

std::string marshal(const Root& root) {
  std::string out;
  root.Marshal(&out);
  return out;
}

std::string narrow(const std::wstring& s) { return HI18N::convert(s); }

// Parses a document that must fail; checks the line and a piece of the text.
void expectFailure(const std::string& doc, int line, const std::string& fragment) {
  Root root;
  try {
    root.Unmarshal(doc.data(), doc.size());
    ADD_FAILURE() << "document was accepted";
  } catch (const HXMLException& e) {
    EXPECT_EQ(e.getLineNumber(), line) << e.getText();
    EXPECT_NE(e.getText().find(fragment), std::string::npos) << e.getText();
  }
}

// Writing must fail with a text naming the gap.
void expectWriteFailure(const Root& root, const std::string& fragment) {
  try {
    marshal(root);
    ADD_FAILURE() << "record was written";
  } catch (const HXMLException& e) {
    EXPECT_NE(e.getText().find(fragment), std::string::npos) << e.getText();
  }
}

}  // namespace

TEST(CfaXmlRead, FullDocumentFillsEveryKindOfField) {
  const Root root = parse(kFull);
  EXPECT_EQ(root.GetVersionMajor(), 1u);
  EXPECT_EQ(root.GetGenAppInfo().GetCL(), 18446744073709551615ull);
  const auto& cfa = root.GetCFA();
  EXPECT_EQ(narrow(cfa.GetDescription()), "d & e");
  EXPECT_EQ(cfa.GetVersionMajor(), 3u);
  EXPECT_EQ(cfa.GetFeatureRomTimestamp(), 42u);
  EXPECT_EQ(narrow(cfa.GetDcpLogicFunctionStripped()), "TRUE");
  EXPECT_TRUE(cfa.GetBuild().IssetStaticSynthCheckpoint());
  EXPECT_EQ(cfa.GetBuild().GetStaticSynthCheckpoint(), L"");
  EXPECT_TRUE(cfa.GetBuild().IssetZuncCompileSwitches());
  ASSERT_EQ(cfa.GetBuild().GetZuncLinkSwitches().SizeZuncLinkSwitch(), 2u);
  EXPECT_EQ(narrow(cfa.GetBuild().GetZuncLinkSwitches().GetZuncLinkSwitch(1).GetValue()), "--y");
  EXPECT_EQ(narrow(cfa.GetDesignIPs().GetIP(0).GetConfiguration().GetParameter(0).GetName()), "P");
  EXPECT_FALSE(cfa.GetDesignIPs().GetIP(1).IssetConfiguration());

  const auto& board = cfa.GetBoard();
  EXPECT_EQ(narrow(board.GetInterfaces().GetInterface().GetType()), "gen3x16");
  const auto& ddr = board.GetMemories().GetMemory(0);
  EXPECT_EQ(ddr.GetLowestAddress(), INT64_MIN);
  EXPECT_EQ(ddr.GetHighestAddress(), INT64_MAX);
  EXPECT_EQ(narrow(ddr.GetConfig().GetParam(0).GetValue()), "2");
  EXPECT_FALSE(board.GetMemories().GetMemory(1).IssetLowestAddress());
  EXPECT_EQ(board.GetImages().SizeImg(), 2u);
  EXPECT_EQ(narrow(board.GetDrivers().GetDriver(0).GetFile()), "drv.ko");
  EXPECT_EQ(narrow(board.GetPCIeId().GetFeatureId()), "0x1");

  ASSERT_EQ(cfa.GetDevices().SizeDevice(), 2u);
  const auto& core = cfa.GetDevices().GetDevice(0).GetCore();
  EXPECT_EQ(core.GetComputeUnits(), 255);
  ASSERT_TRUE(core.IssetCore());
  const auto& inner = core.GetCore();
  EXPECT_EQ(narrow(inner.GetConfig().GetParam(0).GetName()), "k");
  ASSERT_EQ(inner.SizePort(), 2u);
  EXPECT_EQ(narrow(inner.GetPort(0).GetPolarity()), "high");
  EXPECT_EQ(narrow(inner.GetPort(0).GetAddressSegments().GetAddressSegment(0).GetSlave()), "mem");
  EXPECT_FALSE(inner.GetPort(1).IssetMode());
  EXPECT_EQ(narrow(inner.GetAvailableResources().GetPBlock(0).GetResource(0).GetVal()), "10");
  EXPECT_FALSE(inner.GetAvailableResources().GetPBlock(1).IssetValidSLRs());
  EXPECT_FALSE(cfa.GetDevices().GetDevice(1).GetCore().IssetCore());

  EXPECT_EQ(narrow(cfa.GetFiles().GetFile(0).GetProcessingOrder()), "early");
  const auto& rom = cfa.GetFeatureRom();
  EXPECT_EQ(rom.GetMorwenBuildID(), 4294967295u);
  EXPECT_EQ(rom.GetDRBaseAddress(), 18446744073709551615ull);
  EXPECT_TRUE(rom.IssetCDMABaseAddress1());
  EXPECT_EQ(rom.GetCDMABaseAddress3(), 4294967295u);
  EXPECT_EQ(rom.GetMaxPowerLimit(), 75u);
}

TEST(CfaXmlRead, OptionalPartsAbsentStayUnsetAndRootKeepsItsDefaults) {
  const Root root = parse(kMinimal);
  EXPECT_FALSE(root.IssetGenAppInfo());
  const auto& cfa = root.GetCFA();
  EXPECT_FALSE(cfa.IssetHost());
  EXPECT_FALSE(cfa.IssetFeatureRomTimestamp());
  EXPECT_EQ(cfa.GetFeatureRomTimestamp(), 0u);
  EXPECT_FALSE(cfa.GetBuild().IssetPlatformState());
  EXPECT_FALSE(cfa.IssetFeatureRom());

  Root fresh;
  EXPECT_EQ(fresh.GetVersionMajor(), 1u);
  EXPECT_EQ(fresh.GetVersionMinor(), 15u);
  EXPECT_FALSE(fresh.IssetVersionMajor());
  EXPECT_FALSE(fresh.IssetVersionMinor());
  fresh.SetVersionMajor(9);
  EXPECT_TRUE(fresh.IssetVersionMajor());
  fresh.UnsetVersionMajor();
  EXPECT_EQ(fresh.GetVersionMajor(), 1u);
  fresh.SetVersionMinor(2);
  fresh.Reset();
  EXPECT_EQ(fresh, Root());
}

// One test per kind of violation, each a table of documents that must fail at
// the given line with a text that holds the given piece.
struct Violation {
  std::string doc;
  int line;
  std::string fragment;
};
struct ViolationKind {
  const char* name;
  std::vector<Violation> cases;
};

class CfaXmlViolation : public ::testing::TestWithParam<ViolationKind> {};

TEST_P(CfaXmlViolation, FailsAtItsLine) {
  for (const Violation& v : GetParam().cases) expectFailure(v.doc, v.line, v.fragment);
}

INSTANTIATE_TEST_SUITE_P(
    EveryKind, CfaXmlViolation,
    ::testing::Values(
        ViolationKind{
            "WrongRoot",
            {{"<?xml version=\"1.0\"?>\n<CFA Vendor=\"v\"/>", 2, "'CFA'"},
             {"<Root xmlns=\"urn:x\" VersionMajor=\"1\" VersionMinor=\"1\"/>", 1, "'{urn:x}Root'"}}},
        // The failure names the element that lacks the attribute.
        ViolationKind{"MissingAttribute",
                      {{minimalWith(" ComputeUnits=\"1\"", ""), 10, "'Core'"},
                       {minimalWith(" VersionMinor=\"15\"", ""), 2, "VersionMinor"},
                       {minimalWith("<Build/>", "<Host/><Build/>"), 4, "'Host'"}}},
        // The next child is another element, or the parent ends.
        ViolationKind{"MissingChild",
                      {{minimalWith("      <Images/>\n", "\n"), 5, "Images"},
                       {minimalWith("    <Files/>\n", "\n"), 3, "Files"},
                       {minimalWith("<Build/>", "<Host Architecture=\"a\"/>"), 5, "Build"}}},
        ViolationKind{"NotAnInteger",
                      {{minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"1.0\""), 10, "ComputeUnits"},
                       {minimalWith("VersionMajor=\"1\"", "VersionMajor=\"one\""), 2, "VersionMajor"},
                       {minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"\""), 10, "ComputeUnits"}}},
        ViolationKind{"BelowMinimum",
                      {{minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"-1\""), 10, "minimum"}}},
        ViolationKind{"AboveMaximum",
                      {{minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"256\""), 10, "maximum"}}},
        // Known elements out of their order are unknown at that place.
        ViolationKind{
            "UnknownElement",
            {{minimalWith("    <Files/>\n", "    <Files/>\n    <Extra/>\n"), 14, "Extra"},
             {minimalWith("    <Build/>\n", "    <Build/>\n    <Host Architecture=\"a\"/>\n"), 5, "Host"}}},
        // Names are case-sensitive.
        ViolationKind{"UnknownAttribute",
                      {{minimalWith("<Build/>", "<Build Colour=\"red\"/>"), 4, "Colour"},
                       {minimalWith("<Build/>", "<Build usesPR=\"true\"/>"), 4, "usesPR"}}}),
    [](const ::testing::TestParamInfo<ViolationKind>& kind) { return std::string(kind.param.name); });

TEST(CfaXmlRead, TextContentAndMalformedInputFail) {
  expectFailure(minimalWith("<Files/>", "<Files>text</Files>"), 13, "Files");
  expectFailure(minimalWith("    </Devices>\n", ""), 15, "");
  Root root;
  EXPECT_THROW(root.Unmarshal("", 0), HXMLException);
  EXPECT_THROW(root.Unmarshal(nullptr, 0), HXMLException);
  EXPECT_THROW(root.Unmarshal(nullptr, 5), HXMLException);
  const std::string binary("\0\xff\xfe<Root", 8);
  EXPECT_THROW(root.Unmarshal(binary.data(), binary.size()), HXMLException);
}

TEST(CfaXmlCardinality, EmptyListsAndTheRequiredImages) {
  expectFailure(minimalWith("    <Devices>\n      <Device Name=\"d\" Type=\"t\">\n"
                            "        <Core Name=\"c\" Type=\"t\" ComputeUnits=\"1\"/>\n      </Device>\n",
                            "    <Devices>\n"),
                8, "Device");
  const Root root = parse(minimalWith("<Build/>\n",
                                      "<Build><ZuncCompileSwitches/><ZuncLinkSwitches/></Build>"
                                      "<DesignIPs/>\n"));
  EXPECT_TRUE(root.GetCFA().IssetDesignIPs());
  EXPECT_EQ(root.GetCFA().GetDesignIPs().SizeIP(), 0u);
  EXPECT_NO_THROW(parse(minimalWith("<Images/>", "<Memories/><Connectors/><Images/><Drivers/>")));
  EXPECT_NO_THROW(parse(minimalWith(
      "<Core Name=\"c\" Type=\"t\" ComputeUnits=\"1\"/>",
      "<Core Name=\"c\" Type=\"t\" ComputeUnits=\"1\"><Core><Port Name=\"p\" Type=\"t\"><AddressSegments/>"
      "</Port><AvailableResources LUT=\"\" REG=\"\" BRAM=\"\" DSP=\"\"><PBlock "
      "Name=\"x\"/></AvailableResources>"
      "</Core></Core>")));
  EXPECT_NO_THROW(
      parse(minimalWith("<Device Name=\"d\" Type=\"t\">", "<Device Name=\"d\" Type=\"t\"><SystemClocks/>")));
}

TEST(CfaXmlCardinality, InterfacesHoldsAtMostOneAndWritingNeedsIt) {
  const std::string one = "<Interfaces><Interface Id=\"i\" Name=\"n\" Type=\"t\"/></Interfaces><Images/>";
  const std::string two =
      "<Interfaces><Interface Id=\"i\" Name=\"n\" Type=\"t\"/>\n<Interface Id=\"j\" Name=\"m\" Type=\"u\"/>"
      "</Interfaces><Images/>";
  EXPECT_NO_THROW(parse(minimalWith("<Images/>", one)));
  expectFailure(minimalWith("<Images/>", two), 7, "Interface");

  Root none = parse(minimalWith("<Images/>", "<Interfaces/><Images/>"));
  EXPECT_TRUE(none.GetCFA().GetBoard().IssetInterfaces());
  EXPECT_FALSE(none.GetCFA().GetBoard().GetInterfaces().IssetInterface());
  expectWriteFailure(none, "Root/CFA/Board/Interfaces' lacks its required child 'Interface'");
}

TEST(CfaXmlCardinality, OptionalAttributesTheFormatNames) {
  const Root root = parse(
      minimalWith("<Images/>",
                  "<Images/><Drivers><Driver Name=\"n\" Vendor=\"v\" Version=\"1\" File=\"f\"/></Drivers>"
                  "<PCIeId Vendor=\"a\" Device=\"b\" Subsystem=\"c\"/>"));
  EXPECT_FALSE(root.GetCFA().GetBoard().GetDrivers().GetDriver(0).IssetPlatform());
  EXPECT_FALSE(root.GetCFA().GetBoard().GetPCIeId().IssetFeatureId());
  expectFailure(minimalWith("<Images/>",
                            "<Images/><Drivers><Driver Name=\"n\" Vendor=\"v\" Version=\"1\" Platform=\"p\"/>"
                            "</Drivers>"),
                6, "File");

  expectFailure(
      minimalWith("<Root VersionMajor=\"1\" VersionMinor=\"15\">",
                  "<Root VersionMajor=\"1\" VersionMinor=\"15\"><GenAppInfo Name=\"n\" Version=\"v\"/>"),
      2, "CL");
  const Root gen = parse(minimalWith("<Root VersionMajor=\"1\" VersionMinor=\"15\">",
                                     "<Root VersionMajor=\"1\" VersionMinor=\"15\">"
                                     "<GenAppInfo Name=\"n\" Version=\"v\" CL=\"5\" TimeStamp=\"\"/>"));
  EXPECT_TRUE(gen.GetGenAppInfo().IssetTimeStamp());
  EXPECT_EQ(gen.GetGenAppInfo().GetCL(), 5u);
}

TEST(CfaXmlNumeric, BoundsAreInclusiveAndBlanksAreAllowed) {
  struct Case {
    const char* from;
    const char* to;
    bool accepted;
  };
  const Case cases[] = {
      {"ComputeUnits=\"1\"", "ComputeUnits=\"255\"", true},
      {"ComputeUnits=\"1\"", "ComputeUnits=\"0\"", true},
      {"ComputeUnits=\"1\"", "ComputeUnits=\" +7 \"", true},
      {"ComputeUnits=\"1\"", "ComputeUnits=\"-0\"", true},
      {"VersionMajor=\"1\"", "VersionMajor=\"4294967295\"", true},
      {"VersionMajor=\"1\"", "VersionMajor=\"4294967296\"", false},
      {"VersionMajor=\"1\"", "VersionMajor=\"-1\"", false},
      {"VersionMajor=\"0\"", "VersionMajor=\"0\" FeatureRomTimestamp=\"18446744073709551615\"", true},
      {"VersionMajor=\"0\"", "VersionMajor=\"0\" FeatureRomTimestamp=\"18446744073709551616\"", false},
      {"VersionMajor=\"0\"", "VersionMajor=\"0\" FeatureRomTimestamp=\"-1\"", false},
  };
  for (const Case& c : cases) {
    const std::string doc = minimalWith(c.from, c.to);
    Root root;
    if (c.accepted)
      EXPECT_NO_THROW(root.Unmarshal(doc.data(), doc.size())) << c.to;
    else
      EXPECT_THROW(root.Unmarshal(doc.data(), doc.size()), HXMLException) << c.to;
  }
  const Root padded = parse(minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\" +7 \""));
  EXPECT_EQ(padded.GetCFA().GetDevices().GetDevice(0).GetCore().GetComputeUnits(), 7);
  const auto withAddress = [&](const std::string& value) {
    return minimalWith("<Images/>", "<Memories><Memory Name=\"m\" Type=\"t\" Size=\"1\" LowestAddress=\"" +
                                        value + "\"/></Memories><Images/>");
  };
  const Root lowest = parse(withAddress("-9223372036854775808"));
  EXPECT_EQ(lowest.GetCFA().GetBoard().GetMemories().GetMemory(0).GetLowestAddress(), INT64_MIN);
  expectFailure(withAddress("-9223372036854775809"), 6, "minimum");
  expectFailure(withAddress("9223372036854775808"), 6, "maximum");
}

TEST(CfaXmlRecord, CloneAndCopyAreDeepAndEqualityIsByValue) {
  const Root original = parse(kFull);
  const auto clone = original.Clone();
  EXPECT_EQ(*clone, original);
  // The deepest field of the format, reached from a record.
  const auto segment = [](auto& root) -> auto& {
    return root.GetCFA()
        .GetDevices()
        .GetDevice(0)
        .GetCore()
        .GetCore()
        .GetPort(0)
        .GetAddressSegments()
        .GetAddressSegment(0);
  };
  Root copy = original;
  segment(copy).SetSlave(L"other");
  EXPECT_NE(copy, original);
  EXPECT_EQ(*clone, original);
  EXPECT_EQ(narrow(segment(original).GetSlave()), "mem");

  // Absent and empty differ, for attributes and for children.
  BasePlatform::Host a, b;
  a.SetInterface(L"");
  EXPECT_NE(a, b);
  BasePlatform::CFA withHost, without;
  withHost.GetHost();  // the creating getter
  EXPECT_TRUE(withHost.IssetHost());
  EXPECT_NE(withHost, without);
  const BasePlatform::CFA& constView = without;
  EXPECT_EQ(constView.GetHost().GetArchitecture(), L"");
  EXPECT_FALSE(without.IssetHost());

  Root left = original, right;
  left.Swap(right);
  EXPECT_EQ(right, original);
  EXPECT_EQ(left, Root());
}

TEST(CfaXmlRecord, ListAccessorsKeepOrderAndRefuseBadIndexes) {
  BasePlatform::Files files;
  files.AppendFile().SetName(L"b");
  BasePlatform::File a;
  a.SetName(L"a");
  files.InsertFile(0, a);
  files.InsertFile(2).SetName(L"c");
  ASSERT_EQ(files.SizeFile(), 3u);
  EXPECT_EQ(files.GetFile(0).GetName(), L"a");
  EXPECT_EQ(files.GetFile(2).GetName(), L"c");
  files.AssignFile(1, a);
  EXPECT_EQ(files.GetFile(1), a);
  files.DeleteFile(0);
  EXPECT_EQ(files.GetFile(1).GetName(), L"c");
  EXPECT_THROW(files.GetFile(2), HEXAlgException);
  EXPECT_THROW(files.InsertFile(3), HEXAlgException);
  EXPECT_THROW(files.DeleteFile(5), HEXAlgException);
  files.ClearFile();
  EXPECT_EQ(files.SizeFile(), 0u);
}

TEST(CfaXmlWrite, RoundTripKeepsEveryValue) {
  const Root original = parse(kFull);
  const std::string text = marshal(original);
  // Attributes are written in the order of the format.
  EXPECT_EQ(text.find("<Root VersionMajor=\"1\" VersionMinor=\"15\">"), text.find("<Root"));
  EXPECT_NE(
      text.find("<CFA Vendor=\"acme\" BoardId=\"b1\" Name=\"plat\" VersionMajor=\"3\" VersionMinor=\"4\" "
                "Description=\"d &amp; e\" FeatureRomTimestamp=\"42\""),
      std::string::npos);
  EXPECT_EQ(parse(text), original);
  // The fixture uses every element and attribute the schema declares, so a
  // field that the records drop or misname shows as a missing one here.
  const std::string xsd = zr_test::readFile(std::string(ZR_SOURCE_DIR) + "/schemas/cfa.xsd");
  const std::regex declared("<xs:(element|attribute) name=\"(\\w+)\"");
  int names = 0;
  for (std::sregex_iterator it(xsd.begin(), xsd.end(), declared), end; it != end; ++it, ++names) {
    const std::string name = (*it)[2];
    const std::string written = (*it)[1] == "element" ? "<" + name : " " + name + "=\"";
    EXPECT_NE(kFull.find(written), std::string::npos) << "fixture lacks " << written;
    EXPECT_NE(text.find(written), std::string::npos) << "output lacks " << written;
  }
  EXPECT_GT(names, 150);
  using zr_test::countOf;
  EXPECT_EQ(countOf(text, "=\""), countOf(kFull, "=\""));
  EXPECT_EQ(countOf(text, "<") - countOf(text, "</"), countOf(kFull, "<") - countOf(kFull, "</"));

  // Text XML must escape, characters beyond ASCII, and blanks inside values.
  Root built = parse(kMinimal);
  built.GetCFA().SetDescription(HI18N::convert("quote\" amp& lt< tab\t nl\n cr\r \xc3\xa9 \xe2\x82\xac"));
  built.GetCFA().GetBoard().GetImages().AppendImg().SetFile(L" spaced ");
  built.GetCFA().GetBoard().GetImages().GetImg(0).SetType(L"");
  EXPECT_EQ(parse(marshal(built)), built);

  zr_test::TempDir dir;
  const std::string path = dir.file("out.xml");
  built.Marshal(path);
  Root fromFile;
  fromFile.Unmarshal(path);
  EXPECT_EQ(fromFile, built);
  std::ostringstream stream;
  built.Marshal(stream);
  EXPECT_EQ(stream.str(), marshal(built));
}

TEST(CfaXmlWrite, OccurrenceRulesAreCheckedBeforeAnythingIsWritten) {
  expectWriteFailure(Root(), "required attribute 'VersionMajor' of element 'Root'");
  Root root = parse(kMinimal);
  root.GetCFA().GetDevices().GetDevice(0).GetCore().UnsetComputeUnits();
  expectWriteFailure(root, "'ComputeUnits' of element 'Root/CFA/Devices/Device/Core'");

  root = parse(kMinimal);
  root.GetCFA().GetDevices().ClearDevice();
  expectWriteFailure(root, "'Root/CFA/Devices' needs at least one child 'Device'");

  root = parse(kMinimal);
  root.GetCFA().GetBoard().UnsetImages();
  expectWriteFailure(root, "'Root/CFA/Board' lacks its required child 'Images'");

  root = parse(kMinimal);
  root.GetCFA().SetName(std::wstring(L"bell\x07"));
  expectWriteFailure(root, "'Name' of element 'Root/CFA' holds a character");

  zr_test::TempDir dir;
  const std::string path = dir.file("kept.xml");
  zr_test::writeFile(path, "old");
  EXPECT_THROW(root.Marshal(path), HXMLException);
  EXPECT_EQ(zr_test::readFile(path), "old");
  std::ostringstream stream;
  EXPECT_THROW(root.Marshal(stream), HXMLException);
  EXPECT_EQ(stream.str(), "");
  EXPECT_THROW(parse(kMinimal).Marshal(dir.file("no/such/dir/x.xml")), HXMLException);
  EXPECT_THROW(parse(kMinimal).Marshal(static_cast<std::string*>(nullptr)), HXMLException);
}

TEST(CfaXmlRead, FailureLeavesTheRecordAsItWasAndReportsTheLine) {
  Root root = parse(kFull);
  const Root before = root;
  const std::string bad = minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"256\"");
  BasePlatform::DebugError debug;
  EXPECT_THROW(root.Unmarshal(bad.data(), bad.size(), &debug), HXMLException);
  EXPECT_EQ(debug.line, 10);
  EXPECT_NE(debug.text.find("ComputeUnits"), std::string::npos);
  EXPECT_EQ(root, before);

  zr_test::TempDir dir;
  EXPECT_THROW(root.Unmarshal(dir.file("missing.xml")), HXMLException);
  EXPECT_EQ(root, before);
  // A successful read replaces the whole content.
  root.Unmarshal(kMinimal.data(), kMinimal.size());
  EXPECT_EQ(root, parse(kMinimal));
}

TEST(CfaXmlRead, NoTruncationOfAValidDocumentCrashes) {
  // Every prefix of a valid document either reads or fails with the XML exception.
  for (std::size_t n = 0; n < kFull.size(); n += 13) {
    Root root;
    try {
      root.Unmarshal(kFull.data(), n);
    } catch (const HXMLException&) {
    }
  }
  EXPECT_THROW(parse(std::string(5000, ' ') + "<Root>" + std::string(100000, 'x')), HXMLException);
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "<Root>";
  EXPECT_THROW(parse(deep), HXMLException);
}
