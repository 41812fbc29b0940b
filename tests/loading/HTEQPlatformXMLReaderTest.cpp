#include <gtest/gtest.h>

#include <functional>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "loading/TEQPlatformLMX.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformXMLReader.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/TextPatch.h"
#include "xml/XmlRecordIO.h"
#include "xml/ZrXml.h"

ZR_XML_DECLARE_SCHEMA(zdf)

using namespace zr_test;

namespace {

struct Parsed {
  HTEQPlatform platform;
  bool ok = false;
  std::string error;
};

void parse(const TempDir& dir, const std::string& text, Parsed& out) {
  const std::string file = dir.write("pfm/board_a.zdf", text);
  HTEQPlatformXMLReader reader(file, &out.platform);
  out.ok = reader.parseFile();
  out.error = reader.getErrorMsg();
}

// The text with the part from `from` up to (not including) `to` removed.
std::string without(std::string text, const std::string& from, const std::string& to) {
  const auto a = text.find(from);
  return text.erase(a, text.find(to) - a);
}

}  // namespace

TEST(HTEQPlatformXMLReader, ChoiceZeroNamesHardwareAndEmulationFilesCanonically) {
  TempDir dir;
  Parsed p;
  parse(dir, zdfText(zdfHw("hw/../hw", "a.lfa") + zdfEmu("./emu", "a_emu.lfa")), p);
  ASSERT_TRUE(p.ok) << p.error;
  const HTEQPlatform& q = p.platform;
  // The software file keeps its relative parts.
  EXPECT_EQ((std::vector<std::string>{q.getVendor(), q.getLibrary(), q.getName(), q.getVersion(),
                                      q.getDescription(), q.getPlatformFile(), q.getHardwarePlatformFile(),
                                      q.getHardwareEmuPlatformFile(), q.getSoftwarePlatformFile()}),
            (std::vector<std::string>{"acme", "lib", "board_a", "1.10", "A test platform",
                                      dir.file("pfm/board_a.zdf"), dir.file("pfm/hw/a.lfa"),
                                      dir.file("pfm/emu/a_emu.lfa"), dir.file("pfm") + "/sw/a.spfm"}));
  EXPECT_TRUE(p.platform.hasDistinctHardwareEmulationPlatform());
  EXPECT_FALSE(p.platform.hasReconfigurablePartitions());
  EXPECT_TRUE(p.error.empty());
}

TEST(HTEQPlatformXMLReader, ChoiceOneUsesTheEmulationFileForBoth) {
  TempDir dir;
  Parsed p;
  parse(dir, zdfText(zdfEmu("emu", "only.lfa")), p);
  ASSERT_TRUE(p.ok) << p.error;
  EXPECT_EQ(p.platform.getHardwarePlatformFile(), dir.file("pfm/emu/only.lfa"));
  EXPECT_EQ(p.platform.getHardwareEmuPlatformFile(), p.platform.getHardwarePlatformFile());
  EXPECT_TRUE(p.platform.hasDistinctHardwareEmulationPlatform());
}

TEST(HTEQPlatformXMLReader, PartitionsKeepFileOrderAndTheirOwnChoices) {
  TempDir dir;
  Parsed p;
  const std::string rps = "<teq:reconfigurablePartition teq:id=\"3\">" + zdfHw("hw", "p3.lfa") +
                          zdfEmu("hw", "p3e.lfa") +
                          "</teq:reconfigurablePartition>\n"
                          "<teq:reconfigurablePartition teq:id=\"5\">" +
                          zdfEmu("hw", "p5e.lfa") +
                          "</teq:reconfigurablePartition>\n"
                          "<teq:reconfigurablePartition teq:id=\"3\">" +
                          zdfHw("hw", "p3b.lfa") + "</teq:reconfigurablePartition>\n";
  parse(dir, zdfText(rps, "teq:defaultRP=\"5\""), p);
  ASSERT_TRUE(p.ok) << p.error;
  const auto& parts = p.platform.getReconfigurablePartitions();
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(parts[0]->getHardwareEmulationPlatformFile(), dir.file("pfm/hw/p3e.lfa"));
  // An emulation-only partition has no hardware file, unlike the top level.
  EXPECT_EQ(parts[1]->getHardwarePlatformFile(), "");
  EXPECT_EQ(parts[1]->getHardwareEmulationPlatformFile(), dir.file("pfm/hw/p5e.lfa"));
  EXPECT_EQ(p.platform.getDefaultRPId(), 5u);
  // Among equal ids the last wins.
  EXPECT_EQ(p.platform.getReconfigurablePartition(3), parts[2]);
  EXPECT_EQ(p.platform.getReconfigurablePartition(4), nullptr);
  EXPECT_EQ(p.platform.getHardwarePlatformFile(), "");

  // Without the attribute the default partition id stays zero.
  Parsed q;
  parse(dir, patched(zdfText(rps, "teq:defaultRP=\"5\""), " teq:defaultRP=\"5\"", ""), q);
  ASSERT_TRUE(q.ok) << q.error;
  EXPECT_EQ(q.platform.getDefaultRPId(), 0u);
}

TEST(HTEQPlatformXMLReader, MissingOrEmptyPathThrowsFromTheConstructor) {
  HTEQPlatform platform;
  EXPECT_THROW(HTEQPlatformXMLReader("", &platform), HEXFileNotFoundException);
  EXPECT_THROW_MSG(HTEQPlatformXMLReader("/no/such/file.zdf", &platform), HEXFileNotFoundException,
                   "'/no/such/file.zdf'");
}

