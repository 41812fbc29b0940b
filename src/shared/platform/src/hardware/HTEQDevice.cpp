#include "platform/HTEQDevice.h"

#include <vector>

#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"

void HTEQDevice::setFpgaPart(const std::string& text) {
  fpgaPart_ = text;
  convertFpgaDeviceToPartData_(text);
}

std::string HTEQDevice::convertFpgaDeviceToPartData_(const std::string& text) {
  if (text.empty()) return std::string();
  const std::vector<std::string> fields = HSTStringUtils::split(text, ':');
  if (fields.size() < 4 || fields.size() > 7) {
    throw HEXAlgException(
        "HTEQDevice::convertFpgaDeviceToPart_ - FPGA Device (string) format not as expected: '" + text + "'");
  }
  partArch_ = fields[0];
  partDevice_ = fields[1];
  partPackage_ = fields[2];
  partSpeed_ = fields[3];
  // Package and speed are joined without a separator: the speed field carries
  // its own dash ("-2").
  std::string name = partDevice_ + (fields.size() > 4 ? "-" : "") + partPackage_ + partSpeed_;
  if (fields.size() >= 5) {
    partTempGrade_ = fields[4];
    name += "-" + partTempGrade_;
  }
  if (fields.size() == 6) {
    partRevision_ = fields[5];
    name += "-" + partRevision_;
  } else if (fields.size() == 7) {
    partStaPower_ = fields[5];
    partRevision_ = fields[6];
    name += "-" + partStaPower_ + "-" + partRevision_;
  }
  partName_ = name;
  return partName_;
}
