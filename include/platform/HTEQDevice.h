#ifndef PLATFORM_HTEQDEVICE_H
#define PLATFORM_HTEQDEVICE_H

#include <string>

#include "platform/ZrPlatformExport.h"

// An FPGA device of a platform as the base platform sees it: its name and the
// fields of its part string ("arch:device:package:speed[:temp[:power]:rev]").
class ZR_PLATFORM_API HTEQDevice {
 public:
  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  // The device string as it was set.
  const std::string& getFpgaPart() const { return fpgaPart_; }
  // Stores the text and splits it into the part fields. A text of fewer than 4
  // or more than 7 fields raises HEXAlgException; the text stays stored and the
  // part fields stay as they were.
  void setFpgaPart(const std::string& text);
  // The composed part name; the device name when there is none.
  const std::string& getPartName() const { return partName_.empty() ? name_ : partName_; }
  void setPartName(const std::string& v) { partName_ = v; }
  const std::string& getPartArch() const { return partArch_; }
  void setPartArch(const std::string& v) { partArch_ = v; }
  const std::string& getPartDevice() const { return partDevice_; }
  void setPartDevice(const std::string& v) { partDevice_ = v; }
  const std::string& getPartPackage() const { return partPackage_; }
  void setPartPackage(const std::string& v) { partPackage_ = v; }
  const std::string& getPartSpeed() const { return partSpeed_; }
  void setPartSpeed(const std::string& v) { partSpeed_ = v; }
  const std::string& getPartTempGrade() const { return partTempGrade_; }
  void setPartTempGrade(const std::string& v) { partTempGrade_ = v; }
  const std::string& getPartStaPower() const { return partStaPower_; }
  void setPartStaPower(const std::string& v) { partStaPower_ = v; }
  const std::string& getPartRevision() const { return partRevision_; }
  void setPartRevision(const std::string& v) { partRevision_ = v; }
  unsigned int getNumSLRs() const { return numSLRs_; }
  void setNumSLRs(unsigned int v) { numSLRs_ = v; }

 protected:
  // The composed part name as stored in partName.
  const std::string& getComposedPartName_() const { return partName_; }

 private:
  std::string convertFpgaDeviceToPartData_(const std::string& text);

  std::string name_;
  std::string fpgaPart_;
  std::string partName_;
  std::string partArch_;
  std::string partDevice_;
  std::string partPackage_;
  std::string partSpeed_;
  std::string partTempGrade_;
  std::string partStaPower_;
  std::string partRevision_;
  unsigned int numSLRs_ = 0;
};

#endif
