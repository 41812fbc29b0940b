#ifndef PLATFORM_HTEQHARDWAREIPPARAM_H
#define PLATFORM_HTEQHARDWAREIPPARAM_H

#include <string>

#include "platform/JSONSerializable.h"

// One configured value of an IP instance of the shell.
class ZR_PLATFORM_API HTEQHardwareIPParam : public teq_platform::JSONSerializable {
 public:
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(std::string v) { name_ = std::move(v); }
  const std::string& getValue() const { return value_; }
  void setValue(std::string v) { value_ = std::move(v); }
  const std::string& getCompRef() const { return compRef_; }
  void setCompRef(std::string v) { compRef_ = std::move(v); }
  const std::string& getInstRef() const { return instRef_; }
  void setInstRef(std::string v) { instRef_ = std::move(v); }
  const std::string& getIsValid() const { return isValid_; }
  void setIsValid(std::string v) { isValid_ = std::move(v); }

 private:
  std::string name_;
  std::string value_;
  std::string compRef_;
  std::string instRef_;
  std::string isValid_;
};

#endif
