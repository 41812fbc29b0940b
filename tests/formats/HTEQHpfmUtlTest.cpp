#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/HpfmTestDoc.h"
#include "formats/TEQHpfmLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "platform/HTEQHpfmUtl.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using hpfm_test::busInterface;
using hpfm_test::hbmInterface;
using hpfm_test::HpfmDoc;
using hpfm_test::segment;
using WELHardwarePlatform::BusInterface;
using WELHardwarePlatform::Repository;

namespace {

// A bus interface record with one segment per auto value ("" leaves kp:auto unset).
BusInterface interfaceWith(const std::vector<std::string>& autos) {
  BusInterface bi;
  bi.SetName(L"S00");
  for (const std::string& a : autos) {
    auto& seg = bi.AppendBusInterfaceAddressSegment();
    if (!a.empty()) seg.SetAuto(HI18N::convert(a));
  }
  return bi;
}

std::vector<std::string> autosOf(const BusInterface& bi) {
  std::vector<std::string> out;
  for (std::size_t i = 0; i < bi.SizeBusInterfaceAddressSegment(); ++i) {
    const auto& seg = bi.GetBusInterfaceAddressSegment(i);
    out.push_back(seg.IssetAuto() ? HI18N::convert(seg.GetAuto()) : "<unset>");
  }
  return out;
}

std::string hpfmWith(const std::string& body) {
  HpfmDoc doc;
  doc.body = body;
  return doc.text();
}

}  // namespace

TEST(HTEQHpfmUtl, SomeButNotAllPreferredNeedsTheRepair) {
  struct Case {
    std::vector<std::string> autos;
    bool needsRepair;
  };
  const std::vector<Case> cases = {
      {{"true", "preferred", "false"}, true},
      {{"preferred", "preferred", "false", ""}, false},  // all true segments preferred
      {{"true", "true"}, false},                         // none preferred
      {{"preferred", ""}, false},                        // a segment without kp:auto doesn't count
      {{"false", "false"}, false},
      {{"TRUE", "preferred"}, true},  // any value other than "false" is auto-assignable
      {{"False", "preferred"}, true},
      {{}, false},
  };
  for (const Case& c : cases) {
    BusInterface bi = interfaceWith(c.autos);
    const auto before = autosOf(bi);
    EXPECT_EQ(HTEQHpfmUtl::areSomeButNotAllAddressSegmentsPreferred(bi), c.needsRepair)
        << ::testing::PrintToString(before);
    EXPECT_EQ(autosOf(bi), before);
  }

  BusInterface bi = interfaceWith({"true", "preferred", "false", "", "Preferred"});
  EXPECT_TRUE(HTEQHpfmUtl::markAllTrueAddressSegmentsPreferred(bi));
  EXPECT_EQ(autosOf(bi),
            (std::vector<std::string>{"preferred", "preferred", "false", "<unset>", "preferred"}));
  EXPECT_FALSE(HTEQHpfmUtl::areSomeButNotAllAddressSegmentsPreferred(bi));
}

TEST(HTEQHpfmUtl, RewritesAFileWithPartlyPreferredHbmBanks) {
  zr_test::TempDir dir;
  const std::string file =
      dir.write("shell.hpfm", hpfmWith(busInterface(R"(kp:name="M00" kp:memport="M_AXI_GP")") +
                                       hbmInterface("S00", "hbm_0", {"true", "preferred", "false"})));
  ComMsgCapture cap;
  HTEQHpfmUtl::ChangeAndWriteHpfmIfNeeded(file);
  EXPECT_TRUE(cap.messages().empty());

  const std::string written = zr_test::readFile(file);
  Repository r;
  r.Unmarshal(file);
  const auto& component = r.GetComponent();
  ASSERT_EQ(component.SizeBusInterface(), 2u);
  EXPECT_EQ(autosOf(component.GetBusInterface(1)),
            (std::vector<std::string>{"preferred", "preferred", "false"}));
  // Everything else survives the rewrite.
  EXPECT_EQ(HI18N::convert(component.GetBusInterface(0).GetMemport()), "M_AXI_GP");
  EXPECT_EQ(HI18N::convert(component.GetPlatformInfo().GetDescription()), "A shell & its clocks");
  EXPECT_EQ(r.GetVersion().get_as_string(), "1.10");
  // One element to a line, two blanks of indent a level, attributes on the line.
  EXPECT_NE(
      written.find("\n    <kp:busInterface kp:name=\"S00\" kp:instanceRef=\"hbm_0\" "
                   "kp:componentRef=\"hbm_memory_subsystem\" kp:memport=\"MEMSS\">\n"
                   "      <kp:addressSegment kp:index=\"0\" kp:auto=\"preferred\" kp:name=\"HBM[0]\"/>\n"),
      std::string::npos)
      << written;
}

