// Hostile inputs given to the library the way a host gives them: a path to the
// loader or to the C entry points. Each case must end in a platform or in the
// documented refusal (a null result with message "@74-60@", or the
// descriptor's PlatformParseException), never in a crash, a hang or a file
// written outside the archive.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformCAPI.h"
#include "platform/PlatformLoader.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using teq_platform::PlatformLoader;
using teq_platform::PlatformParseException;
using zr_test::makeZip;
using zr_test::TempDir;

namespace {

using Members = std::vector<std::pair<std::string, std::string>>;

// A small JSON member the loader accepts: one device with its core.
std::string jsonMember(const std::string& description = "plain") {
  return "{\"vendor\": \"acme\", \"boardId\": \"card\", \"name\": \"base\", \"versionMajor\": \"1\", "
         "\"versionMinor\": \"0\", \"description\": \"" +
         description +
         "\",\n"
         " \"devices\": [{\"name\": \"fpga0\", \"type\": \"8\", \"core\": {\"name\": \"OCL\"}}]}\n";
}

// A descriptor with the given hardware part; its software platform is
// "sw/b.spfm" beside it.
std::string zdf(const std::string& hardware, const std::string& name = "board",
                const std::string& description = "d") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"lib\" teq:name=\"" +
         name + "\" teq:version=\"1.0\">\n<teq:description>" + description + "</teq:description>\n" +
         hardware +
         "<teq:softwarePlatforms><teq:softwarePlatform teq:path=\"sw\" teq:name=\"b.spfm\"/>"
         "</teq:softwarePlatforms>\n</teq:platform>\n";
}

std::string zdfHardware(const std::string& path, const std::string& name) {
  return "<teq:hardwarePlatforms><teq:hardwarePlatform teq:path=\"" + path + "\" teq:name=\"" + name +
         "\"/></teq:hardwarePlatforms>\n";
}

std::string spfm(const std::string& description) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"lib\" "
         "teq:name=\"sw\" teq:version=\"1.0\">\n<teq:description>" +
         description +
         "</teq:description>\n<teq:systemConfigurations>\n<teq:configuration teq:name=\"c\" "
         "teq:displayName=\"C\">\n<teq:description>d</teq:description>\n</teq:configuration>\n"
         "</teq:systemConfigurations>\n</teq:platform>\n";
}

// Loads one path; true when a platform came back. A refusal must come with
// the loader's message.
bool loads(const std::string& path, PlatformLoader::HwMetadataMode mode = PlatformLoader::Default) {
  ComMsgCapture cap;
  PlatformLoader loader(path, mode);
  const bool ok = loader.load() != nullptr;
  if (!ok) {
    EXPECT_TRUE(cap.has("@74-60@%s")) << path;
  }
  return ok;
}

// The short JSON of a path through the C entry point; "" for a null result.
std::string shortJson(const std::string& path) {
  ComMsgCapture cap;
  char* text = hteq_get_short_platform_json(path.c_str());
  const std::string out = text ? std::string(text) : std::string();
  hteq_free_json_string(text);
  return out;
}

std::string fullJson(const std::string& path) {
  ComMsgCapture cap;
  char* text = hteq_get_platform_json(path.c_str());
  const std::string out = text ? std::string(text) : std::string();
  hteq_free_json_string(text);
  return out;
}

// True when the entry point refuses the descriptor as invalid: a null result
// and the parser's message.
bool refusedAsInvalid(char* (*entry)(const char*), const std::string& path) {
  ComMsgCapture cap;
  char* text = entry(path.c_str());
  hteq_free_json_string(text);
  return text == nullptr && cap.has("@74-9@%s");
}

std::string deepJson() { return std::string(100000, '[') + std::string(100000, ']'); }

std::string deepXml(const std::string& element) {
  std::string open;
  std::string close;
  for (int i = 0; i < 100000; ++i) {
    open += "<" + element + ">";
    close += "</" + element + ">";
  }
  return open + close;
}

}  // namespace

TEST(HostileArchive, UnsafeDuplicateAndNulMemberNamesAreRefusedOrIgnored) {
  TempDir dir;
  // Names that point outside the archive sit beside a sound member: the loader
  // reads what it needs and writes nothing anywhere.
  const std::string unsafe = dir.file("pfm/unsafe.lfa");
  HUTFile::mkDirRecursive(dir.file("pfm"));
  makeZip(unsafe, {{"lfa.json", jsonMember()},
                   {"../escape.txt", "x"},
                   {"/" + dir.file("absolute.txt").substr(1), "x"},
                   {"hw_emu/../../escape2.txt", "x"}});
  EXPECT_TRUE(loads(unsafe));
  EXPECT_NE(fullJson(unsafe).find("\"hardware\": \"true\""), std::string::npos);
  EXPECT_FALSE(HUTFile::exists(dir.file("escape.txt")));
  EXPECT_FALSE(HUTFile::exists(dir.file("absolute.txt")));
  EXPECT_FALSE(HUTFile::exists(dir.file("escape2.txt")));

  // Two members of one name make the archive unreadable as a whole.
  const std::string dup = dir.file("dup.lfa");
  makeZip(dup, {{"lfa.json", jsonMember("first")}, {"lfa.jsoX", jsonMember("second")}});
  ASSERT_EQ(zr_test::patchBytes(dup, "lfa.jsoX", "lfa.json"), 2);
  EXPECT_FALSE(loads(dup));
  EXPECT_EQ(shortJson(dup), "");

  // A NUL inside a member name (which would hide "../" from a C string).
  const std::string nul = dir.file("nul.lfa");
  makeZip(nul, {{"lfa.json", jsonMember()}, {"lfa.xmlX../../evil", "<Root/>"}});
  ASSERT_EQ(zr_test::patchBytes(nul, "xmlX", std::string("xml\0", 4)), 2);
  EXPECT_FALSE(loads(nul));
  EXPECT_FALSE(loads(nul, PlatformLoader::XmlOnly));
  EXPECT_EQ(fullJson(nul), "");
  EXPECT_FALSE(HUTFile::exists(dir.file("evil")));
}

