#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/HEXAll.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLPort.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"

using zr_test::flatJson;

TEST(HTEQDevice, PartStringsOfFourToSevenFields) {
  using Fields = std::vector<std::string>;
  // name, architecture, device, package, speed, temperature grade, revision, static power.
  const std::vector<std::pair<std::string, Fields>> cases = {
      {"fam:dev100:pkg200:-2L", {"dev100pkg200-2L", "fam", "dev100", "pkg200", "-2L", "", "", ""}},
      {"a:b:c:-2:e", {"b-c-2-e", "a", "b", "c", "-2", "e", "", ""}},
      {"a:b:c:-2:e:es1", {"b-c-2-e-es1", "a", "b", "c", "-2", "e", "es1", ""}},
      {"a:b:c:-2:e:low:es1", {"b-c-2-e-low-es1", "a", "b", "c", "-2", "e", "es1", "low"}},
      // Empty fields are kept as fields.
      {":b::", {"b", "", "b", "", "", "", "", ""}},
  };
  for (const auto& c : cases) {
    HTEQDevice d;
    d.setFpgaPart(c.first);
    EXPECT_EQ(d.getFpgaPart(), c.first);
    EXPECT_EQ((Fields{d.getPartName(), d.getPartArch(), d.getPartDevice(), d.getPartPackage(),
                      d.getPartSpeed(), d.getPartTempGrade(), d.getPartRevision(), d.getPartStaPower()}),
              c.second)
        << c.first;
  }
}

TEST(HTEQDevice, BadPartStringsAreRefusedAndLeaveThePartAlone) {
  HTEQDevice device;
  device.setName("fpga0");
  EXPECT_EQ("fpga0", device.getPartName());
  device.setFpgaPart("");
  EXPECT_EQ("fpga0", device.getPartName());
  device.setFpgaPart("a:b:c:-1");
  for (const std::string bad : {"a:b:c", "a:b:c:d:e:f:g:h", "plain"}) {
    EXPECT_THROW_MSG(
        device.setFpgaPart(bad), HEXAlgException,
        "HTEQDevice::convertFpgaDeviceToPart_ - FPGA Device (string) format not as expected: '" + bad + "'");
    EXPECT_EQ(bad, device.getFpgaPart());
    EXPECT_EQ("bc-1", device.getPartName());
    EXPECT_EQ("a", device.getPartArch());
  }
}

TEST(HPLDevice, JSONWritesPartClocksAndCore) {
  HPLDevice device;
  device.setName("fpga0");
  EXPECT_EQ(flatJson(device), R"({"name":"fpga0","core":{"numComputeUnits":"0"}})");
  device.setType("fpga");
  device.setFpgaPart("a:b:c:-2:e");
  device.setNumSLRs(3);
  device.addSystemClock("clk_b", "100");
  device.addSystemClock("clk_a", "50");
  device.addSystemClock("clk_b", "200");
  device.getCore().setNumComputeUnits(2);
  EXPECT_EQ(
      flatJson(device),
      R"({"name":"fpga0","type":"fpga","fpgaPart":"a:b:c:-2:e","part":{"name":"b-c-2-e",)"
      R"("architecture":"a","device":"b","package":"c","speedGrade":"-2","tempGrade":"e"},"numSLRs":"3",)"
      R"("scalableSystemClocks":[{"name":"clk_a","frequency":"50"},{"name":"clk_b","frequency":"200"}],)"
      R"("core":{"numComputeUnits":"2"}})");
}

TEST(HPLDevice, AddressWidthIsTheCoresWidest) {
  HPLDevice device;
  EXPECT_EQ(0u, device.getAddrWidth());
  device.getCore().addPort()->setAddrWidth("33");
  device.getCore().addPort()->setAddrWidth("48");
  EXPECT_EQ(48u, device.getAddrWidth());
}

TEST(HPLFile, WritesItsFourKeysAndOmitsEmptyOnes) {
  HPLFile file;
  file.setProcessingOrder("2");
  file.setType("BITSTREAM");
  file.setName("a/b.bit");
  EXPECT_EQ(flatJson(file), R"({"name":"a\/b.bit","type":"BITSTREAM","processingOrder":"2"})");
  file.setUsedIn("synth");
  EXPECT_EQ(flatJson(file),
            R"({"name":"a\/b.bit","type":"BITSTREAM","usedIn":"synth","processingOrder":"2"})");
}
