#include <gtest/gtest.h>

#include "host/HEXAll.h"
#include "platform/HPLBoard.h"
#include "platform/HPLDriver.h"
#include "support/TestSupport.h"

using zr_test::flatJson;

namespace {

// c0 connected and locked, c1 locked only, c2 connected only, c3 neither.
void addFourConnectors(HPLBoard& board) {
  board.addDimmConnector("c0", "Slot 0", "DIMM", "m0", "Module 0", true, true);
  board.addDimmConnector("c1", "Slot 1", "DIMM", "m1", "Module 1", false, true);
  board.addDimmConnector("c2", "Slot 2", "SODIMM", "m2", "Module 2", true, false);
  board.addDimmConnector("c3", "Slot 3", "DIMM", "", "", false, false);
}

}  // namespace

TEST(HPLBoard, ConnectorListsFollowConnectedAndLockedFlags) {
  HPLBoard board;
  EXPECT_FALSE(board.hasDimmConnectors());
  EXPECT_EQ("", board.getBoardConnectionsString());
  addFourConnectors(board);
  EXPECT_TRUE(board.hasDimmConnectors());

  std::vector<std::string> names{"kept"};
  board.getDimmConnectors(names);
  EXPECT_EQ((std::vector<std::string>{"kept", "c0", "c1", "c2", "c3"}), names);
  std::vector<std::string> locked;
  board.getLockedDimmConnectors(locked);
  EXPECT_EQ((std::vector<std::string>{"c0", "c1"}), locked);
  std::vector<std::string> connectors, modules;
  board.getConnectedDimmConnectors(connectors, modules);
  EXPECT_EQ((std::vector<std::string>{"c0", "c2"}), connectors);
  EXPECT_EQ((std::vector<std::string>{"m0", "m2"}), modules);

  EXPECT_EQ("c0 m0 c2 m2", board.getBoardConnectionsString());
  EXPECT_EQ("c0 m0", board.getLockedBoardConnectionsString());
  EXPECT_EQ("c2 m2", board.getUnlockedBoardConnectionsString());

  std::vector<HPLBoard::DimmConnector*> all{nullptr};
  board.getConnectorsVec(all);
  ASSERT_EQ(4u, all.size());
  EXPECT_EQ("SODIMM", all[2]->getType());
}

TEST(HPLBoard, ConnectorDisplayNameMatchesConnectorThenModuleIgnoringCase) {
  HPLBoard board;
  addFourConnectors(board);
  EXPECT_EQ("Slot 1", board.getConnectorDisplayName("C1"));
  EXPECT_EQ("Module 2", board.getConnectorDisplayName("M2"));
  EXPECT_EQ("", board.getConnectorDisplayName("nothing"));
  // An empty name matches the first connector without a module.
  EXPECT_EQ("", board.getConnectorDisplayName(""));
}

TEST(HPLBoard, ANewConnectorWritesItsDefaults) {
  HPLBoard board;
  EXPECT_EQ(flatJson(*board.addDimmConnector()), R"({"type":"DIMM","connected":"false","locked":"false"})");
}

TEST(HPLBoard, JSONOfABoardWithoutDrivers) {
  HPLBoard board;
  EXPECT_EQ(flatJson(board), "{}");
  board.setImgFileLdpi("l.png");
  board.setName("brd1");
  board.setVendor("acme");
  board.setBoardPart("acme:brd1:1.0");
  board.setImgFileHdpi("h.png");
  board.addDimmConnector("c0", "Slot 0", "DIMM", "m0", "Module 0", true, false);
  board.getWriteablePCIeId().setVendor("0x1234");
  board.getWriteablePCIeId().setFeatureId("0x1");
  EXPECT_EQ(flatJson(board),
            R"({"name":"brd1","vendor":"acme","boardPart":"acme:brd1:1.0","imageFileHdpi":"h.png",)"
            R"("imageFileLdpi":"l.png","connectors":[{"name":"c0","displayName":"Slot 0","type":"DIMM",)"
            R"("connectedName":"m0","connectedDisplayName":"Module 0","connected":"true","locked":"false"}],)"
            R"("pcie":{"vendor":"0x1234","featureId":"0x1"}})");
}

TEST(HPLBoard, ABoardWithADriverIsRefusedAndWritesNothing) {
  HPLBoard board;
  board.setName("brd1");
  board.addDriver()->setName("hostdrv");
  teq_platform::JSONObjectWriter writer;
  writer.addKey("before", std::string("x"));
  EXPECT_THROW(board.toJSON(writer), HEXAlgException);
  std::ostringstream out;
  writer.write(out);
  EXPECT_EQ("{\n    \"before\": \"x\"\n}\n", out.str());
}
