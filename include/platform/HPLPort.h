#ifndef PLATFORM_HPLPORT_H
#define PLATFORM_HPLPORT_H

#include <string>
#include <vector>

#include "platform/HSTFwdIter.h"
#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HPLAddressSegment;

// One port of a core, with every attribute kept as the text it came with, and
// the address segments the port reaches. The port owns its segments.
class ZR_PLATFORM_API HPLPort : public teq_platform::JSONSerializable {
 public:
  HPLPort();
  ~HPLPort() override;
  HPLPort(const HPLPort&) = delete;
  HPLPort& operator=(const HPLPort&) = delete;

  // Every attribute in declared order; address segments have no JSON form.
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  const std::string& getType() const { return type_; }
  void setType(const std::string& v) { type_ = v; }
  const std::string& getMode() const { return mode_; }
  void setMode(const std::string& v) { mode_ = v; }
  const std::string& getBase() const { return base_; }
  void setBase(const std::string& v) { base_ = v; }
  const std::string& getRange() const { return range_; }
  void setRange(const std::string& v) { range_ = v; }
  const std::string& getDataWidth() const { return dataWidth_; }
  void setDataWidth(const std::string& v) { dataWidth_ = v; }
  const std::string& getProtocol() const { return protocol_; }
  void setProtocol(const std::string& v) { protocol_ = v; }
  const std::string& getIdWidth() const { return idWidth_; }
  void setIdWidth(const std::string& v) { idWidth_ = v; }
  const std::string& getAddrWidth() const { return addrWidth_; }
  void setAddrWidth(const std::string& v) { addrWidth_ = v; }
  const std::string& getUserWidth() const { return userWidth_; }
  void setUserWidth(const std::string& v) { userWidth_ = v; }
  const std::string& getAddrOffset() const { return addrOffset_; }
  void setAddrOffset(const std::string& v) { addrOffset_ = v; }
  const std::string& getAddrRange() const { return addrRange_; }
  void setAddrRange(const std::string& v) { addrRange_ = v; }
  const std::string& getMaxBurstLength() const { return maxBurstLength_; }
  void setMaxBurstLength(const std::string& v) { maxBurstLength_ = v; }
  const std::string& getFrequency() const { return frequency_; }
  void setFrequency(const std::string& v) { frequency_ = v; }
  const std::string& getPolarity() const { return polarity_; }
  void setPolarity(const std::string& v) { polarity_ = v; }
  const std::string& getDirection() const { return direction_; }
  void setDirection(const std::string& v) { direction_ = v; }

  // Takes ownership of the segment.
  void addAddressSegment(HPLAddressSegment* segment);
  // A new iterator over the segments, owned by the caller.
  HSTFwdIter<HPLAddressSegment*>* createAddressSegmentIter() const;

 private:
  std::string name_;
  std::string type_;
  std::string mode_;
  std::string base_;
  std::string range_;
  std::string dataWidth_;
  std::string protocol_;
  std::string idWidth_;
  std::string addrWidth_;
  std::string userWidth_;
  std::string addrOffset_;
  std::string addrRange_;
  std::string maxBurstLength_;
  std::string frequency_;
  std::string polarity_;
  std::string direction_;
  HSTOwningVector<HPLAddressSegment> segments_;
};

#endif
