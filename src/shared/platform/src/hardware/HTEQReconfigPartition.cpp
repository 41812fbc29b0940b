#include "platform/HTEQReconfigPartition.h"

#include "platform/JSONObjectWriter.h"

namespace {
void addNonZero(teq_platform::JSONObjectWriter& writer, const char* key, uint32_t id) {
  if (id != 0) writer.addKey(key, static_cast<unsigned long>(id));
}
}  // namespace

void HTEQReconfigPartition::toJSON(teq_platform::JSONObjectWriter& writer) const {
  addNonZero(writer, "designID", designID_);
  addNonZero(writer, "parentID", parentID_);
  addNonZero(writer, "nodeID", nodeID_);
  addNonZero(writer, "functionID", functionID_);
  teq_platform::JSONObjectWriter til;
  addNonZero(til, "plInterfaceID", TILPlInterfaceID_);
  addNonZero(til, "nodeID", TILNodeID_);
  addNonZero(til, "uniqueID", TILUniqueID_);
  addNonZero(til, "puID", TILPuID_);
  writer.addKey("tilngineIDs", std::move(til));
}
