// Hostile files given to the library the way a host gives them: a path to the
// loader and to the C entry points. Each row ends in a platform or in the
// documented refusal, never in a crash, a hang or a file written outside the
// archive. The defences themselves are tested in the suite of the layer that
// owns them (zip, XML, JSON); this table shows that each reaches the host.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HUTFile.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformCAPI.h"
#include "platform/PlatformLoader.h"
#include "support/TestSupport.h"
#include "support/TextPatch.h"
#include "support/ZipTestSupport.h"

using teq_platform::PlatformLoader;
using teq_platform::PlatformParseException;
using zr_test::makeZip;
using zr_test::patched;
using zr_test::TempDir;

namespace {

// A JSON member the loader accepts, with this description.
std::string jsonMember(const std::string& description = "plain") {
  return zr_test::lfaJson(",\n \"description\": \"" + description + "\"");
}

std::string deepJson() { return std::string(100000, '[') + std::string(100000, ']'); }

std::string deepXml(const std::string& element) {
  std::string open, close;
  for (int i = 0; i < 100000; ++i) {
    open += "<" + element + ">";
    close += "</" + element + ">";
  }
  return open + close;
}

const std::string kNotUtf8 = "caf\xC3\x28 \xFF\xFE \xED\xA0\x80";

// pfm/<name>.zdf beside a sound archive pfm/hw/b.lfa and software pfm/sw/a.spfm.
std::string descriptor(const TempDir& dir, const std::string& name, const std::string& text) {
  if (!HUTFile::exists(dir.file("pfm/hw/b.lfa"))) {
    HUTFile::mkDirRecursive(dir.file("pfm/hw"));
    makeZip(dir.file("pfm/hw/b.lfa"), {{"lfa.json", jsonMember()}});
    dir.write("pfm/sw/a.spfm", zr_test::spfmText());
  }
  return dir.write("pfm/" + name + ".zdf", text);
}

std::string zdf(const std::string& hwPath = "hw", const std::string& description = "d") {
  return zr_test::zdfText(zr_test::zdfHw(hwPath, "b.lfa"), "", description);
}

std::string archive(const TempDir& dir, const std::string& name, const zr_test::ZipMembers& members) {
  return makeZip(dir.file(name), members);
}

std::string link(const TempDir& dir, const std::string& name, const std::string& target) {
  EXPECT_EQ(::symlink(target.c_str(), dir.file(name).c_str()), 0) << name;
  return dir.file(name);
}

enum class Outcome {
  Loads,       // a platform, through the loader and both entry points
  Refused,     // the loader gives none and says why ("@74-60@"); the entry points give none
  ParseError,  // the descriptor is refused: PlatformParseException from the loader
};

// What an entry point gives: true for a text, false for none. Nothing may
// leave it as an exception (the test fails through GoogleTest's handler).
bool entryPointGives(char* (*entry)(const char*), const std::string& path) {
  ComMsgCapture cap;
  char* text = entry(path.c_str());
  const bool gave = text != nullptr;
  hteq_free_json_string(text);
  return gave;
}

struct Row {
  const char* name;
  Outcome outcome;
  std::function<std::string(const TempDir&)> make;  // the path to load
  PlatformLoader::HwMetadataMode mode = PlatformLoader::Default;
  std::uint64_t memberLimit = 0;                             // archive member limit while loading
  std::function<void(const HTEQPlatform&)> check = nullptr;  // more about a loaded platform
};

}  // namespace

