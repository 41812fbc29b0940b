#ifndef PLATFORM_HTEQHARDWAREADDRESSSEGMENT_H
#define PLATFORM_HTEQHARDWAREADDRESSSEGMENT_H

#include <string>

#include "platform/JSONSerializable.h"

// One bank behind a bus interface: its place in the memory index, its SP tag
// and SLR, and how it may be assigned.
class ZR_PLATFORM_API HTEQHardwareAddressSegment : public teq_platform::JSONSerializable {
 public:
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getAuto() const { return auto_; }
  void setAuto(std::string v) { auto_ = std::move(v); }
  const std::string& getBaseName() const { return baseName_; }
  void setBaseName(std::string v) { baseName_ = std::move(v); }
  unsigned int getIndex() const { return index_; }
  void setIndex(unsigned int v) { index_ = v; }
  unsigned int getMaxMasters() const { return maxMasters_; }
  void setMaxMasters(unsigned int v) { maxMasters_ = v; }
  const std::string& getMemoryInstance() const { return memoryInstance_; }
  void setMemoryInstance(std::string v) { memoryInstance_ = std::move(v); }
  const std::string& getSpTag() const { return spTag_; }
  void setSpTag(std::string v) { spTag_ = std::move(v); }
  const std::string& getSlr() const { return slr_; }
  void setSlr(std::string v) { slr_ = std::move(v); }
  const std::string& getInstanceRef() const { return instanceRef_; }
  void setInstanceRef(std::string v) { instanceRef_ = std::move(v); }
  const std::string& getName() const { return name_; }
  void setName(std::string v) { name_ = std::move(v); }
  const std::string& getRegion() const { return region_; }
  void setRegion(std::string v) { region_ = std::move(v); }
  int getReadBwUsed() const { return readBwUsed_; }
  void setReadBwUsed(int v) { readBwUsed_ = v; }
  int getWriteBwUsed() const { return writeBwUsed_; }
  void setWriteBwUsed(int v) { writeBwUsed_ = v; }
  unsigned int getInterleave() const { return interleave_; }
  void setInterleave(unsigned int v) { interleave_ = v; }

 private:
  // The body of toJSON, for the tree writer and for the library's text writer.
  friend struct teq_platform::TextDispatch;
  template <class Writer>
  void writeJSON_(Writer& writer) const;

  std::string auto_;
  std::string baseName_;
  unsigned int index_ = 0;
  unsigned int maxMasters_ = 0;
  std::string memoryInstance_;
  std::string spTag_;
  std::string slr_;
  std::string instanceRef_;
  std::string name_;
  std::string region_;
  int readBwUsed_ = 0;
  int writeBwUsed_ = 0;
  unsigned int interleave_ = 0;
};

#endif
