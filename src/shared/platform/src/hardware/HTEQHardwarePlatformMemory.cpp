// The memory bank picture of the hardware platform: which bus interfaces are
// memory interfaces, the memory types their SP tags name, the banks of each
// type, and the HBM bank counters.

#include <algorithm>
#include <ostream>
#include <set>

#include "host/ComMsgMgr.h"
#include "host/HSTStringUtils.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwarePlatform.h"

namespace {
std::string lower(const std::string& s) { return HSTStringUtils::toLower(s); }
std::string upper(const std::string& s) { return HSTStringUtils::toUpper(s); }
}  // namespace

// ---------------------------------------------------------------------------
// Memory banks

// A memory port "memss" marks the one indexed memory subsystem.
bool HTEQHardwarePlatform::isMemPortIndexed_(const HTEQHardwareBusInterface& bi) {
  return lower(bi.getMemPort()) == "memss";
}

// Any other memory port is a bank of its own, except the general-purpose ports
// and interfaces tagged "default".
bool HTEQHardwarePlatform::isMemPortNonIndexed_(const HTEQHardwareBusInterface& bi) {
  const std::string port = lower(bi.getMemPort());
  return !port.empty() && port != "memss" && port != "m_axi_gp" && port != "s_axi_gp" &&
         !HSTStringUtils::iequals(bi.getSPTag(), "default");
}

// The first interface that tells decides, once; while every interface seen is
// skipped the state stays unknown and the next call walks again.
bool HTEQHardwarePlatform::isMemoryResourceIndexed() const {
  if (memIndexState_ != kIndexUnknown) return memIndexState_ == kIndexed;
  for (const HTEQHardwareBusInterface* bi : busInterfaces_) {
    if (isMemPortIndexed_(*bi)) {
      memIndexState_ = kIndexed;
      return true;
    }
    if (isMemPortNonIndexed_(*bi)) {
      memIndexState_ = kNotIndexed;
      return false;
    }
  }
  return false;
}

bool HTEQHardwarePlatform::supportsMemoryResourceIndex() const { return memIndexState_ == kIndexed; }

unsigned int HTEQHardwarePlatform::getMemoryResourceBusInterfacesIndexed_(
    TEQHardwareBusInterfaceVec& out) const {
  for (HTEQHardwareBusInterface* bi : busInterfaces_) {
    if (isMemPortIndexed_(*bi)) out.push_back(bi);
  }
  return static_cast<unsigned int>(out.size());
}

unsigned int HTEQHardwarePlatform::getMemoryResourceBusInterfacesNonIndexed_(
    TEQHardwareBusInterfaceVec& out) const {
  for (HTEQHardwareBusInterface* bi : busInterfaces_) {
    if (isMemPortNonIndexed_(*bi)) out.push_back(bi);
  }
  return static_cast<unsigned int>(out.size());
}

void HTEQHardwarePlatform::getMemoryBusInterfaces(TEQHardwareBusInterfaceVec& out) const {
  getMemoryResourceBusInterfacesIndexed_(out);
  getMemoryResourceBusInterfacesNonIndexed_(out);
}

unsigned int HTEQHardwarePlatform::getUniqueMemoryTypeStrings(StringVector& out) const {
  std::set<std::string> types;
  TEQHardwareBusInterfaceVec interfaces;
  if (isMemoryResourceIndexed()) {
    getMemoryResourceBusInterfacesIndexed_(interfaces);
    for (const HTEQHardwareBusInterface* bi : interfaces) types.insert(upper(bi->getSPTag()));
  } else {
    getMemoryResourceBusInterfacesNonIndexed_(interfaces);
    for (const HTEQHardwareBusInterface* bi : interfaces) types.insert(bi->getSPTag());
  }
  out.insert(out.end(), types.begin(), types.end());
  return static_cast<unsigned int>(types.size());
}

unsigned int HTEQHardwarePlatform::getUniqueMemoryTypeCount() const {
  StringVector scratch;
  return getUniqueMemoryTypeStrings(scratch);
}

// A type must first be one of the unique types exactly as listed; the walks
// then compare without regard to case.
bool HTEQHardwarePlatform::hasUniqueMemoryType_(const std::string& type) const {
  StringVector types;
  getUniqueMemoryTypeStrings(types);
  return std::find(types.begin(), types.end(), type) != types.end();
}

