#ifndef TESTS_HWCORE_HWTESTPLATFORM_H
#define TESTS_HWCORE_HWTESTPLATFORM_H

// A concrete hardware platform for tests: every operation the archive-backed
// platform fills answers from a small table the test sets.

#include <zip.h>

#include <boost/property_tree/ptree.hpp>
#include <map>
#include <stdexcept>
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

using zr_test::jsonText;
using zr_test::jsonTree;

// The top-level keys in order.
inline std::vector<std::string> keysOf(const boost::property_tree::ptree& tree) {
  std::vector<std::string> keys;
  for (const auto& child : tree) keys.push_back(child.first);
  return keys;
}

// Writes a zip archive whose members are the given names and contents.
inline void writeZip(const std::string& path, const std::map<std::string, std::string>& members) {
  int err = 0;
  zip_t* za = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &err);
  if (za == nullptr) throw std::runtime_error("cannot create " + path);
  for (const auto& m : members) {
    zip_source_t* src = zip_source_buffer(za, m.second.data(), m.second.size(), 0);
    if (src == nullptr || zip_file_add(za, m.first.c_str(), src, ZIP_FL_OVERWRITE) < 0) {
      zip_source_free(src);
      zip_discard(za);
      throw std::runtime_error("cannot add " + m.first);
    }
  }
  if (zip_close(za) != 0) throw std::runtime_error("cannot write " + path);
}

}  // namespace hwcore_test

#endif
