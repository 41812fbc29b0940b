#include <gtest/gtest.h>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "platform/HTEQPlatform.h"
#include "platform/PlatformLoader.h"
#include "support/TestSupport.h"

using teq_platform::PlatformLoader;
using teq_platform::PlatformParseException;
using namespace zr_test;

namespace {

// The text of message "@74-60@%s" sent by a failed load, or "" if none.
std::string loadFailure(PlatformLoader& loader) {
  ComMsgCapture cap;
  const auto platform = loader.load();
  const ComMsg* m = cap.find("@74-60@%s");
  if (platform) return m ? "loaded, yet a message was sent" : "";
  if (!m) return "failed without a message";
  EXPECT_EQ(m->mask, ComMsgMask::kCriticalWarning);
  return m->args.at(0);
}

}  // namespace

TEST(PlatformLoader, FileKindComesFromTheExactExtension) {
  TempDir dir;
  for (const auto& [name, kind] : std::vector<std::pair<const char*, PlatformLoader::FileKind>>{
           {"a.lfa", PlatformLoader::HardwareFile},
           {"a.cfa", PlatformLoader::HardwareFile},
           {"a.spfm", PlatformLoader::SoftwareFile}})
    EXPECT_EQ(PlatformLoader(dir.file(name), PlatformLoader::Default).getFileKind(), kind) << name;
  // Capitals and no extension at all make a descriptor, which must exist.
  EXPECT_THROW(PlatformLoader(dir.file("a.CFA"), PlatformLoader::Default), HEXFileNotFoundException);
  EXPECT_THROW(PlatformLoader(dir.file("noext"), PlatformLoader::Default), HEXFileNotFoundException);
  const std::string upper = dir.write("real.CFA", "PK\x03\x04 not xml");
  ComMsgCapture cap;
  EXPECT_THROW(PlatformLoader(upper, PlatformLoader::Default), PlatformParseException);
  EXPECT_TRUE(cap.has("@74-9@%s"));
}

TEST(PlatformLoader, DescriptorDataIsThereBeforeLoad) {
  TempDir dir;
  const std::string zdf = dir.write("p/board.zdf", zdfText(zdfHw("hw", "b.lfa")));
  PlatformLoader loader(zdf, PlatformLoader::Default);
  EXPECT_EQ(loader.getName(), "board_a");
  EXPECT_EQ(loader.getVendor(), "acme");
  EXPECT_EQ(loader.getVersion(), "1.10");
  EXPECT_EQ(loader.getDescription(), "A test platform");
  EXPECT_EQ(loader.getFilePath(), zdf);
  EXPECT_EQ(loader.getBaseName(), "board");
  EXPECT_EQ(loader.getHardwarePlatformFile(), dir.file("p/hw/b.lfa"));
  EXPECT_EQ(loader.getHardwareEmuPlatformFile(), "");
  EXPECT_EQ(loader.getSoftwarePlatformFile(), dir.file("p") + "/sw/a.spfm");
  EXPECT_FALSE(loader.isLoaded());
}

// Each failing load sends "@74-60@%s" with the text of the step that failed.
TEST(PlatformLoader, EachFailingStepHasItsText) {
  TempDir dir;
  dir.write("p/hw/b.zip", "zip");
  const std::string partition = "<teq:reconfigurablePartition teq:id=\"0\">";
  const std::string unreadable = "Failed to parse Hardware Platform metadata file";
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", "hardware platform file '' does not exist"},
      {dir.file("missing.lfa"), "hardware platform file '" + dir.file("missing.lfa") + "' does not exist"},
      {dir.write("p/b.zdf", zdfText(zdfHw("hw", "b.zip"))),
       "incorrect file extension - only CFA and LFA files are supported"},
      {dir.write("junk.lfa", "not an archive"), unreadable},
      // A partition whose hardware fails is an error; an emulation-only one
      // fails on its empty hardware file.
      {dir.write("p/rp.zdf",
                 zdfText(partition + zdfHw("hw", "missing.lfa") + "</teq:reconfigurablePartition>\n")),
       unreadable},
      {dir.write("p/rpe.zdf",
                 zdfText(partition + zdfEmu("hw", "e.lfa") + "</teq:reconfigurablePartition>\n")),
       unreadable},
      {dir.file("absent.spfm"), "the software platform file does not exist"},
      {dir.write("broken.spfm", "<not-a-software-platform/>"), "software platform file does not exist"},
  };
  for (const auto& [path, text] : rows) {
    PlatformLoader loader(path, PlatformLoader::Default);
    EXPECT_EQ(loadFailure(loader), text) << path;
    // After a failure the loader holds no platform; its getters stay safe.
    EXPECT_EQ(loader.load(), nullptr);
    EXPECT_FALSE(loader.isLoaded());
  }
}

TEST(PlatformLoader, SoftwareFileAloneLoadsAsASoftwareOnlyPlatform) {
  TempDir dir;
  PlatformLoader loader(dir.write("sw/a.spfm", spfmText()), PlatformLoader::Default);
  ComMsgCapture cap;
  const auto platform = loader.load();
  ASSERT_NE(platform, nullptr);
  EXPECT_TRUE(loader.isLoaded());
  EXPECT_TRUE(cap.messages().empty());
  EXPECT_EQ(platform->getHardwarePlatform(), nullptr);
  EXPECT_NE(platform->getSoftwarePlatform(), nullptr);
  EXPECT_FALSE(platform->supportsHardware());
  EXPECT_EQ(platform->getSoftwarePlatformFile(), "");
  EXPECT_EQ(platform->getPlatformFile(), "");
  // A second load reads nothing again and gives the same object.
  EXPECT_EQ(loader.load(), platform);
}

TEST(PlatformLoader, ResultOutlivesTheLoader) {
  TempDir dir;
  std::shared_ptr<HTEQPlatform> kept;
  {
    PlatformLoader loader(dir.write("a.spfm", spfmText()), PlatformLoader::Default);
    kept = loader.load();
  }
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(kept.use_count(), 1);
  EXPECT_NE(kept->getSoftwarePlatform(), nullptr);
}