TEST(HostileArchive, ABombMemberAndEveryTruncationEndInARefusal) {
  TempDir dir;
  const std::string sound = dir.file("sound.lfa");
  makeZip(sound, {{"lfa.json", jsonMember()}, {"hw_emu/lfa.json", jsonMember("emu")}});
  ASSERT_TRUE(loads(sound));

  {
    // A member that inflates far beyond the limit: refused before it is held.
    zr_test::ScopedMemberLimit limit(4096);
    const std::string bomb = dir.file("bomb.lfa");
    makeZip(bomb, {{"lfa.json", jsonMember(std::string(8 << 20, ' '))}});
    EXPECT_FALSE(loads(bomb));
    EXPECT_EQ(shortJson(bomb), "");
    // The same bomb as the emulation member leaves the hardware platform loaded.
    const std::string emuBomb = dir.file("emubomb.lfa");
    makeZip(emuBomb,
            {{"lfa.json", jsonMember()}, {"hw_emu/lfa.json", jsonMember(std::string(8 << 20, ' '))}});
    EXPECT_TRUE(loads(emuBomb));
  }

  // Every tenth prefix of a sound archive: none loads, none throws.
  const std::string bytes = zr_test::readFile(sound);
  const std::string cut = dir.file("cut.lfa");
  int refused = 0;
  for (std::size_t n = 0; n < bytes.size(); n += 10) {
    zr_test::writeFile(cut, bytes.substr(0, n));
    SCOPED_TRACE(n);
    EXPECT_NO_THROW(refused += loads(cut) ? 0 : 1);
  }
  EXPECT_EQ(refused, static_cast<int>((bytes.size() + 9) / 10));
}

TEST(HostileNesting, DeepJsonAndXmlAreRefusedThroughTheLoaderAndEntryPoints) {
  TempDir dir;
  const std::string deep = dir.file("deep.lfa");
  makeZip(deep, {{"lfa.json", deepJson()}});
  EXPECT_FALSE(loads(deep));
  EXPECT_EQ(shortJson(deep), "");
  // Deep XML member on the XML route.
  const std::string deepX = dir.file("deepx.lfa");
  makeZip(deepX, {{"lfa.xml", "<?xml version=\"1.0\"?>\n" + deepXml("Root")}});
  EXPECT_FALSE(loads(deepX));
  // A deep emulation member costs only the emulation platform.
  const std::string deepEmu = dir.file("deepemu.lfa");
  makeZip(deepEmu, {{"lfa.json", jsonMember()}, {"hw_emu/lfa.json", deepJson()}});
  {
    PlatformLoader loader(deepEmu, PlatformLoader::Default);
    const auto platform = loader.load();
    ASSERT_NE(platform, nullptr);
    EXPECT_EQ(platform->getHardwareEmulationPlatform(), nullptr);
  }

  const std::string deepZdf = dir.write("deep.zdf", zdf(deepXml("teq:description")));
  EXPECT_THROW(PlatformLoader(deepZdf, PlatformLoader::Default), PlatformParseException);
  EXPECT_TRUE(refusedAsInvalid(hteq_get_short_platform_json, deepZdf));

  const std::string deepSpfm = dir.write("deep.spfm", spfm(deepXml("b")));
  EXPECT_FALSE(loads(deepSpfm));
  EXPECT_EQ(fullJson(deepSpfm), "");
}

