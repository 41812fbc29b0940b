#include <gtest/gtest.h>

#include <string>

#include "platform/HTEQBootImg.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSystemConfig.h"
#include "support/TestSupport.h"

namespace {

using zr_test::jsonText;

// Setters called in an order unlike the key order, so that the text shows
// the order of toJSON and not the order of the calls.
void fillImage(HTEQBootImg& b) {
  b.setHwBootBin("hw");
  b.setQemuDevTree("qdt");
  b.setQemuBoot("qb");
  b.setQemuArgs("qa");
  b.setReadMe("rm");
  b.setMountPath("mp");
  b.setBootMode("bm");
  b.setRootFS("rfs");
  b.setImgData("id");
  b.setBif("bif");
  b.setType("t");
  b.setName("img");
}

void fillGroup(HTEQProcessorGroup& g) {
  g.setSysRoot("sr");
  g.setBSPLibraryPaths("bl");
  g.setBSPIncludePaths("bi");
  g.setHypervisorGuest(true);
  g.setLinkerOptions("lo");
  g.setCompilerOptions("co");
  g.setLibraryPaths("lp");
  g.setIncludePaths("ip");
  g.setOSName("linux");
  g.setOSPrettyName("Linux");
  g.setCpuInstance("ci");
  g.setArch("arch64");
  g.setCpuType("ct");
  g.setPrettyName("Grp");
  g.setName("grp");
}

}  // namespace

TEST(SoftwarePlatformJson, BootImageKeysInOrder) {
  HTEQBootImg b;
  fillImage(b);
  EXPECT_EQ(jsonText(b),
            "{\n"
            "    \"name\": \"img\",\n"
            "    \"type\": \"t\",\n"
            "    \"bif\": \"bif\",\n"
            "    \"data\": \"id\",\n"
            "    \"rootFileSystem\": \"rfs\",\n"
            "    \"bootMode\": \"bm\",\n"
            "    \"mountPath\": \"mp\",\n"
            "    \"readMe\": \"rm\",\n"
            "    \"qemuArgs\": \"qa\",\n"
            "    \"qemuBoot\": \"qb\",\n"
            "    \"qemuDevTree\": \"qdt\",\n"
            "    \"hwBootBin\": \"hw\"\n"
            "}\n");
  HTEQBootImg empty;
  EXPECT_EQ(jsonText(empty), "{\n}\n");
}

TEST(SoftwarePlatformJson, ProcessorGroupKeysInOrderWithoutArchitecture) {
  HTEQProcessorGroup g;
  fillGroup(g);
  EXPECT_EQ(jsonText(g),
            "{\n"
            "    \"name\": \"grp\",\n"
            "    \"prettyName\": \"Grp\",\n"
            "    \"cpuType\": \"ct\",\n"
            "    \"cpuInstance\": \"ci\",\n"
            "    \"osPrettyName\": \"Linux\",\n"
            "    \"osName\": \"linux\",\n"
            "    \"osIncludePaths\": \"ip\",\n"
            "    \"osLibraryPaths\": \"lp\",\n"
            "    \"osCompilerOptions\": \"co\",\n"
            "    \"osLinkerOptions\": \"lo\",\n"
            "    \"osHypervisorGuest\": \"true\",\n"
            "    \"osBSPIncludePaths\": \"bi\",\n"
            "    \"osBSPLibraryPaths\": \"bl\",\n"
            "    \"osSysRoot\": \"sr\"\n"
            "}\n");
  // The Boolean is always written, even on an otherwise empty group.
  HTEQProcessorGroup empty;
  EXPECT_EQ(jsonText(empty),
            "{\n"
            "    \"osHypervisorGuest\": \"false\"\n"
            "}\n");
}

TEST(SoftwarePlatformJson, SystemConfigKeysInOrderWithDerivedDefaults) {
  HTEQSystemConfig c;
  c.addRuntime("ocl");
  c.addRuntime("");
  c.addRuntime("cpp");
  c.addBootImg()->setName("boot");
  HTEQProcessorGroup* g = c.addProcessorGroup();
  g->setName("a53");
  g->setOSName("linux");
  c.setPrebuiltData("pre/data");
  c.setDesc("desc");
  c.setPrettyName("Cfg");
  c.setName("cfg");
  EXPECT_EQ(jsonText(c),
            "{\n"
            "    \"name\": \"cfg\",\n"
            "    \"prettyName\": \"Cfg\",\n"
            "    \"description\": \"desc\",\n"
            "    \"defaultProcessorGroup\": \"a53\",\n"
            "    \"defaultBootImage\": \"boot\",\n"
            "    \"prebuiltData\": \"pre\\/data\",\n"
            "    \"qemu\": \"false\",\n"
            "    \"processorGroups\": [\n"
            "        {\n"
            "            \"name\": \"a53\",\n"
            "            \"osName\": \"linux\",\n"
            "            \"osHypervisorGuest\": \"false\"\n"
            "        }\n"
            "    ],\n"
            "    \"bootImages\": [\n"
            "        {\n"
            "            \"name\": \"boot\"\n"
            "        }\n"
            "    ],\n"
            "    \"runtimes\": [\n"
            "        \"ocl\",\n"
            "        \"cpp\"\n"
            "    ]\n"
            "}\n");
  HTEQSystemConfig empty;
  empty.setSupportsQemu(true);
  EXPECT_EQ(jsonText(empty),
            "{\n"
            "    \"qemu\": \"true\"\n"
            "}\n");
}

TEST(SoftwarePlatformJson, SoftwarePlatformKeysInOrder) {
  HTEQSoftwarePlatform sw;
  EXPECT_EQ(jsonText(sw), "{\n}\n");

  HTEQSystemConfig* a = sw.addSystemConfig();
  a->setName("a");
  HTEQSystemConfig* b = sw.addSystemConfig();
  b->setName("b");
  b->setSupportsQemu(true);
  sw.setLinuxRootFileSystemPath("/rootfs");
  // No stored default: the first configuration's name is written.
  EXPECT_EQ(jsonText(sw),
            "{\n"
            "    \"linuxRootFileSystemPath\": \"\\/rootfs\",\n"
            "    \"defaultConfig\": \"a\",\n"
            "    \"systemConfigurations\": [\n"
            "        {\n"
            "            \"name\": \"a\",\n"
            "            \"qemu\": \"false\"\n"
            "        },\n"
            "        {\n"
            "            \"name\": \"b\",\n"
            "            \"qemu\": \"true\"\n"
            "        }\n"
            "    ]\n"
            "}\n");
}
