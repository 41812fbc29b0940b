#include <gtest/gtest.h>

#include "formats/CfaXmlReaderTestSupport.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQCfaXmlReader.h"
#include "platform/JSONObjectWriter.h"
#include "support/TestSupport.h"
#include "support/TextPatch.h"

using teq_platform::PlatformLoader;
using namespace zr_test;

namespace {

// One platform as an XML member: board with memories and an interface, one
// device with its core, files.
std::string cfaXml() {
  cfa_test::CfaDoc d;
  d.cfaAttrs = R"(Vendor="acme" BoardId="card" Name="base" VersionMajor="3" VersionMinor="2" )"
               R"(Description="the card")";
  d.host = R"(<Host Architecture="x86_64" Interface="pcie"/>)";
  d.buildAttrs = R"(UsesPR="true" PlatformState="impl")";
  d.boardAttrs = R"(Name="acme:card:1.0" Vendor="acme" Part="ptzq9kp-pk676-2-e")";
  d.boardBody = R"(<Interfaces><Interface Id="int1" Name="PCIe" Type="gen3x16"/></Interfaces>)"
                R"(<Memories><Memory Name="ddr0" Type="ddr4" Size="16GB"/>)"
                R"(<Memory Name="ddr1" Type="ddr4" Size="16GB"/></Memories><Images/>)";
  d.devices =
      R"(<Device Name="fpga0" Type="8"><Core Name="OCL_REGION_0" Type="clc_region" ComputeUnits="60"/>)"
      R"(</Device>)";
  d.files =
      R"(<File Type="FULL_BIT" Name="hw/card.bit"/><File Type="PRE_SYS_LINK_TCL" Name="scripts/pre.tcl"/>)";
  return d.text();
}

// An archive card.cfa in the folder `sub` of dir holding one member.
std::string archiveIn(const TempDir& dir, const std::string& sub, const std::string& member,
                      const std::string& text) {
  HUTFile::mkDirRecursive(dir.file(sub));
  HUTZip::writeMember(dir.file(sub + "/card.cfa"), member, text);
  return dir.file(sub + "/card.cfa");
}

}  // namespace

// The JSON route reads what the model writes, so a platform that came through
// the XML route and was written as a JSON member reads back to the same
// document: the two routes fill one model. The one key the JSON route does not
// read is the hardware platform's description.
TEST(RouteComparison, XmlAndJsonMembersOfOnePlatformGiveOneDocument) {
  TempDir dir;
  const std::string xmlArchive = archiveIn(dir, "xml", "cfa.xml", cfaXml());
  HPLPlatform fromXml;
  ASSERT_TRUE(HTEQCfaXmlReader(xmlArchive, &fromXml).parseCFA());

  const std::string jsonArchive = archiveIn(dir, "json", "cfa.json", zr_test::jsonText(fromXml));
  HPLPlatform fromJson;
  ASSERT_TRUE(HTEQCfaJsonReader(&fromJson).parseCFA(jsonArchive, PlatformLoader::Default));

  EXPECT_EQ(fromXml.getDescription(), "the card");
  EXPECT_EQ(fromJson.getDescription(), "");
  // Apart from that only the archive path differs; put both in one place and compare.
  fromJson.setPlatformFile(xmlArchive);
  fromJson.setDescription(fromXml.getDescription());
  EXPECT_EQ(zr_test::jsonText(fromJson), zr_test::jsonText(fromXml));
  EXPECT_TRUE(fromXml.isEquals(fromJson));
  // The XML route's defaults travel through the document.
  EXPECT_EQ(fromJson.getValidBinaryContentValuesAsStr(), fromXml.getValidBinaryContentValuesAsStr());
  EXPECT_FALSE(fromXml.getValidBinaryContentValuesAsStr().empty());
}

// Where the routes differ by design: the JSON route has no ports, no core
// parameters and no drivers, so those vanish on the way through JSON.
TEST(RouteComparison, PortsOfTheXmlRouteHaveNoJsonCounterpart) {
  TempDir dir;
  const std::string xml =
      zr_test::patched(cfaXml(), R"(ComputeUnits="60"/>)",
                       R"(ComputeUnits="60"><Core><Port Name="M00_AXI" Type="addressable" )"
                       R"(Mode="master" Protocol="AXI4" DataWidth="512"/></Core></Core>)");
  const std::string xmlArchive = archiveIn(dir, "xml", "cfa.xml", xml);
  HPLPlatform fromXml;
  ASSERT_TRUE(HTEQCfaXmlReader(xmlArchive, &fromXml).parseCFA());
  const std::string withPorts = zr_test::jsonText(fromXml);
  ASSERT_NE(withPorts.find("M00_AXI"), std::string::npos);

  const std::string jsonArchive = archiveIn(dir, "json", "cfa.json", withPorts);
  HPLPlatform fromJson;
  ASSERT_TRUE(HTEQCfaJsonReader(&fromJson).parseCFA(jsonArchive, PlatformLoader::Default));
  EXPECT_EQ(zr_test::jsonText(fromJson).find("M00_AXI"), std::string::npos);
}
