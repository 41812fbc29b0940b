#ifndef PLATFORM_HPLPLATFORM_H
#define PLATFORM_HPLPLATFORM_H

// PLACEHOLDER: the archive-backed hardware platform. The hardware model
// replaces this file as a whole.

#include "platform/HTEQHardwarePlatform.h"

class ZR_PLATFORM_API HPLPlatform : public HTEQHardwarePlatform {
 public:
  HPLPlatform();
  ~HPLPlatform() override;
  std::string getDeviceName() const override { return std::string(); }
  void getTargetCategories(std::vector<std::string>&) const override {}
  bool hasDimmConnectors() const override { return false; }
  void getDimmConnectors(std::vector<std::string>&) const override {}
  std::string getFile(const std::string&) const override { return std::string(); }
};

#endif
