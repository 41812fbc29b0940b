// One load reads and parses each archive member once, however many partitions
// or platforms of the load name it; the next load reads it again.
#include <gtest/gtest.h>

#include <string>

#include "host/ComMsgMgr.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/PlatformLoader.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using teq_platform::PlatformLoader;

namespace {

constexpr int kPartitions = 300;

// A hardware JSON member that names a broken hpfm: each parse of the hpfm
// sends "@74-31@" once, so the messages count the parses.
std::string jsonMember(const std::string& name) {
  return R"({"vendor": "acme", "name": ")" + name +
         R"(", "devices": [{"name": "d", "core": {"name": "OCL"}}],)"
         R"( "files": [{"type": "HPFM", "name": "shell.hpfm"}]})";
}

std::string partitions() {
  std::string text;
  for (int i = 0; i < kPartitions; ++i)
    text += "<teq:reconfigurablePartition teq:id=\"" + std::to_string(i) + "\">" +
            zr_test::zdfHw("hw", "shell.lfa") + zr_test::zdfEmu("hw", "shell.lfa") +
            "</teq:reconfigurablePartition>\n";
  return text;
}

std::size_t hpfmParses(const ComMsgCapture& cap) {
  std::size_t n = 0;
  for (const auto& m : cap.messages()) n += m.id == "@74-31@";
  return n;
}

TEST(SharedMemberLoad, EachMemberIsParsedOncePerLoad) {
  zr_test::TempDir dir;
  dir.write("sw/a.spfm", zr_test::spfmText());
  dir.write("hw/notes.txt", "the archive's folder");
  const std::string archive = dir.file("hw/shell.lfa");
  zr_test::makeZip(archive, {{"lfa.json", jsonMember("shell")},
                             {"hw_emu/lfa.json", jsonMember("shell_emu")},
                             {"shell.hpfm", "<not-an-hpfm/>\n"}});
  const std::string many = dir.write("many.zdf", zr_test::zdfText(partitions(), "teq:defaultRP=\"7\""));
  const struct {
    const char* name;
    std::string path;
  } cases[] = {{"partitions naming one archive", many}, {"archive with an emulation child", archive}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ComMsgCapture cap;
    ::testing::internal::CaptureStdout();
    for (std::size_t load = 1; load <= 2; ++load) {
      PlatformLoader loader(c.path, PlatformLoader::Default);
      const auto platform = loader.load();
      ASSERT_NE(platform, nullptr);
      EXPECT_EQ(hpfmParses(cap), load);
      EXPECT_TRUE(platform->supportsHWEmulation());
    }
    ::testing::internal::GetCapturedStdout();
  }
}

TEST(SharedMemberLoad, PartitionsNamingOneArchiveShowItEach) {
  zr_test::TempDir dir;
  dir.write("sw/a.spfm", zr_test::spfmText());
  dir.write("hw/notes.txt", "the archive's folder");
  zr_test::makeZip(dir.file("hw/shell.lfa"), {{"lfa.json", jsonMember("shell")}});
  const std::string one = "<teq:reconfigurablePartition teq:id=\"0\">" + zr_test::zdfHw("hw", "shell.lfa") +
                          zr_test::zdfEmu("hw", "shell.lfa") + "</teq:reconfigurablePartition>\n";
  PlatformLoader single(dir.write("one.zdf", zr_test::zdfText(one)), PlatformLoader::Default);
  const auto expected = single.load();
  PlatformLoader loader(dir.write("many.zdf", zr_test::zdfText(partitions())), PlatformLoader::Default);
  const auto platform = loader.load();
  ASSERT_NE(expected, nullptr);
  ASSERT_NE(platform, nullptr);
  const std::string partitionText = zr_test::jsonText(*expected->getReconfigurablePartitions().front());
  const auto& rps = platform->getReconfigurablePartitions();
  ASSERT_EQ(rps.size(), std::size_t{kPartitions});
  for (const auto* rp : {rps.front(), rps.back()}) {
    std::string text = zr_test::jsonText(*rp);
    const std::string id = "\"id\": \"" + std::to_string(rp->getID()) + "\"";
    text.replace(text.find(id), id.size(), "\"id\": \"0\"");
    EXPECT_EQ(text, partitionText);
  }
  const std::string whole = zr_test::jsonText(*platform);
  EXPECT_EQ(zr_test::countOf(whole, "\"hwEmuPlatform\""), std::size_t{kPartitions});
  EXPECT_EQ(zr_test::countOf(whole, "\"hardwarePlatform\""), std::size_t{kPartitions});
}

}  // namespace
