#ifndef PLATFORM_HTEQDESIGNIPINSTANCE_H
#define PLATFORM_HTEQDESIGNIPINSTANCE_H

#include <map>
#include <string>

#include "platform/JSONSerializable.h"

// One IP of the design, with its configuration.
class ZR_PLATFORM_API HTEQDesignIPInstance : public teq_platform::JSONSerializable {
 public:
  using ConfigMap = std::map<std::string, std::string>;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getInstanceName() const { return instanceName_; }
  void setInstanceName(const std::string& v) { instanceName_ = v; }
  const std::string& getVLNV() const { return vlnv_; }
  void setVLNV(const std::string& v) { vlnv_ = v; }
  // Replaces out by a copy of the configuration.
  void getConfigParamMap(ConfigMap& out) const { out = config_; }
  // A key may be given once: a second time raises HEXAlgException and the
  // configuration stays as it was.
  void addConfigParam(const std::string& key, const std::string& value);

 private:
  std::string instanceName_;
  std::string vlnv_;
  ConfigMap config_;
};

#endif
