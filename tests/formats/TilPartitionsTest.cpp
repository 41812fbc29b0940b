#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "hardware/HwTestPlatform.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HTEQTilPartitionsJsonReader.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/ZipTestSupport.h"

using hwcore_test::jsonTree;
using hwcore_test::TestPlatform;
using zr_test::makeZip;

namespace {

using Members = std::vector<std::pair<std::string, std::string>>;

const char* const kPartitions = R"({
  "TIL": {
    "ai_a": {
      "startColumn": 0, "numColumns": 20, "uuid": "u-a", "til_pl_intf_id": "7",
      "partitions": {
        "x": {"startColumn": 0, "numColumns": 10, "uuid": "u-a0"},
        "y": {"startColumn": 0, "uuid": "ignored"},
        "z": {"startColumn": 10, "numColumns": 10}
      }
    },
    "ai_none": {"startColumn": 3},
    "ai_zero": {"numColumns": 0, "partitions": {"c": {"startColumn": 1, "numColumns": 1}}}
  }
})";

// A platform archive holding a tile-array project archive with these members.
std::string writePlatformWithProject(const zr_test::TempDir& dir, const Members& inner) {
  const std::string project = dir.file("project.tilprj");
  makeZip(project, inner);
  const std::string platform = dir.file("shell.lfa");
  makeZip(platform, {{"lfa.xml", "<x/>"}, {"sub/shell.tilprj", zr_test::readFile(project)}});
  HUTFile::rmRecursive(project);
  return platform;
}

// A platform, fixed unless said otherwise, whose archive holds a project with
// these members, listed as its TILPRJ file; the tool's temporary directory is tmp.
class TilProject : public ::testing::Test {
 protected:
  void load(const Members& inner, bool expandable = false) {
    p.setExpandable(expandable);
    p.setPlatformFile(writePlatformWithProject(dir, inner));
    p.files["TILPRJ"] = "sub/shell.tilprj";
  }
  zr_test::TempDir dir;
  zr_test::TempDir tmp;
  zr_test::ScopedTmpDir scoped{tmp.path()};
  TestPlatform p;
};

}  // namespace

TEST(HTEQTilPartitionsJsonReader, ReadsRootsAndOneLevelOfChildren) {
  zr_test::TempDir dir;
  TestPlatform p;
  p.parseTILPartitions(dir.write("til.json", kPartitions));
  const auto& parts = p.getTilPartitions();
  ASSERT_EQ(parts.size(), 2u);  // the node without numColumns is ignored
  const HTEQTilPartition& a = parts[0];
  EXPECT_TRUE(a.isRoot());
  EXPECT_EQ(a.tilInst(), "ai_a");
  EXPECT_EQ(a.numColumns(), 20);
  EXPECT_EQ(a.uuid(), "u-a");
  EXPECT_EQ(a.plIntefaceID(), "7");
  ASSERT_EQ(a.partitions().size(), 2u);
  EXPECT_FALSE(a.partitions()[0].isRoot());
  EXPECT_EQ(a.partitions()[0].tilInst(), "ai_a");  // children bear the root's name
  EXPECT_EQ(a.partitions()[0].uuid(), "u-a0");
  EXPECT_EQ(a.partitions()[1].startColumn(), 10);
  const HTEQTilPartition& zero = parts[1];
  EXPECT_FALSE(zero.isPartition());
  EXPECT_FALSE(zero.hasPartitions());
  EXPECT_EQ(&p.findTilPartition("ai_zero"), &zero);
  EXPECT_EQ(&p.findTilPartition("ai_none"), &HTEQTilPartition::emptyPartition());
  EXPECT_TRUE(p.hasTilPartition("ai_a"));
  EXPECT_FALSE(p.hasTilPartition("ai_zero"));
}

