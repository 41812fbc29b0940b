#include "platform/HPLFile.h"

#include "platform/JSONObjectWriter.h"

void HPLFile::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("type", type_);
  writer.addKey("usedIn", usedIn_);
  writer.addKey("processingOrder", processingOrder_);
}
