#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/HpfmTestDoc.h"
#include "host/ComMsgMgr.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQHpfmReader.h"
#include "platform/HTEQSystemClock.h"
#include "support/TestSupport.h"

using hpfm_test::busInterface;
using hpfm_test::clock;
using hpfm_test::hbmInterface;
using hpfm_test::HpfmDoc;
using hpfm_test::segment;

namespace {

const std::string kParam =
    R"(    <kp:parameter kp:name="FREQ" kp:instanceRef="inst" kp:componentRef="comp" kp:isValid="true" kp:value="300"/>)"
    "\n";

const std::string kNoc =
    R"(    <kp:nocConnectivity kp:instanceRef="noc_0">)"
    "\n" +
    busInterface(R"(kp:name="S00_AXI" kp:mode="slave" kp:componentRef="hbm_memory_subsystem" )"
                 R"(kp:instanceRef="hbm_0")",
                 segment(R"(kp:auto="preferred")")) +
    "    </kp:nocConnectivity>\n";

// Parses text into a fresh platform through parseStream; stdout is kept in `out`.
bool parseInto(HPLPlatform& platform, const std::string& text, std::string* out = nullptr,
               std::string* error = nullptr) {
  ::testing::internal::CaptureStdout();
  HTEQHpfmReader reader(text, &platform);
  const bool ok = reader.parseStream();
  const std::string printed = ::testing::internal::GetCapturedStdout();
  if (out) *out = printed;
  if (error) *error = reader.getErrorMsg();
  return ok;
}

std::vector<HTEQHardwareBusInterface*> busInterfaces(const HTEQHardwarePlatform& p) {
  std::vector<HTEQHardwareBusInterface*> out;
  p.getBusInterfaces(out);
  return out;
}

// Identity and resource figures of the platform, in one line.
std::string identity(const HTEQHardwarePlatform& p) {
  return p.getVendor() + "|" + p.getBoardId() + "|" + p.getName() + "|" + p.getDescription() + "|" +
         std::to_string(p.getBRAMCount()) + "|" + std::to_string(p.getDSPCount()) + "|" +
         std::to_string(p.getFFCount()) + "|" + std::to_string(p.getLUTCount());
}

}  // namespace

TEST(HTEQHpfmReader, FillsIdentityGapsDescriptionAndComponentResources) {
  HpfmDoc doc;
  doc.body = "    <kp:resourceEstimates kp:BRAM=\"9\" kp:DSP=\"9\" kp:FF=\"9\" kp:LUT=\"9\"/>\n";
  HPLPlatform fresh;
  ASSERT_TRUE(parseInto(fresh, doc.text()));
  // The board id comes from the component's name; the estimates are not the platform's figures.
  EXPECT_EQ(identity(fresh), "acme|shell_u1|shell_u1|A shell & its clocks|10|20|30|40");

  HPLPlatform named;
  named.setVendor("v0");
  named.setBoardId("b0");
  named.setName("n0");
  named.setDescription("from the archive");
  ASSERT_TRUE(parseInto(named, doc.text()));
  EXPECT_EQ(identity(named), "v0|b0|n0|A shell & its clocks|10|20|30|40");
}

TEST(HTEQHpfmReader, MapsClocksAndParameters) {
  HpfmDoc doc;
  doc.defaultClock = "3";
  doc.clocks =
      clock(
          R"(kp:name="clk_out1" kp:instanceRef="ci" kp:componentRef="cc" kp:frequency=" 300.0 " )"
          R"(kp:period="3.333" kp:status="scalable" kp:id="3" kp:normalizedPeriod="3.3" kp:clkDomain="d")") +
      clock(R"(kp:name="clk_free" kp:instanceRef="fi" kp:componentRef="fc" kp:frequency="100" )"
            R"(kp:period="10" kp:status="fixed")");
  doc.body = kParam;
  HPLPlatform p;
  ASSERT_TRUE(parseInto(p, doc.text()));
  std::vector<HTEQSystemClock*> clocks;
  p.getSystemClocks(clocks);
  ASSERT_EQ(clocks.size(), 2u);
  EXPECT_EQ(
      zr_test::flatJson(*clocks[0]),
      R"({"name":"PL 3","origName":"clk_out1","id":"3","frequency":"300.0","instRef":"ci","compRef":"cc",)"
      R"("period":"3.333","normalizedPeriod":"3.3","status":"scalable"})");
  EXPECT_EQ(zr_test::flatJson(*clocks[1]),
            R"({"name":"clk_free","origName":"clk_free","id":"-1","frequency":)"
            R"("100","instRef":"fi","compRef":"fc","period":"10","status":"fixed"})");
  EXPECT_EQ(p.getDefaultClkId(), 3);
  EXPECT_EQ(p.getDefaultClockName(), "PL 3");

  std::vector<HTEQHardwareIPParam*> params;
  p.getHardwareIPParams(params);
  ASSERT_EQ(params.size(), 1u);
  EXPECT_EQ(zr_test::flatJson(*params[0]),
            R"({"name":"FREQ","value":"300","instRef":"inst","compRef":"comp","valid":"true"})");
}

