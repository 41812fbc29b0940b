#ifndef TESTS_HWCORE_HWTESTPLATFORM_H
#define TESTS_HWCORE_HWTESTPLATFORM_H

// A concrete hardware platform for tests: every operation the archive-backed
// platform fills answers from a small table the test sets.

#include <boost/property_tree/ptree.hpp>
#include <map>
#include <string>
#include <vector>

#include "platform/HTEQHardwarePlatform.h"
#include "support/TestSupport.h"

namespace hwcore_test {

class TestPlatform : public HTEQHardwarePlatform {
 public:
  // File type word to member name; getFile answers from it.
  std::map<std::string, std::string> files;
  std::string interfaceDesc;

  std::string getBoardPart() const override { return std::string(); }
  std::string getBoardRepo() const override { return std::string(); }
  std::string getBoardConnectionsString() const override { return std::string(); }
  std::string getLockedBoardConnectionsString() const override { return std::string(); }
  std::string getUnlockedBoardConnectionsString() const override { return std::string(); }
  std::string getVersion() const override { return "1.0"; }
  std::string getDeviceName() const override { return std::string(); }
  unsigned int getNumDDRs() const override { return 0; }
  std::string getMemType() const override { return std::string(); }
  std::string getMemSize() const override { return std::string(); }
  std::string getInterfaceDesc() const override { return interfaceDesc; }
  void getBoardImgZipEntries(StringVector&) const override {}
  void getTargetCategories(StringVector&) const override {}
  void getDevices(TEQDeviceVec&) const override {}
  HPLDevice* getDevice(const std::string&) const override { return nullptr; }
  unsigned int getNumComputeUnits() const override { return 0; }
  std::string getHostArch() const override { return std::string(); }
  bool hasDimmConnectors() const override { return false; }
  void getDimmConnectors(StringVector&) const override {}
  void getLockedDimmConnectors(StringVector&) const override {}
  void getConnectedDimmConnectors(StringVector&, StringVector&) const override {}
  std::string getConnectorDisplayName(const std::string&) const override { return std::string(); }
  void getValidSLRNames(StringVector&) const override {}
  std::string getFile(const std::string& name) const override {
    const auto it = files.find(name);
    return it == files.end() ? std::string() : it->second;
  }
  std::string getFile(HTEQPfmFileTypes::FileType type) const override {
    return getFile(HTEQPfmFileTypes::toString(type));
  }
  bool hasFile(const std::string& name) const override { return !getFile(name).empty(); }
  bool hasFile(HTEQPfmFileTypes::FileType type) const override { return !getFile(type).empty(); }
  std::string getExtMetaJsonAsString() const override { return std::string(); }
  void getExtMetaJsonAsPtree(boost::property_tree::ptree&) const override {}
  void setComputedDesignIntent(HTEQDesignIntentStorage::Key key, bool value) override {
    getDesignIntent().setComputedValue(key, value);
  }
  void setExplicitDesignIntent(HTEQDesignIntentStorage::Key key, bool value) override {
    getDesignIntent().setExplicitValue(key, value);
  }
};

using zr_test::jsonTree;

// The top-level keys in order.
inline std::vector<std::string> keysOf(const boost::property_tree::ptree& tree) {
  std::vector<std::string> keys;
  for (const auto& child : tree) keys.push_back(child.first);
  return keys;
}

}  // namespace hwcore_test

#endif
