#include "platform/HTEQBootImg.h"

#include "platform/JSONObjectWriter.h"

HTEQBootImg::HTEQBootImg() = default;
HTEQBootImg::~HTEQBootImg() = default;

void HTEQBootImg::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("type", type_);
  writer.addKey("bif", bif_);
  writer.addKey("data", imgData_);
  writer.addKey("rootFileSystem", rootFS_);
  writer.addKey("bootMode", bootMode_);
  writer.addKey("mountPath", mountPath_);
  writer.addKey("readMe", readMe_);
  writer.addKey("qemuArgs", qemuArgs_);
  writer.addKey("qemuBoot", qemuBoot_);
  writer.addKey("qemuDevTree", qemuDevTree_);
  writer.addKey("hwBootBin", hwBootBin_);
}