TEST(HTEQHpfmReader, MapsBusInterfacesAndTheirSegments) {
  HpfmDoc doc;
  doc.body =
      busInterface(
          R"(kp:busTypeRef="aximm" kp:name="M00_AXI" kp:instanceRef="ii" kp:componentRef="cc" )"
          R"(kp:mode="master" kp:category="cat" kp:dataWidth="512" kp:clockRef="clk" kp:resetRef="rst" )"
          R"(kp:busInterfaceRef="bref" kp:memport="M_AXI_GP" kp:sptag="HP0" kp:cacheCoherent="true" )"
          R"(kp:direction="out" kp:irq="4" kp:addressSegment="aseg" kp:memoryInstance="mi" )"
          R"(kp:clkDomain="cd" kp:hasTlast="true" kp:idBits="6" kp:cardinality="2" kp:size="4G" )"
          R"(kp:slr="SLR1" kp:peakMemoryBandwidth="19200" kp:maxMasters="15" kp:isrId="9" kp:auto="true")",
          segment(R"(kp:baseName="b" kp:index="2" kp:memoryInstance="m" kp:auto="true" kp:sptag="HBM[2]" )"
                  R"(kp:slr="SLR0" kp:maxMasters="4" kp:name="n" kp:instanceRef="si" kp:region="r" )"
                  R"(kp:readBwUsed="99999999999" kp:writeBwUsed="-5" kp:interleave="8")") +
              segment(R"(kp:name="bare")")) +
      busInterface(R"(kp:name="S_MIN")");
  HPLPlatform p;
  ASSERT_TRUE(parseInto(p, doc.text()));
  const auto bis = busInterfaces(p);
  ASSERT_EQ(bis.size(), 2u);
  // resetRef, cacheCoherent, irq, clkDomain, hasTlast, cardinality and auto are not read; a
  // bandwidth beyond the model's int is held at its limit.
  EXPECT_EQ(
      zr_test::flatJson(*bis[0]),
      R"({"name":"M00_AXI","mode":"master","instRef":"ii","compRef":"cc","typeRef":"aximm",)"
      R"("interfaceRef":"bref","clockRef":"clk","memPort":"M_AXI_GP","spTag":"HP0","slr":"SLR1",)"
      R"("memoryInstance":"mi","dataWidth":"512","numIdBits":"6","addressSegment":"aseg","direction":"out",)"
      R"("isrId":"9","category":"cat","addressSegments":[{"baseName":"b","index":"2","memoryInstance":"m",)"
      R"("auto":"true","spTag":"HBM[2]","slr":"SLR0","maxMasters":"4","name":"n","instRef":"si",)"
      R"("region":"r","readBwUsed":"2147483647","writeBwUsed":"-5","interleave":"8"},{"index":"0",)"
      R"("maxMasters":"0","name":"bare","readBwUsed":"0","writeBwUsed":"0","interleave":"0"}]})");
  // Kept by the model, not written.
  EXPECT_EQ((std::vector<std::string>{bis[0]->getSize(), bis[0]->getPeakMemoryBandwidth(),
                                      std::to_string(bis[0]->getMaxMasters())}),
            (std::vector<std::string>{"4G", "19200", "15"}));
  EXPECT_EQ(zr_test::flatJson(*bis[1]), R"({"name":"S_MIN","dataWidth":"0","numIdBits":"0","isrId":"0"})");
  // A component without HBM leaves the bank bookkeeping alone.
  EXPECT_FALSE(p.isHBMPresent());
}

