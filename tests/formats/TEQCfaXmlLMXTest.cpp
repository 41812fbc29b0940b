#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "formats/CfaXmlReaderTestSupport.h"
#include "formats/TEQCfaXmlLMX.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/TextPatch.h"

using BasePlatform::Root;
using cfa_test::representativeDoc;

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

std::string minimalWith(const std::string& from, const std::string& to) {
  return zr_test::patched(kMinimal, from, to);
}

// The reader tests' representative document, widened to every element and
// attribute of the format and to the extremes of the widest numbers.
std::string fullDoc() {
  using zr_test::patched;
  std::string doc = representativeDoc().text();
  doc = patched(doc, R"(CL="4294967298")", R"(CL=" 18446744073709551615 ")");
  doc = patched(doc, R"(Name="l2" Value="--x")", R"(Name="l2" Value="--y")");
  doc = patched(doc, R"(UsesDCP="no")", R"(UsesDCP="no" StaticSynthCheckpoint="")");
  doc = patched(doc, R"(LowestAddress="-1" HighestAddress="4096")",
                R"(LowestAddress="-9223372036854775808" HighestAddress="9223372036854775807")");
  return patched(
      doc, R"(CDMABaseAddress2="3")",
      R"(CDMABaseAddress1="0" CDMABaseAddress2="3" CDMABaseAddress3="4294967295" MaxPowerLimit="75")");
}
const std::string kFull = fullDoc();

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

}  // namespace

TEST(CfaXmlRead, ValuesKeepTheirTypesAndAbsentPartsStayUnset) {
  const Root root = parse(kFull);
  const auto& cfa = root.GetCFA();
  // Blanks around a number are allowed; the widest numbers keep every bit (the
  // values of the reader's document are checked through the model).
  EXPECT_EQ(root.GetGenAppInfo().GetCL(), 18446744073709551615ull);
  // An empty attribute is set, unlike an absent one.
  EXPECT_TRUE(cfa.GetBuild().IssetStaticSynthCheckpoint());
  const auto& memories = cfa.GetBoard().GetMemories();
  EXPECT_EQ(memories.GetMemory(0).GetLowestAddress(), INT64_MIN);
  EXPECT_EQ(memories.GetMemory(0).GetHighestAddress(), INT64_MAX);
  EXPECT_FALSE(memories.GetMemory(1).IssetLowestAddress());
  EXPECT_TRUE(cfa.GetFeatureRom().IssetCDMABaseAddress1());
  EXPECT_EQ(cfa.GetFeatureRom().GetCDMABaseAddress3(), 4294967295u);

  const Root minimal = parse(kMinimal);
  EXPECT_FALSE(minimal.IssetGenAppInfo());
  EXPECT_FALSE(minimal.GetCFA().IssetFeatureRomTimestamp());
  EXPECT_EQ(minimal.GetCFA().GetFeatureRomTimestamp(), 0u);
  EXPECT_FALSE(minimal.GetCFA().IssetFeatureRom());
  // An unset attribute answers its default.
  Root fresh;
  EXPECT_FALSE(fresh.IssetVersionMinor());
  EXPECT_EQ(fresh.GetVersionMinor(), 15u);
  fresh.SetVersionMajor(9);
  fresh.UnsetVersionMajor();
  EXPECT_EQ(fresh.GetVersionMajor(), 1u);
  fresh.SetVersionMinor(2);
  fresh.Reset();
  EXPECT_EQ(fresh, Root());
}

