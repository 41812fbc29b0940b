#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/HpfmTestDoc.h"
#include "formats/TEQHpfmLMX.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "support/TextPatch.h"

using hpfm_test::busInterface;
using hpfm_test::clock;
using hpfm_test::HpfmDoc;
using hpfm_test::segment;
using WELHardwarePlatform::Repository;

namespace {

Repository parse(const std::string& text) {
  Repository r;
  r.Unmarshal(text.data(), text.size());
  return r;
}

std::string narrow(const std::wstring& s) { return HI18N::convert(s); }

// The line of the failure, or -1 when the text parses.
int failureLine(const std::string& text) {
  try {
    parse(text);
  } catch (const HXMLException& e) {
    return e.getLineNumber();
  }
  return -1;
}

}  // namespace

TEST(TEQHpfmLMX, ReadsValuesWithTheirTypes) {
  HpfmDoc doc;
  doc.clocks = clock(R"(kp:name="clk" kp:instanceRef="i" kp:componentRef="c" kp:frequency=" 300.000 " )"
                     R"(kp:period="3.333" kp:status="fixed" kp:id=" 7 ")");
  doc.body = busInterface(
      R"(kp:name="M00" kp:dataWidth=" -512 " kp:cacheCoherent=" 1 " kp:hasTlast="false" )"
      R"(kp:addressSegment="seg_attr" kp:idBits="4294967295")",
      segment(R"(kp:readBwUsed=" -123456789012345678901 " kp:writeBwUsed="+12" kp:index="65535")"));
  const Repository r = parse(doc.text());
  EXPECT_EQ(r.GetVersion().get_as_string(), "1.10");
  const auto& c = r.GetComponent();
  EXPECT_EQ(c.GetLUT(), 40u);
  EXPECT_EQ(narrow(c.GetPlatformInfo().GetDescription()), "A shell & its clocks");
  EXPECT_EQ(c.GetPlatformInfo().GetDeviceInfo().IssetName(), false);
  const auto& clk = c.GetPlatformInfo().GetSystemClocks().GetClock(0);
  EXPECT_EQ(clk.GetFrequency().get_as_string(), "300.000");
  EXPECT_EQ(clk.GetId(), 7);
  EXPECT_FALSE(clk.IssetNormalizedPeriod());
  const auto& bi = c.GetBusInterface(0);
  EXPECT_EQ(bi.GetDataWidth(), -512);
  EXPECT_TRUE(bi.GetCacheCoherent());
  EXPECT_TRUE(bi.IssetHasTlast());
  EXPECT_FALSE(bi.GetHasTlast());
  EXPECT_EQ(bi.GetIdBits(), 4294967295u);
  // The attribute and the child elements of the same name stay apart.
  EXPECT_EQ(narrow(bi.GetAddressSegment()), "seg_attr");
  ASSERT_EQ(bi.SizeBusInterfaceAddressSegment(), 1u);
  const auto& seg = bi.GetBusInterfaceAddressSegment(0);
  EXPECT_EQ(seg.GetReadBwUsed().get_as_string(), "-123456789012345678901");
  EXPECT_EQ(seg.GetReadBwUsed().toIntSaturated(), INT32_MIN);
  EXPECT_EQ(seg.GetWriteBwUsed().toIntSaturated(), 12);
  EXPECT_EQ(seg.GetIndex(), 65535);
  EXPECT_FALSE(seg.IssetAuto());
}

