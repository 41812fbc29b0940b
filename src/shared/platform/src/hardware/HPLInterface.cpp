#include "platform/HPLInterface.h"

#include "platform/JSONObjectWriter.h"

void HPLInterface::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("id", id_);
  writer.addKey("name", name_);
  writer.addKey("type", type_);
}