TEST(HTEQHpfmUtl, LeavesFilesThatNeedNoRepairOrCannotBeRepaired) {
  zr_test::TempDir dir;
  struct Case {
    const char* what;
    std::string body;
    const char* message;  // expected message id, or null for none
  };
  const std::vector<Case> cases = {
      {"all preferred", hbmInterface("S00", "hbm_0", {"preferred", "preferred", "false"}), nullptr},
      {"none preferred", hbmInterface("S00", "hbm_0", {"true", "true"}), nullptr},
      {"not an HBM interface",
       busInterface(R"(kp:name="M" kp:componentRef="ddr4")",
                    segment(R"(kp:auto="true")") + segment(R"(kp:auto="preferred")")),
       nullptr},
      {"a second HBM interface after a repair",
       hbmInterface("S00", "hbm_0", {"true", "preferred"}) + hbmInterface("S01", "hbm_0", {"true"}),
       "@74-261@"},
      // A second interface that itself needs no repair still follows the first.
      {"a second HBM interface after one needing no repair",
       hbmInterface("S00", "hbm_0", {"preferred", "true"}) + hbmInterface("S01", "hbm_0", {"true"}),
       "@74-261@"},
  };
  for (const Case& c : cases) {
    // Blanks and attribute layout that a rewrite would change show that the file was left alone.
    const std::string text = hpfmWith(c.body) + "<!-- untouched -->\n";
    const std::string file = dir.write("f.hpfm", text);
    ComMsgCapture cap;
    HTEQHpfmUtl::ChangeAndWriteHpfmIfNeeded(file);
    EXPECT_EQ(zr_test::readFile(file), text) << c.what;
    if (c.message) {
      const ComMsg* m = cap.find(c.message);
      ASSERT_NE(m, nullptr) << c.what;
      EXPECT_EQ(m->mask, 0x20000000u);
    } else {
      EXPECT_TRUE(cap.messages().empty()) << c.what;
    }
  }
}

TEST(HTEQHpfmUtl, ReportsMissingAndUnreadableFiles) {
  zr_test::TempDir dir;
  ComMsgCapture cap;
  const std::string missing = dir.file("none.hpfm");
  HTEQHpfmUtl::ChangeAndWriteHpfmIfNeeded(missing);
  const ComMsg* m = cap.find("@74-12@");
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(m->args, (std::vector<std::string>{"File: " + missing + " doesn't exist.\n"}));
  EXPECT_EQ(m->mask, 0x20000000u);

  HpfmDoc bad;
  bad.componentAttrs += R"( kp:unknown="1")";
  const std::string text = bad.text();
  const std::string broken = dir.write("broken.hpfm", text);
  HTEQHpfmUtl::ChangeAndWriteHpfmIfNeeded(broken);
  m = cap.find("@74-260@%s%s%s");
  ASSERT_NE(m, nullptr);
  ASSERT_EQ(m->args.size(), 3u);
  EXPECT_EQ(m->args[0], broken);
  EXPECT_EQ(m->args[1], "3");
  EXPECT_NE(m->args[2].find("unknown"), std::string::npos) << m->args[2];
  EXPECT_EQ(zr_test::readFile(broken), text);
}

TEST(HTEQHpfmUtl, AFailedWriteRaisesAndReports) {
  zr_test::TempDir dir;
  const std::string text = hpfmWith(hbmInterface("S00", "hbm_0", {"true", "preferred"}));
  const std::string file = dir.write("ro.hpfm", text);
  ComMsgCapture cap;
  {
    zr_test::ScopedFileSizeLimit limit(16);
    EXPECT_THROW(HTEQHpfmUtl::ChangeAndWriteHpfmIfNeeded(file), HXMLException);
  }
  const ComMsg* m = cap.find("@74-10@%s");
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(m->args, std::vector<std::string>{file});
}
