#include "formats/CfaXmlReaderTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaXmlReader.h"

namespace cfa_test {

namespace {

void line(std::string& out, const std::string& indent, const std::string& element) {
  if (!element.empty()) out += indent + element + "\n";
}

std::string open(const std::string& name, const std::string& attrs) {
  return "<" + name + (attrs.empty() ? "" : " " + attrs) + ">";
}

}  // namespace

std::string CfaDoc::text() const {
  std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  out += open("Root", rootAttrs) + "\n";
  line(out, "  ", genAppInfo);
  out += "  " + open("CFA", cfaAttrs) + "\n";
  line(out, "    ", host);
  out += "    " + open("Build", buildAttrs) + "\n";
  line(out, "      ", buildBody);
  out += "    </Build>\n";
  line(out, "    ", designIPs);
  out += "    " + open("Board", boardAttrs) + "\n";
  line(out, "      ", boardBody);
  out += "    </Board>\n";
  out += "    <Devices>\n";
  line(out, "      ", devices);
  out += "    </Devices>\n";
  out += "    <Files>\n";
  line(out, "      ", files);
  out += "    </Files>\n";
  line(out, "    ", featureRom);
  out += "  </CFA>\n</Root>\n";
  return out;
}

CfaDoc representativeDoc() {
  CfaDoc d;
  d.genAppInfo = R"(<GenAppInfo Name="gen" Version="2.1" CL="4294967298" TimeStamp="Mon Jan 1"/>)";
  d.cfaAttrs = R"(Vendor="acme" BoardId="b1" Name="plat" VersionMajor="3" VersionMinor="4" )"
               R"(Description="d &amp; e" FeatureRomTimestamp="42" DcpLogicFunctionStripped="TRUE" )"
               R"(DcpEncrypt="yes" Unified="True" Fixed="false" DefaultOutputType="accbin")";
  d.host = R"(<Host Architecture="AARCH64" Interface="axi"/>)";
  d.buildAttrs = R"(Flow="f" UsesPR="true" UsesDCP="no" PlatformState="impl" AcceleratorBinaryFormat="fmt" )"
                 R"(AcceleratorBinaryContent="dcp" ValidBinaryContentValues="a,,b" TopModuleName="top")";
  d.buildBody =
      R"(<ZuncCompileSwitches><ZuncCompileSwitch Name="c1" Value="-O3"/>)"
      R"(<ZuncCompileSwitch Name="c2" Value="-g"/></ZuncCompileSwitches>)"
      "\n      "
      R"(<ZuncLinkSwitches><ZuncLinkSwitch Name="l1" Value="--x"/><ZuncLinkSwitch Name="l2" Value="--x"/>)"
      R"(</ZuncLinkSwitches>)";
  d.designIPs =
      R"(<DesignIPs><IP InstanceName="ip0" VLNV="v:l:n:1"><Configuration><Parameter Name="P" Value="1"/>)"
      R"(<Parameter Name="Q" Value="2"/></Configuration></IP><IP InstanceName="ip1" VLNV="v:l:n:2"/></DesignIPs>)";
  d.boardAttrs = R"(Name="brd" Vendor="bv" Part="pz250-pk2104-2L-e" BoardPart="acme:brd:1.0")";
  d.boardBody =
      R"(<Interfaces><Interface Id="int1" Name="PCIe" Type="gen3x16"/></Interfaces>
      <Memories>
        <Memory Name="ddr0" Type="ddr4" Size="16GB" LowestAddress="-1" HighestAddress="4096">)"
      R"(<Config><Param Name="MEMORY_PART" Value="mt40"/><Param Name="ch" Value="2"/></Config></Memory>
        <Memory Name="plram" Type="sram" Size="128K"/>
      </Memories>
      <Connectors>
        <Connector Name="c0" DisplayName="C0" Type="dimm" ConnectedConnector="m0" )"
      R"(ConnectedConnectorDisplayName="M0" IsLocked="TRUE"/>
        <Connector Name="c1" DisplayName="C1" Type="dimm" ConnectedConnector="" IsLocked="no"/>
      </Connectors>
      <Images><Img Type="HDPI" File="h.png"/><Img Type="MDPI" File="m.png"/><Img Type="LDPI" File="l.png"/>)"
      R"(<Img Type="hdpi" File="lower.png"/></Images>
      <Drivers><Driver Name="drv" Vendor="dv" Version="1" Platform="linux" File="drv.ko"/></Drivers>
      <PCIeId Vendor="0x10ee" Device="0x5000" Subsystem="0x000e" FeatureId="0x1"/>)";
  d.devices =
      R"(<Device Name="fpga0" Type="8" FpgaDevice="tarn:pz250:pk2104:-2L:e">
        <SystemClocks><SystemClock Name="clk0" Frequency="300.0"/><SystemClock Name="clk1" Frequency="500"/>)"
      R"(</SystemClocks>
        <Core Name="OCL_REGION_0" Type="clc_region" ComputeUnits="255" VLNV="v:l:core:1" InstancePath="/a" )"
      R"(ParentRMInstancePath="/p" ClockFreq="250" DRBaseAddress="0x9" DRBDName="bd">
          <Core>
            <Config><Param Name="k" Value="v"/><Param Name="k2" Value="v2"/></Config>
            <Port Name="M_AXI" Type="addressable" Mode="master" Protocol="axi4" Base="0x0" Range="0x1000" )"
      R"(DataWidth="512" IdWidth="4" UserWidth="1" AddressWidth="64" AddressOffset="0x10" AddressRange="0x20" )"
      R"(MaxBurstLength="256" Frequency="300" Direction="out" Polarity="high">
              <AddressSegments><AddressSegment Name="s0" Base="0x100" Range="0x200" Slave="mem0"/>)"
      R"(<AddressSegment Name="s1" Base="0x300" Range="0x400" Slave="mem1"/></AddressSegments>
            </Port>
            <Port Name="clk" Type="clock"/>
            <AvailableResources LUT="100" REG="200" BRAM="12" DSP="4">
              <PBlock Name="pblock_dynamic_region" ValidSLRs="SLR0,SLR1"><Resource Name="LUT" Val="10"/>)"
      R"(<Resource Name="BRAM" Val="3"/></PBlock>
              <PBlock Name="pb1"/>
            </AvailableResources>
          </Core>
        </Core>
      </Device>
      <Device Name="cpu0" Type="cpu"><Core Name="c" Type="t" ComputeUnits="0"/></Device>)";
  d.files = R"(<File Type="BIT" Name="b.bit" UsedIn="hw" ProcessingOrder="2"/>
      <File Type="TCL" Name="post.tcl"/>)";
  d.featureRom =
      R"(<FeatureRom MajorVersion="10" MinorVersion="1" MorwenBuildID="4294967295" IPBuildID="7" )"
      R"(TimeSinceEpoch="1600000000" FPGAPartName="pz250-pk2104-2L-e" )"
      R"(VBNVName="acme:brd:plat:3.4_this_name_is_made_long_enough_to_go_beyond_sixty_three_bytes" )"
      R"(DDRChannelCount="4" DDRChannelSize="16" DRBaseAddress="18446744073709551615" FeatureBitMap="3" )"
      R"(UUID="01234567-89ab-cdef-0123-456789abcdef" CDMABaseAddress0="1" CDMABaseAddress2="3" )"
      R"(MaxTempLimit="90"/>)";
  return d;
}

int lineOf(const std::string& doc, const std::string& needle) {
  const auto at = doc.find(needle);
  EXPECT_NE(at, std::string::npos) << needle;
  if (at == std::string::npos) return -1;
  return 1 + static_cast<int>(std::count(doc.begin(), doc.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

std::string makeArchive(const zr_test::TempDir& dir, const std::string& xml,
                        const std::vector<std::pair<std::string, std::string>>& members,
                        const std::string& name) {
  const std::string archive = dir.file(name);
  const std::string ext = HUTPathUtils::getExtension(name).substr(1);
  HUTZip::writeMember(archive, ext + ".xml", xml);
  for (const auto& member : members) HUTZip::writeMember(archive, member.first, member.second);
  return archive;
}

bool readInto(const std::string& archive, HPLPlatform& platform, std::string* error) {
  HTEQCfaXmlReader reader(archive, &platform);
  const bool ok = reader.parseCFA();
  if (error) *error = reader.getErrorMsg();
  return ok;
}

}  // namespace cfa_test