TEST(HostileInput, EveryRowEndsInAPlatformOrItsRefusal) {
  const std::vector<Row> rows = {
      {"unsafe member names beside a sound one", Outcome::Loads,
       [](const TempDir& d) {
         return archive(d, "unsafe.lfa",
                        {{"lfa.json", jsonMember()},
                         {"../escape.txt", "x"},
                         {d.file("absolute.txt"), "x"},
                         {"hw_emu/../../escape2.txt", "x"}});
       }},
      {"two members of one name", Outcome::Refused,
       [](const TempDir& d) {
         const std::string p =
             archive(d, "dup.lfa", {{"lfa.json", jsonMember("1")}, {"lfa.jsoX", jsonMember("2")}});
         EXPECT_EQ(zr_test::patchBytes(p, "lfa.jsoX", "lfa.json"), 2);
         return p;
       }},
      {"NUL in a member name, XML route", Outcome::Refused,
       [](const TempDir& d) {
         const std::string p =
             archive(d, "nul.lfa", {{"lfa.json", jsonMember()}, {"lfa.xmlX../../evil", "<Root/>"}});
         EXPECT_EQ(zr_test::patchBytes(p, "xmlX", std::string("xml\0", 4)), 2);
         return p;
       },
       PlatformLoader::XmlOnly},
      {"bomb as the hardware member", Outcome::Refused,
       [](const TempDir& d) {
         return archive(d, "bomb.lfa", {{"lfa.json", jsonMember(std::string(8 << 20, ' '))}});
       },
       PlatformLoader::Default, 4096},
      {"bomb as the emulation member costs only the emulation", Outcome::Loads,
       [](const TempDir& d) {
         return archive(
             d, "emubomb.lfa",
             {{"lfa.json", jsonMember()}, {"hw_emu/lfa.json", jsonMember(std::string(8 << 20, ' '))}});
       },
       PlatformLoader::Default, 4096,
       [](const HTEQPlatform& p) { EXPECT_EQ(p.getHardwareEmulationPlatform(), nullptr); }},
      {"deep JSON member", Outcome::Refused,
       [](const TempDir& d) {
         return archive(d, "deep.lfa", {{"lfa.json", deepJson()}});
       }},
      {"deep XML member", Outcome::Refused,
       [](const TempDir& d) {
         return archive(d, "deepx.lfa", {{"lfa.xml", "<?xml version=\"1.0\"?>\n" + deepXml("Root")}});
       }},
      {"deep emulation member costs only the emulation", Outcome::Loads,
       [](const TempDir& d) {
         return archive(d, "deepemu.lfa", {{"lfa.json", jsonMember()}, {"hw_emu/lfa.json", deepJson()}});
       },
       PlatformLoader::Default, 0,
       [](const HTEQPlatform& p) { EXPECT_EQ(p.getHardwareEmulationPlatform(), nullptr); }},
      {"JSON member not UTF-8", Outcome::Refused,
       [](const TempDir& d) {
         return archive(d, "badjson.lfa", {{"lfa.json", jsonMember(kNotUtf8)}});
       }},
      {"deep descriptor", Outcome::ParseError,
       [](const TempDir& d) { return descriptor(d, "deep", zr_test::zdfText(deepXml("teq:x"))); }},
      {"50 MB attribute in the descriptor", Outcome::ParseError,
       [](const TempDir& d) {
         return descriptor(d, "huge", patched(zdf(), "board_a", std::string(50u << 20, 'n')));
       }},
      {"5 MB description is read whole", Outcome::Loads,
       [](const TempDir& d) { return descriptor(d, "large", zdf("hw", std::string(5u << 20, 'n'))); },
       PlatformLoader::Default, 0,
       [](const HTEQPlatform& p) { EXPECT_EQ(p.getDescription().size(), 5u << 20); }},
      {"descriptor not UTF-8", Outcome::ParseError,
       [](const TempDir& d) { return descriptor(d, "bad", zdf("hw", kNotUtf8)); }},
      {"deep software platform", Outcome::Refused,
       [](const TempDir& d) {
         return d.write("deep.spfm",
                        patched(zr_test::spfmText(), "Software of the test platform", deepXml("b")));
       }},
      {"software platform not UTF-8", Outcome::Refused,
       [](const TempDir& d) {
         return d.write("bad.spfm", patched(zr_test::spfmText(), "Software of the test platform", kNotUtf8));
       }},
      {"two links naming each other", Outcome::Refused,
       [](const TempDir& d) {
         link(d, "a.lfa", d.file("b.lfa"));
         return link(d, "b.lfa", d.file("a.lfa"));
       }},
      {"hardware directory a link to itself", Outcome::Refused,
       [](const TempDir& d) {
         descriptor(d, "x", zdf());
         link(d, "pfm/loop", d.file("pfm/loop"));
         return descriptor(d, "loop", zdf("loop"));
       }},
      {"hardware path through a link back up", Outcome::Loads,
       [](const TempDir& d) {
         descriptor(d, "x", zdf());
         link(d, "pfm/hw/up", d.file("pfm"));
         return descriptor(d, "up", zdf("hw/up/hw/up/hw"));
       }},
      {"directory without a kind", Outcome::ParseError, [](const TempDir& d) { return d.path(); }},
      {"pipe named as an archive", Outcome::Refused,
       [](const TempDir& d) {
         EXPECT_EQ(::mkfifo(d.file("pipe.lfa").c_str(), 0600), 0);
         return d.file("pipe.lfa");
       }},
      {"pipe named as a descriptor", Outcome::ParseError,
       [](const TempDir& d) {
         EXPECT_EQ(::mkfifo(d.file("pipe.zdf").c_str(), 0600), 0);
         return d.file("pipe.zdf");
       }},
      {"pipe named as a software platform", Outcome::Refused,
       [](const TempDir& d) {
         EXPECT_EQ(::mkfifo(d.file("pipe.spfm").c_str(), 0600), 0);
         return d.file("pipe.spfm");
       }},
      {"device behind a link named as a software platform", Outcome::Refused,
       [](const TempDir& d) { return link(d, "zero.spfm", "/dev/zero"); }},
  };

  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    TempDir dir;
    const std::string path = row.make(dir);
    std::unique_ptr<zr_test::ScopedMemberLimit> limit;
    if (row.memberLimit != 0) limit.reset(new zr_test::ScopedMemberLimit(row.memberLimit));
    ComMsgCapture cap;
    if (row.outcome == Outcome::ParseError) {
      EXPECT_THROW(PlatformLoader(path, row.mode), PlatformParseException);
    } else {
      PlatformLoader loader(path, row.mode);
      const auto platform = loader.load();
      EXPECT_EQ(platform != nullptr, row.outcome == Outcome::Loads);
      EXPECT_EQ(cap.has("@74-60@%s"), row.outcome == Outcome::Refused);
      if (platform && row.check) row.check(*platform);
    }
    if (row.mode == PlatformLoader::Default) {
      EXPECT_EQ(entryPointGives(hteq_get_platform_json, path), row.outcome == Outcome::Loads);
      EXPECT_EQ(entryPointGives(hteq_get_short_platform_json, path), row.outcome == Outcome::Loads);
    }
    // Nothing was written outside the archive: only what the row made is there.
    for (const char* escaped : {"escape.txt", "escape2.txt", "absolute.txt", "evil"})
      EXPECT_FALSE(HUTFile::exists(dir.file(escaped))) << escaped;
  }
}