// Each rule of the format fails the document at the line that breaks it
// (unknown names and broken markup are the XML layer's own tests).
TEST(TEQHpfmLMX, RefusesDocumentsThatBreakTheFormat) {
  const HpfmDoc base;
  const std::string good = base.text();
  ASSERT_EQ(failureLine(good), -1);

  struct Case {
    const char* what;
    std::string text;
    int line;
  };
  HpfmDoc wrongNs;
  wrongNs.nsUri = "urn:other";
  HpfmDoc outOfRange;
  outOfRange.defaultClock = "65536";
  HpfmDoc negative;
  negative.componentAttrs = zr_test::patched(base.componentAttrs, R"(kp:BRAM="10")", R"(kp:BRAM="-1")");
  HpfmDoc missingVendor;
  missingVendor.componentAttrs = zr_test::patched(base.componentAttrs, R"(kp:vendor="acme" )", "");
  HpfmDoc unqualified;
  unqualified.deviceInfo =
      R"(<kp:deviceInfo architecture="arch" kp:device="dev" kp:package="p" kp:speedGrade="1"/>)";
  HpfmDoc misplaced;
  misplaced.body =
      busInterface(R"(kp:name="a")") +
      R"(    <kp:parameter kp:name="p" kp:instanceRef="i" kp:componentRef="c" kp:isValid="true" kp:value="v"/>)"
      "\n";
  HpfmDoc bigDataWidth;
  bigDataWidth.body = busInterface(R"(kp:name="a" kp:dataWidth="32768")");
  HpfmDoc badBool;
  badBool.body = busInterface(R"(kp:name="a" kp:hasTlast="yes")");
  HpfmDoc badDecimal;
  badDecimal.clocks = clock(R"(kp:name="c" kp:instanceRef="i" kp:componentRef="c" kp:frequency="fast" )"
                            R"(kp:period="1" kp:status="fixed")");
  HpfmDoc namelessBus;
  namelessBus.body = busInterface(R"(kp:mode="master")");

  const std::vector<Case> cases = {
      {"another namespace", wrongNs.text(), 2},
      {"u16 above its range", outOfRange.text(), 7},
      {"u32 below zero", negative.text(), 3},
      {"required attribute missing", missingVendor.text(), 3},
      {"unqualified attribute", unqualified.text(), 5},
      {"children out of order", misplaced.text(), 11},
      {"s16 above its range", bigDataWidth.text(), 10},
      {"not a Boolean", badBool.text(), 10},
      {"not a decimal", badDecimal.text(), 8},
      {"bus interface without a name", namelessBus.text(), 10},
      {"description missing",
       zr_test::patched(good, "      <kp:description>A shell &amp; its clocks</kp:description>\n", ""), 6},
  };
  for (const Case& c : cases) EXPECT_EQ(failureLine(c.text), c.line) << c.what;
}

TEST(TEQHpfmLMX, RefusesAnotherDocumentElementAndNoText) {
  // A lone bus interface is a document of the schema but no hardware platform file.
  const std::string lone =
      "<kp:busInterface xmlns:kp=\"urn:teq:hpfm\" kp:name=\"M00\">\n"
      "  <kp:addressSegment kp:auto=\"true\"/>\n"
      "</kp:busInterface>\n";
  EXPECT_EQ(failureLine(lone), 1);
  EXPECT_EQ(failureLine(""), 1);

  WELHardwarePlatform::Kp kp;
  kp.Unmarshal(lone.data(), lone.size());
  ASSERT_TRUE(kp.IssetBusInterface());
  EXPECT_FALSE(kp.IssetRepository());
  EXPECT_EQ(kp.GetBusInterface().SizeBusInterfaceAddressSegment(), 1u);
  const std::string full = HpfmDoc().text();
  kp.Unmarshal(full.data(), full.size());
  EXPECT_TRUE(kp.IssetRepository());
  EXPECT_FALSE(kp.IssetBusInterface());
}

TEST(TEQHpfmLMX, WritesWhatItReadsOneElementToALine) {
  HpfmDoc doc;
  doc.clocks = clock(R"(kp:name="c" kp:instanceRef="i" kp:componentRef="cr" kp:frequency="1.50" )"
                     R"(kp:period="2" kp:status="fixed" kp:id="1" kp:normalizedPeriod="0.5")");
  doc.body =
      busInterface(R"(kp:name="M00" kp:hasTlast="1")", segment(R"(kp:auto="true" kp:readBwUsed="-3")")) +
      "    <kp:resourceEstimates kp:BRAM=\"1\" kp:DSP=\"2\" kp:FF=\"3\" kp:LUT=\"4\" kp:nocPlNsu=\"5\"/>\n";
  const Repository first = parse(doc.text());
  std::string written;
  first.Marshal(&written);
  EXPECT_EQ(parse(written), first);
  // Attributes in the order of the format, on the line of their element.
  EXPECT_NE(written.find("\n  <kp:component kp:name=\"shell_u1\" kp:library=\"lib\" kp:version=\"2.0\""),
            std::string::npos)
      << written;
  EXPECT_NE(written.find("\n    <kp:busInterface kp:name=\"M00\" kp:hasTlast=\"true\">\n"
                         "      <kp:addressSegment kp:auto=\"true\" kp:readBwUsed=\"-3\"/>\n"),
            std::string::npos)
      << written;
  EXPECT_NE(written.find("<kp:repository xmlns:kp=\"urn:teq:hpfm\" kp:name=\"repo\""), std::string::npos);

  Repository broken = first;
  broken.GetComponent().UnsetVendor();
  std::string why;
  EXPECT_FALSE(broken.IsOccursOk(&why));
  EXPECT_NE(why.find("'vendor'"), std::string::npos) << why;
  std::string untouched = "old";
  EXPECT_THROW(broken.Marshal(&untouched), HXMLException);
  EXPECT_EQ(untouched, "old");
}
