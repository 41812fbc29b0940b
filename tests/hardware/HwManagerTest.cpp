#include <gtest/gtest.h>

#include "host/HHSMHwManager.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"

TEST(HHSMHwManager, DatabasesAreNamedAfterTheirFileAndFoundByName) {
  zr_test::TempDir dir;
  const std::string file = dir.write("board.hwd", "definition");
  HHSMHwManager manager;
  EXPECT_FALSE(manager.openDefFile(dir.file("absent.hwd")));
  EXPECT_EQ(manager.createHardwareDb(dir.file("absent.hwd")), nullptr);
  EXPECT_TRUE(manager.openDefFile(file));
  HHSMHardwareDb* first = manager.createHardwareDb(file, {{"top/rp0", "rm0.lfa"}});
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->getName(), "board");
  EXPECT_EQ(first->getRmFiles().at("top/rp0"), "rm0.lfa");
  HHSMHardwareDb* second = manager.createHardwareDb(file);
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->getName(), "board_1");
  EXPECT_EQ(manager.getHardwareDb("board"), first);
  EXPECT_EQ(manager.getHardwareDb("board_1"), second);
  EXPECT_EQ(manager.getHardwareDb("other"), nullptr);
  EXPECT_EQ(manager.createHardwareDbFromHDF(nullptr), nullptr);
}

TEST(HHSMHwManager, ProcessWideManagerCanBeReplaced) {
  HHSMHwManager* defaultManager = HHSMHwManager::getHsmHwManager();
  ASSERT_NE(defaultManager, nullptr);
  HHSMHwManager mine;
  zr_test::ScopedInstance<HHSMHwManager> installed(&mine);
  EXPECT_EQ(HHSMHwManager::getHsmHwManager(), &mine);
  // Null puts the default back.
  HHSMHwManager::setHsmHwManager(nullptr);
  EXPECT_EQ(HHSMHwManager::getHsmHwManager(), defaultManager);
}

TEST(HHDFHwDef, DefinitionIsCopiedAndNamesItsTopModule) {
  zr_test::TempDir dir;
  zr_test::TempDir staging;
  EXPECT_EQ(HHDFHwDefUtils::getHDF(dir.file("missing.hdf")), nullptr);
  const auto hdf = HHDFHwDefUtils::getHDF(dir.write("top_wrapper.hdf", "bits"));
  ASSERT_NE(hdf, nullptr);
  EXPECT_EQ(hdf->getHierTopModuleName(), "top_wrapper");
  EXPECT_TRUE(hdf->write(staging.path()));
  EXPECT_EQ(zr_test::readFile(staging.file("top_wrapper.hdf")), "bits");
  EXPECT_FALSE(hdf->write(staging.file("no/such/dir")));
  HHSMHwManager manager;
  HHSMHardwareDb* db = manager.createHardwareDbFromHDF(hdf.get());
  ASSERT_NE(db, nullptr);
  EXPECT_EQ(db->getName(), "top_wrapper");
}
