#ifndef PLATFORM_HPLMEMORY_H
#define PLATFORM_HPLMEMORY_H

#include <cstdint>
#include <map>
#include <string>

#include "platform/JSONSerializable.h"

// A memory controller listed by a platform archive: its name, type, size text,
// address range and the DDR parameters it was configured with.
class ZR_PLATFORM_API HPLMemory : public teq_platform::JSONSerializable {
 public:
  using ConfigParamMap = std::map<std::string, std::string>;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  // "ddr3", "ddr4", ...
  const std::string& getType() const { return type_; }
  void setType(const std::string& v) { type_ = v; }
  // Free text such as "16GB".
  const std::string& getSize() const { return size_; }
  void setSize(const std::string& v) { size_ = v; }
  uint64_t getLowestAddress() const { return lowestAddress_; }
  void setLowestAddress(uint64_t v) { lowestAddress_ = v; }
  uint64_t getHighestAddress() const { return highestAddress_; }
  void setHighestAddress(uint64_t v) { highestAddress_ = v; }

  // Stores the parameter when its name is one the memory's family permits;
  // other names are dropped without a word. Set the type first: the family
  // ("DDR3" for type "ddr3", "DDR4" otherwise) decides the permitted names.
  void addConfigParam(const std::string& name, const std::string& value);
  ConfigParamMap& getConfigParamMap() { return configParams_; }
  const ConfigParamMap& getReadOnlyConfigParamMap() const { return configParams_; }

 private:
  bool areLowAndHighAddrsAtDefault_() const { return lowestAddress_ == 0 && highestAddress_ == 0; }

  std::string name_;
  std::string type_;
  std::string size_;
  uint64_t lowestAddress_ = 0;
  uint64_t highestAddress_ = 0;
  ConfigParamMap configParams_;
};

#endif
