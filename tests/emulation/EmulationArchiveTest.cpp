#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "emulation/EmuTestSupport.h"
#include "emulation/HTEQEmulationCfaMember.h"
#include "host/HEXAll.h"
#include "host/HUTZip.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationJsonReader.h"
#include "platform/HTEQEmulationXMLReader.h"
#include "platform/HTEQEmulations.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"

using emu_test::describe;

namespace {

// A hardware archive holding the emulation metadata in both forms below "hw_emu".
std::string makeArchive(const zr_test::TempDir& dir) {
  const std::string zip = dir.file("board.cfa");
  HUTZip::writeMember(zip, "hw_emu/hw_emu.xml", emu_test::standardXml());
  HUTZip::writeMember(zip, "hw_emu/hw_emu.json", emu_test::standardJson());
  HUTZip::writeMember(zip, "hw_emu/broken.xml", "<Root VersionMajor=\"1\"");
  HUTZip::writeMember(zip, "hw_emu/broken.json", "{\"emulations\": [");
  return zip;
}

}  // namespace

TEST(HTEQEmulationCfaMember, ReducesNamesAsTheLeadingDotSlashPattern) {
  const std::regex pattern("^.[/]+(.*)$");
  for (const std::string name : {"./hw_emu/hw_emu.xml", ".//hw_emu.xml", ".///a/b", "hw_emu/hw_emu.xml",
                                 "x/y.xml", "//a", "./", "/", ".", "", "./a\nb", "\n/a", "a//"})
    EXPECT_EQ(HTEQEmulationCfaMember::reduceMemberName(name), std::regex_replace(name, pattern, "$1"))
        << "'" << name << "'";
  EXPECT_EQ(HTEQEmulationCfaMember::reduceMemberName(".//hw_emu.xml"), "hw_emu.xml");
  // A name far longer than any archive allows still reduces without recursion.
  EXPECT_EQ(HTEQEmulationCfaMember::reduceMemberName("./" + std::string(1 << 20, 'a')).size(), 1u << 20);
}

TEST(HTEQEmulationReaders, ParseFromCfaReadsBothFormsWithOrWithoutDotSlash) {
  zr_test::TempDir dir;
  const std::string zip = makeArchive(dir);
  for (const std::string prefix : {"", "./", ".//"}) {
    SCOPED_TRACE(prefix);
    HTEQEmulations fromXml;
    HTEQEmulationXMLReader::parseFromCfa(zip, prefix + "hw_emu/hw_emu.xml", &fromXml);
    HTEQEmulations fromJson;
    HTEQEmulationJsonReader::parseFromCfa(zip, prefix + "hw_emu/hw_emu.json", &fromJson);
    // Only the JSON form carries install paths and the metadata version.
    EXPECT_EQ(describe(fromXml), "|hw_emu=EMU_HPFM:emu/emu.hpfm@;TOP_BD:emu/emu.bd@;|second=");
    EXPECT_EQ(describe(fromJson), "2.1|hw_emu=EMU_HPFM:emu/emu.hpfm@/opt/emu;TOP_BD:emu/emu.bd@;|second=");
  }
}

TEST(HTEQEmulationReaders, ParseFromCfaRefusesMissingMembersArchivesAndBadContent) {
  zr_test::TempDir dir;
  const std::string zip = makeArchive(dir);
  HTEQEmulations model;
  // The member is named as it was looked for, after the reduction.
  EXPECT_THROW_MSG(HTEQEmulationXMLReader::parseFromCfa(zip, "./emu/emu.xml", &model), HEXError,
                   zip + "' has no member 'emu/emu.xml'");
  EXPECT_THROW(HTEQEmulationJsonReader::parseFromCfa(zip, "hw_emu.json", &model), HEXError);
  EXPECT_THROW(HTEQEmulationXMLReader::parseFromCfa(dir.file("absent.cfa"), "hw_emu/hw_emu.xml", &model),
               HEXError);
  const std::string notZip = dir.write("text.cfa", "this is no archive");
  EXPECT_THROW(HTEQEmulationJsonReader::parseFromCfa(notZip, "hw_emu/hw_emu.json", &model), HEXError);
  EXPECT_THROW(HTEQEmulationXMLReader::parseFromCfa(zip, "hw_emu/hw_emu.xml", nullptr), HEXAlgException);
  EXPECT_THROW(HTEQEmulationJsonReader::parseFromCfa(zip, "hw_emu/hw_emu.json", nullptr), HEXAlgException);
  // Content that is not of the form read.
  EXPECT_THROW(HTEQEmulationXMLReader::parseFromCfa(zip, "hw_emu/broken.xml", &model), HXMLException);
  EXPECT_THROW(HTEQEmulationJsonReader::parseFromCfa(zip, "hw_emu/broken.json", &model), HEXDataException);
  // Each form read as the other is refused, too.
  EXPECT_THROW(HTEQEmulationXMLReader::parseFromCfa(zip, "hw_emu/hw_emu.json", &model), HXMLException);
  EXPECT_THROW(HTEQEmulationJsonReader::parseFromCfa(zip, "hw_emu/hw_emu.xml", &model), HEXDataException);
  EXPECT_TRUE(model.getEmulations().empty());
}
