#ifndef PLATFORM_HPLPLATFORM_H
#define PLATFORM_HPLPLATFORM_H

// PLACEHOLDER: the archive-backed hardware platform. The hardware model
// replaces this file as a whole.

#include <boost/property_tree/ptree_fwd.hpp>

#include "platform/HTEQHardwarePlatform.h"

class ZR_PLATFORM_API HPLPlatform : public HTEQHardwarePlatform {
 public:
  HPLPlatform();
  ~HPLPlatform() override;
  std::string getBoardPart() const override { return std::string(); }
  std::string getBoardRepo() const override { return std::string(); }
  std::string getBoardConnectionsString() const override { return std::string(); }
  std::string getLockedBoardConnectionsString() const override { return std::string(); }
  std::string getUnlockedBoardConnectionsString() const override { return std::string(); }
  std::string getVersion() const override { return std::string(); }
  std::string getDeviceName() const override { return std::string(); }
  unsigned int getNumDDRs() const override { return 0; }
  std::string getMemType() const override { return std::string(); }
  std::string getMemSize() const override { return std::string(); }
  std::string getInterfaceDesc() const override { return std::string(); }
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
  std::string getFile(const std::string&) const override { return std::string(); }
  std::string getFile(HTEQPfmFileTypes::FileType) const override { return std::string(); }
  bool hasFile(const std::string&) const override { return false; }
  bool hasFile(HTEQPfmFileTypes::FileType) const override { return false; }
  std::string getExtMetaJsonAsString() const override { return std::string(); }
  void getExtMetaJsonAsPtree(boost::property_tree::ptree&) const override {}
  void setComputedDesignIntent(HTEQDesignIntentStorage::Key key, bool value) override {
    getDesignIntent().setComputedValue(key, value);
  }
  void setExplicitDesignIntent(HTEQDesignIntentStorage::Key key, bool value) override {
    getDesignIntent().setExplicitValue(key, value);
  }
};

#endif
