#ifndef PLATFORM_HTEQHARDWARENOCCONNECTIVITY_H
#define PLATFORM_HTEQHARDWARENOCCONNECTIVITY_H

#include <string>
#include <vector>

#include "platform/HSTFwdIter.h"
#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HTEQHardwareBusInterface;

// The bus interfaces of one instance that reach the network on chip. They are
// owned here and take no part in the platform's own bus interface lookups.
class ZR_PLATFORM_API HTEQHardwareNocConnectivity : public teq_platform::JSONSerializable {
 public:
  using BusInterfaceVec = std::vector<HTEQHardwareBusInterface*>;

  HTEQHardwareNocConnectivity();
  ~HTEQHardwareNocConnectivity() override;
  HTEQHardwareNocConnectivity(const HTEQHardwareNocConnectivity&) = delete;
  HTEQHardwareNocConnectivity& operator=(const HTEQHardwareNocConnectivity&) = delete;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getInstanceRef() const { return instanceRef_; }
  void setInstanceRef(std::string v) { instanceRef_ = std::move(v); }
  HTEQHardwareBusInterface* addBusInterface();
  // Appends to out.
  void getBusInterfaces(BusInterfaceVec& out) const;
  HSTFwdIter<HTEQHardwareBusInterface*>* createBusInterfaceIter() const;
  // First interface with exactly this name, or null.
  HTEQHardwareBusInterface* getBusInterfaceByName(const std::string& name) const;

 private:
  HSTOwningVector<HTEQHardwareBusInterface> busInterfaces_;
  std::string instanceRef_;
};

#endif
