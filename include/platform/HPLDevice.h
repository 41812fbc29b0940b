#ifndef PLATFORM_HPLDEVICE_H
#define PLATFORM_HPLDEVICE_H

#include <map>
#include <string>

#include "platform/HPLCore.h"
#include "platform/HTEQDevice.h"
#include "platform/JSONSerializable.h"

// An FPGA device of an archive-backed platform: the part data of HTEQDevice,
// plus the device's core and its scalable system clocks.
class ZR_PLATFORM_API HPLDevice : public HTEQDevice, public teq_platform::JSONSerializable {
 public:
  using ClockMap = std::map<std::string, std::string>;

  HPLDevice();
  ~HPLDevice() override;
  HPLDevice(const HPLDevice&) = delete;
  HPLDevice& operator=(const HPLDevice&) = delete;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getType() const { return type_; }
  void setType(const std::string& v) { type_ = v; }
  HPLCore& getCore() { return core_; }
  const HPLCore& getReadOnlyCore() const { return core_; }
  // Scalable system clocks, clock name to frequency text.
  ClockMap& getSystemClockMap() { return systemClocks_; }
  const ClockMap& getSystemClockMap() const { return systemClocks_; }
  void addSystemClock(const std::string& name, const std::string& frequency) {
    systemClocks_[name] = frequency;
  }
  // The widest address of the core's ports.
  unsigned getAddrWidth() const { return core_.getMaxAddrWidth(); }

 private:
  std::string type_;
  HPLCore core_;
  ClockMap systemClocks_;
};

#endif
