#include <gtest/gtest.h>

#include <string>

#include "emulation/EmuTestSupport.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationXMLReader.h"
#include "platform/HTEQEmulationXMLWriter.h"
#include "platform/HTEQEmulations.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"

using emu_test::describe;
using emu_test::standardXml;
using emu_test::xmlDocument;
using emu_test::xmlEmulation;

TEST(HTEQEmulationXMLReader, ReadsEmulationsAndFilesInDocumentOrder) {
  zr_test::TempDir dir;
  const std::string file =
      dir.write("hw_emu.xml",
                xmlDocument(xmlEmulation("hw_emu", {{"EMU_HPFM", "emu/emu.hpfm"}, {"TOP_BD", "emu/emu.bd"}}) +
                                xmlEmulation("caf\xC3\xA9", {}),
                            "VersionMajor=\" 3 \" VersionMinor=\"7\""));
  HTEQEmulations model;
  HTEQEmulationXMLReader reader(file, &model);
  reader.parseXml();
  EXPECT_EQ(describe(model), "|hw_emu=EMU_HPFM:emu/emu.hpfm@;TOP_BD:emu/emu.bd@;|caf\xC3\xA9=");
  // The document's version numbers are the format's, not the model's.
  EXPECT_EQ(model.getVersionMajor(), 0u);
  EXPECT_EQ(model.getVersionMinor(), 0u);
}

TEST(HTEQEmulationXMLReader, RefusesAMissingFileOrModel) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  EXPECT_THROW(HTEQEmulationXMLReader(dir.file("absent.xml"), &model), HEXFileNotFoundException);
  EXPECT_THROW(HTEQEmulationXMLReader(dir.write("hw_emu.xml", standardXml()), nullptr), HEXAlgException);
}

TEST(HTEQEmulationXMLReader, DocumentsOutsideTheFormatSendAMessageAndRaise) {
  const std::string files = "<Files/>";
  const struct {
    const char* what;
    std::string text;
    int line;  // of the violation; 0 where the XML layer gives none
  } cases[] = {
      {"no VersionMajor", "<Root VersionMinor=\"0\">\n  <Emulations/>\n</Root>\n", 1},
      {"negative version", "<Root VersionMajor=\"-1\" VersionMinor=\"0\">\n  <Emulations/>\n</Root>\n", 1},
      {"no Emulations", "<Root VersionMajor=\"1\" VersionMinor=\"0\">\n</Root>\n", 1},
      {"two Emulations",
       "<Root VersionMajor=\"1\" VersionMinor=\"0\">\n<Emulations/>\n<Emulations/>\n</Root>", 3},
      {"Emulation without Name", xmlDocument("<Emulation>" + files + "</Emulation>\n"), 4},
      {"Emulation without Files", xmlDocument("<Emulation Name=\"x\"/>\n"), 4},
      {"File without Type",
       xmlDocument("<Emulation Name=\"x\"><Files><File Name=\"n\"/></Files></Emulation>\n"), 4},
      {"unknown attribute", xmlDocument("<Emulation Name=\"x\" Other=\"y\">" + files + "</Emulation>\n"), 4},
      {"unknown element", xmlDocument("<Target Name=\"x\"/>\n"), 4},
      {"a namespace", "<Root xmlns=\"urn:x\" VersionMajor=\"1\" VersionMinor=\"0\"><Emulations/></Root>", 1},
  };
  zr_test::TempDir dir;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string file = dir.write("bad.xml", c.text);
    HTEQEmulations model;
    HTEQEmulationXMLReader reader(file, &model);
    ComMsgCapture cap;
    EXPECT_THROW(reader.parseXml(), HXMLException);
    const ComMsg* msg = cap.find("@74-58@%s%d");
    ASSERT_NE(msg, nullptr);
    EXPECT_EQ(msg->mask, ComMsgMask::kError);
    ASSERT_EQ(msg->args.size(), 2u);
    EXPECT_FALSE(msg->args[0].empty());
    EXPECT_EQ(msg->args[1], std::to_string(c.line)) << msg->args[0];
    EXPECT_TRUE(model.getEmulations().empty());
  }
}

TEST(HTEQEmulationXMLWriter, WritesTheDocumentWithoutInstallPaths) {
  HTEQEmulations empty;
  HTEQEmulations model;
  model.setVersionMajor(2);
  model.setVersionMinor(1);
  HTEQEmulation* emulation = model.createEmulation("hw_emu");
  emulation->createFile("EMU_HPFM", "emu.hpfm")->setInstPath("/opt/x");
  emulation->createFile("TOP_BD", "a&b.bd");
  model.createEmulation("empty");
  const std::pair<HTEQEmulations*, std::string> rows[] = {
      // A model without emulations still writes the element.
      {&empty,
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Root VersionMajor=\"0\" VersionMinor=\"0\">\n"
       "  <Emulations/>\n</Root>\n"},
      {&model,
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
       "<Root VersionMajor=\"2\" VersionMinor=\"1\">\n"
       "  <Emulations>\n"
       "    <Emulation Name=\"hw_emu\">\n"
       "      <Files>\n"
       "        <File Type=\"EMU_HPFM\" Name=\"emu.hpfm\"/>\n"
       "        <File Type=\"TOP_BD\" Name=\"a&amp;b.bd\"/>\n"
       "      </Files>\n"
       "    </Emulation>\n"
       "    <Emulation Name=\"empty\">\n"
       "      <Files/>\n"
       "    </Emulation>\n"
       "  </Emulations>\n"
       "</Root>\n"},
  };
  zr_test::TempDir dir;
  for (const auto& row : rows) {
    HTEQEmulationXMLWriter(row.first, dir.file("emu.xml")).writeXml();
    EXPECT_EQ(zr_test::readFile(dir.file("emu.xml")), row.second);
  }
  // Read back, the order stays and the install path is gone.
  HTEQEmulations back;
  HTEQEmulationXMLReader(dir.file("emu.xml"), &back).parseXml();
  EXPECT_EQ(describe(back), "|hw_emu=EMU_HPFM:emu.hpfm@;TOP_BD:a&b.bd@;|empty=");
}

TEST(HTEQEmulationXMLWriter, FailuresRaiseAndWriteNothing) {
  zr_test::TempDir dir;
  HTEQEmulations model;
  model.createEmulation("x")->createFile("T", "bad\x01name");
  const std::string target = dir.file("emu.xml");
  EXPECT_THROW_MSG(HTEQEmulationXMLWriter(&model, target).writeXml(), HEXAll, target);
  EXPECT_FALSE(HUTFile::exists(target));

  HTEQEmulations good;
  const std::string unwritable = dir.file("missing/dir/emu.xml");
  EXPECT_THROW(HTEQEmulationXMLWriter(&good, unwritable).writeXml(), HEXAll);
  EXPECT_FALSE(HUTFile::exists(unwritable));
  EXPECT_THROW(HTEQEmulationXMLWriter(nullptr, target), HEXAlgException);
}
