#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>

#include "hardware/HwTestPlatform.h"
#include "host/HEXAll.h"
#include "platform/HTEQDesignIPInstance.h"
#include "platform/HTEQReconfigPartition.h"
#include "platform/HTEQTilHardware.h"
#include "platform/HTEQTilPartition.h"
#include "support/ExpectThrowMsg.h"

using hwcore_test::jsonTree;
using zr_test::flatJson;

TEST(HTEQDesignIPInstance, ConfigKeysAreWrittenInOrderAndAddedOnce) {
  HTEQDesignIPInstance ip;
  ip.setInstanceName("inst");
  ip.setVLNV("v:l:n:1.0");
  ip.addConfigParam("z.key", "1");
  ip.addConfigParam("a", "2");
  EXPECT_EQ(flatJson(ip), R"({"vlnv":"v:l:n:1.0","instance":"inst","configuration":{"a":"2","z.key":"1"}})");
  EXPECT_THROW_MSG(ip.addConfigParam("a", "2"), HEXAlgException,
                   "Attempt to readd Design IP Instance Config Param key: 'a' is not allowed!");
  HTEQDesignIPInstance::ConfigMap out{{"old", "x"}};
  ip.getConfigParamMap(out);
  EXPECT_EQ(out, (HTEQDesignIPInstance::ConfigMap{{"a", "2"}, {"z.key", "1"}}));
}

TEST(HTEQReconfigPartition, WritesOnlySetIds) {
  HTEQReconfigPartition p;
  EXPECT_EQ(flatJson(p), "{}");
  p.setNodeID(4294967295u);
  p.setTILPuID(3);
  EXPECT_EQ(flatJson(p), R"({"nodeID":"4294967295","tilngineIDs":{"puID":"3"}})");
  p.setDesignID(1);
  p.setParentID(2);
  p.setFunctionID(3);
  p.setTILPlInterfaceID(4);
  p.setTILNodeID(5);
  p.setTILUniqueID(6);
  const auto tree = jsonTree(p);
  EXPECT_EQ(hwcore_test::keysOf(tree),
            (std::vector<std::string>{"designID", "parentID", "nodeID", "functionID", "tilngineIDs"}));
  EXPECT_EQ(hwcore_test::keysOf(tree.get_child("tilngineIDs")),
            (std::vector<std::string>{"plInterfaceID", "nodeID", "uniqueID", "puID"}));
}

TEST(HTEQTilHardware, ArchitectureNames) {
  EXPECT_EQ(HTEQTilHardware::stringToArch("none"), HTEQTilHardware::NO_TIL);
  EXPECT_EQ(HTEQTilHardware::stringToArch("None"), HTEQTilHardware::NO_TIL);
  EXPECT_EQ(HTEQTilHardware::stringToArch("til"), HTEQTilHardware::TIL1);
  EXPECT_EQ(HTEQTilHardware::stringToArch("Til1"), HTEQTilHardware::TIL1);
  EXPECT_EQ(HTEQTilHardware::stringToArch("tilml"), HTEQTilHardware::TILML);
  EXPECT_EQ(HTEQTilHardware::stringToArch("TIL2PK"), HTEQTilHardware::TIL2PK);
  EXPECT_EQ(HTEQTilHardware::archToString(static_cast<HTEQTilHardware::Arch>(17)), "NO_TIL");
  HTEQTilHardware hw;
  hw.setArch("TILML");
  EXPECT_THROW_MSG(hw.setArch("TIL9"), HEXAlgException,
                   "HTEQTilHardware::setArch() - Invalid til architecture specified: TIL9");
  EXPECT_EQ(hw.getArchAsString(), "TILML");
}

TEST(HTEQTilHardware, JsonOmitsZeros) {
  HTEQTilHardware hw;
  EXPECT_EQ(flatJson(hw), "{}");
  hw.setArch(HTEQTilHardware::TIL2P);
  hw.setNpiBaseAddress(4026531840u);
  hw.setStartCoreRow(1);
  hw.setNumCoreRows(8);
  hw.setStartShimRow(5);  // no shim rows: not written
  EXPECT_EQ(flatJson(hw),
            R"({"arch":"TIL2P","npiBaseAddress":"4026531840","coreRows":{"start":"1","num":"8"}})");
}

TEST(HTEQTilPartition, ChildrenLookupAndJson) {
  HTEQTilPartition root(0, 10);
  root.tilInst("ai");
  EXPECT_TRUE(root.isPartition());
  HTEQTilPartition& first = root.addPartition();
  first.startColumn(2);
  first.numColumns(3);
  first.tilInst("c1");
  HTEQTilPartition& second = root.addPartition();
  second.startColumn(2);
  second.numColumns(3);
  second.tilInst("c2");
  EXPECT_EQ(root.findPartition(2, 3).tilInst(), "c1");
  EXPECT_FALSE(root.findPartition(2, 4).isPartition());
  EXPECT_EQ(&root.findPartition(9, 9), &HTEQTilPartition::emptyPartition());
  EXPECT_TRUE(root.hasPartition("c2"));
  EXPECT_FALSE(root.hasPartition("C2"));
  EXPECT_EQ(flatJson(root), R"({"tilInst":"ai","startColumn":"0","numColumns":"10"})");
  HTEQTilPartition copy = root;
  EXPECT_EQ(copy, root);
  copy.partitions().back().uuid("u");
  EXPECT_NE(copy, root);
  copy.clear();
  EXPECT_EQ(copy, HTEQTilPartition());
}

TEST(HTEQTilPartition, FromJsonReadsAFlatRoot) {
  boost::property_tree::ptree node;
  node.put("tilInst", "ai0");
  node.put("startColumn", "4");
  node.put("numColumns", "6");
  node.put("til_pl_intf_id", "0xab");
  HTEQTilPartition p;
  p.fromJSON(node);
  EXPECT_TRUE(p.isRoot());
  EXPECT_EQ(p.tilInst(), "ai0");
  EXPECT_EQ(p.startColumn(), 4);
  EXPECT_EQ(p.numColumns(), 6);
  EXPECT_EQ(p.uuid(), "");
  EXPECT_EQ(p.plIntefaceID(), "0xab");
}
