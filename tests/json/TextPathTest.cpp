// The C entry point prints a platform from its model without building the
// property tree. These tests hold that text to the tree's, byte for byte, on
// random platforms that use every list and every kind of character, and check
// the cases that must still go through the tree.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <sstream>
#include <string>

#include "host/HEXAll.h"
#include "json/JsonTextWriter.h"
#include "platform/HPLBoard.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLInterface.h"
#include "platform/HPLMemory.h"
#include "platform/HPLPlatform.h"
#include "platform/HPLPort.h"
#include "platform/HTEQDesignIPInstance.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQSystemClock.h"
#include "platform/JSONObjectWriter.h"
#include "support/TestSupport.h"

namespace {

// The text of the platform's tree, as written before the direct path.
std::string treeText(const HTEQPlatform& platform) { return zr_test::jsonText(platform); }

std::string directText(const HTEQPlatform& platform) {
  std::unique_ptr<char[]> text(teq_platform::platformText(platform));
  return text.get();
}

class RandomPlatform {
 public:
  explicit RandomPlatform(unsigned seed) : rng_(seed) {}

  // Texts the writer must escape or keep as they are, and the empty text,
  // which leaves its key out.
  std::string text() {
    static const char* const kParts[] = {"",     "",         "bank",     "a/b",
                                         "q\"t", "b\\s",     "t\tn\n",   "\x01",
                                         "\x7f", "\xc3\xa9", "a.b",      "pfm_top_i/dynamic_region/axi_ic_0",
                                         "0x1F", "\xff",     "\xe2\x82", "\xed\xa0\x80"};
    std::string s;
    for (int i = pick(3); i > 0; --i) s += kParts[pick(16)];
    return s;
  }

  void fill(HTEQPlatform& platform, HPLPlatform& hw) {
    platform.setVendor(text());
    platform.setName(text());
    platform.setDescription(text());
    platform.setPlatformFile(text());
    hw.setVendor(text());
    hw.setBoardId(text());
    hw.setName(text());
    hw.setDescription(text());
    hw.setVersionMajor(static_cast<unsigned>(pick(5)));
    hw.setUsesPR(pick(2) == 0);
    hw.setHostArch(text());
    hw.setExpandable(pick(2) == 0);
    hw.setGeneratedName(text());
    hw.setExplicitDesignIntent(HTEQDesignIntentStorage::embedded, pick(2) == 0);
    for (int i = pick(3); i > 0; --i) hw.addZuncCompileXpSwitch(text());
    hw.getBoard().setName(text());
    hw.getBoard().setPart(text());
    for (int i = pick(3); i > 0; --i) {
      HPLDevice* d = hw.addDevice();
      d->setName(text());
      d->getCore().setName(text());
      for (int k = pick(3); k > 0; --k) d->getCore().addPort()->setName(text());
    }
    for (int i = pick(3); i > 0; --i) hw.addInterface()->setName(text());
    for (int i = pick(3); i > 0; --i) hw.addMemory()->setName(text());
    for (int i = pick(4); i > 0; --i) hw.addFile(text(), text());
    for (int i = pick(4); i > 0; --i) {
      HTEQSystemClock* c = hw.addSystemClock();
      c->setName(text());
      c->setId(pick(3));
      if (i == 1) hw.setDefaultClkId(pick(3));
    }
    for (int i = pick(4); i > 0; --i) {
      HTEQHardwareBusInterface* b = hw.addBusInterface();
      b->setName(text());
      b->setInstRef(text());
      b->setDataWidth(pick(1024));
      for (int k = pick(4); k > 0; --k) {
        HTEQHardwareAddressSegment* s = b->addAddressSegment();
        s->setBaseName(text());
        s->setRegion(text());
        s->setIndex(static_cast<unsigned>(k));
      }
    }
    for (int i = pick(3); i > 0; --i) {
      HTEQHardwareNocConnectivity* n = hw.addNocConnectivity();
      n->setInstanceRef(text());
      if (pick(2)) n->addBusInterface()->setName(text());
    }
    for (int i = pick(3); i > 0; --i) {
      HTEQHardwareIPParam* p = hw.addHardwareIPParam();
      p->setName(text());
      p->setValue(text());
    }
    for (int i = pick(2); i > 0; --i) {
      HTEQDesignIPInstance* ip = hw.addDesignIPInstance();
      ip->setVLNV(text());
      ip->addConfigParam("CONFIG." + text(), text());
    }
    if (pick(3) == 0) hw.addFeatureRom()->setMajorVersion(static_cast<uint8_t>(pick(9)));
  }

 private:
  int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
  std::mt19937 rng_;
};

}  // namespace

