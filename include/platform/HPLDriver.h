#ifndef PLATFORM_HPLDRIVER_H
#define PLATFORM_HPLDRIVER_H

#include <string>

#include "platform/ZrPlatformExport.h"

// A host driver that a board needs. A plain record with no JSON form.
class ZR_PLATFORM_API HPLDriver {
 public:
  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  const std::string& getVendor() const { return vendor_; }
  void setVendor(const std::string& v) { vendor_ = v; }
  const std::string& getVersion() const { return version_; }
  void setVersion(const std::string& v) { version_ = v; }
  // The host operating system the driver is for; "lin" unless set.
  const std::string& getPlatform() const { return platform_; }
  void setPlatform(const std::string& v) { platform_ = v; }
  const std::string& getFile() const { return file_; }
  void setFile(const std::string& v) { file_ = v; }

 private:
  std::string name_;
  std::string vendor_;
  std::string version_;
  std::string platform_ = "lin";
  std::string file_;
};

#endif
