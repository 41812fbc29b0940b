#ifndef PLATFORM_HTEQHARDWAREPLATFORM_H
#define PLATFORM_HTEQHARDWAREPLATFORM_H

// PLACEHOLDER: the smallest hardware platform the descriptor and the loader
// need. The hardware model replaces this file as a whole.

#include <string>
#include <vector>

#include "platform/HTEQDesignIntentStorage.h"
#include "platform/JSONSerializable.h"

class ZR_PLATFORM_API HTEQHardwarePlatform : public teq_platform::JSONSerializable {
 public:
  HTEQHardwarePlatform();
  ~HTEQHardwarePlatform() override;
  HTEQHardwarePlatform(const HTEQHardwarePlatform&) = delete;
  HTEQHardwarePlatform& operator=(const HTEQHardwarePlatform&) = delete;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  virtual std::string getDeviceName() const = 0;
  virtual void getTargetCategories(std::vector<std::string>& out) const = 0;
  virtual bool hasDimmConnectors() const = 0;
  virtual void getDimmConnectors(std::vector<std::string>& out) const = 0;
  virtual std::string getFile(const std::string& name) const = 0;

  const std::string& getPlatformFile() const { return platformFile_; }
  void setPlatformFile(const std::string& f) { platformFile_ = f; }
  bool supportsHardware() const { return supportsHardware_; }
  bool supportsSWEmulation() const { return supportsSWEmulation_; }
  bool supportsHWEmulation() const { return supportsHWEmulation_; }
  bool supportsTwoHwEmuBd() const { return supportsTwoHwEmuBd_; }
  bool isHWEmuPlatform() const { return isHWEmuPlatform_; }
  bool isExpandable() const { return expandable_; }
  bool isUnifiedPlatform() const { return unifiedPlatform_; }
  bool hasSimContent() const { return !getFile("SIM_BINARY").empty(); }
  void setIsChildHardwareEmuPlatform(bool v) { isChildHardwareEmuPlatform_ = v; }
  bool isChildHardwareEmuPlatform() const { return isChildHardwareEmuPlatform_; }
  const HTEQDesignIntentStorage& getDesignIntent() const { return designIntent_; }

  // ".cfa" and ".lfa", compared exactly.
  static bool isValidPlatformExt(const std::string& extension);

 protected:
  bool unifiedPlatform_ = false;
  bool expandable_ = true;
  bool supportsSWEmulation_ = true;
  bool supportsHardware_ = true;
  bool supportsHWEmulation_ = false;
  bool isHWEmuPlatform_ = false;
  bool isChildHardwareEmuPlatform_ = false;
  bool supportsTwoHwEmuBd_ = false;
  HTEQDesignIntentStorage designIntent_;
  std::string platformFile_;
};

#endif
