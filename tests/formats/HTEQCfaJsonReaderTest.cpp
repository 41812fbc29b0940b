#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "formats/HpfmTestDoc.h"
#include "host/ComMsgMgr.h"
#include "host/HUTZip.h"
#include "platform/HPLBoard.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLMemory.h"
#include "platform/HPLPlatform.h"
#include "platform/HSTFwdIter.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQSystemClock.h"
#include "platform/JSONObjectWriter.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using teq_platform::PlatformLoader;
using namespace zr_test;

namespace {

class CfaJsonReader : public ::testing::Test {
 protected:
  std::string archive(const ZipMembers& members, const std::string& name = "card.lfa") {
    return makeZip(dir_.file(name), members);
  }
  TempDir dir_;
  HPLPlatform platform_;
  HTEQCfaJsonReader reader_{&platform_};
};

}  // namespace

TEST_F(CfaJsonReader, FillsTheModelFromTheMember) {
  ASSERT_TRUE(reader_.parseCFA(archive({{"lfa.json", lfaJson()}}), PlatformLoader::Default));
  EXPECT_EQ(platform_.getVendor(), "acme");
  EXPECT_EQ(platform_.getUniqueName(), "acme:card:base:3.1");
  EXPECT_EQ(platform_.getPlatformFile(), dir_.file("card.lfa"));
  ASSERT_NE(platform_.getDevice("fpga0"), nullptr);
  EXPECT_EQ(platform_.getDevice("fpga0")->getReadOnlyCore().getNumComputeUnits(), 60);
  EXPECT_EQ(platform_.getFpgaPart(), "tzq9kp");
  std::unique_ptr<HSTFwdIter<HPLMemory*>> memories(platform_.createMemoryIter());
  ASSERT_TRUE(memories->hasNext());
  EXPECT_EQ(memories->next()->getLowestAddress(), 4096u);
  EXPECT_EQ(platform_.getDefaultClkId(), 7);
  std::vector<HTEQHardwareBusInterface*> buses;
  platform_.getBusInterfaces(buses);
  ASSERT_EQ(buses.size(), 1u);
  // Numbers keep their leading digits only, as strtol reads them.
  EXPECT_EQ(buses[0]->getDataWidth(), 512);
  HTEQHardwarePlatform::TEQHardwareNocConnectivityVec nocs;
  platform_.getNocConnectivity(nocs);
  ASSERT_EQ(nocs.size(), 1u);
  std::vector<HTEQHardwareBusInterface*> nocBuses;
  nocs[0]->getBusInterfaces(nocBuses);
  EXPECT_EQ(nocBuses.size(), 1u);
}

TEST_F(CfaJsonReader, AStandAloneFileAndATextFillTheSameModel) {
  // The values are read after the text is parsed: they must outlive the
  // reading of the file (run under the address sanitizer, a dangling view
  // would show here).
  HPLPlatform fromFile;
  ASSERT_TRUE(HTEQCfaJsonReader(&fromFile).parseFile(dir_.write("card.json", lfaJson())));
  HPLPlatform fromText;
  ASSERT_TRUE(HTEQCfaJsonReader(&fromText).parseJsonString(lfaJson()));
  EXPECT_EQ(fromFile.getUniqueName(), "acme:card:base:3.1");
  EXPECT_TRUE(fromFile.isEquals(fromText));
  EXPECT_FALSE(HTEQCfaJsonReader(&fromFile).parseFile(dir_.path()));
}