TEST(HostileInput, EveryCutOfASoundArchiveIsRefused) {
  TempDir dir;
  const std::string sound =
      archive(dir, "sound.lfa", {{"lfa.json", jsonMember()}, {"hw_emu/lfa.json", jsonMember()}});
  ASSERT_NE(PlatformLoader(sound, PlatformLoader::Default).load(), nullptr);
  const std::string bytes = zr_test::readFile(sound);
  for (std::size_t n = 0; n < bytes.size(); n += 10) {
    SCOPED_TRACE(n);
    const std::string cut = dir.write("cut.lfa", bytes.substr(0, n));
    ComMsgCapture cap;
    EXPECT_EQ(PlatformLoader(cut, PlatformLoader::Default).load(), nullptr);
    EXPECT_TRUE(cap.has("@74-60@%s"));
  }
}

TEST(HostileInput, AMalformedDevicePartIsReportedWithTheMember) {
  // A device part of two fields, which the model refuses with an exception.
  TempDir dir;
  const std::string path = archive(
      dir, "badpart.lfa",
      {{"lfa.json",
        patched(jsonMember(), "\"type\": \"8\"", "\"fpgaPart\": \"tzq9kp:xctzq9r4\", \"type\": \"8\"")}});
  ComMsgCapture cap;
  EXPECT_EQ(PlatformLoader(path, PlatformLoader::Default).load(), nullptr);
  const ComMsg* m = cap.find("@74-64@%s%s%s");
  ASSERT_NE(m, nullptr);
  EXPECT_NE(m->args.at(2).find("format not as expected"), std::string::npos);
  EXPECT_FALSE(entryPointGives(hteq_get_platform_json, path));
}
