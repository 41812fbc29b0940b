#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <sstream>

#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformCAPI.h"
#include "platform/PlatformLoader.h"
#include "support/TestSupport.h"

using teq_platform::PlatformLoader;
using namespace zr_test;
using Tree = boost::property_tree::ptree;

namespace {

std::string doc(const std::string& name, const std::string& extra = "") { return lfaJson(extra, name); }

// Writes one member into an archive below the directory, making its parents.
void zipMember(const TempDir& dir, const std::string& archive, const std::string& member,
               const std::string& content) {
  HUTFile::mkDirRecursive(HUTPathUtils::getParent(dir.file(archive)));
  HUTZip::writeMember(dir.file(archive), member, content);
}

Tree json(const std::string& file) {
  char* text = hteq_get_platform_json(file.c_str());
  EXPECT_NE(text, nullptr);
  Tree t;
  if (text) {
    std::istringstream in(text);
    boost::property_tree::read_json(in, t);
    hteq_free_json_string(text);
  }
  return t;
}

}  // namespace

TEST(JsonRoute, DescriptorWithHardwareAndSoftwareGivesTheFullDocument) {
  TempDir dir;
  zipMember(dir, "p/hw/card.lfa", "lfa.json", doc("base"));
  dir.write("p/sw/a.spfm", spfmText());
  const std::string zdf = dir.write("p/card.zdf", zdfText(zdfHw("hw", "card.lfa")));
  const Tree t = json(zdf);
  EXPECT_EQ(t.get<std::string>("zdf"), "true");
  EXPECT_EQ(t.get<std::string>("hardware"), "true");
  EXPECT_EQ(t.get<std::string>("hwFile"), dir.file("p/hw/card.lfa"));
  EXPECT_EQ(t.get<std::string>("hardwarePlatforms.hardwarePlatform.name"), "base");
  EXPECT_TRUE(t.get_child_optional("softwarePlatform"));
  EXPECT_EQ(t.get<std::string>("type"), "Fennick");
}

TEST(JsonRoute, ArchiveWithEmulationInsideSupportsItWithoutAnEmulationKey) {
  TempDir dir;
  const std::string lfa = dir.file("card.lfa");
  HUTZip::writeMember(lfa, "lfa.json", doc("base"));
  HUTZip::writeMember(lfa, "hw_emu/lfa.json", doc("emu", ", \"hardwareEmuPlatform\": \"true\""));
  PlatformLoader loader(lfa, PlatformLoader::Default);
  const auto platform = loader.load();
  ASSERT_NE(platform, nullptr);
  EXPECT_TRUE(platform->supportsHWEmulation());
  EXPECT_TRUE(platform->hasHWEmulationPlatform());
  EXPECT_TRUE(platform->getHardwareEmulationPlatform()->isChildHardwareEmuPlatform());
  EXPECT_EQ(platform->getPlatformFile(), lfa);
  const Tree t = json(lfa);
  EXPECT_EQ(t.get<std::string>("hardwareEmulation"), "true");
  EXPECT_FALSE(t.get_child_optional("hardwarePlatforms.hwEmuPlatform"));
  EXPECT_EQ(t.get<std::string>("uniqueName"), t.get<std::string>("file"));
}

TEST(JsonRoute, CorruptEmulationFileIsIgnored) {
  TempDir dir;
  zipMember(dir, "p/hw/card.lfa", "lfa.json", doc("base"));
  dir.write("p/hw/emu.lfa", "corrupt");
  dir.write("p/sw/a.spfm", spfmText());
  const std::string zdf = dir.write("p/card.zdf", zdfText(zdfHw("hw", "card.lfa") + zdfEmu("hw", "emu.lfa")));
  PlatformLoader loader(zdf, PlatformLoader::Default);
  const auto platform = loader.load();
  ASSERT_NE(platform, nullptr);
  EXPECT_FALSE(platform->hasHWEmulationPlatform());
}

TEST(JsonRoute, PartitionsAttachTheirHardwareAndTheDefaultAnswers) {
  TempDir dir;
  zipMember(dir, "p/hw/rp1.lfa", "lfa.json", doc("one"));
  zipMember(dir, "p/hw/rp2.lfa", "lfa.json", doc("two"));
  zipMember(dir, "p/hw/rp2e.lfa", "lfa.json", doc("two_emu"));
  dir.write("p/sw/a.spfm", spfmText());
  const std::string rps = "<teq:reconfigurablePartition teq:id=\"1\">" + zdfHw("hw", "rp1.lfa") +
                          "</teq:reconfigurablePartition>\n<teq:reconfigurablePartition teq:id=\"2\">" +
                          zdfHw("hw", "rp2.lfa") + zdfEmu("hw", "rp2e.lfa") +
                          "</teq:reconfigurablePartition>\n";
  const std::string zdf = dir.write("p/card.zdf", zdfText(rps, "teq:defaultRP=\"2\""));
  PlatformLoader loader(zdf, PlatformLoader::Default);
  const auto platform = loader.load();
  ASSERT_NE(platform, nullptr);
  ASSERT_NE(platform->getHardwarePlatform(), nullptr);
  EXPECT_EQ(platform->getHardwarePlatform()->getName(), "two");
  EXPECT_EQ(platform->getHardwareEmulationPlatform()->getName(), "two_emu");
  EXPECT_TRUE(platform->supportsHWEmulation());
  const Tree t = json(zdf);
  EXPECT_EQ(t.get<std::string>("defaultRPId"), "2");
  const auto& parts = t.get_child("hardwarePlatforms.reconfigurablePartitions");
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(parts.back().second.get<std::string>("hwEmuPlatform.name"), "two_emu");
}