TEST(TextPath, RandomPlatformsPrintTheTreesBytes) {
  RandomPlatform maker(2026);
  for (int round = 0; round < 300; ++round) {
    HTEQPlatform platform;
    auto* hw = new HPLPlatform;
    platform.setHardwarePlatform(hw);
    maker.fill(platform, *hw);
    if (round % 3 == 0) {
      auto* emu = new HPLPlatform;
      maker.fill(platform, *emu);
      emu->setIsHWEmuPlatform(true);
      platform.setHardwareEmulationPlatform(emu);
    }
    const std::string expected = treeText(platform);
    ASSERT_EQ(directText(platform), expected) << "round " << round;
  }
}

TEST(TextPath, ALargePlatformPrintsTheTreesBytesAcrossPieces) {
  // Large lists are kept in pieces of bounded size: a platform of some
  // megabytes crosses many piece boundaries, inside and between items.
  HTEQPlatform platform;
  auto* hw = new HPLPlatform;
  platform.setHardwarePlatform(hw);
  for (int i = 0; i < 3000; ++i) {
    HTEQHardwareBusInterface* b = hw->addBusInterface();
    b->setName("S" + std::to_string(i) + "_AXI");
    b->setInstRef(std::string(static_cast<std::size_t>(i % 700), 'r'));
    for (int k = 0; k < 4; ++k) b->addAddressSegment()->setBaseName("bank/" + std::to_string(k));
  }
  for (int i = 0; i < 500; ++i) hw->addFile("TCL", "scripts/step" + std::to_string(i) + ".tcl");
  const std::string expected = treeText(platform);
  ASSERT_GT(expected.size(), std::size_t(4) << 20);
  EXPECT_TRUE(directText(platform) == expected);
}

TEST(TextPath, ADerivedPlatformWritesThroughItsOwnToJSON) {
  // The shared body belongs to the exact class; a subclass that writes
  // otherwise is written through its own toJSON.
  struct Tagged : HPLPlatform {
    void toJSON(teq_platform::JSONObjectWriter& writer) const override {
      writer.addKey("tag", std::string("derived"));
      HPLPlatform::toJSON(writer);
    }
  };
  HTEQPlatform platform;
  auto* hw = new Tagged;
  hw->setName("x");
  hw->addBusInterface()->setName("S_AXI");
  platform.setHardwarePlatform(hw);
  const std::string text = directText(platform);
  EXPECT_NE(text.find("\"tag\": \"derived\""), std::string::npos);
  EXPECT_EQ(text, treeText(platform));
}

TEST(TextPath, WhatOnlyTheTreeCanWriteIsLeftToIt) {
  // A platform whose board has drivers is refused the same way on both paths.
  HTEQPlatform platform;
  auto* hw = new HPLPlatform;
  hw->getBoard().addDriver();
  platform.setHardwarePlatform(hw);
  auto errorOf = [&platform](std::string (*write)(const HTEQPlatform&)) {
    try {
      write(platform);
    } catch (const HEXAlgException& e) {
      return std::string(e.what());
    }
    return std::string("(written)");
  };
  EXPECT_NE(errorOf(treeText), "(written)");
  EXPECT_EQ(errorOf(directText), errorOf(treeText));

  // Keys that are paths, or put twice, need the tree.
  teq_platform::TextObjectWriter writer(0);
  writer.addKey("a", std::string("1"));
  EXPECT_THROW(writer.addKey("a", std::string("2")), teq_platform::TextNeedsTree);
  EXPECT_THROW(writer.addKey("b.c", std::string("3")), teq_platform::TextNeedsTree);
  EXPECT_THROW(writer.addKey("", true), teq_platform::TextNeedsTree);
  boost::property_tree::ptree unwritable;
  unwritable.put_value("value");
  unwritable.put("child", "x");
  EXPECT_THROW(writer.addKey("t", unwritable), teq_platform::TextNeedsTree);
}

TEST(TextPath, BytesThatAreNotUtf8PrintAsReplacementCharacters) {
  const std::string r = "\xEF\xBF\xBD";  // U+FFFD
  const struct {
    std::string in, out;
  } cases[] = {
      {"caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80", "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80"},
      {"a\xff"
       "b",
       "a" + r + "b"},
      {"a\xc3", "a" + r},                   // cut short at the end
      {"\xe2\x82x", r + "x"},               // cut short: one replacement
      {"\xed\xa0\x80", r + r + r},          // a surrogate
      {"\xc0\xaf", r + r},                  // an overlong form
      {"\xf4\x90\x80\x80", r + r + r + r},  // past U+10FFFF
      {"\x80\xbf\\", r + r + "\\\\"},       // stray continuation bytes
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.out);
    // The tree route, key and value alike.
    teq_platform::JSONObjectWriter writer;
    writer.addKey("k" + c.in, c.in);
    std::ostringstream text;
    writer.write(text);
    EXPECT_EQ(text.str(), "{\n    \"k" + c.out + "\": \"" + c.out + "\"\n}\n");
    // The direct route prints the same bytes.
    HTEQPlatform platform;
    platform.setDescription(c.in);
    EXPECT_EQ(directText(platform), treeText(platform));
    EXPECT_NE(directText(platform).find("\"description\": \"" + c.out + "\""), std::string::npos);
  }
}
