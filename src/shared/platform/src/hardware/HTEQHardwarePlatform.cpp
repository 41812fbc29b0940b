#include "platform/HTEQHardwarePlatform.h"

#include <algorithm>
#include <memory>
#include <set>

#include "archives/PlatformArchiveAccess.h"
#include "host/HEXAll.h"
#include "host/HHSMHwManager.h"
#include "host/HSTStringUtils.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "json/JsonTextWriter.h"
#include "platform/HPLDevice.h"
#include "platform/HTEQDesignIPInstance.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQReconfigPartition.h"
#include "platform/HTEQSystemClock.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"
#include "platform/PlatformLoader.h"

namespace {

const char* const kHwEmuDir = "hw_emu";
const char* const kAltPrefix = "alt_";

template <class T>
void walkIter(HSTFwdIter<T>* created, std::vector<T>& out) {
  std::unique_ptr<HSTFwdIter<T>> iter(created);
  while (iter->hasNext()) out.push_back(iter->next());
}

}  // namespace

// ---------------------------------------------------------------------------
// Construction

HTEQHardwarePlatform::HTEQHardwarePlatform() : designIds_(std::make_unique<HTEQReconfigPartition>()) {}

HTEQHardwarePlatform::~HTEQHardwarePlatform() = default;

// ---------------------------------------------------------------------------
// Identity

std::string HTEQHardwarePlatform::getName() const { return name_; }
std::string HTEQHardwarePlatform::getVendor() const { return vendor_; }
std::string HTEQHardwarePlatform::getBoardId() const { return boardId_; }
std::string HTEQHardwarePlatform::getDescription() const { return description_; }
std::string HTEQHardwarePlatform::getDetailedDescription() const { return detailedDescription_; }
std::string HTEQHardwarePlatform::getUniqueName() const { return name_; }
std::string HTEQHardwarePlatform::getPrettyName() const { return boardId_; }

HPLDevice* HTEQHardwarePlatform::firstFpgaDevice_() const { return getDevice("fpga0"); }

std::string HTEQHardwarePlatform::getPartName() const {
  TEQDeviceVec devices;
  getDevices(devices);
  if (!devices.empty() && devices.front() != nullptr) return devices.front()->getPartName();
  return std::string();
}

std::string HTEQHardwarePlatform::getFpgaDevice() const {
  TEQDeviceVec devices;
  getDevices(devices);
  if (!devices.empty() && devices.front() != nullptr) return devices.front()->getPartDevice();
  return std::string();
}

// The architecture field of the first device's part string, not the whole part.
std::string HTEQHardwarePlatform::getFpgaPart() const {
  TEQDeviceVec devices;
  getDevices(devices);
  if (!devices.empty() && devices.front() != nullptr) return devices.front()->getPartArch();
  return std::string();
}

std::string HTEQHardwarePlatform::getReconfigModuleName() const {
  HPLDevice* device = firstFpgaDevice_();
  if (device != nullptr) return device->getCore().getReconfigModuleName();
  return std::string();
}

bool HTEQHardwarePlatform::hasUserDefinedScalableClocks() const {
  HPLDevice* device = firstFpgaDevice_();
  return device != nullptr && !device->getSystemClockMap().empty();
}

const std::string& HTEQHardwarePlatform::getPlatformFile() const { return platformFile_; }
const std::string& HTEQHardwarePlatform::getHpfmString() const { return hpfmString_; }

void HTEQHardwarePlatform::setExpandable(bool v) { expandable_ = v; }
void HTEQHardwarePlatform::setUnifiedPlatform(bool v) { unifiedPlatform_ = v; }
void HTEQHardwarePlatform::setName(const std::string& v) { name_ = v; }
void HTEQHardwarePlatform::setDescription(const std::string& v) { description_ = v; }
void HTEQHardwarePlatform::setDetailedDescription(const std::string& v) { detailedDescription_ = v; }
void HTEQHardwarePlatform::setVendor(const std::string& v) { vendor_ = v; }
void HTEQHardwarePlatform::setBoardId(const std::string& v) { boardId_ = v; }
void HTEQHardwarePlatform::setPlatformFile(const std::string& file) { platformFile_ = file; }

void HTEQHardwarePlatform::setIsHWEmuPlatform(bool v) {
  isHWEmuPlatform_ = v;
  if (v) supportsHWEmulation_ = true;
}