// Each malformed descriptor fails with message "@74-9@%s" naming the file and
// the line, and the error text of two lines.
TEST(HTEQPlatformXMLReader, EveryKindOfInvalidDescriptorFailsWithItsLine) {
  const std::string hw = zdfHw("hw", "a.lfa");
  const std::string good = zdfText(hw);
  struct Case {
    const char* what;
    std::string text;
    int line;
  };
  const std::vector<Case> cases = {
      {"wrong root", "<teq:descriptor xmlns:teq=\"urn:teq:platform\"/>", 1},
      {"missing attribute", patched(good, "teq:vendor=\"acme\"", ""), 3},
      {"missing child", zdfText(""), 5},
      {"missing element", without(good, "  <teq:softwarePlatforms>", "</teq:platform>"), 0},
      {"order", zdfText(zdfEmu("e", "e.lfa") + hw), 7},
      {"wrong type", patched(good, " 1.10 ", "one"), 3},
      {"wrong namespace", patched(good, "urn:teq:platform", "urn:other"), 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    TempDir dir;
    ComMsgCapture cap;
    Parsed p;
    parse(dir, c.text, p);
    EXPECT_FALSE(p.ok);
    const ComMsg* m = cap.find("@74-9@%s");
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->mask, ComMsgMask::kError);
    ASSERT_EQ(m->args.size(), 2u);
    EXPECT_EQ(m->args[0], dir.file("pfm/board_a.zdf"));
    if (c.line > 0) {
      EXPECT_EQ(m->args[1], std::to_string(c.line));
    }
    EXPECT_EQ(p.error.rfind("Error parsing platform file: " + dir.file("pfm/board_a.zdf") +
                                "\nLine number:" + m->args[1] + ". ",
                            0),
              0u);
    EXPECT_EQ(p.error.back(), '\n');
    EXPECT_EQ(p.platform.getPlatformFile(), "");
  }
}

// The descriptor's hardware choice is held by alternatives: the one selected is
// written in place of the choice, drops any selected before it, and is the one
// read back; holding none, or an incomplete one, is refused before writing.
TEST(TEQPlatformRecords, HardwareAlternativesAreWrittenInPlaceAndReadBack) {
  using namespace TEQPlatform;
  const auto fileRef = [](auto& ref, const wchar_t* name) {
    ref.SetPath(L"hw");
    ref.SetName(name);
  };
  const std::function<void(HardwarePlatforms&)> fills[] = {
      [&](HardwarePlatforms& hw) {
        AnonHardwarePlatform& anon = hw.SelectAnonHardwarePlatform();
        fileRef(anon.GetHardwarePlatform(), L"a.cfa");
        fileRef(anon.GetHwEmuPlatform(), L"a_emu.cfa");
      },
      [&](HardwarePlatforms& hw) { fileRef(hw.SelectHwEmuPlatformAlone().GetHwEmuPlatform(), L"e.cfa"); },
      [&](HardwarePlatforms& hw) {
        ReconfigurablePartitions& rps = hw.SelectReconfigurablePartitions();
        ReconfigurablePartition& rp0 = rps.AppendReconfigurablePartition();
        rp0.SetId(3);
        fileRef(rp0.SelectAnonHardwarePlatform().GetHardwarePlatform(), L"r0.cfa");
        ReconfigurablePartition& rp1 = rps.AppendReconfigurablePartition();
        rp1.SetId(-4);
        fileRef(rp1.SelectHwEmuPlatformAlone().GetHwEmuPlatform(), L"r1.cfa");
        hw.SetDefaultRP(3);
      },
  };
  for (std::size_t i = 0; i < std::size(fills); ++i) {
    SCOPED_TRACE(i);
    Platform p;
    p.SetVendor(L"v");
    p.SetLibrary(L"l");
    p.SetName(L"n");
    p.SetVersion(zr_xml_record::Decimal("1.10"));
    p.SetDescription(L"d");
    fileRef(p.GetSoftwarePlatforms().GetSoftwarePlatform(), L"s.spfm");
    HardwarePlatforms& hw = p.GetHardwarePlatforms();
    // Another alternative first: selecting the wanted one must drop it.
    fills[(i + 1) % std::size(fills)](hw);
    fills[i](hw);
    const std::string text =
        zr_xml_record::marshalRecord(p, "platform", ZR_XML_SCHEMA(zdf), "descriptor", kNamespaceUri, "teq");
    const Platform again = unmarshalMemory(text, "again.zdf");
    EXPECT_TRUE(again == p) << text;
    EXPECT_EQ(again.GetHardwarePlatforms().IssetAnonHardwarePlatform(), i == 0);
    EXPECT_EQ(again.GetHardwarePlatforms().IssetReconfigurablePartitions(), i == 2);
  }

  std::string why;
  HardwarePlatforms none;
  EXPECT_FALSE(none.IsOccursOk(&why));
  EXPECT_EQ(why, "the element 'hardwarePlatforms' holds none of its alternatives");
  HardwarePlatforms incomplete;
  incomplete.SelectAnonHardwarePlatform().GetHwEmuPlatform();
  EXPECT_FALSE(incomplete.IsOccursOk(&why));
  EXPECT_EQ(why, "the element 'hardwarePlatforms' lacks its required child 'hardwarePlatform'");
}