TEST(HTEQTilPartitionsJsonReader, MissingFileIsIgnoredAndBadJsonRaises) {
  zr_test::TempDir dir;
  TestPlatform p;
  p.parseTILPartitions(dir.file("absent.json"));
  EXPECT_TRUE(p.getTilPartitions().empty());
  const std::string bad = dir.write("bad.json", "{\"TIL\": ");
  EXPECT_THROW_MSG(p.parseTILPartitions(bad), HEXAlgException,
                   "An error occurred while parsing the til partitions json file: " + bad);
  p.parseTILPartitions(dir.write("other.json", "{\"NOT_TIL\": {}}"));
  EXPECT_TRUE(p.getTilPartitions().empty());
}

TEST_F(TilProject, FixedPlatformReadsThemOnceFromItsProject) {
  load({{"tilarchive/arch/til_partition.json", kPartitions}});
  EXPECT_TRUE(p.hasTilPartitions());
  EXPECT_EQ(p.getTilPartitions().size(), 2u);
  EXPECT_EQ(p.findTilPartition("ai_a").numColumns(), 20);
  EXPECT_EQ(p.getTilPartitions().size(), 2u);  // not read twice
  // The temporary files are gone.
  EXPECT_FALSE(HUTFile::exists(tmp.file("til_partitions.json")));
  EXPECT_FALSE(HUTFile::exists(tmp.file("shell.tilprj")));
  // A fixed platform does not write its partitions.
  EXPECT_EQ(jsonTree(p).count("tilPartitions"), 0u);
}

TEST_F(TilProject, ExpandablePlatformNeverReadsThem) {
  load({{"tilarchive/arch/til_partition.json", kPartitions}}, true);
  EXPECT_FALSE(p.hasTilPartitions());
  EXPECT_TRUE(p.getTilPartitions().empty());
  // Partitions added by a reader are written.
  p.addTilPartition(0, 4).tilInst("t0");
  EXPECT_EQ(jsonTree(p).get_child("tilPartitions").size(), 1u);
}

TEST_F(TilProject, MissingProjectLeavesThemEmpty) {
  load({{"other.json", "{}"}});  // listed, but without the partitions member
  EXPECT_FALSE(p.hasTilPartitions());
  TestPlatform q;
  q.setExpandable(false);
  q.setPlatformFile(p.getPlatformFile());
  EXPECT_FALSE(q.hasTilPartitions());  // no TILPRJ file listed
}

TEST_F(TilProject, MetaDataMapAndInterfaceId) {
  std::map<std::string, std::string> out{{"keep", "1"}};
  HTEQHardwarePlatform::parseMetaData(dir.write("none.json", "{\"Other\": []}"), out);
  EXPECT_EQ(out.size(), 1u);
  HTEQHardwarePlatform::parseMetaData(
      dir.write("m.json", R"({"MetaData": [{"name": "A", "value": "1"}, {"name": "B", "value": "2"}]})"),
      out);
  EXPECT_EQ(out, (std::map<std::string, std::string>{{"keep", "1"}, {"A", "1"}, {"B", "2"}}));

  EXPECT_EQ(TestPlatform().getTILPlInterfaceIDAsString(), "");
  load({{"tilarchive/morwen/tilprj_meta_data.json",
         R"({"MetaData": [{"name": "TIL_PL_INTF_ID_STR", "value": "0x1234"}]})"}});
  EXPECT_EQ(p.getTILPlInterfaceIDAsString(), "0x1234");
  EXPECT_FALSE(HUTFile::exists(tmp.file("tilprj_meta_data.json")));
}

TEST_F(TilProject, BadPartitionsFileRaisesOnceAndLeavesNoTemporary) {
  load({{"tilarchive/arch/til_partition.json", "{\"TIL\": ["}});
  EXPECT_THROW(p.hasTilPartitions(), HEXAlgException);
  EXPECT_FALSE(HUTFile::exists(tmp.file("til_partitions.json")));
  EXPECT_FALSE(p.hasTilPartitions());  // read once only
}
