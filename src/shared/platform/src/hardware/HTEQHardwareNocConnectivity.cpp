#include "platform/HTEQHardwareNocConnectivity.h"

#include "platform/HTEQHardwareBusInterface.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

HTEQHardwareNocConnectivity::HTEQHardwareNocConnectivity() = default;

HTEQHardwareNocConnectivity::~HTEQHardwareNocConnectivity() = default;

HTEQHardwareBusInterface* HTEQHardwareNocConnectivity::addBusInterface() { return busInterfaces_.emplace(); }

void HTEQHardwareNocConnectivity::getBusInterfaces(BusInterfaceVec& out) const {
  out.insert(out.end(), busInterfaces_.begin(), busInterfaces_.end());
}

HSTFwdIter<HTEQHardwareBusInterface*>* HTEQHardwareNocConnectivity::createBusInterfaceIter() const {
  return HSTCreateFwdIter(busInterfaces_.view());
}

HTEQHardwareBusInterface* HTEQHardwareNocConnectivity::getBusInterfaceByName(const std::string& name) const {
  for (HTEQHardwareBusInterface* bi : busInterfaces_) {
    if (bi->getName() == name) return bi;
  }
  return nullptr;
}

void HTEQHardwareNocConnectivity::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("instRef", instanceRef_);
  teq_platform::JSONListWriter list;
  for (const HTEQHardwareBusInterface* bi : busInterfaces_) list.addItem(bi);
  writer.addKey("busInterfaces", std::move(list));
}
