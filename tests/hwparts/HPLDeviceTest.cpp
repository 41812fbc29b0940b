#include <gtest/gtest.h>

#include "host/HEXAll.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLPort.h"
#include "support/TestSupport.h"

using zr_test::jsonText;

TEST(HTEQDevice, PartStringsOfFourToSevenFields) {
  HTEQDevice four;
  four.setFpgaPart("fam:dev100:pkg200:-2L");
  EXPECT_EQ("dev100pkg200-2L", four.getPartName());
  EXPECT_EQ("fam", four.getPartArch());
  EXPECT_EQ("dev100", four.getPartDevice());
  EXPECT_EQ("pkg200", four.getPartPackage());
  EXPECT_EQ("-2L", four.getPartSpeed());
  EXPECT_EQ("", four.getPartTempGrade());

  HTEQDevice five;
  five.setFpgaPart("a:b:c:-2:e");
  EXPECT_EQ("b-c-2-e", five.getPartName());
  EXPECT_EQ("e", five.getPartTempGrade());
  EXPECT_EQ("", five.getPartRevision());

  HTEQDevice six;
  six.setFpgaPart("a:b:c:-2:e:es1");
  EXPECT_EQ("b-c-2-e-es1", six.getPartName());
  EXPECT_EQ("es1", six.getPartRevision());
  EXPECT_EQ("", six.getPartStaPower());

  HTEQDevice seven;
  seven.setFpgaPart("a:b:c:-2:e:low:es1");
  EXPECT_EQ("b-c-2-e-low-es1", seven.getPartName());
  EXPECT_EQ("low", seven.getPartStaPower());
  EXPECT_EQ("es1", seven.getPartRevision());
  EXPECT_EQ("a:b:c:-2:e:low:es1", seven.getFpgaPart());

  // Empty fields are kept as fields.
  HTEQDevice gaps;
  gaps.setFpgaPart(":b::");
  EXPECT_EQ("b", gaps.getPartName());
  EXPECT_EQ("", gaps.getPartArch());
}

TEST(HTEQDevice, BadPartStringsAreRefusedAndLeaveThePartAlone) {
  HTEQDevice device;
  device.setName("fpga0");
  EXPECT_EQ("fpga0", device.getPartName());
  device.setFpgaPart("");
  EXPECT_EQ("fpga0", device.getPartName());
  device.setFpgaPart("a:b:c:-1");
  for (const std::string bad : {"a:b:c", "a:b:c:d:e:f:g:h", "plain"}) {
    try {
      device.setFpgaPart(bad);
      FAIL() << "accepted " << bad;
    } catch (const HEXAlgException& e) {
      EXPECT_EQ(
          "HTEQDevice::convertFpgaDeviceToPart_ - FPGA Device (string) format not as expected: '" + bad + "'",
          std::string(e.what()));
    }
    EXPECT_EQ(bad, device.getFpgaPart());
    EXPECT_EQ("bc-1", device.getPartName());
    EXPECT_EQ("a", device.getPartArch());
  }
}

TEST(HPLDevice, JSONWritesPartClocksAndCore) {
  HPLDevice device;
  device.setName("fpga0");
  EXPECT_EQ(
      "{\n"
      "    \"name\": \"fpga0\",\n"
      "    \"core\": {\n"
      "        \"numComputeUnits\": \"0\"\n"
      "    }\n"
      "}\n",
      jsonText(device));

  device.setType("fpga");
  device.setFpgaPart("a:b:c:-2:e");
  device.setNumSLRs(3);
  device.addSystemClock("clk_b", "100");
  device.addSystemClock("clk_a", "50");
  device.addSystemClock("clk_b", "200");
  device.getCore().setNumComputeUnits(2);
  EXPECT_EQ(
      "{\n"
      "    \"name\": \"fpga0\",\n"
      "    \"type\": \"fpga\",\n"
      "    \"fpgaPart\": \"a:b:c:-2:e\",\n"
      "    \"part\": {\n"
      "        \"name\": \"b-c-2-e\",\n"
      "        \"architecture\": \"a\",\n"
      "        \"device\": \"b\",\n"
      "        \"package\": \"c\",\n"
      "        \"speedGrade\": \"-2\",\n"
      "        \"tempGrade\": \"e\"\n"
      "    },\n"
      "    \"numSLRs\": \"3\",\n"
      "    \"scalableSystemClocks\": [\n"
      "        {\n"
      "            \"name\": \"clk_a\",\n"
      "            \"frequency\": \"50\"\n"
      "        },\n"
      "        {\n"
      "            \"name\": \"clk_b\",\n"
      "            \"frequency\": \"200\"\n"
      "        }\n"
      "    ],\n"
      "    \"core\": {\n"
      "        \"numComputeUnits\": \"2\"\n"
      "    }\n"
      "}\n",
      jsonText(device));
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
  EXPECT_EQ(
      "{\n    \"name\": \"a\\/b.bit\",\n    \"type\": \"BITSTREAM\",\n    \"processingOrder\": \"2\"\n}\n",
      jsonText(file));
  file.setUsedIn("synth");
  EXPECT_NE(std::string::npos, jsonText(file).find("\"type\": \"BITSTREAM\",\n    \"usedIn\": \"synth\",\n"));
}