TEST(HTEQHpfmReader, CountsBanksOfTheHbmInstance) {
  struct Case {
    const char* what;
    std::string body;
    bool present;
    uint64_t banks;
    uint64_t defaults;
  };
  const std::vector<Case> cases = {
      {"true, preferred, false, none", hbmInterface("S00", "hbm_0", {"true", "preferred", "false", ""}), true,
       2, 1},
      {"only false", hbmInterface("S00", "hbm_0", {"false"}), true, 0, 0},
      {"no auto at all", hbmInterface("S00", "hbm_0", {"", ""}), false, 0, 0},
      {"case counts", hbmInterface("S00", "hbm_0", {"Preferred", "FALSE"}), true, 2, 0},
      {"two interfaces, one instance",
       hbmInterface("S00", "hbm_0", {"preferred"}) + hbmInterface("S01", "hbm_0", {"preferred", "true"}),
       true, 3, 2},
      {"another component reference",
       busInterface(R"(kp:name="M" kp:componentRef="ddr4" kp:instanceRef="d")", segment(R"(kp:auto="true")")),
       false, 0, 0},
  };
  for (const Case& c : cases) {
    HpfmDoc doc;
    doc.body = c.body;
    HPLPlatform p;
    ASSERT_TRUE(parseInto(p, doc.text())) << c.what;
    EXPECT_EQ(p.isHBMPresent(), c.present) << c.what;
    EXPECT_EQ(p.getHBMBankCount(), c.banks) << c.what;
    EXPECT_EQ(p.getHBMDefaultBankCount(), c.defaults) << c.what;
    EXPECT_EQ(p.getHBMInstanceName(), c.banks ? "hbm_0" : "") << c.what;
  }
}

TEST(HTEQHpfmReader, ReadsNocConnectivityApartFromTheBusInterfaces) {
  HpfmDoc doc;
  doc.body = busInterface(R"(kp:name="M00")") + kNoc;
  HPLPlatform p;
  ASSERT_TRUE(parseInto(p, doc.text()));
  EXPECT_EQ(busInterfaces(p).size(), 1u);
  std::vector<HTEQHardwareNocConnectivity*> nocs;
  p.getNocConnectivity(nocs);
  ASSERT_EQ(nocs.size(), 1u);
  EXPECT_EQ(nocs[0]->getInstanceRef(), "noc_0");
  const HTEQHardwareBusInterface* bi = nocs[0]->getBusInterfaceByName("S00_AXI");
  ASSERT_NE(bi, nullptr);
  EXPECT_EQ(bi->getMode(), "slave");
  ASSERT_EQ(bi->getNumAddressSegments(), 1u);
  // Interfaces under NoC connectivity count their HBM banks too.
  EXPECT_EQ(p.getHBMDefaultBankCount(), 1u);
}

TEST(HTEQHpfmReader, PartialParsesAddOnlyTheirRecords) {
  HpfmDoc doc;
  doc.clocks = clock(R"(kp:name="c" kp:instanceRef="i" kp:componentRef="c" kp:frequency="1" kp:period="1" )"
                     R"(kp:status="fixed")");
  doc.body = kParam + busInterface(R"(kp:name="M00")") + busInterface(R"(kp:name="M01")") + kNoc;
  const std::string text = doc.text();

  HPLPlatform buses;
  HTEQHpfmReader busReader(text, &buses);
  ASSERT_TRUE(busReader.parseBusInterfaces());
  const auto bis = busInterfaces(buses);
  ASSERT_EQ(bis.size(), 2u);
  EXPECT_EQ(bis[1]->getName(), "M01");
  std::vector<HTEQHardwareNocConnectivity*> nocs;
  buses.getNocConnectivity(nocs);
  std::vector<HTEQSystemClock*> clocks;
  buses.getSystemClocks(clocks);
  std::vector<HTEQHardwareIPParam*> params;
  buses.getHardwareIPParams(params);
  EXPECT_TRUE(nocs.empty() && clocks.empty() && params.empty());
  EXPECT_EQ(buses.getVendor(), "");
  EXPECT_EQ(buses.getDescription(), "");

  HPLPlatform noc;
  HTEQHpfmReader nocReader(text, &noc);
  ASSERT_TRUE(nocReader.parseNocConnectivity());
  noc.getNocConnectivity(nocs);
  EXPECT_EQ(nocs.size(), 1u);
  EXPECT_TRUE(busInterfaces(noc).empty());
  EXPECT_EQ(noc.getName(), "");
}