unsigned int HTEQHardwarePlatform::getMemoryTypeCount(const std::string& type) const {
  if (!hasUniqueMemoryType_(type)) return 0;
  if (!isMemoryResourceIndexed()) return 1;
  TEQHardwareBusInterfaceVec interfaces;
  getMemoryResourceBusInterfacesIndexed_(interfaces);
  const std::string wanted = upper(type);
  for (const HTEQHardwareBusInterface* bi : interfaces) {
    if (upper(bi->getSPTag()) == wanted) return bi->getNumAddressSegments();
  }
  return 0;
}

unsigned int HTEQHardwarePlatform::getMemoryIndex(const std::string& type, unsigned int n) const {
  if (!hasUniqueMemoryType_(type) || !isMemoryResourceIndexed()) return 0;
  TEQHardwareBusInterfaceVec interfaces;
  getMemoryResourceBusInterfacesIndexed_(interfaces);
  const std::string wanted = upper(type);
  unsigned int index = 0;
  for (const HTEQHardwareBusInterface* bi : interfaces) {
    if (upper(bi->getSPTag()) == wanted && bi->getNumAddressSegments() > n) index = bi->getMemoryIndex(n);
  }
  return index;
}

// Banks of an indexed platform all have the same size; it is not taken from
// any data.
std::string HTEQHardwarePlatform::getMemorySize(const std::string& type, unsigned int n) const {
  if (!hasUniqueMemoryType_(type)) return std::string();
  TEQHardwareBusInterfaceVec interfaces;
  const std::string wanted = upper(type);
  std::string size;
  if (isMemoryResourceIndexed()) {
    getMemoryResourceBusInterfacesIndexed_(interfaces);
    for (const HTEQHardwareBusInterface* bi : interfaces) {
      if (upper(bi->getSPTag()) == wanted && bi->getNumAddressSegments() > n) return "16GB";
    }
    return std::string();
  }
  getMemoryResourceBusInterfacesNonIndexed_(interfaces);
  for (const HTEQHardwareBusInterface* bi : interfaces) {
    if (upper(bi->getSPTag()) == wanted) size = bi->getSize();
  }
  return size;
}

std::string HTEQHardwarePlatform::getMemorySLR(const std::string& type, unsigned int n) const {
  if (!hasUniqueMemoryType_(type)) return std::string();
  TEQHardwareBusInterfaceVec interfaces;
  const std::string wanted = upper(type);
  std::string slr;
  if (isMemoryResourceIndexed()) {
    getMemoryResourceBusInterfacesIndexed_(interfaces);
    for (const HTEQHardwareBusInterface* bi : interfaces) {
      if (upper(bi->getSPTag()) == wanted && bi->getNumAddressSegments() > n) slr = bi->getMemorySLR(n);
    }
    return slr;
  }
  getMemoryResourceBusInterfacesNonIndexed_(interfaces);
  for (const HTEQHardwareBusInterface* bi : interfaces) {
    if (upper(bi->getSPTag()) == wanted) slr = bi->getSLR();
  }
  return slr;
}

void HTEQHardwarePlatform::updateHBMBankInfo(const std::string& instance, bool isDefault) {
  if (hbmInstanceName_.empty()) {
    hbmInstanceName_ = instance;
  } else if (hbmInstanceName_ != instance) {
    ZR_SEND_MSG("@74-261@", ComMsgMask::kError);
    return;
  }
  ++hbmBankCount_;
  if (isDefault) ++hbmDefaultBankCount_;
}

void HTEQHardwarePlatform::issueNormalizeMemoryBanksMessage(std::ostream& out) const {
  if (!hbmPresent_ || hbmDefaultBankCount_ == 0 || hbmDefaultBankCount_ == hbmBankCount_) return;
  out << "\n\n"
      << "The HBM instance "
      << "'" << hbmInstanceName_ << "'"
      << " has only a subset of its auto-assignable memory banks tagged as 'default'. "
      << "To attain better HBM bandwidth, use mirac parameter "
         "'--advanced.param compiler.normalizeDefaultMemoryBanks=true' to change all HBM memory banks to "
         "'default'."
      << std::endl
      << std::endl;
}