bool HTEQHardwarePlatform::supportsHardware() const { return supportsHardware_; }
bool HTEQHardwarePlatform::supportsSWEmulation() const { return supportsSWEmulation_; }
bool HTEQHardwarePlatform::supportsHWEmulation() const { return supportsHWEmulation_; }
bool HTEQHardwarePlatform::supportsTwoHwEmuBd() const { return supportsTwoHwEmuBd_; }
void HTEQHardwarePlatform::setUsesNIFD(bool v) { usesNIFD_ = v; }
bool HTEQHardwarePlatform::usesNIFD() const { return usesNIFD_; }

const std::string& HTEQHardwarePlatform::getGeneratedName() const { return generatedName_; }
const std::string& HTEQHardwarePlatform::getGeneratedVersion() const { return generatedVersion_; }
unsigned int HTEQHardwarePlatform::getGeneratedChangeList() const { return generatedChangeList_; }
const std::string& HTEQHardwarePlatform::getGeneratedIpChangeList() const { return generatedIpChangeList_; }
const std::string& HTEQHardwarePlatform::getGeneratedSharedDataChangeList() const {
  return generatedSharedDataChangeList_;
}
const std::string& HTEQHardwarePlatform::getGeneratedTimestamp() const { return generatedTimestamp_; }
bool HTEQHardwarePlatform::isGeneratedByLink() const { return generatedByLink_; }
const std::string& HTEQHardwarePlatform::getIdCode() const { return idCode_; }
const std::string& HTEQHardwarePlatform::getExtendedIdCode() const { return extendedIdCode_; }

// ---------------------------------------------------------------------------
// Resources

int HTEQHardwarePlatform::getBRAMCount() const { return bramCount_; }
int HTEQHardwarePlatform::getDSPCount() const { return dspCount_; }
int HTEQHardwarePlatform::getLUTCount() const { return lutCount_; }
int HTEQHardwarePlatform::getFFCount() const { return ffCount_; }
int HTEQHardwarePlatform::getRegisterCount() const { return registerCount_; }

void HTEQHardwarePlatform::getAllResources(StringVector& types, StringVector& counts) const {
  const std::pair<const char*, int> resources[] = {{"BRAM", getBRAMCount()},
                                                   {"DSP", getDSPCount()},
                                                   {"LUT", getLUTCount()},
                                                   {"FF", getFFCount()},
                                                   {"REG", getRegisterCount()}};
  for (const auto& r : resources) {
    if (r.second <= 0) continue;
    types.push_back(r.first);
    counts.push_back(std::to_string(r.second));
  }
}

// ---------------------------------------------------------------------------
// Clocks

HTEQSystemClock* HTEQHardwarePlatform::addSystemClock() { return systemClocks_.emplace(); }

HSTFwdIter<HTEQSystemClock*>* HTEQHardwarePlatform::createSystemClockIter() const {
  return HSTCreateFwdIter(systemClocks_.view());
}

void HTEQHardwarePlatform::getSystemClocks(TEQSystemClockVec& out) const {
  walkIter(createSystemClockIter(), out);
}

// All clocks are looked at and the last match wins, so a reader may override an
// earlier clock by listing it again.
HTEQSystemClock* HTEQHardwarePlatform::findLastClock_(const std::string* name, const int* id) const {
  HTEQSystemClock* found = nullptr;
  for (HTEQSystemClock* c : systemClocks_) {
    if (name != nullptr && c->getName() != *name) continue;
    if (id != nullptr && c->getId() != *id) continue;
    found = c;
  }
  return found;
}

HTEQSystemClock* HTEQHardwarePlatform::getDefaultClock() const {
  return findLastClock_(nullptr, &defaultClkId_);
}

std::string HTEQHardwarePlatform::getDefaultClockName() const {
  const HTEQSystemClock* c = getDefaultClock();
  return c != nullptr ? c->getName() : std::string();
}

std::string HTEQHardwarePlatform::getDefaultClockFrequency() const {
  const HTEQSystemClock* c = getDefaultClock();
  return c != nullptr ? c->getFrequency() : std::string();
}

std::string HTEQHardwarePlatform::getDefaultClockId() const { return std::to_string(defaultClkId_); }

std::string HTEQHardwarePlatform::getClockId(const std::string& name) const {
  const HTEQSystemClock* c = findLastClock_(&name, nullptr);
  return c != nullptr ? std::to_string(c->getId()) : std::string();
}