// Each rule of the format fails the document at the line that breaks it, with
// a text that names the offending piece.
TEST(CfaXmlRead, EveryRuleOfTheFormatFailsAtItsLine) {
  const auto withAddress = [](const std::string& value) {
    return minimalWith("<Images/>", "<Memories><Memory Name=\"m\" Type=\"t\" Size=\"1\" LowestAddress=\"" +
                                        value + "\"/></Memories><Images/>");
  };
  struct Case {
    std::string doc;
    int line;
    const char* fragment;
  };
  const Case cases[] = {
      {"<?xml version=\"1.0\"?>\n<CFA Vendor=\"v\"/>", 2, "'CFA'"},
      {"<Root xmlns=\"urn:x\" VersionMajor=\"1\" VersionMinor=\"1\"/>", 1, "'{urn:x}Root'"},
      // A missing attribute is named at the element that lacks it.
      {minimalWith(" ComputeUnits=\"1\"", ""), 10, "'Core'"},
      {minimalWith(" VersionMinor=\"15\"", ""), 2, "VersionMinor"},
      {minimalWith("<Build/>", "<Host/><Build/>"), 4, "'Host'"},
      {minimalWith("<Images/>",
                   "<Images/><Drivers><Driver Name=\"n\" Vendor=\"v\" Version=\"1\"/></Drivers>"),
       6, "File"},
      {minimalWith("<Root VersionMajor=\"1\" VersionMinor=\"15\">",
                   "<Root VersionMajor=\"1\" VersionMinor=\"15\"><GenAppInfo Name=\"n\" Version=\"v\"/>"),
       2, "CL"},
      // A missing child: the next child is another element, or the parent ends.
      {minimalWith("      <Images/>\n", "\n"), 5, "Images"},
      {minimalWith("    <Files/>\n", "\n"), 3, "Files"},
      {minimalWith("<Build/>", "<Host Architecture=\"a\"/>"), 5, "Build"},
      {minimalWith("    <Devices>\n      <Device Name=\"d\" Type=\"t\">\n"
                   "        <Core Name=\"c\" Type=\"t\" ComputeUnits=\"1\"/>\n      </Device>\n",
                   "    <Devices>\n"),
       8, "Device"},
      // Interfaces holds at most one Interface.
      {minimalWith("<Images/>",
                   "<Interfaces><Interface Id=\"i\" Name=\"n\" Type=\"t\"/>\n"
                   "<Interface Id=\"j\" Name=\"m\" Type=\"u\"/></Interfaces><Images/>"),
       7, "Interface"},
      {minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"1.0\""), 10, "ComputeUnits"},
      {minimalWith("VersionMajor=\"1\"", "VersionMajor=\"one\""), 2, "VersionMajor"},
      {minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"-1\""), 10, "minimum"},
      {minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\"256\""), 10, "maximum"},
      {withAddress("-9223372036854775809"), 6, "minimum"},
      {withAddress("9223372036854775808"), 6, "maximum"},
      // A known element out of its order is unknown at that place (unknown names
      // and broken markup are refused by the XML layer's own tests).
      {minimalWith("    <Build/>\n", "    <Build/>\n    <Host Architecture=\"a\"/>\n"), 5, "Host"},
      {minimalWith("<Files/>", "<Files>text</Files>"), 13, "Files"},
  };
  for (const Case& c : cases) {
    Root root;
    try {
      root.Unmarshal(c.doc.data(), c.doc.size());
      ADD_FAILURE() << "accepted:\n" << c.doc;
    } catch (const HXMLException& e) {
      EXPECT_EQ(e.getLineNumber(), c.line) << e.getText();
      EXPECT_NE(e.getText().find(c.fragment), std::string::npos) << e.getText();
    }
  }
  Root root;
  EXPECT_THROW(root.Unmarshal("", 0), HXMLException);
  EXPECT_THROW(root.Unmarshal(nullptr, 5), HXMLException);
}

