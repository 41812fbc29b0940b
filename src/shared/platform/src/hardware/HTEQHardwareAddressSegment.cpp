#include "platform/HTEQHardwareAddressSegment.h"

#include "json/JsonTextWriter.h"
#include "platform/JSONObjectWriter.h"

void HTEQHardwareAddressSegment::toJSON(teq_platform::JSONObjectWriter& writer) const { writeJSON_(writer); }

template <class Writer>
void HTEQHardwareAddressSegment::writeJSON_(Writer& writer) const {
  writer.addKey("baseName", baseName_);
  writer.addKey("index", index_);
  writer.addKey("memoryInstance", memoryInstance_);
  writer.addKey("auto", auto_);
  writer.addKey("spTag", spTag_);
  writer.addKey("slr", slr_);
  writer.addKey("maxMasters", maxMasters_);
  writer.addKey("name", name_);
  writer.addKey("instRef", instanceRef_);
  writer.addKey("region", region_);
  writer.addKey("readBwUsed", readBwUsed_);
  writer.addKey("writeBwUsed", writeBwUsed_);
  writer.addKey("interleave", interleave_);
}

template void HTEQHardwareAddressSegment::writeJSON_(teq_platform::TextObjectWriter&) const;