std::string HTEQHardwarePlatform::getClockFrequency(const std::string& name) const {
  const HTEQSystemClock* c = findLastClock_(&name, nullptr);
  return c != nullptr ? c->getFrequency() : std::string();
}

std::string HTEQHardwarePlatform::getPlatformFrequency(int id) const {
  const HTEQSystemClock* c = findLastClock_(nullptr, &id);
  return c != nullptr ? c->getFrequency() : std::string();
}

void HTEQHardwarePlatform::getSystemClockNames(StringVector& out) const {
  for (const HTEQSystemClock* c : systemClocks_) out.push_back(c->getName());
}

void HTEQHardwarePlatform::getAllClockFrequencies(StringVector& names, StringVector& frequencies) const {
  for (const HTEQSystemClock* c : systemClocks_) {
    names.push_back(c->getName());
    frequencies.push_back(c->getFrequency());
  }
}

void HTEQHardwarePlatform::getCpuClockNames(StringVector& out) const { out.push_back("CPU"); }

bool HTEQHardwarePlatform::hasScalableClocks() const {
  for (const HTEQSystemClock* c : systemClocks_) {
    if (c->isScalable()) return true;
  }
  return hasUserDefinedScalableClocks();
}

bool HTEQHardwarePlatform::hasFixedClocks() const {
  for (const HTEQSystemClock* c : systemClocks_) {
    if (c->isFixed()) return true;
  }
  return false;
}

// ---------------------------------------------------------------------------
// IP parameters, NoC connectivity, bus interfaces

HTEQHardwareIPParam* HTEQHardwarePlatform::addHardwareIPParam() { return ipParams_.emplace(); }

HSTFwdIter<HTEQHardwareIPParam*>* HTEQHardwarePlatform::createIPParamIter() const {
  return HSTCreateFwdIter(ipParams_.view());
}

void HTEQHardwarePlatform::getHardwareIPParams(TEQHardwareIPParamVec& out) const {
  walkIter(createIPParamIter(), out);
}

HTEQHardwareNocConnectivity* HTEQHardwarePlatform::addNocConnectivity() { return nocConnectivity_.emplace(); }

HSTFwdIter<HTEQHardwareNocConnectivity*>* HTEQHardwarePlatform::createNocConnectivityIter() const {
  return HSTCreateFwdIter(nocConnectivity_.view());
}

void HTEQHardwarePlatform::getNocConnectivity(TEQHardwareNocConnectivityVec& out) const {
  out.insert(out.end(), nocConnectivity_.begin(), nocConnectivity_.end());
}

HTEQHardwareBusInterface* HTEQHardwarePlatform::addBusInterface() { return busInterfaces_.emplace(); }

HSTFwdIter<HTEQHardwareBusInterface*>* HTEQHardwarePlatform::createBusInterfaceIter() const {
  return HSTCreateFwdIter(busInterfaces_.view());
}

void HTEQHardwarePlatform::getBusInterfaces(TEQHardwareBusInterfaceVec& out) const {
  walkIter(createBusInterfaceIter(), out);
}

// Unlike clocks, the first interface of a name wins.
HTEQHardwareBusInterface* HTEQHardwarePlatform::getBusInterfaceByName(const std::string& name) const {
  std::unique_ptr<HSTFwdIter<HTEQHardwareBusInterface*>> iter(createBusInterfaceIter());
  while (iter->hasNext()) {
    HTEQHardwareBusInterface* bi = iter->next();
    if (bi->getName() == name) return bi;
  }
  return nullptr;
}

int HTEQHardwarePlatform::getBusInterfaceMaxDataWidth() const {
  int widest = 0;
  for (const HTEQHardwareBusInterface* bi : busInterfaces_) widest = std::max(widest, bi->getDataWidth());
  return widest;
}

namespace {
unsigned int countAximm(const HTEQHardwarePlatform::TEQHardwareBusInterfaceVec& v, const char* mode) {
  unsigned int n = 0;
  for (const HTEQHardwareBusInterface* bi : v) {
    if (HSTStringUtils::iequals(bi->getBusTypeRef(), "aximm") && HSTStringUtils::iequals(bi->getMode(), mode))
      ++n;
  }
  return n;
}
}  // namespace