TEST(HostileValues, HugeMalformedAndNonUtf8ValuesEndInAPlatformOrARefusal) {
  TempDir dir;
  HUTFile::mkDirRecursive(dir.file("pfm/hw"));
  makeZip(dir.file("pfm/hw/b.lfa"), {{"lfa.json", jsonMember()}});
  dir.write("pfm/sw/b.spfm", spfm("sw"));
  // 50 MB in one attribute is beyond what the XML parser takes: the
  // descriptor is refused as invalid, by the loader and the entry points alike.
  const std::string hugeZdf =
      dir.write("pfm/huge.zdf", zdf(zdfHardware("hw", "b.lfa"), std::string(50u << 20, 'n')));
  EXPECT_THROW(PlatformLoader(hugeZdf, PlatformLoader::Default), PlatformParseException);
  EXPECT_TRUE(refusedAsInvalid(hteq_get_short_platform_json, hugeZdf));
  // 5 MB is read whole and comes out whole.
  const std::string large(5u << 20, 'n');
  const std::string largeZdf = dir.write("pfm/large.zdf", zdf(zdfHardware("hw", "b.lfa"), "board", large));
  {
    PlatformLoader loader(largeZdf, PlatformLoader::Default);
    EXPECT_EQ(loader.getDescription().size(), large.size());
    EXPECT_NE(loader.load(), nullptr);
  }
  EXPECT_GT(shortJson(largeZdf).size(), large.size());

  // Bytes that are no UTF-8 are refused as malformed, in XML and in JSON.
  const std::string bad = "caf\xC3\x28 \xFF\xFE \xED\xA0\x80";
  const std::string badZdf = dir.write("pfm/bad.zdf", zdf(zdfHardware("hw", "b.lfa"), "b", bad));
  EXPECT_TRUE(refusedAsInvalid(hteq_get_platform_json, badZdf));
  EXPECT_FALSE(loads(dir.write("bad.spfm", spfm(bad))));
  // A device part of two fields, which the model refuses with an exception (a
  // fuzzing find): the loader reports the member and gives no platform.
  const std::string badPart = dir.file("badpart.lfa");
  std::string member = jsonMember();
  member.replace(member.find("\"type\": \"8\""), 0, "\"fpgaPart\": \"tzq9kp:xctzq9r4\", ");
  makeZip(badPart, {{"lfa.json", member}});
  {
    ComMsgCapture cap;
    EXPECT_EQ(PlatformLoader(badPart, PlatformLoader::Default).load(), nullptr);
    EXPECT_TRUE(cap.has("@74-60@%s"));
    const ComMsg* m = cap.find("@74-64@%s%s%s");
    ASSERT_NE(m, nullptr);
    EXPECT_NE(m->args.at(2).find("format not as expected"), std::string::npos);
  }
  const std::string badJson = dir.file("badjson.lfa");
  makeZip(badJson, {{"lfa.json", jsonMember(bad)}});
  EXPECT_FALSE(loads(badJson));
  EXPECT_EQ(fullJson(badJson), "");
}

TEST(HostileFiles, LinkLoopsAndDirectoriesAreRefused) {
  TempDir dir;
  // Two links naming each other, given straight to the loader.
  ASSERT_EQ(::symlink(dir.file("b.lfa").c_str(), dir.file("a.lfa").c_str()), 0);
  ASSERT_EQ(::symlink(dir.file("a.lfa").c_str(), dir.file("b.lfa").c_str()), 0);
  EXPECT_FALSE(loads(dir.file("a.lfa")));
  EXPECT_EQ(shortJson(dir.file("a.lfa")), "");
  // A descriptor whose hardware directory is a link to itself.
  HUTFile::mkDirRecursive(dir.file("pfm"));
  ASSERT_EQ(::symlink(dir.file("pfm/loop").c_str(), dir.file("pfm/loop").c_str()), 0);
  EXPECT_FALSE(loads(dir.write("pfm/loop.zdf", zdf(zdfHardware("loop", "x.lfa")))));
  // A descriptor whose directory holds a link back to itself: the loader does
  // not walk it, and loads the archive beside it.
  HUTFile::mkDirRecursive(dir.file("pfm/hw"));
  makeZip(dir.file("pfm/hw/b.lfa"), {{"lfa.json", jsonMember()}});
  dir.write("pfm/sw/b.spfm", spfm("sw"));
  ASSERT_EQ(::symlink(dir.file("pfm").c_str(), dir.file("pfm/hw/up").c_str()), 0);
  EXPECT_TRUE(loads(dir.write("pfm/up.zdf", zdf(zdfHardware("hw/up/hw/up/hw", "b.lfa")))));
  // Directories where files are expected.
  HUTFile::mkDirRecursive(dir.file("d.lfa"));
  HUTFile::mkDirRecursive(dir.file("d.spfm"));
  EXPECT_FALSE(loads(dir.file("d.lfa")));
  EXPECT_FALSE(loads(dir.file("d.spfm")));
  EXPECT_THROW(PlatformLoader(dir.file("pfm"), PlatformLoader::Default), PlatformParseException);
}

TEST(HostileFiles, UnreadableFilesAreRefused) {
  if (geteuid() == 0) GTEST_SKIP() << "permissions do not stop root from reading";
  TempDir dir;
  const std::string locked = dir.file("locked.lfa");
  makeZip(locked, {{"lfa.json", jsonMember()}});
  ASSERT_EQ(::chmod(locked.c_str(), 0), 0);
  EXPECT_FALSE(loads(locked));
  EXPECT_EQ(shortJson(locked), "");
  const std::string lockedZdf = dir.write("locked.zdf", zdf(""));
  ASSERT_EQ(::chmod(lockedZdf.c_str(), 0), 0);
  EXPECT_THROW(PlatformLoader(lockedZdf, PlatformLoader::Default), PlatformParseException);
}
