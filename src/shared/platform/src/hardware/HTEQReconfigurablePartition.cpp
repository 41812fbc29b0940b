#include "platform/HTEQReconfigurablePartition.h"

#include "platform/HTEQHardwarePlatform.h"
#include "platform/JSONObjectWriter.h"

HTEQReconfigurablePartition::HTEQReconfigurablePartition(unsigned int id) : id_(id) {}
HTEQReconfigurablePartition::~HTEQReconfigurablePartition() = default;

void HTEQReconfigurablePartition::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("id", id_);
  if (hardwarePlatform_) writer.addKey("hardwarePlatform", hardwarePlatform_);
  if (hardwareEmulationPlatform_ && hasDistinctHardwareEmulationPlatform())
    writer.addKey("hwEmuPlatform", hardwareEmulationPlatform_);
}