TEST_F(CfaJsonReader, AlternativeMemberWinsUnlessOnlyThePrimaryCounts) {
  const std::string path =
      archive({{"lfa.json", lfaJson("", "primary")}, {"alt_lfa.json", lfaJson("", "alt")}});
  std::string chosen;
  EXPECT_TRUE(reader_.canParse(path, PlatformLoader::Default, chosen));
  EXPECT_EQ(chosen, "alt_lfa.json");
  EXPECT_TRUE(reader_.canParse(path, PlatformLoader::PrimaryJsonOnly, chosen));
  EXPECT_EQ(chosen, "lfa.json");
  EXPECT_FALSE(reader_.canParse(path, PlatformLoader::XmlOnly, chosen));

  HPLPlatform alt, primary;
  ASSERT_TRUE(HTEQCfaJsonReader(&alt).parseCFA(path, PlatformLoader::Default));
  ASSERT_TRUE(HTEQCfaJsonReader(&primary).parseCFA(path, PlatformLoader::PrimaryJsonOnly));
  EXPECT_EQ(alt.getName(), "alt");
  EXPECT_EQ(primary.getName(), "primary");

  const std::string altOnly = archive({{"alt_lfa.json", lfaJson()}}, "alt.lfa");
  EXPECT_TRUE(reader_.canParse(altOnly, PlatformLoader::Default, chosen));
  EXPECT_FALSE(reader_.canParse(altOnly, PlatformLoader::PrimaryJsonOnly, chosen));
  // A .cfa archive names its member after its own extension.
  EXPECT_TRUE(reader_.canParse(archive({{"cfa.json", lfaJson()}}, "x.cfa"), PlatformLoader::Default, chosen));
  EXPECT_EQ(chosen, "cfa.json");
}

TEST_F(CfaJsonReader, DefaultsForMissingKeys) {
  ASSERT_TRUE(reader_.parseCFA(archive({{"lfa.json", lfaJson()}}), PlatformLoader::Default));
  EXPECT_TRUE(platform_.isExpandable());
  EXPECT_TRUE(platform_.getValidBinaryContentValues().empty());
  // Without a designIntent object the intents follow usesPR, none explicit.
  const auto& intent = platform_.getDesignIntent();
  EXPECT_TRUE(intent.getDataCenter());
  EXPECT_TRUE(intent.getExternalHost());
  EXPECT_TRUE(intent.getServerManaged());
  EXPECT_FALSE(intent.getEmbedded());
  EXPECT_FALSE(intent.isExplicit(HTEQDesignIntentStorage::dataCenter));
}

TEST_F(CfaJsonReader, ExplicitIntentsResourcesAndListsAreRead) {
  const std::string extra =
      ",\n \"expandablePlatform\": \"false\", \"validAcceleratorBinaryContentValues\": \"bitstream,pdi\",\n"
      " \"designIntent\": {\"embedded\": {\"value\": \"true\", \"explicit\": \"true\"},\n"
      "                   \"dataCenter\": {\"value\": \"true\", \"explicit\": \"false\"}},\n"
      " \"resources\": [{\"type\": \"ff\", \"count\": \"12\"}, {\"type\": \"REG\", \"count\": \"9\"},\n"
      "               {\"type\": \"Bram\", \"count\": \"4\"}],\n"
      " \"zuncLinkXPSwitches\": [\"a\", \"b\"], \"unknownKey\": {\"deep\": [1, 2]},\n"
      " \"board\": {\"name\": \"brd\", \"pcie\": {\"vendor\": \"0x10ee\"}, \"whatever\": \"x\"}";
  ASSERT_TRUE(reader_.parseCFA(archive({{"lfa.json", lfaJson(extra)}}), PlatformLoader::Default));
  EXPECT_FALSE(platform_.isExpandable());
  EXPECT_EQ(platform_.getValidBinaryContentValuesAsStr(), "bitstream,pdi");
  EXPECT_TRUE(platform_.getDesignIntent().getEmbedded());
  EXPECT_TRUE(platform_.getDesignIntent().isExplicit(HTEQDesignIntentStorage::embedded));
  // An entry whose explicit flag is false takes the computed default.
  EXPECT_FALSE(platform_.getDesignIntent().isExplicit(HTEQDesignIntentStorage::dataCenter));
  EXPECT_EQ(platform_.getFFCount(), 12);
  EXPECT_EQ(platform_.getBRAMCount(), 4);
  EXPECT_EQ(platform_.getRegisterCount(), 0);
  EXPECT_EQ(platform_.getBoard().getName(), "brd");
  EXPECT_EQ(platform_.getBoard().getPCIeId().getVendor(), "0x10ee");
}

