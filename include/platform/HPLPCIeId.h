#ifndef PLATFORM_HPLPCIEID_H
#define PLATFORM_HPLPCIEID_H

#include <string>

#include "platform/JSONSerializable.h"

// The PCIe identifiers of a board, as text.
class ZR_PLATFORM_API HPLPCIeId : public teq_platform::JSONSerializable {
 public:
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getVendor() const { return vendor_; }
  void setVendor(const std::string& v) { vendor_ = v; }
  const std::string& getDevice() const { return device_; }
  void setDevice(const std::string& v) { device_ = v; }
  const std::string& getSubsystem() const { return subsystem_; }
  void setSubsystem(const std::string& v) { subsystem_ = v; }
  const std::string& getFeatureId() const { return featureId_; }
  void setFeatureId(const std::string& v) { featureId_ = v; }

 private:
  std::string vendor_;
  std::string device_;
  std::string subsystem_;
  std::string featureId_;
};

#endif