unsigned int HTEQHardwarePlatform::getMaxAXIMMManagers() const {
  return countAximm(busInterfaces_.view(), "master");
}

unsigned int HTEQHardwarePlatform::getMaxAXIMMSubordinates() const {
  return countAximm(busInterfaces_.view(), "slave");
}

unsigned int HTEQHardwarePlatform::getMaxInterrupts() const {
  unsigned int n = 0;
  for (const HTEQHardwareBusInterface* bi : busInterfaces_) {
    if (HSTStringUtils::iequals(bi->getBusTypeRef(), "interrupt")) ++n;
  }
  return n;
}

// ---------------------------------------------------------------------------
// Feature ROMs

HTEQHardwareFeatureRom* HTEQHardwarePlatform::addFeatureRom() { return featureRoms_.emplace(); }

HSTFwdIter<HTEQHardwareFeatureRom*>* HTEQHardwarePlatform::createFeatureRomIter() const {
  return HSTCreateFwdIter(featureRoms_.view());
}

void HTEQHardwarePlatform::getFeatureRoms(TEQHardwareFeatureRomVec& out) const {
  walkIter(createFeatureRomIter(), out);
}

HTEQHardwarePlatform::FeatureRomVecRange HTEQHardwarePlatform::getFeatureRomVecRange() const {
  return FeatureRomVecRange(featureRoms_.begin(), featureRoms_.end());
}

// ---------------------------------------------------------------------------
// State

HTEQHardwarePlatform::PlatformState HTEQHardwarePlatform::getState() const {
  if (platformState_ == "synth") return synth;
  if (platformState_ == "impl") return impl;
  if (platformState_ == "pre_synth") return pre_synth;
  return unknown_state;
}

void HTEQHardwarePlatform::setState(int state) {
  switch (state) {
    case synth:
      platformState_ = "synth";
      break;
    case impl:
      platformState_ = "impl";
      break;
    case pre_synth:
      platformState_ = "pre_synth";
      break;
    default:
      platformState_.clear();
      break;
  }
}

bool HTEQHardwarePlatform::isPreSynthFlatShell() const {
  return getState() == pre_synth && isExpandable() && !usesPR_ && designIntent_.getDataCenter();
}

bool HTEQHardwarePlatform::isSynthFlatShell() const {
  return getState() == synth && isExpandable() && !usesPR_ && designIntent_.getDataCenter();
}

bool HTEQHardwarePlatform::isFlatShell() const { return isPreSynthFlatShell() || isSynthFlatShell(); }

// ---------------------------------------------------------------------------
// Design IP instances and reconfigurable partitions

HTEQDesignIPInstance* HTEQHardwarePlatform::addDesignIPInstance() { return designIpInstances_.emplace(); }

HSTFwdIter<HTEQDesignIPInstance*>* HTEQHardwarePlatform::createDesignIPInstanceIter() const {
  return HSTCreateFwdIter(designIpInstances_.view());
}

HTEQReconfigPartition* HTEQHardwarePlatform::addReconfigPartition() { return reconfigPartitions_.emplace(); }

HTEQReconfigPartition* HTEQHardwarePlatform::findReconfigPartition(uint32_t nodeId) const {
  for (HTEQReconfigPartition* p : reconfigPartitions_) {
    if (p->getNodeID() == nodeId) return p;
  }
  return nullptr;
}

uint32_t HTEQHardwarePlatform::getDesignID() const { return designIds_->getDesignID(); }
void HTEQHardwarePlatform::setDesignID(uint32_t v) { designIds_->setDesignID(v); }
uint32_t HTEQHardwarePlatform::getParentID() const { return designIds_->getParentID(); }
void HTEQHardwarePlatform::setParentID(uint32_t v) { designIds_->setParentID(v); }
uint32_t HTEQHardwarePlatform::getNodeID() const { return designIds_->getNodeID(); }
void HTEQHardwarePlatform::setNodeID(uint32_t v) { designIds_->setNodeID(v); }
uint32_t HTEQHardwarePlatform::getFunctionID() const { return designIds_->getFunctionID(); }
void HTEQHardwarePlatform::setFunctionID(uint32_t v) { designIds_->setFunctionID(v); }
uint32_t HTEQHardwarePlatform::getTILPlInterfaceID() const { return designIds_->getTILPlInterfaceID(); }
void HTEQHardwarePlatform::setTILPlInterfaceID(uint32_t v) { designIds_->setTILPlInterfaceID(v); }
uint32_t HTEQHardwarePlatform::getTILNodeID() const { return designIds_->getTILNodeID(); }
void HTEQHardwarePlatform::setTILNodeID(uint32_t v) { designIds_->setTILNodeID(v); }
uint32_t HTEQHardwarePlatform::getTILUniqueID() const { return designIds_->getTILUniqueID(); }
void HTEQHardwarePlatform::setTILUniqueID(uint32_t v) { designIds_->setTILUniqueID(v); }
uint32_t HTEQHardwarePlatform::getTILPuID() const { return designIds_->getTILPuID(); }
void HTEQHardwarePlatform::setTILPuID(uint32_t v) { designIds_->setTILPuID(v); }