TEST(CfaXmlRead, OptionalPartsEmptyListsAndNumericBoundsAreAccepted) {
  struct Case {
    const char* from;
    std::string to;
    bool accepted;
  };
  const Case cases[] = {
      {"<Build/>\n", "<Build><ZuncCompileSwitches/><ZuncLinkSwitches/></Build><DesignIPs/>\n", true},
      {"<Images/>", "<Memories/><Connectors/><Images/><Drivers/>", true},
      {"<Images/>", "<Interfaces><Interface Id=\"i\" Name=\"n\" Type=\"t\"/></Interfaces><Images/>", true},
      {"<Images/>", "<Images/><Drivers><Driver Name=\"n\" Vendor=\"v\" Version=\"1\" File=\"f\"/></Drivers>",
       true},
      {"<Images/>", "<Images/><PCIeId Vendor=\"a\" Device=\"b\" Subsystem=\"c\"/>", true},
      {"<Device Name=\"d\" Type=\"t\">", "<Device Name=\"d\" Type=\"t\"><SystemClocks/>", true},
      {"<Core Name=\"c\" Type=\"t\" ComputeUnits=\"1\"/>",
       "<Core Name=\"c\" Type=\"t\" ComputeUnits=\"1\"><Core><Port Name=\"p\" Type=\"t\"><AddressSegments/>"
       "</Port><AvailableResources LUT=\"\" REG=\"\" BRAM=\"\" DSP=\"\"><PBlock "
       "Name=\"x\"/></AvailableResources>"
       "</Core></Core>",
       true},
      {"ComputeUnits=\"1\"", "ComputeUnits=\"255\"", true},
      {"ComputeUnits=\"1\"", "ComputeUnits=\"0\"", true},
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
    if (c.accepted) {
      // What is read can be written back: the optional parts stay optional for the writer.
      EXPECT_NO_THROW(root.Unmarshal(doc.data(), doc.size()); EXPECT_EQ(parse(marshal(root)), root)) << c.to;
    } else
      EXPECT_THROW(root.Unmarshal(doc.data(), doc.size()), HXMLException) << c.to;
  }
  const Root padded = parse(minimalWith("ComputeUnits=\"1\"", "ComputeUnits=\" +7 \""));
  EXPECT_EQ(padded.GetCFA().GetDevices().GetDevice(0).GetCore().GetComputeUnits(), 7);
  const Root gen = parse(minimalWith("<Root VersionMajor=\"1\" VersionMinor=\"15\">",
                                     "<Root VersionMajor=\"1\" VersionMinor=\"15\">"
                                     "<GenAppInfo Name=\"n\" Version=\"v\" CL=\"5\" TimeStamp=\"\"/>"));
  EXPECT_TRUE(gen.GetGenAppInfo().IssetTimeStamp());
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
  EXPECT_EQ(narrow(segment(original).GetSlave()), "mem0");

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
  EXPECT_THROW_MSG(marshal(Root()), HXMLException, "required attribute 'VersionMajor' of element 'Root'");
  struct Case {
    void (*breakIt)(Root&);
    const char* fragment;
  };
  const Case cases[] = {
      {[](Root& r) { r.GetCFA().GetDevices().GetDevice(0).GetCore().UnsetComputeUnits(); },
       "'ComputeUnits' of element 'Root/CFA/Devices/Device/Core'"},
      {[](Root& r) { r.GetCFA().GetDevices().ClearDevice(); },
       "'Root/CFA/Devices' needs at least one child 'Device'"},
      {[](Root& r) { r.GetCFA().GetBoard().UnsetImages(); },
       "'Root/CFA/Board' lacks its required child 'Images'"},
      {[](Root& r) { r.GetCFA().GetBoard().GetInterfaces(); },
       "Root/CFA/Board/Interfaces' lacks its required child 'Interface'"},
      {[](Root& r) { r.GetCFA().SetName(std::wstring(L"bell\x07")); },
       "'Name' of element 'Root/CFA' holds a character"},
  };
  for (const Case& c : cases) {
    Root root = parse(kMinimal);
    c.breakIt(root);
    EXPECT_THROW_MSG(marshal(root), HXMLException, c.fragment);
  }
  // An empty Interfaces is read, though it cannot be written.
  EXPECT_NO_THROW(parse(minimalWith("<Images/>", "<Interfaces/><Images/>")));

  Root root = parse(kMinimal);
  root.GetCFA().SetName(std::wstring(L"bell\x07"));
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
