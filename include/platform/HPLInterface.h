#ifndef PLATFORM_HPLINTERFACE_H
#define PLATFORM_HPLINTERFACE_H

#include <string>

#include "platform/JSONSerializable.h"

// One host interface of a platform, such as its PCIe link.
class ZR_PLATFORM_API HPLInterface : public teq_platform::JSONSerializable {
 public:
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getId() const { return id_; }
  void setId(const std::string& v) { id_ = v; }
  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  const std::string& getType() const { return type_; }
  void setType(const std::string& v) { type_ = v; }

 private:
  std::string id_;
  std::string name_;
  std::string type_;
};

#endif
