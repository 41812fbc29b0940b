#ifndef PLATFORM_HTEQHARDWAREBUSINTERFACE_H
#define PLATFORM_HTEQHARDWAREBUSINTERFACE_H

#include <string>
#include <vector>

#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HTEQHardwareAddressSegment;

// A port of the shell that a linker can attach kernels to. Its address
// segments, owned here, are the memory banks behind it.
class ZR_PLATFORM_API HTEQHardwareBusInterface : public teq_platform::JSONSerializable {
 public:
  using AddressSegmentVec = std::vector<HTEQHardwareAddressSegment*>;

  HTEQHardwareBusInterface();
  ~HTEQHardwareBusInterface() override;
  HTEQHardwareBusInterface(const HTEQHardwareBusInterface&) = delete;
  HTEQHardwareBusInterface& operator=(const HTEQHardwareBusInterface&) = delete;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(std::string v) { name_ = std::move(v); }
  const std::string& getMode() const { return mode_; }
  void setMode(std::string v) { mode_ = std::move(v); }
  const std::string& getBusTypeRef() const { return busTypeRef_; }
  void setBusTypeRef(std::string v) { busTypeRef_ = std::move(v); }
  const std::string& getBusInterfaceRef() const { return busInterfaceRef_; }
  void setBusInterfaceRef(std::string v) { busInterfaceRef_ = std::move(v); }
  const std::string& getCompRef() const { return compRef_; }
  void setCompRef(std::string v) { compRef_ = std::move(v); }
  const std::string& getInstRef() const { return instRef_; }
  void setInstRef(std::string v) { instRef_ = std::move(v); }
  const std::string& getClockRef() const { return clockRef_; }
  void setClockRef(std::string v) { clockRef_ = std::move(v); }
  const std::string& getResetRef() const { return resetRef_; }
  void setResetRef(std::string v) { resetRef_ = std::move(v); }
  const std::string& getMemPort() const { return memPort_; }
  void setMemPort(std::string v) { memPort_ = std::move(v); }
  const std::string& getSPTag() const { return spTag_; }
  void setSPTag(std::string v) { spTag_ = std::move(v); }
  const std::string& getDirection() const { return direction_; }
  void setDirection(std::string v) { direction_ = std::move(v); }
  const std::string& getAddressSegment() const { return addressSegment_; }
  void setAddressSegment(std::string v) { addressSegment_ = std::move(v); }
  const std::string& getMemoryInstance() const { return memoryInstance_; }
  void setMemoryInstance(std::string v) { memoryInstance_ = std::move(v); }
  const std::string& getSLR() const { return slr_; }
  void setSLR(std::string v) { slr_ = std::move(v); }
  const std::string& getSize() const { return size_; }
  void setSize(std::string v) { size_ = std::move(v); }
  const std::string& getPeakMemoryBandwidth() const { return peakMemoryBandwidth_; }
  void setPeakMemoryBandwidth(std::string v) { peakMemoryBandwidth_ = std::move(v); }
  const std::string& getCategory() const { return category_; }
  void setCategory(std::string v) { category_ = std::move(v); }
  int getDataWidth() const { return dataWidth_; }
  void setDataWidth(int v) { dataWidth_ = v; }
  int getNumIdBits() const { return numIdBits_; }
  void setNumIdBits(int v) { numIdBits_ = v; }
  int getMaxMasters() const { return maxMasters_; }
  void setMaxMasters(int v) { maxMasters_ = v; }
  int getISRId() const { return isrId_; }
  void setISRId(int v) { isrId_ = v; }

  // A new default segment, appended and owned here.
  HTEQHardwareAddressSegment* addAddressSegment();
  unsigned int getNumAddressSegments() const { return static_cast<unsigned int>(segments_.size()); }
  // Replaces the contents of out with the segments.
  void getAddressSegments(AddressSegmentVec& out) const { out = segments_.view(); }
  // Index of segment n; 0 when there is no segment n.
  unsigned int getMemoryIndex(unsigned int n) const;
  // SLR of segment n; empty when there is no segment n.
  std::string getMemorySLR(unsigned int n) const;

 private:
  // The body of toJSON, for the tree writer and for the library's text writer.
  friend struct teq_platform::TextDispatch;
  template <class Writer>
  void writeJSON_(Writer& writer) const;

  std::string name_;
  std::string mode_;
  std::string busTypeRef_;
  std::string busInterfaceRef_;
  std::string compRef_;
  std::string instRef_;
  std::string clockRef_;
  std::string resetRef_;
  std::string memPort_;
  std::string spTag_;
  std::string direction_;
  std::string addressSegment_;
  std::string memoryInstance_;
  std::string slr_;
  std::string size_;
  std::string peakMemoryBandwidth_;
  std::string category_;
  HSTOwningVector<HTEQHardwareAddressSegment> segments_;
  int dataWidth_ = 0;
  int numIdBits_ = 0;
  int maxMasters_ = 0;
  int isrId_ = 0;
};

#endif
