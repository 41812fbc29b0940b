#include "platform/HPLDevice.h"

#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

HPLDevice::HPLDevice() = default;
HPLDevice::~HPLDevice() = default;

void HPLDevice::toJSON(teq_platform::JSONObjectWriter& writer) const {
  using teq_platform::JSONListWriter;
  using teq_platform::JSONObjectWriter;

  writer.addKey("name", getName());
  writer.addKey("type", type_);
  writer.addKey("fpgaPart", getFpgaPart());

  JSONObjectWriter part;
  part.addKey("name", getComposedPartName_());
  part.addKey("architecture", getPartArch());
  part.addKey("device", getPartDevice());
  part.addKey("package", getPartPackage());
  part.addKey("speedGrade", getPartSpeed());
  part.addKey("tempGrade", getPartTempGrade());
  part.addKey("staPower", getPartStaPower());
  part.addKey("revision", getPartRevision());
  writer.addKey("part", std::move(part));

  if (getNumSLRs() != 0) writer.addKey("numSLRs", std::to_string(getNumSLRs()));

  JSONListWriter clocks;
  for (const auto& entry : systemClocks_) {
    JSONObjectWriter clock;
    clock.addKey("name", entry.first);
    clock.addKey("frequency", entry.second);
    clocks.addItem(std::move(clock));
  }
  writer.addKey("scalableSystemClocks", std::move(clocks));
  writer.addKey("core", &core_);
}
