#include "platform/HTEQHardwareBusInterface.h"

#include "json/JsonTextWriter.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

HTEQHardwareBusInterface::HTEQHardwareBusInterface() = default;

HTEQHardwareBusInterface::~HTEQHardwareBusInterface() = default;

HTEQHardwareAddressSegment* HTEQHardwareBusInterface::addAddressSegment() { return segments_.emplace(); }

unsigned int HTEQHardwareBusInterface::getMemoryIndex(unsigned int n) const {
  return n < segments_.size() ? segments_[n]->getIndex() : 0;
}

std::string HTEQHardwareBusInterface::getMemorySLR(unsigned int n) const {
  return n < segments_.size() ? segments_[n]->getSlr() : std::string();
}

void HTEQHardwareBusInterface::toJSON(teq_platform::JSONObjectWriter& writer) const { writeJSON_(writer); }

template <class Writer>
void HTEQHardwareBusInterface::writeJSON_(Writer& writer) const {
  writer.addKey("name", name_);
  writer.addKey("mode", mode_);
  writer.addKey("instRef", instRef_);
  writer.addKey("compRef", compRef_);
  writer.addKey("typeRef", busTypeRef_);
  writer.addKey("interfaceRef", busInterfaceRef_);
  writer.addKey("clockRef", clockRef_);
  writer.addKey("resetRef", resetRef_);
  writer.addKey("memPort", memPort_);
  writer.addKey("spTag", spTag_);
  writer.addKey("slr", slr_);
  writer.addKey("memoryInstance", memoryInstance_);
  writer.addKey("dataWidth", dataWidth_);
  writer.addKey("numIdBits", numIdBits_);
  writer.addKey("addressSegment", addressSegment_);
  writer.addKey("direction", direction_);
  writer.addKey("isrId", isrId_);
  writer.addKey("category", category_);
  auto segments = teq_platform::listFor(writer);
  for (const HTEQHardwareAddressSegment* s : segments_) segments.addItem(s);
  writer.addKey("addressSegments", std::move(segments));
}

template void HTEQHardwareBusInterface::writeJSON_(teq_platform::TextObjectWriter&) const;