namespace {
// The platform in a module file; null when the file does not load as one.
std::shared_ptr<HTEQPlatform> loadModuleFile(const std::string& file) {
  try {
    teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
    return loader.load();
  } catch (const teq_platform::PlatformParseException&) {
    return nullptr;
  } catch (const HEXAll&) {
    return nullptr;
  }
}
}  // namespace

uint32_t HTEQHardwarePlatform::getNodeIDFromLfa(const std::string& file) const {
  std::shared_ptr<HTEQPlatform> platform = loadModuleFile(file);
  const HTEQHardwarePlatform* hw = platform != nullptr ? platform->getHardwarePlatform() : nullptr;
  return hw != nullptr ? hw->getNodeID() : 0;
}

bool HTEQHardwarePlatform::isValidRmLfa(const std::string& file) const {
  return HUTFile::isFile(file) && findReconfigPartition(getNodeIDFromLfa(file)) != nullptr;
}

// Each partition takes at most one module file.
bool HTEQHardwarePlatform::validateRmLfaFiles(const StringVector& files) const {
  std::set<const HTEQReconfigPartition*> taken;
  for (const std::string& file : files) {
    if (!HUTFile::isFile(file)) return false;
    const HTEQReconfigPartition* p = findReconfigPartition(getNodeIDFromLfa(file));
    if (p == nullptr || !taken.insert(p).second) return false;
  }
  return true;
}

// ---------------------------------------------------------------------------
// Hardware database

bool HTEQHardwarePlatform::archiveHasMember_(const std::string& member) const {
  return PlatformArchiveAccess::hasMember(platformFile_, member);
}

bool HTEQHardwarePlatform::hasHardwareDef_() const {
  // Both are looked up on purpose, whatever the first answers.
  const bool hwdef = archiveHasMember_("hwdef.xml");
  const bool sysdef = archiveHasMember_("sysdef.xml");
  return hwdef | sysdef;
}

std::string HTEQHardwarePlatform::getHwDbName() const {
  if (!hwDbName_.empty()) return hwDbName_;
  if (!hasHardwareDef_()) return std::string();
  HHSMHwManager* manager = HHSMHwManager::getHsmHwManager();
  if (manager->openDefFile(platformFile_)) {
    const HHSMHardwareDb* db = manager->createHardwareDb(platformFile_);
    if (db != nullptr) hwDbName_ = db->getName();
  }
  return hwDbName_;
}

HHSMHardwareDb* HTEQHardwarePlatform::getHwDb() const {
  getHwDbName();
  if (hwDbName_.empty()) return nullptr;
  return HHSMHwManager::getHsmHwManager()->getHardwareDb(hwDbName_);
}

HHSMHardwareDb* HTEQHardwarePlatform::getHwDb(const std::string& name) const {
  return HHSMHwManager::getHsmHwManager()->getHardwareDb(name);
}

HHSMHardwareDb* HTEQHardwarePlatform::createHwDb() const { return createHwDb(std::string()); }

HHSMHardwareDb* HTEQHardwarePlatform::createHwDb(const std::string& name) const {
  HHSMHwManager* manager = HHSMHwManager::getHsmHwManager();
  if (!name.empty()) {
    HHSMHardwareDb* existing = manager->getHardwareDb(name);
    if (existing != nullptr) return existing;
  }
  if (!hasHardwareDef_()) return nullptr;
  std::shared_ptr<HHDFHwDef> hdf = HHDFHwDefUtils::getHDF(platformFile_);
  return manager->createHardwareDbFromHDF(hdf.get());
}

