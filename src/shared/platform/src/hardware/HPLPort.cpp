#include "platform/HPLPort.h"

#include <memory>

#include "platform/HPLAddressSegment.h"
#include "platform/JSONObjectWriter.h"

HPLPort::HPLPort() = default;

HPLPort::~HPLPort() = default;

void HPLPort::addAddressSegment(HPLAddressSegment* segment) {
  // Owned from here on, also when the append fails.
  std::unique_ptr<HPLAddressSegment> owned(segment);
  if (owned) segments_.add(std::move(owned));
}

HSTFwdIter<HPLAddressSegment*>* HPLPort::createAddressSegmentIter() const {
  return HSTCreateFwdIter(segments_.view());
}

void HPLPort::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("type", type_);
  writer.addKey("mode", mode_);
  writer.addKey("base", base_);
  writer.addKey("range", range_);
  writer.addKey("dataWidth", dataWidth_);
  writer.addKey("protocol", protocol_);
  writer.addKey("idWidth", idWidth_);
  writer.addKey("addrWidth", addrWidth_);
  writer.addKey("userWidth", userWidth_);
  writer.addKey("addrOffset", addrOffset_);
  writer.addKey("addrRange", addrRange_);
  writer.addKey("maxBurstLength", maxBurstLength_);
  writer.addKey("frequency", frequency_);
  writer.addKey("polarity", polarity_);
  writer.addKey("direction", direction_);
}