TEST_F(CfaJsonReader, AFeatureRomPartNameIsCutTo63BytesAsOnTheXmlRoute) {
  for (const std::size_t size : {std::size_t{62}, std::size_t{63}, std::size_t{64}, std::size_t{200}}) {
    SCOPED_TRACE(size);
    std::string name;
    for (std::size_t i = 0; i < size; ++i) name += static_cast<char>('a' + i % 26);
    HPLPlatform platform;
    ASSERT_TRUE(HTEQCfaJsonReader(&platform).parseJsonString(
        lfaJson(",\n \"featureRoms\": [{\"fpgaPartName\": \"" + name + "\"}]")));
    HTEQHardwarePlatform::TEQHardwareFeatureRomVec roms;
    platform.getFeatureRoms(roms);
    ASSERT_EQ(roms.size(), 1u);
    EXPECT_EQ(roms[0]->getFPGAPartName(), name.substr(0, 63));
  }
}

TEST_F(CfaJsonReader, FailuresAnswerFalseWithTheirMessages) {
  ComMsgCapture cap;
  EXPECT_FALSE(reader_.parseCFA(dir_.file("missing.lfa"), PlatformLoader::Default));
  ASSERT_TRUE(cap.has("@74-66@%s"));
  EXPECT_EQ(cap.find("@74-66@%s")->args[0], dir_.file("missing.lfa"));

  cap.clear();
  EXPECT_FALSE(reader_.parseCFA(archive({{"lfa.json", ""}}, "empty.lfa"), PlatformLoader::Default));
  EXPECT_TRUE(cap.messages().empty());

  const std::string bad = archive({{"lfa.json", "{\"vendor\": "}}, "bad.lfa");
  HPLPlatform p1;
  EXPECT_FALSE(HTEQCfaJsonReader(&p1).parseCFA(bad, PlatformLoader::Default));
  const ComMsg* m = cap.find("@74-64@%s%s%s");
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(m->args[0], "lfa.json");
  EXPECT_EQ(m->args[1], bad);

  cap.clear();
  const std::string noCore = archive({{"lfa.json", "{\"devices\": [{\"name\": \"fpga0\"}]}"}}, "nocore.lfa");
  HPLPlatform p2;
  EXPECT_FALSE(HTEQCfaJsonReader(&p2).parseCFA(noCore, PlatformLoader::Default));
  EXPECT_TRUE(cap.has("@74-64@%s%s%s"));

  cap.clear();
  dir_.write("notzip.lfa", "this is not a zip archive");
  HPLPlatform p4;
  EXPECT_FALSE(HTEQCfaJsonReader(&p4).parseCFA(dir_.file("notzip.lfa"), PlatformLoader::Default));
}

TEST_F(CfaJsonReader, EmulationChildComesFromTheHwEmuDirectory) {
  const std::string path =
      archive({{"lfa.json", lfaJson()},
               {"hw_emu/alt_lfa.json", lfaJson(",\"hardwareEmuPlatform\": \"true\"", "emu")}});
  std::string chosen;
  EXPECT_TRUE(reader_.canParseHwEmu(path, PlatformLoader::Default, chosen));
  EXPECT_EQ(chosen, "hw_emu/alt_lfa.json");
  EXPECT_FALSE(reader_.canParseHwEmu(path, PlatformLoader::PrimaryJsonOnly, chosen));
  HPLPlatform child;
  ASSERT_TRUE(HTEQCfaJsonReader(&child).parseHwEmuLFA(path, PlatformLoader::Default));
  EXPECT_TRUE(child.isChildHardwareEmuPlatform());
  EXPECT_TRUE(child.isHWEmuPlatform());
  EXPECT_EQ(child.getName(), "emu");
  HPLPlatform none;
  EXPECT_FALSE(HTEQCfaJsonReader(&none).parseHwEmuLFA(archive({{"lfa.json", lfaJson()}}, "plain.lfa"),
                                                      PlatformLoader::Default));
  EXPECT_FALSE(none.isChildHardwareEmuPlatform());
}

