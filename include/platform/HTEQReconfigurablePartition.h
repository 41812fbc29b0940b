#ifndef PLATFORM_HTEQRECONFIGURABLEPARTITION_H
#define PLATFORM_HTEQRECONFIGURABLEPARTITION_H

#include <string>

#include "platform/JSONSerializable.h"

class HTEQHardwarePlatform;

// One reconfigurable partition of a descriptor: its id, its hardware files, and
// the hardware objects attached for them. The objects are not owned.
class ZR_PLATFORM_API HTEQReconfigurablePartition : public teq_platform::JSONSerializable {
 public:
  explicit HTEQReconfigurablePartition(unsigned int id);
  ~HTEQReconfigurablePartition() override;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  unsigned int getID() const { return id_; }
  HTEQHardwarePlatform* getHardwarePlatform() const { return hardwarePlatform_; }
  HTEQHardwarePlatform* getHardwareEmulationPlatform() const { return hardwareEmulationPlatform_; }
  const std::string& getHardwarePlatformFile() const { return hardwarePlatformFile_; }
  const std::string& getHardwareEmulationPlatformFile() const { return hardwareEmulationPlatformFile_; }
  void setHardwarePlatform(HTEQHardwarePlatform* p) { hardwarePlatform_ = p; }
  void setHardwareEmulationPlatform(HTEQHardwarePlatform* p) { hardwareEmulationPlatform_ = p; }
  void setHardwarePlatformFile(const std::string& f) { hardwarePlatformFile_ = f; }
  void setHardwareEmuPlatformFile(const std::string& f) { hardwareEmulationPlatformFile_ = f; }

  bool hasHardwareEmulationPlatform() const { return hardwareEmulationPlatform_ != nullptr; }
  bool hasDistinctHardwareEmulationPlatform() const { return !hardwareEmulationPlatformFile_.empty(); }

 private:
  unsigned int id_;
  HTEQHardwarePlatform* hardwarePlatform_ = nullptr;
  HTEQHardwarePlatform* hardwareEmulationPlatform_ = nullptr;
  std::string hardwarePlatformFile_;
  std::string hardwareEmulationPlatformFile_;
};

#endif
