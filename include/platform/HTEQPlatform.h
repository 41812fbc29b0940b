#ifndef PLATFORM_HTEQPLATFORM_H
#define PLATFORM_HTEQPLATFORM_H

#include <cstddef>
#include <string>
#include <vector>

#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HTEQHardwarePlatform;
class HTEQReconfigurablePartition;
class HTEQSoftwarePlatform;

// One platform, however it was reached: through a descriptor (full platform),
// a hardware archive alone, or a software file alone (partial platforms). It
// owns its hardware, hardware emulation, partitions and software objects.
class ZR_PLATFORM_API HTEQPlatform : public teq_platform::JSONSerializable {
 public:
  HTEQPlatform();
  ~HTEQPlatform() override;
  HTEQPlatform(const HTEQPlatform&) = delete;
  HTEQPlatform& operator=(const HTEQPlatform&) = delete;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getVendor() const { return vendor_; }
  const std::string& getLibrary() const { return library_; }
  const std::string& getName() const { return name_; }
  const std::string& getVersion() const { return version_; }
  const std::string& getDescription() const { return description_; }
  const std::string& getPlatformFile() const { return platformFile_; }
  const std::string& getHardwarePlatformFile() const { return hardwarePlatformFile_; }
  const std::string& getHardwareEmuPlatformFile() const { return hardwareEmuPlatformFile_; }
  const std::string& getSoftwarePlatformFile() const { return softwarePlatformFile_; }
  void setVendor(const std::string& v) { vendor_ = v; }
  void setLibrary(const std::string& v) { library_ = v; }
  void setName(const std::string& v) { name_ = v; }
  void setVersion(const std::string& v) { version_ = v; }
  void setDescription(const std::string& v) { description_ = v; }
  void setPlatformFile(const std::string& v) { platformFile_ = v; }
  void setHardwarePlatformFile(const std::string& v) { hardwarePlatformFile_ = v; }
  void setHardwareEmuPlatformFile(const std::string& v) { hardwareEmuPlatformFile_ = v; }
  void setSoftwarePlatformFile(const std::string& v) { softwarePlatformFile_ = v; }

  bool isZdf() const { return zdf_; }
  void setZdf(bool v) { zdf_ = v; }
  bool isPartial() const { return partial_; }
  void setPartial(bool v) { partial_ = v; }
  bool isBad() const { return bad_; }
  void setBad(bool v) { bad_ = v; }
  const std::string& getBadReason() const { return badReason_; }
  void setBadReason(const std::string& v) { badReason_ = v; }

  // Pointer setters only store: the previous object is not deleted.
  void setHardwarePlatform(HTEQHardwarePlatform* p) { hardwarePlatform_ = p; }
  void setHardwareEmulationPlatform(HTEQHardwarePlatform* p) { hardwareEmulationPlatform_ = p; }
  void setDefaultRPHardwarePlatform(HTEQHardwarePlatform* p) { defaultRPHardwarePlatform_ = p; }
  void setDefaultRPHardwareEmulationPlatform(HTEQHardwarePlatform* p) {
    defaultRPHardwareEmulationPlatform_ = p;
  }
  void setDefaultRPId(unsigned int id) { defaultRPId_ = id; }
  unsigned int getDefaultRPId() const { return defaultRPId_; }
  // Both take ownership; a null pointer is ignored, and an object that cannot
  // be appended is deleted.
  void addReconfigurablePartition(HTEQReconfigurablePartition* rp);
  void addSoftwarePlatform(HTEQSoftwarePlatform* sw);
  const std::vector<HTEQSoftwarePlatform*>& getSoftwarePlatforms() const { return softwarePlatforms_.view(); }
  const std::vector<HTEQReconfigurablePartition*>& getReconfigurablePartitions() const {
    return reconfigurablePartitions_.view();
  }

  // A platform's unique name is its path.
  std::string getUniqueName() const { return platformFile_; }
  std::string getPlatformDir() const;
  std::string getPlatformBaseName() const;
  std::string getDeviceName() const;

  // The direct object, else the default partition's.
  HTEQHardwarePlatform* getHardwarePlatform() const;
  HTEQHardwarePlatform* getHardwareEmulationPlatform() const;
  HTEQSoftwarePlatform* getSoftwarePlatform() const;
  // Among equal ids the last partition wins.
  HTEQReconfigurablePartition* getReconfigurablePartition(unsigned int id) const;
  HTEQHardwarePlatform* getRPHardwarePlatform(unsigned int id) const;
  HTEQHardwarePlatform* getRPHardwareEmulationPlatform(unsigned int id) const;
  HTEQHardwarePlatform* getDefaultRPHardwarePlatform() const;
  HTEQHardwarePlatform* getDefaultRPHardwareEmulationPlatform() const;

  bool hasHWEmulationPlatform() const { return hardwareEmulationPlatform_ != nullptr; }
  bool hasDistinctHardwareEmulationPlatform() const { return !hardwareEmuPlatformFile_.empty(); }
  bool hasReconfigurablePartitions() const { return !reconfigurablePartitions_.empty(); }
  bool hasRPHardwareEmulationPlatform() const;

  bool supportsHardware() const;
  bool supportsSWEmulation() const;
  bool supportsHWEmulation() const;
  bool supportsTwoHwEmuBd() const;
  bool hasDimmConnectors() const;
  void getDimmConnectors(std::vector<std::string>& out) const;
  bool isHWEmuPlatform() const;
  bool hasSimContent() const;
  bool isExpandable() const;
  bool isUnified() const;
  bool getDesignIntentDataCenter() const;
  bool getDesignIntentEmbedded() const;
  bool getDesignIntentExternalHost() const;
  bool getDesignIntentServerManaged() const;
  bool isFixed() const { return !isExpandable(); }
  bool isComplete() const { return !isPartial(); }
  void getTargetCategories(std::vector<std::string>& out) const;
  bool isHidden() const;
  // "acceleration", "fennick", "lorimar", "undefined", or "" without an
  // archive-backed hardware platform.
  std::string getTypeString() const;
  std::string getTypePrettyString() const;

 private:
  // The body of toJSON, for the tree writer and for the library's text writer.
  friend struct teq_platform::TextDispatch;
  template <class Writer>
  void writeJSON_(Writer& writer) const;

  // The direct hardware platform, else the default partition's object.
  HTEQHardwarePlatform* hardwareForQueries_() const;
  // The hardware objects the platform deletes, duplicates and nulls included:
  // its own two, then two per partition.
  std::size_t attachedHardwareCount_() const;
  HTEQHardwarePlatform* attachedHardware_(std::size_t i) const;

  std::string vendor_;
  std::string library_;
  std::string name_;
  std::string version_;
  std::string description_;
  std::string platformFile_;
  std::string hardwarePlatformFile_;
  std::string softwarePlatformFile_;
  std::string hardwareEmuPlatformFile_;
  HTEQHardwarePlatform* hardwarePlatform_ = nullptr;
  HTEQHardwarePlatform* hardwareEmulationPlatform_ = nullptr;
  HSTOwningVector<HTEQReconfigurablePartition> reconfigurablePartitions_;
  HSTOwningVector<HTEQSoftwarePlatform> softwarePlatforms_;
  HTEQHardwarePlatform* defaultRPHardwarePlatform_ = nullptr;
  HTEQHardwarePlatform* defaultRPHardwareEmulationPlatform_ = nullptr;
  bool zdf_ = false;
  bool partial_ = false;
  bool bad_ = false;
  std::string badReason_;
  unsigned int defaultRPId_ = 0;
};

#endif
