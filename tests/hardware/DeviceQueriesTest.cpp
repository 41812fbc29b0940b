
#include <gtest/gtest.h>

#include <memory>

#include "hardware/HwTestPlatform.h"
#include "platform/HPLDevice.h"
#include "platform/HTEQSystemClock.h"

using hwcore_test::jsonTree;

namespace {

// A test platform that owns a list of devices.
class DevicePlatform : public hwcore_test::TestPlatform {
 public:
  HPLDevice* addDevice(const std::string& name) {
    devices_.push_back(std::make_unique<HPLDevice>());
    devices_.back()->setName(name);
    return devices_.back().get();
  }
  void getDevices(TEQDeviceVec& out) const override {
    for (const auto& d : devices_) out.push_back(d.get());
  }
  HPLDevice* getDevice(const std::string& name) const override {
    for (const auto& d : devices_) {
      if (d->getName() == name) return d.get();
    }
    return nullptr;
  }

 private:
  std::vector<std::unique_ptr<HPLDevice>> devices_;
};

}  // namespace

TEST(DeviceQueries, PartFieldsComeFromTheFirstDevice) {
  DevicePlatform p;
  EXPECT_EQ(p.getPartName(), "");
  EXPECT_EQ(p.getFpgaPart(), "");
  EXPECT_EQ(p.getFpgaDevice(), "");
  HPLDevice* first = p.addDevice("fpga1");
  first->setPartName("arch-dev-pkg-1");
  first->setPartArch("arch");
  first->setPartDevice("dev");
  HPLDevice* second = p.addDevice("fpga0");
  second->setPartArch("other");
  EXPECT_EQ(p.getPartName(), "arch-dev-pkg-1");
  EXPECT_EQ(p.getFpgaPart(), "arch");
  EXPECT_EQ(p.getFpgaDevice(), "dev");
  const auto tree = jsonTree(p);
  EXPECT_EQ(tree.get<std::string>("fpgaPart"), "arch");
  EXPECT_EQ(tree.get<std::string>("fpgaDevice"), "dev");
  first->setPartName("");
  EXPECT_EQ(p.getPartName(), "fpga1");  // a device without a part name answers its name
}

TEST(DeviceQueries, ModuleNameAndScalableClocksComeFromFpga0) {
  DevicePlatform p;
  EXPECT_EQ(p.getReconfigModuleName(), "");
  EXPECT_FALSE(p.hasUserDefinedScalableClocks());
  HPLDevice* other = p.addDevice("fpga1");
  other->getCore().setReconfigModuleName("wrong");
  other->addSystemClock("clk", "100");
  EXPECT_EQ(p.getReconfigModuleName(), "");
  EXPECT_FALSE(p.hasScalableClocks());
  HPLDevice* fpga0 = p.addDevice("fpga0");
  fpga0->getCore().setReconfigModuleName("rm_top");
  EXPECT_EQ(p.getReconfigModuleName(), "rm_top");
  EXPECT_FALSE(p.hasUserDefinedScalableClocks());
  fpga0->addSystemClock("kernel_clk", "300");
  EXPECT_TRUE(p.hasUserDefinedScalableClocks());
  EXPECT_TRUE(p.hasScalableClocks());
}
