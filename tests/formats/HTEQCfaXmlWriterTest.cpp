#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "formats/CfaXmlReaderTestSupport.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLInterface.h"
#include "platform/HPLPCIeId.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaXmlWriter.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "support/TestSupport.h"

using zr_test::TempDir;

namespace {

HPLDevice& firstDevice(HPLPlatform& p) {
  std::vector<HPLDevice*> devices = zr_test::drain(p.createDeviceIter());
  return *devices.at(0);
}

std::string interfaceIds(const HPLPlatform& p) {
  std::string out;
  for (const HPLInterface* i : zr_test::drain(p.createInterfaceIter())) out += i->getId() + ";";
  return out;
}

std::string writeXml(HPLPlatform& platform, const std::string& file) {
  HTEQCfaXmlWriter(&platform, file).writeCFA();
  return zr_test::readFile(file);
}

}  // namespace

TEST(HTEQCfaXmlWriter, ReadWriteReadIsAFixedPoint) {
  TempDir dir;
  HPLPlatform first;
  ASSERT_TRUE(cfa_test::readInto(cfa_test::makeArchive(dir, cfa_test::representativeDoc().text()), first));
  const std::string text1 = writeXml(first, dir.file("one.xml"));

  HPLPlatform second;
  ASSERT_TRUE(cfa_test::readInto(cfa_test::makeArchive(dir, text1, {}, "two.cfa"), second));
  second.setPlatformFile(first.getPlatformFile());
  // The representative document holds nothing of the round-trip list, so the
  // whole platform comes back.
  EXPECT_EQ(zr_test::jsonText(second), zr_test::jsonText(first));

  EXPECT_EQ(writeXml(second, dir.file("two.xml")), text1);
}

// Every change of the round-trip list that the model can see: what a getter
// answers before the write and after reading the written document.
TEST(HTEQCfaXmlWriter, TheRoundTripListIsWhatChanges) {
  using Probe = std::function<std::string(HPLPlatform&)>;
  struct Row {
    const char* what;
    std::function<void(HPLPlatform&)> change;
    Probe probe;
    std::string before, after;
  };
  const Row rows[] = {
      {"host without PR", [](HPLPlatform& p) { p.setUsesPR(false); },
       [](HPLPlatform& p) { return p.getHostArch() + "/" + p.getHostInterface(); }, "aarch64/axi",
       "unknown/unknown"},
      {"PCIe ids without PR", [](HPLPlatform& p) { p.setUsesPR(false); },
       [](HPLPlatform& p) { return p.getReadOnlyBoard().getPCIeId().getVendor(); }, "0x10ee", ""},
      {"the last interface", [](HPLPlatform& p) { p.addInterface()->setId("int2"); }, interfaceIds,
       "int1;int2;", "int2;"},
      {"core DRBaseAddress", [](HPLPlatform& p) { firstDevice(p).getCore().setDRBaseAddress("0x9"); },
       [](HPLPlatform& p) { return firstDevice(p).getCore().getDRBaseAddress(); }, "0x9", ""},
      {"explicit intent",
       [](HPLPlatform& p) { p.setExplicitDesignIntent(HTEQDesignIntentStorage::embedded, true); },
       [](HPLPlatform& p) {
         return std::to_string(p.getDesignIntent().isExplicit(HTEQDesignIntentStorage::embedded)) +
                std::to_string(p.getDesignIntent().getEmbedded());
       },
       "11", "00"},
      {"empty binary format", [](HPLPlatform& p) { p.setAcceleratorBinaryFormat(""); },
       [](HPLPlatform& p) { return p.getAcceleratorBinaryFormat(); }, "", "rovapk2"},
  };
  for (const Row& row : rows) {
    TempDir dir;
    HPLPlatform source;
    ASSERT_TRUE(cfa_test::readInto(cfa_test::makeArchive(dir, cfa_test::representativeDoc().text()), source));
    row.change(source);
    EXPECT_EQ(row.probe(source), row.before) << row.what;
    const std::string text = writeXml(source, dir.file("out.xml"));
    HPLPlatform back;
    ASSERT_TRUE(cfa_test::readInto(cfa_test::makeArchive(dir, text, {}, "back.cfa"), back)) << row.what;
    EXPECT_EQ(row.probe(back), row.after) << row.what;
  }
  // An empty list of binary content values is left out and reads back as the defaults.
  TempDir dir;
  HPLPlatform bare;
  bare.addDevice();
  const std::string text = writeXml(bare, dir.file("bare.xml"));
  EXPECT_EQ(text.find("ValidBinaryContentValues"), std::string::npos);
  HPLPlatform back;
  ASSERT_TRUE(cfa_test::readInto(cfa_test::makeArchive(dir, text), back));
  EXPECT_EQ(back.getValidBinaryContentValuesAsStr(), "dcp,bitstream");
}