TEST(HTEQHpfmReader, StreamFailureReplacesTheErrorAndSends7431) {
  HpfmDoc doc;
  doc.body = busInterface(R"(kp:name="a" kp:dataWidth="wide")");
  HPLPlatform p;
  ComMsgCapture cap;
  std::string out;
  std::string error;
  EXPECT_FALSE(parseInto(p, doc.text(), &out, &error));
  EXPECT_EQ(error.rfind("Error parsing hardware platform stream from CFA\nLine number:10. ", 0), 0u) << error;
  EXPECT_NE(error.find("wide"), std::string::npos) << error;
  EXPECT_EQ(out, error + "\n");
  const ComMsg* m = cap.find("@74-31@");
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(m->mask, 0x20000000u);

  // The text of an earlier failure is replaced, not added to.
  ::testing::internal::CaptureStdout();
  HTEQHpfmReader reader(doc.text(), &p);
  EXPECT_FALSE(reader.parseStream());
  EXPECT_FALSE(reader.parseBusInterfaces());
  EXPECT_FALSE(reader.parseNocConnectivity());
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(reader.getErrorMsg(), error);
}

TEST(HTEQHpfmReader, EmptyTextWarnsAndThenFailsToParse) {
  HPLPlatform p;
  ::testing::internal::CaptureStdout();
  HTEQHpfmReader reader("", &p);
  const std::string warned = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(warned, "CRITICAL WARNING: Empty hpfm string passed in\n");
  ComMsgCapture cap;
  ::testing::internal::CaptureStdout();
  EXPECT_FALSE(reader.parseStream());
  ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(reader.getErrorMsg().rfind("Error parsing hardware platform stream from CFA\nLine number:1. ", 0),
            0u)
      << reader.getErrorMsg();
  EXPECT_TRUE(cap.has("@74-31@"));

  // A reader without a platform only checks the document.
  ::testing::internal::CaptureStdout();
  HTEQHpfmReader check(HpfmDoc().text(), nullptr);
  EXPECT_TRUE(check.parseStream());
  EXPECT_TRUE(check.parseBusInterfaces());
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST(HTEQHpfmReader, ParseFileReportsMissingAndBrokenFiles) {
  zr_test::TempDir dir;
  HPLPlatform p;
  HTEQHpfmReader reader("unused", &p);
  const std::string missing = dir.file("absent.hpfm");
  reader.setPlatformFile(missing);
  EXPECT_FALSE(reader.parseFile());
  const std::string missingText = "Error parsing hardware platform file: " + missing +
                                  "\nSpecified hardware platform file doens't exists\n";
  EXPECT_EQ(reader.getErrorMsg(), missingText);

  HpfmDoc bad;
  bad.defaultClock = "x";
  const std::string broken = dir.write("broken.hpfm", bad.text());
  reader.setPlatformFile(broken);
  ComMsgCapture cap;
  ::testing::internal::CaptureStdout();
  EXPECT_FALSE(reader.parseFile());
  const std::string out = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(out.rfind("Error parsing hardware platform file: " + broken + "\nLine number:7. ", 0), 0u) << out;
  // Failures of parseFile add to what was there.
  EXPECT_EQ(reader.getErrorMsg(), missingText + out);
  const ComMsg* m = cap.find("@74-12@");
  ASSERT_NE(m, nullptr);
  ASSERT_EQ(m->args.size(), 2u);
  EXPECT_EQ(m->args[0], out);
  EXPECT_EQ(m->args[1], "7");
  EXPECT_EQ(p.getPlatformFile(), "");

  const std::string good = dir.write("good.hpfm", HpfmDoc().text());
  reader.setPlatformFile(good);
  EXPECT_TRUE(reader.parseFile());
  EXPECT_EQ(p.getPlatformFile(), good);
  EXPECT_EQ(p.getName(), "shell_u1");
}
