#ifndef PLATFORM_HPLMEMORY_H
#define PLATFORM_HPLMEMORY_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

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

  // Sizes of a platform's memories, for the archive-backed platform.
  //
  // The number of gigabytes in a size text: the text with every match of the
  // ECMAScript expression "([0-9]+).*GB" replaced by its digits, read as a
  // decimal integer. A text without a match counts 0, so "16GB" and "16 GB"
  // give 16 and "2048MB" gives 0. A text that contains a match but does not
  // begin with a number ("x4GB") raises std::invalid_argument, and a number too
  // large for an int std::out_of_range.
  static int sizeTextToGb(const std::string& size);
  // Of memory number index; 0 without memories; std::out_of_range for an index
  // outside a non-empty list.
  static int getMemSizeInGb(const std::vector<HPLMemory*>& memories, size_t index);
  static int getTotalMemSizeInGb(const std::vector<HPLMemory*>& memories);
  // The total as "N GB"; "8 GB" when it is 0.
  static std::string totalGbToText(int totalGb);
  // The type of the first memory, even when empty; "ddr4" without memories.
  static std::string getMemType(const std::vector<HPLMemory*>& memories);

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
