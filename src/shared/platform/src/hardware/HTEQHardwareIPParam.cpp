#include "platform/HTEQHardwareIPParam.h"

#include "platform/JSONObjectWriter.h"

void HTEQHardwareIPParam::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("value", value_);
  writer.addKey("instRef", instRef_);
  writer.addKey("compRef", compRef_);
  writer.addKey("valid", isValid_);
}
