#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/HTEQEnv.h"
#include "platform/HTEQPfmFileTypes.h"
#include "platform/HTEQTmpDirObject.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"

using namespace zr_test;
using zr_test::ScopedInstance;

// The product is the known name standing furthest right in the application
// root; in unit-test mode "teq" is ignored and the default is "selbrook".
TEST(HTEQEnv, ProductNameFromTheApplicationRoot) {
  EXPECT_EQ(HTEQEnv::computeProductName("/tools/Morwen/2026/selbrook", false), "selbrook");
  EXPECT_EQ(HTEQEnv::computeProductName("/tools/selbrook/2026/MORWEN", false), "morwen");
  EXPECT_EQ(HTEQEnv::computeProductName("/tools/delmar/teq", false), "teq");
  EXPECT_EQ(HTEQEnv::computeProductName("/opt/other", false), "unknown");
  EXPECT_EQ(HTEQEnv::computeProductName("", false), "unknown");
  EXPECT_EQ(HTEQEnv::computeProductName("/tools/delmar/teq", true), "delmar");
  EXPECT_EQ(HTEQEnv::computeProductName("/tools/teq", true), "selbrook");
  EXPECT_EQ(HTEQEnv::computeProductName("/opt/other", true), "selbrook");
}

TEST(HTEQEnv, ProductNameIsComputedOnceFromTheApplicationRoot) {
  HUTEnv env;
  env.setAppRoots({"/install/Delmar/2026"});
  ScopedInstance<HUTEnv> installed(&env);
  const std::string first = HTEQEnv::getProductName();
  env.setAppRoots({"/install/morwen"});
  EXPECT_EQ(HTEQEnv::getProductName(), first);
  EXPECT_EQ(first, "delmar");
}

// Lookups ignore case; an unknown word gives the end of each table.
TEST(HTEQPfmFileTypes, NamesAndLookups) {
  const int end = static_cast<int>(HTEQPfmFileTypes::getFileTypeMap().size());
  EXPECT_EQ(HTEQPfmFileTypes::toFileType("dcp"), HTEQPfmFileTypes::DCP);
  EXPECT_EQ(static_cast<int>(HTEQPfmFileTypes::toFileType("no such type")), end);
  EXPECT_EQ(static_cast<int>(HTEQPfmFileTypes::toFileType("Emu_Xml")), 28);
  EXPECT_EQ(static_cast<int>(HTEQPfmFileTypes::toTclFileType("DCP")),
            static_cast<int>(HTEQPfmFileTypes::getTclFileTypeMap().size()));
  EXPECT_EQ(static_cast<int>(HTEQPfmFileTypes::toTclFileType("pre_sys_link_tcl")), 0);
  EXPECT_EQ(HTEQPfmFileTypes::toString(static_cast<HTEQPfmFileTypes::FileType>(end)), "");
  EXPECT_EQ(HTEQPfmFileTypes::toString(HTEQPfmFileTypes::TCL_POST_ROUTE_TCL), "POST_ROUTE_TCL");
}

class HTEQTmpDirObjectTest : public ::testing::Test {
 protected:
  HTEQTmpDirObjectTest() { env_.setTmpDir(root_.path()); }
  TempDir root_;
  HUTEnv env_;
  ScopedInstance<HUTEnv> installed_{&env_};
};

TEST_F(HTEQTmpDirObjectTest, SameNameGivesTwoDirectoriesRemovedWithTheirObjects) {
  std::string a, b;
  {
    HTEQTmpDirObject one("work");
    HTEQTmpDirObject two("work");
    a = one.get();
    b = two.get();
    EXPECT_NE(a, b);
    EXPECT_TRUE(one.exists());
    EXPECT_TRUE(two.exists());
    // New and private: "work-" and six characters, mode 0700, never a
    // name already taken by someone else.
    EXPECT_EQ(a.rfind(root_.file("work-"), 0), 0u) << a;
    EXPECT_EQ(a.size(), root_.file("work-").size() + 6);
    struct stat st;
    ASSERT_EQ(::lstat(a.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0700u);
  }
  EXPECT_FALSE(HUTFile::exists(a));
  EXPECT_FALSE(HUTFile::exists(b));
}

TEST_F(HTEQTmpDirObjectTest, CreateRemovesThePreviousDirectory) {
  HTEQTmpDirObject obj("first");
  const std::string first = obj.get();
  writeFile(first + "/inner/file", "x");
  obj.create("second");
  EXPECT_FALSE(HUTFile::exists(first));
  EXPECT_TRUE(obj.exists());
  obj.deleteTmpDir();
  EXPECT_TRUE(obj.empty());
  EXPECT_FALSE(obj.exists());
}

TEST_F(HTEQTmpDirObjectTest, EmptyObjectDoesNothingAndFailedCreationStaysEmpty) {
  ComMsgCapture cap;
  {
    HTEQTmpDirObject none;
    EXPECT_TRUE(none.empty());
    EXPECT_FALSE(none.exists());
  }
  EXPECT_TRUE(cap.messages().empty());
  writeFile(root_.file("blocker"), "file, not a directory");
  HTEQTmpDirObject obj;
  EXPECT_THROW(obj.create("blocker/sub"), HEXUserException);
  EXPECT_TRUE(obj.empty());
}
