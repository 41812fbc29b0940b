#include <gtest/gtest.h>

#include "platform/HPLPlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/JSONObjectWriter.h"
#include "support/TestSupport.h"

namespace {

// The top-level keys in order, each followed by a comma.
std::string keys(const teq_platform::JSONWriter::Tree& t) {
  std::string out;
  for (const auto& c : t) out += c.first + ",";
  return out;
}

}  // namespace

TEST(HTEQPlatform, SoftwareOnlyPlatformWritesNoFileKeys) {
  HTEQPlatform p;
  p.setPartial(true);
  p.setName("sw");
  EXPECT_EQ(zr_test::flatJson(p),
            R"({"name":"sw","type":"Undefined","unified":"false","zdf":"false","hardware":"false",)"
            R"("softwareEmulation":"false","hardwareEmulation":"false","hardwareEmuPlatform":"false",)"
            R"("hidden":"false"})");
  EXPECT_EQ(p.getTypeString(), "");
  EXPECT_TRUE(p.isFixed());
  EXPECT_FALSE(p.isComplete());
}

TEST(HTEQPlatform, DescriptorKeysComeInOrderAndLibraryIsNotWritten) {
  HTEQPlatform p;
  p.setZdf(true);
  p.setVendor("acme");
  p.setLibrary("lib");
  p.setName("board");
  p.setDescription("d");
  p.setVersion("1.0");
  p.setPlatformFile("/r/board/board.zdf");
  p.setHardwarePlatformFile("/r/board/hw/b.lfa");
  p.setHardwareEmuPlatformFile("/r/board/hw/e.lfa");
  p.setSoftwarePlatformFile("/r/board/sw/b.spfm");
  auto* hw = new HPLPlatform;
  hw->setPlatformFile("/r/board/hw/b.lfa");
  p.setHardwarePlatform(hw);
  const auto t = zr_test::jsonTree(p);
  EXPECT_EQ(
      keys(t),
      "vendor,name,description,uniqueName,version,type,unified,zdf,hardware,softwareEmulation,"
      "hardwareEmulation,hardwareEmuPlatform,hidden,file,hwFile,hwEmuFile,swFile,directory,targetCategories,"
      "hardwarePlatforms,");
  EXPECT_EQ(t.get<std::string>("uniqueName"), "/r/board/board.zdf");
  EXPECT_EQ(t.get<std::string>("directory"), "/r/board");
  EXPECT_EQ(t.get<std::string>("hardware"), "true");
  EXPECT_EQ(p.getPlatformBaseName(), "board");
  EXPECT_EQ(p.getDeviceName(), "board");
  EXPECT_EQ(t.get_child("hardwarePlatforms").count("hardwarePlatform"), 1u);
}

TEST(HTEQPlatform, EmulationObjectWithoutItsOwnFileIsNotWritten) {
  HTEQPlatform p;
  p.setHardwarePlatform(new HPLPlatform);
  auto* emu = new HPLPlatform;
  emu->setPlatformFile("/x/e.lfa");
  p.setHardwareEmulationPlatform(emu);
  EXPECT_TRUE(p.supportsHWEmulation());
  EXPECT_FALSE(zr_test::jsonTree(p).get_child_optional("hardwarePlatforms.hwEmuPlatform"));
  p.setHardwareEmuPlatformFile("/x/e.lfa");
  EXPECT_EQ(zr_test::jsonTree(p).get_child("hardwarePlatforms").count("hwEmuPlatform"), 1u);
}

TEST(HTEQPlatform, DefaultPartitionThatDoesNotExistAnswersFalse) {
  HTEQPlatform p;
  auto* rp = new HTEQReconfigurablePartition(1);
  rp->setHardwarePlatform(new HPLPlatform);
  p.addReconfigurablePartition(rp);
  p.setDefaultRPId(9);
  EXPECT_EQ(p.getHardwarePlatform(), nullptr);
  EXPECT_FALSE(p.supportsHardware());
  EXPECT_FALSE(p.supportsHWEmulation());
  const auto t = zr_test::jsonTree(p);
  EXPECT_EQ(t.get<std::string>("hardware"), "false");
  EXPECT_EQ(t.get<std::string>("defaultRPId"), "9");
  const auto& list = t.get_child("hardwarePlatforms.reconfigurablePartitions");
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list.front().second.get<std::string>("id"), "1");
}

TEST(HTEQPlatform, DefaultPartitionIsLookedUpAfreshAndAnswersQueries) {
  HTEQPlatform p;
  auto* first = new HTEQReconfigurablePartition(2);
  auto* hw = new HPLPlatform;
  first->setHardwarePlatform(hw);
  auto* emu = new HPLPlatform;
  first->setHardwareEmulationPlatform(emu);
  p.addReconfigurablePartition(first);
  p.setDefaultRPId(2);
  EXPECT_EQ(p.getDefaultRPHardwarePlatform(), hw);
  EXPECT_EQ(p.getDefaultRPHardwareEmulationPlatform(), emu);
  EXPECT_EQ(p.getRPHardwarePlatform(3), nullptr);
  // The stored pointer is only used by getHardwarePlatform; queries look up the id.
  EXPECT_EQ(p.getHardwarePlatform(), nullptr);
  EXPECT_TRUE(p.supportsHardware());
  EXPECT_TRUE(p.hasRPHardwareEmulationPlatform());
  EXPECT_TRUE(p.supportsHWEmulation());
  p.setDefaultRPHardwarePlatform(hw);
  EXPECT_EQ(p.getHardwarePlatform(), hw);
  // A partition with an emulation object but no emulation file writes none.
  const auto t = zr_test::jsonTree(p);
  const auto& item = t.get_child("hardwarePlatforms.reconfigurablePartitions").front().second;
  EXPECT_EQ(item.count("hwEmuPlatform"), 0u);
}

TEST(HTEQPlatform, HardwareOnlyPlatformUsesTheArchiveAsItsName) {
  HTEQPlatform p;
  p.setPartial(true);
  p.setPlatformFile("/a/b/card.lfa");
  p.setHardwarePlatform(new HPLPlatform);
  const auto t = zr_test::jsonTree(p);
  EXPECT_EQ(t.get<std::string>("zdf"), "false");
  EXPECT_EQ(t.get<std::string>("uniqueName"), t.get<std::string>("file"));
  EXPECT_EQ(t.count("swFile"), 0u);
  EXPECT_EQ(t.count("softwarePlatform"), 0u);
  // A partial platform asks its hardware for the device name.
  EXPECT_EQ(p.getDeviceName(), p.getHardwarePlatform()->getDeviceName());
}

TEST(HTEQPlatform, HiddenOnlyForTheLiteralName) {
  HTEQPlatform p;
  p.setPlatformFile("torvane:rq118:linux-uart:1.0");
  EXPECT_TRUE(p.isHidden());
  p.setPlatformFile("/x/torvane:rq118:linux-uart:1.0");
  EXPECT_FALSE(p.isHidden());
}

TEST(HTEQPlatform, TypeIsUndefinedForAnArchivePlatformWithoutIntent) {
  HTEQPlatform p;
  p.setHardwarePlatform(new HPLPlatform);
  EXPECT_EQ(p.getTypeString(), "undefined");
  EXPECT_EQ(p.getTypePrettyString(), "Undefined");
}
