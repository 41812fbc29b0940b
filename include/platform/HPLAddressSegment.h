#ifndef PLATFORM_HPLADDRESSSEGMENT_H
#define PLATFORM_HPLADDRESSSEGMENT_H

#include <string>

#include "platform/ZrPlatformExport.h"

// One address segment that a core's port reaches. A plain record: it has no
// JSON form of its own.
class ZR_PLATFORM_API HPLAddressSegment {
 public:
  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  const std::string& getBase() const { return base_; }
  void setBase(const std::string& v) { base_ = v; }
  const std::string& getRange() const { return range_; }
  void setRange(const std::string& v) { range_ = v; }
  const std::string& getSlaveName() const { return slaveName_; }
  void setSlaveName(const std::string& v) { slaveName_ = v; }

 private:
  std::string name_;
  std::string base_;
  std::string range_;
  std::string slaveName_;
};

#endif
