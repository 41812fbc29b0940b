#ifndef PLATFORM_HTEQRECONFIGPARTITION_H
#define PLATFORM_HTEQRECONFIGPARTITION_H

#include <cstdint>

#include "platform/JSONSerializable.h"

// The numeric ids of a reconfigurable partition, or of a platform itself.
// An id of 0 is unset and is not written.
class ZR_PLATFORM_API HTEQReconfigPartition : public teq_platform::JSONSerializable {
 public:
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  uint32_t getDesignID() const { return designID_; }
  void setDesignID(uint32_t v) { designID_ = v; }
  uint32_t getParentID() const { return parentID_; }
  void setParentID(uint32_t v) { parentID_ = v; }
  uint32_t getNodeID() const { return nodeID_; }
  void setNodeID(uint32_t v) { nodeID_ = v; }
  uint32_t getFunctionID() const { return functionID_; }
  void setFunctionID(uint32_t v) { functionID_ = v; }
  uint32_t getTILPlInterfaceID() const { return TILPlInterfaceID_; }
  void setTILPlInterfaceID(uint32_t v) { TILPlInterfaceID_ = v; }
  uint32_t getTILNodeID() const { return TILNodeID_; }
  void setTILNodeID(uint32_t v) { TILNodeID_ = v; }
  uint32_t getTILUniqueID() const { return TILUniqueID_; }
  void setTILUniqueID(uint32_t v) { TILUniqueID_ = v; }
  uint32_t getTILPuID() const { return TILPuID_; }
  void setTILPuID(uint32_t v) { TILPuID_ = v; }

 private:
  uint32_t designID_ = 0;
  uint32_t parentID_ = 0;
  uint32_t nodeID_ = 0;
  uint32_t functionID_ = 0;
  uint32_t TILPlInterfaceID_ = 0;
  uint32_t TILNodeID_ = 0;
  uint32_t TILUniqueID_ = 0;
  uint32_t TILPuID_ = 0;
};

#endif
