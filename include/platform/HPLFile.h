#ifndef PLATFORM_HPLFILE_H
#define PLATFORM_HPLFILE_H

#include <string>

#include "platform/JSONSerializable.h"

// One file of a platform archive: its member name, its type word, where it is
// used and in which order it is processed.
class ZR_PLATFORM_API HPLFile : public teq_platform::JSONSerializable {
 public:
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  const std::string& getType() const { return type_; }
  void setType(const std::string& v) { type_ = v; }
  const std::string& getUsedIn() const { return usedIn_; }
  void setUsedIn(const std::string& v) { usedIn_ = v; }
  const std::string& getProcessingOrder() const { return processingOrder_; }
  void setProcessingOrder(const std::string& v) { processingOrder_ = v; }

 private:
  std::string name_;
  std::string type_;
  std::string usedIn_;
  std::string processingOrder_;
};

#endif