// Which optional parts the text carries, by the platform's state.
TEST(HTEQCfaXmlWriter, ConditionalElements) {
  struct Row {
    const char* what;
    std::function<void(HPLPlatform&)> change;
    std::vector<std::string> present, absent;
  };
  const Row rows[] = {
      {"as read",
       [](HPLPlatform&) {},
       {"<Host ", "<PCIeId ", "<Interfaces>", "MaxTempLimit=\"90\"", "Name=\"xp\" Value=\"-O3\"",
        "Fixed=\"false\"", "ValidSLRs=\"SLR0,SLR1\"", "AcceleratorBinaryFormat=\"fmt\""},
       {"<Drivers", "MaxPowerLimit", "UsesDCP", "Flow=", "StaticSynthCheckpoint"}},
      {"no PR, no flat shell",
       [](HPLPlatform& p) { p.setUsesPR(false); },
       {"UsesPR=\"false\""},
       {"<Host ", "<PCIeId "}},
      {"flat shell",
       [](HPLPlatform& p) {
         p.setUsesPR(false);
         p.setPlatformState("pre_synth");
         p.setExplicitDesignIntent(HTEQDesignIntentStorage::dataCenter, true);
       },
       {"<PCIeId "},
       {"<Host "}},
      {"fixed, default format, limits",
       [](HPLPlatform& p) {
         p.setExpandable(false);
         p.setAcceleratorBinaryFormat("rovapk2");
         HTEQHardwarePlatform::TEQHardwareFeatureRomVec roms;
         p.getFeatureRoms(roms);
         roms.at(0)->setMaxTempLimit(0);
         roms.at(0)->setMaxPowerLimit(7);
       },
       {"Fixed=\"true\"", "MaxPowerLimit=\"7\""},
       {"AcceleratorBinaryFormat", "MaxTempLimit"}},
  };
  for (const Row& row : rows) {
    TempDir dir;
    HPLPlatform p;
    ASSERT_TRUE(cfa_test::readInto(cfa_test::makeArchive(dir, cfa_test::representativeDoc().text()), p));
    row.change(p);
    const std::string text = writeXml(p, dir.file("out.xml"));
    for (const std::string& s : row.present)
      EXPECT_NE(text.find(s), std::string::npos) << row.what << ": " << s;
    for (const std::string& s : row.absent)
      EXPECT_EQ(text.find(s), std::string::npos) << row.what << ": " << s;
  }
  // No interface: no Interfaces element; three images even without files.
  TempDir dir;
  HPLPlatform bare;
  bare.addDevice();
  const std::string text = writeXml(bare, dir.file("bare.xml"));
  EXPECT_EQ(text.find("Interfaces"), std::string::npos);
  for (const std::string img : {"HDPI", "MDPI", "LDPI"})
    EXPECT_NE(text.find("<Img Type=\"" + img + "\" File=\"\"/>"), std::string::npos) << img;
}

// A model the document cannot hold, or a file that cannot be written: the
// message, HXMLException, and the existing file as it was.
TEST(HTEQCfaXmlWriter, FailuresSendTheirMessageAndWriteNothing) {
  struct Row {
    const char* what;
    std::function<void(HPLPlatform&)> change;
    std::string target;  // below the test directory; "" for the existing file
    const char* id;
  };
  const Row rows[] = {
      {"control character",
       [](HPLPlatform& p) {
         p.setName(
             std::string("a\x01"
                         "b"));
       },
       "", "@74-15@%s%s%s%s"},
      {"compute units above 255", [](HPLPlatform& p) { firstDevice(p).getCore().setNumComputeUnits(256); },
       "", "@74-15@%s%s%s%s"},
      {"target is a directory", [](HPLPlatform&) {}, "sub", "@74-10@%s"},
      {"missing directory", [](HPLPlatform&) {}, "none/out.xml", "@74-10@%s"},
  };
  for (const Row& row : rows) {
    TempDir dir;
    const std::string existing = dir.write("out.xml", "old");
    zr_test::writeFile(dir.file("sub/x"), "x");
    HPLPlatform p;
    p.addDevice();
    row.change(p);
    ComMsgCapture capture;
    const std::string target = row.target.empty() ? existing : dir.file(row.target);
    EXPECT_THROW(HTEQCfaXmlWriter(&p, target).writeCFA(), HXMLException) << row.what;
    EXPECT_TRUE(capture.has(row.id)) << row.what;
    EXPECT_EQ(zr_test::readFile(existing), "old") << row.what;
    EXPECT_EQ(HUTFile::listFilesRecursive(dir.path()).size(), 2u) << row.what;
  }
  EXPECT_THROW(HTEQCfaXmlWriter(nullptr, "x.xml"), HEXAlgException);
}
