// Archives whose file lists name the same emulation and hpfm members hundreds
// of times, under more than one spelling: each member is read and parsed once, and the platform is what the
// entries say.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "archives/ArchiveMemberCache.h"
#include "emulation/EmuTestSupport.h"
#include "formats/HpfmTestDoc.h"
#include "host/ComMsgMgr.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQCfaXmlReader.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

namespace {

constexpr int kRepeats = 500;

std::string hpfmText(bool sound) {
  if (!sound) return "<not-an-hpfm/>\n";
  hpfm_test::HpfmDoc doc;
  doc.body = hpfm_test::busInterface(R"(kp:name="S0" kp:memport="M_AXI")") +
             hpfm_test::busInterface(R"(kp:name="S1" kp:memport="M_AXI")");
  return doc.text();
}

// The JSON member: its own bus interface counts only without a usable hpfm.
std::string jsonMember() {
  std::string files;
  for (int i = 0; i < kRepeats; ++i)
    files += std::string(i ? "," : "") +
             R"({"type": "EMU_XML", "name": "emu/emu.xml"}, {"type": "EMU_JSON", "name": ")" +
             (i % 2 ? "./" : "") +
             R"(emu/emu.json"},)"
             R"( {"type": "HPFM", "name": "shell.hpfm"})";
  return R"({"vendor": "acme", "name": "shell", "devices": [{"name": "d", "core": {"name": "OCL"}}],)"
         R"( "busInterfaces": [{"name": "own"}], "files": [)" +
         files + "]}";
}

std::string xmlMember() {
  std::string files;
  for (int i = 0; i < kRepeats; ++i)
    files += std::string(R"(<File Type="EMU_XML" Name=")") + (i % 2 ? "./" : "") +
             R"(emu/emu.xml"/><File Type="HPFM" Name="shell.hpfm"/>)";
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<Root VersionMajor="1" VersionMinor="15">
<CFA Vendor="acme" BoardId="b" Name="shell" VersionMajor="1" VersionMinor="0" Description="d">
<Build/><Board Name="b" Vendor="v" Part="p"><Images/></Board>
<Devices><Device Name="d" Type="t"><Core Name="c" Type="t" ComputeUnits="1"/></Device></Devices>
<Files>)" +
         files + "</Files>\n</CFA>\n</Root>\n";
}

std::size_t countOf(const ComMsgCapture& cap, const std::string& id) {
  std::size_t n = 0;
  for (const auto& m : cap.messages()) n += m.id == id;
  return n;
}

TEST(RepeatedMember, EachMemberIsParsedOnceAndEveryEntryCounts) {
  const struct {
    const char* name;
    bool xmlRoute;
    bool soundHpfm;
    std::size_t members;        // distinct members named, each made once
    std::size_t busInterfaces;  // the hpfm's per filling entry, else the document's own
    std::size_t hpfmFailures;   // "@74-31@": one per parse of a broken hpfm
  } cases[] = {
      {"json route", false, true, 3, 2, 0},
      {"json route, broken hpfm", false, false, 3, 1, 1},
      {"xml route", true, true, 2, 2 * kRepeats, 0},
      {"xml route, broken hpfm", true, false, 2, 0, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    zr_test::TempDir dir;
    const std::string archive = dir.file(c.xmlRoute ? "p.cfa" : "p.lfa");
    zr_test::makeZip(archive, {{c.xmlRoute ? "cfa.xml" : "lfa.json", c.xmlRoute ? xmlMember() : jsonMember()},
                               {"emu/emu.xml", emu_test::standardXml()},
                               {"emu/emu.json", emu_test::standardJson()},
                               {"shell.hpfm", hpfmText(c.soundHpfm)}});
    HPLPlatform platform;
    ArchiveMemberCache cache;
    ComMsgCapture cap;
    ::testing::internal::CaptureStdout();
    bool ok;
    if (c.xmlRoute) {
      HTEQCfaXmlReader reader(archive, &platform);
      reader.setMemberCache(&cache);
      ok = reader.parseCFA();
    } else {
      HTEQCfaJsonReader reader(&platform);
      reader.setMemberCache(&cache);
      ok = reader.parseCFA(archive, teq_platform::PlatformLoader::Default);
    }
    const std::string out = ::testing::internal::GetCapturedStdout();
    ASSERT_TRUE(ok);
    EXPECT_EQ(cache.makes(), c.members);
    EXPECT_TRUE(platform.supportsHWEmulation());
    HTEQHardwarePlatform::TEQHardwareBusInterfaceVec buses;
    platform.getBusInterfaces(buses);
    EXPECT_EQ(buses.size(), c.busInterfaces);
    EXPECT_EQ(countOf(cap, "@74-31@"), c.hpfmFailures);
    // The XML route still says, for every entry, that its hpfm did not fill the platform.
    if (c.xmlRoute && !c.soundHpfm) {
      EXPECT_EQ(zr_test::countOf(out, "Failed to parse hpfm stream"), std::size_t{kRepeats});
    }
  }
}

}  // namespace