HHSMHardwareDb* HTEQHardwarePlatform::createHwDb(const StringVector& rmFiles) const {
  return createHwDb(std::string(), rmFiles);
}

HHSMHardwareDb* HTEQHardwarePlatform::createHwDb(const std::string& name, const StringVector& rmFiles) const {
  if (!hasHardwareDef_() || !isStatic_ || !validateRmLfaFiles(rmFiles)) return nullptr;
  HHSMHwManager* manager = HHSMHwManager::getHsmHwManager();
  if (!name.empty()) {
    HHSMHardwareDb* existing = manager->getHardwareDb(name);
    if (existing != nullptr) return existing;
  }
  HHSMHwManager::RmFileMap byInstancePath;
  for (const std::string& file : rmFiles) {
    std::shared_ptr<HTEQPlatform> platform = loadModuleFile(file);
    const HTEQHardwarePlatform* hw = platform != nullptr ? platform->getHardwarePlatform() : nullptr;
    HPLDevice* device = hw != nullptr ? hw->getDevice("fpga0") : nullptr;
    if (device == nullptr) continue;
    const std::string instPath = device->getCore().getInstPath();
    if (!instPath.empty()) byInstancePath[instPath] = file;
  }
  return manager->createHardwareDb(platformFile_, byInstancePath);
}

// ---------------------------------------------------------------------------
// Archive member names

std::string HTEQHardwarePlatform::getPlatformExt() const {
  if (platformFile_.empty()) return std::string();
  const std::string ext = HUTPathUtils::getExtension(platformFile_);
  return ext.empty() ? ext : ext.substr(1);
}

std::string HTEQHardwarePlatform::getJsonFileName() const {
  const std::string ext = getPlatformExt();
  return ext.empty() ? std::string() : ext + ".json";
}

std::string HTEQHardwarePlatform::getAltJsonFileName() const { return kAltPrefix + getJsonFileName(); }

std::string HTEQHardwarePlatform::getHwEmuDir() const { return kHwEmuDir; }

std::string HTEQHardwarePlatform::getHwEmuJsonFileName() const {
  const std::string ext = getPlatformExt();
  return ext.empty() ? std::string() : getHwEmuDir() + "/" + ext + ".json";
}

std::string HTEQHardwarePlatform::getAltHwEmuJsonFileName() const {
  const std::string ext = getPlatformExt();
  return ext.empty() ? std::string() : getHwEmuDir() + "/" + kAltPrefix + ext + ".json";
}

std::string HTEQHardwarePlatform::getHwEmuXmlFileName() const {
  const std::string ext = getPlatformExt();
  return ext.empty() ? std::string() : getHwEmuDir() + "/" + ext + ".xml";
}

std::string HTEQHardwarePlatform::getXmlFileName() const {
  if (platformFile_.empty()) return std::string();
  if (isChildHardwareEmuPlatform_) return getHwEmuXmlFileName();
  const std::string ext = getPlatformExt();
  return ext.empty() ? std::string() : ext + ".xml";
}

bool HTEQHardwarePlatform::containsChildHardwareEmuPlatform() const {
  if (isChildHardwareEmuPlatform_ || platformFile_.empty()) return false;
  return archiveHasMember_(getHwEmuJsonFileName());
}

const std::vector<std::string>& HTEQHardwarePlatform::getValidPlatformExts() {
  static const std::vector<std::string> exts = {".cfa", ".lfa"};
  return exts;
}

bool HTEQHardwarePlatform::isValidPlatformExt(const std::string& extension) {
  const auto& exts = getValidPlatformExts();
  return std::find(exts.begin(), exts.end(), extension) != exts.end();
}

// ---------------------------------------------------------------------------
// JSON

namespace {
template <class Writer, class T>
void addList(Writer& writer, const char* key, const HSTOwningVector<T>& items) {
  auto list = teq_platform::listFor(writer);
  for (const T* item : items) list.addItem(item);
  writer.addKey(key, std::move(list));
}
}  // namespace

void HTEQHardwarePlatform::toJSON(teq_platform::JSONObjectWriter& writer) const { writeJSON_(writer); }

