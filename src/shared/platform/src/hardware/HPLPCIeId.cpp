#include "platform/HPLPCIeId.h"

#include "platform/JSONObjectWriter.h"

void HPLPCIeId::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("vendor", vendor_);
  writer.addKey("device", device_);
  writer.addKey("subsystem", subsystem_);
  writer.addKey("featureId", featureId_);
}