TEST_F(CfaJsonReader, WrittenDocumentReadsBackEqual) {
  ASSERT_TRUE(reader_.parseCFA(archive({{"lfa.json", lfaJson()}}), PlatformLoader::Default));
  teq_platform::JSONObjectWriter w;
  platform_.toJSON(w);
  std::ostringstream text;
  w.write(text);
  HPLPlatform again;
  ASSERT_TRUE(HTEQCfaJsonReader(&again).parseCFA(archive({{"lfa.json", text.str()}}, "again.lfa"),
                                                 PlatformLoader::Default));
  again.setPlatformFile(platform_.getPlatformFile());
  EXPECT_TRUE(platform_.isEquals(again));
}

TEST_F(CfaJsonReader, EmulationFilesOfThePlatformSetItsEmulationFlags) {
  const std::string emuJson =
      R"({"pfm_metadata_version": "2.1", "emulations": [ {"name": "hw_emu", "files": [)"
      R"( {"type": "EMU_HPFM", "name": "emu/emu.hpfm"}, {"type": "TOP_BD", "name": "emu/top.bd"} ]} ]})";
  const std::string withEmu = archive(
      {{"lfa.json", lfaJson(",\"files\": [{\"type\": \"EMU_JSON\", \"name\": \"hw_emu/hw_emu.json\"}]")},
       {"hw_emu/hw_emu.json", emuJson}});
  ASSERT_TRUE(reader_.parseCFA(withEmu, PlatformLoader::Default));
  EXPECT_TRUE(platform_.supportsHWEmulation());
  EXPECT_TRUE(platform_.supportsTwoHwEmuBd());

  // Emulation metadata that names neither file type changes nothing.
  HPLPlatform plain;
  const std::string noHpfm = archive(
      {{"lfa.json", lfaJson(",\"files\": [{\"type\": \"EMU_JSON\", \"name\": \"hw_emu/hw_emu.json\"}]")},
       {"hw_emu/hw_emu.json", R"({"emulations": [ {"name": "x", "files": []} ]})"}},
      "plain.lfa");
  ASSERT_TRUE(HTEQCfaJsonReader(&plain).parseCFA(noHpfm, PlatformLoader::Default));
  EXPECT_FALSE(plain.supportsHWEmulation());
  EXPECT_FALSE(plain.supportsTwoHwEmuBd());
}

TEST_F(CfaJsonReader, AnHpfmMemberReplacesTheDocumentsBusInterfaces) {
  hpfm_test::HpfmDoc hpfmDoc;
  hpfmDoc.body = hpfm_test::busInterface(R"(kp:name="FROM_HPFM" kp:mode="master" kp:busTypeRef="aximm")");
  const std::string hpfm = hpfmDoc.text();
  const std::string files = ",\"files\": [{\"type\": \"HPFM\", \"name\": \"hw/shell.hpfm\"}]";
  ASSERT_TRUE(reader_.parseCFA(archive({{"lfa.json", lfaJson(files)}, {"hw/shell.hpfm", hpfm}}),
                               PlatformLoader::Default));
  std::vector<HTEQHardwareBusInterface*> buses;
  platform_.getBusInterfaces(buses);
  ASSERT_EQ(buses.size(), 1u);
  EXPECT_EQ(buses[0]->getName(), "FROM_HPFM");

  // A listed hpfm that is not in the archive leaves the document's own list.
  HPLPlatform listedOnly;
  ASSERT_TRUE(HTEQCfaJsonReader(&listedOnly)
                  .parseCFA(archive({{"lfa.json", lfaJson(files)}}, "nohpfm.lfa"), PlatformLoader::Default));
  buses.clear();
  listedOnly.getBusInterfaces(buses);
  ASSERT_EQ(buses.size(), 1u);
  EXPECT_EQ(buses[0]->getName(), "S_AXI");
}