template <class Writer>
void HTEQHardwarePlatform::writeJSON_(Writer& writer) const {
  writer.addKey("vendor", vendor_);
  writer.addKey("boardId", boardId_);
  writer.addKey("name", name_);
  writer.addKey("description", description_);
  writer.addKey("detailedDescription", detailedDescription_);
  writer.addKey("uniqueName", getUniqueName());
  writer.addKey("fpgaPart", getFpgaPart());
  writer.addKey("fpgaDevice", getFpgaDevice());
  writer.addKey("interfaceDescription", getInterfaceDesc());
  writer.addKey("platformFile", platformFile_);
  writer.addKey("unifiedPlatform", unifiedPlatform_);
  writer.addKey("expandablePlatform", expandable_);
  writer.addKey("hardware", supportsHardware());
  writer.addKey("softwareEmulation", supportsSWEmulation());
  writer.addKey("hardwareEmulation", supportsHWEmulation());
  writer.addKey("hardwareEmuPlatform", isHWEmuPlatform_);
  if (expandable_) {
    writer.addKey("maxAXIMMManagers", getMaxAXIMMManagers());
    writer.addKey("maxAXIMMSubordinates", getMaxAXIMMSubordinates());
    writer.addKey("maxInterrupts", getMaxInterrupts());
  }
  writer.addKey("usesNIFD", usesNIFD());
  if (isStatic_) writer.addKey("static", true);
  if (isRM_) writer.addKey("rm", true);
  writer.addKey("drBdInstName", drBdInstName_);
  writer.addKey("generatedName", generatedName_);
  writer.addKey("generatedVersion", generatedVersion_);
  writer.addKey("generatedChangeList", generatedChangeList_);
  writer.addKey("generatedIpChangeList", generatedIpChangeList_);
  writer.addKey("generatedSharedDataChangeList", generatedSharedDataChangeList_);
  writer.addKey("generatedTimestamp", generatedTimestamp_);
  if (hasExternalSources_) writer.addKey("hasExternalSources", true);
  if (hasRQAContent_) writer.addKey("hasRQAContent", true);
  if (isGeneratedByLink()) writer.addKey("genLink", true);
  if (generatedBySwEmuLink_) writer.addKey("genSwEmuLink", true);
  writer.addKey("idCode", idCode_);
  writer.addKey("extendedIdCode", extendedIdCode_);

  auto flash = teq_platform::objectFor(writer);
  flash.addKey("interfaceType", flashInterfaceType_);
  flash.addKey("offsetAddress", flashOffsetAddress_);
  flash.addKey("size", flashSize_);
  writer.addKey("flash", std::move(flash));

  writer.addKey("designIDs", designIds_.get());
  addList(writer, "reconfigPartitionIDs", reconfigPartitions_);
  writer.addKey("tilHardware", &tilHardware_);
  // Read directly: writing never triggers the lazy load of partitions.
  if (expandable_ && !tilPartitions_.empty()) {
    auto partitions = teq_platform::listFor(writer);
    for (const HTEQTilPartition& p : tilPartitions_) partitions.addItem(&p);
    writer.addKey("tilPartitions", std::move(partitions));
  }
  addList(writer, "designIpInstances", designIpInstances_);

  StringVector types;
  StringVector counts;
  getAllResources(types, counts);
  auto resources = teq_platform::listFor(writer);
  for (size_t i = 0; i < types.size() && i < counts.size(); ++i) {
    auto r = teq_platform::objectFor(resources);
    r.addKey("type", types[i]);
    r.addKey("count", counts[i]);
    resources.addItem(std::move(r));
  }
  writer.addKey("resources", std::move(resources));

  // A platform whose clocks miss the default id marks none of them default.
  const HTEQSystemClock* defaultClock = getDefaultClock();
  auto clocks = teq_platform::listFor(writer);
  for (const HTEQSystemClock* c : systemClocks_) {
    auto item = teq_platform::objectFor(clocks);
    item.addKey("default", defaultClock != nullptr && c->getName() == defaultClock->getName());
    item.writeObject(c);
    clocks.addItem(std::move(item));
  }
  writer.addKey("systemClocks", std::move(clocks));

  addList(writer, "ipParameters", ipParams_);
  addList(writer, "busInterfaces", busInterfaces_);
  addList(writer, "nocConnectivity", nocConnectivity_);
  addList(writer, "featureRoms", featureRoms_);
}

template void HTEQHardwarePlatform::writeJSON_(teq_platform::JSONObjectWriter&) const;
template void HTEQHardwarePlatform::writeJSON_(teq_platform::TextObjectWriter&) const;
