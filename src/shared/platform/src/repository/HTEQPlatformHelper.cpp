#include "platform/HTEQPlatformHelper.h"

#include <vector>

#include "host/HBOBoard.h"
#include "host/HBOBoardCDataManager.h"
#include "host/HBOBoardComponent.h"
#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "host/HUTFile.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQDevice.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformUtils.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSoftwarePlatformUtils.h"
#include "platform/HTEQSystemConfig.h"
#include "platform/NativePlatformRepoService.h"
#include "platform/PlatformLoader.h"
#include "platform/PlatformParseException.h"

namespace {

// Puts the saved board repository paths back when it goes out of scope.
class BoardRepoRestore {
 public:
  BoardRepoRestore(HTEQPlatformHelper& helper, HTEQPlatformHelper::StringVector saved)
      : helper_(helper), saved_(std::move(saved)) {}
  ~BoardRepoRestore() {
    try {
      helper_.setBoardRepoPaths(saved_);
    } catch (...) {  // a store that fails here must not end the process during unwinding
    }
  }
  BoardRepoRestore(const BoardRepoRestore&) = delete;
  BoardRepoRestore& operator=(const BoardRepoRestore&) = delete;

 private:
  HTEQPlatformHelper& helper_;
  HTEQPlatformHelper::StringVector saved_;
};

}  // namespace

HTEQPlatformHelper::HTEQPlatformHelper(HTEQPlatform* platform) : directPlatform_(platform) {
  if (platform != nullptr) platformFile_ = platform->getPlatformFile();
}

HTEQPlatformHelper::HTEQPlatformHelper(const std::string& name, const StringVector& repoPaths,
                                       const StringVector& boardRepoPaths)
    : boardDataManager_(HBOBoardCDataManager::create()) {
  setBoardRepoPaths(boardRepoPaths);
  platformFile_ = name;
  if (name.empty()) return;
  if (!HUTFile::exists(name)) {
    std::vector<std::string> files;
    teq::platform::NativePlatformRepoService().getZdfFiles(name, repoPaths, true, files);
    if (files.size() == 1) platformFile_ = files.front();
  }
  if (!HUTFile::exists(platformFile_)) return;
  try {
    teq_platform::PlatformLoader loader(HUTFile::getFullPath(platformFile_),
                                        teq_platform::PlatformLoader::Default);
    loadedPlatform_ = loader.load();
  } catch (const teq_platform::PlatformParseException&) {
    loadedPlatform_.reset();
  } catch (const HEXFileNotFoundException&) {
    loadedPlatform_.reset();
  }
}

HTEQPlatformHelper::~HTEQPlatformHelper() = default;

HTEQPlatform* HTEQPlatformHelper::getPlatform() const {
  return loadedPlatform_ ? loadedPlatform_.get() : directPlatform_;
}

HTEQHardwarePlatform* HTEQPlatformHelper::hardware_() const {
  const HTEQPlatform* p = getPlatform();
  if (p == nullptr) return nullptr;
  HTEQHardwarePlatform* hw = p->getHardwarePlatform();
  return hw != nullptr ? hw : p->getDefaultRPHardwarePlatform();
}

HTEQSoftwarePlatform* HTEQPlatformHelper::software_() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getSoftwarePlatform() : nullptr;
}

void HTEQPlatformHelper::getTargetCategories(StringVector& out) const {
  if (const HTEQPlatform* p = getPlatform()) p->getTargetCategories(out);
}

bool HTEQPlatformHelper::hasBootImg() const {
  const HTEQPlatform* p = getPlatform();
  if (p == nullptr) return false;
  if (!p->isUnified()) return p->getDesignIntentEmbedded();
  const auto* hw = dynamic_cast<const HPLPlatform*>(hardware_());
  return hw != nullptr && hw->getHostInterfaceAsEnum() == HPLPlatform::HOST_INTERFACE_AXI;
}

HTEQSystemConfig* HTEQPlatformHelper::getDefaultSystemConfig() const {
  const HTEQSoftwarePlatform* sw = software_();
  return sw != nullptr ? sw->getDefaultSystemConfig() : nullptr;
}

HTEQSystemConfig* HTEQPlatformHelper::getSystemConfigByName(const std::string& name) const {
  const HTEQSoftwarePlatform* sw = software_();
  return sw != nullptr ? sw->getSystemConfigByName(name) : nullptr;
}

int HTEQPlatformHelper::getSysConfigNames(StringVector& out, const std::string& libraryType) const {
  const HTEQSoftwarePlatform* sw = software_();
  return sw != nullptr ? sw->getSystemConfigNames(out, libraryType) : 0;
}

bool HTEQPlatformHelper::isSystemConfigSupported(const std::string& name) const {
  const HTEQSoftwarePlatform* sw = software_();
  return sw != nullptr && sw->isSystemConfigSupported(name);
}

bool HTEQPlatformHelper::isRuntimeSupported(const std::string& name) const {
  const HTEQSoftwarePlatform* sw = software_();
  return sw != nullptr && sw->isRuntimeSupported(name);
}

bool HTEQPlatformHelper::isQemuSupported(const std::string& systemConfig) const {
  const HTEQSystemConfig* config = getSystemConfigByName(systemConfig);
  return config != nullptr && config->isQemuSupported();
}

std::string HTEQPlatformHelper::getIncludePaths(const std::string& configName, const std::string& procGrpName,
                                                const std::string& osName) const {
  const HTEQPlatform* p = getPlatform();
  if (p == nullptr) return std::string();
  return HTEQSoftwarePlatformUtils::getIncludePaths(p->getSoftwarePlatforms(), configName, procGrpName,
                                                    osName);
}

std::string HTEQPlatformHelper::getLibraryPaths(const std::string& configName, const std::string& procGrpName,
                                                const std::string& osName) const {
  const HTEQPlatform* p = getPlatform();
  if (p == nullptr) return std::string();
  return HTEQSoftwarePlatformUtils::getLibraryPaths(p->getSoftwarePlatforms(), configName, procGrpName,
                                                    osName);
}

void HTEQPlatformHelper::getRuntimes(const std::string& systemConfig, StringVector& out) const {
  HTEQPlatformUtils::getRuntimesOf(getPlatform(), systemConfig, false, out);
}

void HTEQPlatformHelper::getRuntimesByPrettyName(const std::string& systemConfig, StringVector& out) const {
  HTEQPlatformUtils::getRuntimesOf(getPlatform(), systemConfig, true, out);
}

unsigned int HTEQPlatformHelper::getNumRuntimes(const std::string& systemConfig) const {
  StringVector runtimes;
  getRuntimesByPrettyName(systemConfig, runtimes);
  return static_cast<unsigned int>(runtimes.size());
}

// Kept at "at least one", as callers have always read it.
bool HTEQPlatformHelper::supportsMultipleRuntimes() const { return getNumRuntimes("") >= 1; }

std::string HTEQPlatformHelper::getFpgaPart() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getPartName() : std::string();
}

std::string HTEQPlatformHelper::getFpgaPartAsFields() const {
  const HTEQHardwarePlatform* hw = hardware_();
  if (hw == nullptr) return std::string();
  HTEQHardwarePlatform::TEQDeviceVec devices;
  hw->getDevices(devices);
  return devices.empty() || devices.front() == nullptr ? std::string() : devices.front()->getFpgaPart();
}

HBOBoard* HTEQPlatformHelper::getBaseBoard_() const {
  const HTEQHardwarePlatform* hw = hardware_();
  if (hw == nullptr || !boardDataManager_) return nullptr;
  return boardDataManager_->getBoard(hw->getBoardPart());
}

HBOBoardComponent* HTEQPlatformHelper::getConnector_(const std::string& name) const {
  const HBOBoard* board = getBaseBoard_();
  if (board == nullptr) return nullptr;
  std::vector<HBOBoardComponent*> connectors;
  board->getConnectorsList(connectors);
  std::vector<HBOBoardComponent*> dimms;
  for (HBOBoardComponent* c : connectors)
    if (c != nullptr && c->isDIMMConnector()) dimms.push_back(c);
  for (HBOBoardComponent* c : dimms)
    if (HSTStringUtils::iequals(c->getDisplayName(), name)) return c;
  for (HBOBoardComponent* c : dimms)
    if (c->getName() == name) return c;
  return nullptr;
}

void HTEQPlatformHelper::getCompatibleConnectors(const std::string& name, StringVector& out) {
  const HTEQHardwarePlatform* hw = hardware_();
  if (hw == nullptr || !boardDataManager_) return;
  BoardRepoRestore restore(*this, boardRepoPaths_);
  StringVector paths = boardRepoPaths_;
  paths.push_back(hw->getBoardRepo());
  setBoardRepoPaths(paths);
  const HBOBoard* board = getBaseBoard_();
  const HBOBoardComponent* connector = getConnector_(name);
  if (board == nullptr || connector == nullptr) return;
  std::vector<HBOBoardComponent*> compatible;
  board->getCompatibleConnectorsList(connector, compatible);
  for (const HBOBoardComponent* c : compatible)
    if (c != nullptr && c->isDIMMConnector()) out.push_back(c->getName());
}

void HTEQPlatformHelper::getBoardRepoPaths(StringVector& out) const {
  out.insert(out.end(), boardRepoPaths_.begin(), boardRepoPaths_.end());
}

void HTEQPlatformHelper::setBoardRepoPaths(const StringVector& paths) {
  boardRepoPaths_ = paths;
  if (boardDataManager_) boardDataManager_->setBoardPartRepoPaths(paths);
}

void HTEQPlatformHelper::clearBoardRepoPaths() { setBoardRepoPaths(StringVector()); }

std::string HTEQPlatformHelper::getVendor() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getVendor() : std::string();
}

std::string HTEQPlatformHelper::getLibrary() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getLibrary() : std::string();
}

std::string HTEQPlatformHelper::getName() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getName() : std::string();
}

std::string HTEQPlatformHelper::getVersion() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getVersion() : std::string();
}

std::string HTEQPlatformHelper::getDescription() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getDescription() : std::string();
}

std::string HTEQPlatformHelper::getUniqueName() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getUniqueName() : std::string();
}

std::string HTEQPlatformHelper::getPlatformBaseName() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getPlatformBaseName() : std::string();
}

std::string HTEQPlatformHelper::getPlatformFile() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getPlatformFile() : std::string();
}

std::string HTEQPlatformHelper::getPlatformDir() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getPlatformDir() : std::string();
}

std::string HTEQPlatformHelper::getDeviceName() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getDeviceName() : std::string();
}

std::string HTEQPlatformHelper::getSoftwarePlatformFile() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getSoftwarePlatformFile() : std::string();
}

bool HTEQPlatformHelper::isUnifiedPlatform() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->isUnified() : false;
}

bool HTEQPlatformHelper::isExpandablePlatform() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->isExpandable() : false;
}

bool HTEQPlatformHelper::isFixedPlatform() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->isFixed() : false;
}

bool HTEQPlatformHelper::isPartialPlatform() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->isPartial() : false;
}

bool HTEQPlatformHelper::hasSimContent() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->hasSimContent() : false;
}

bool HTEQPlatformHelper::isProcessorGroupRelevant() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getDesignIntentEmbedded() : false;
}

bool HTEQPlatformHelper::isLinuxRootFSPathRelevant() const {
  const HTEQPlatform* p = getPlatform();
  return p != nullptr ? p->getDesignIntentEmbedded() : false;
}

int HTEQPlatformHelper::getBRAMCount() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getBRAMCount() : 0;
}

int HTEQPlatformHelper::getDSPCount() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getDSPCount() : 0;
}

int HTEQPlatformHelper::getFFCount() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getFFCount() : 0;
}

int HTEQPlatformHelper::getLUTCount() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getLUTCount() : 0;
}

unsigned int HTEQPlatformHelper::getNumDDRs() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getNumDDRs() : 0;
}

unsigned int HTEQPlatformHelper::getNumComputeUnits() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getNumComputeUnits() : 0;
}

std::string HTEQPlatformHelper::getMemType() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getMemType() : std::string();
}

std::string HTEQPlatformHelper::getMemSize() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getMemSize() : std::string();
}

bool HTEQPlatformHelper::isMemoryResourceIndexed() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->isMemoryResourceIndexed() : false;
}

unsigned int HTEQPlatformHelper::getUniqueMemoryTypeCount() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getUniqueMemoryTypeCount() : 0;
}

unsigned int HTEQPlatformHelper::getUniqueMemoryTypeStrings(StringVector& out) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getUniqueMemoryTypeStrings(out) : 0;
}

unsigned int HTEQPlatformHelper::getMemoryTypeCount(const std::string& type) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getMemoryTypeCount(type) : 0;
}

unsigned int HTEQPlatformHelper::getMemoryIndex(const std::string& type, unsigned int n) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getMemoryIndex(type, n) : 0;
}

std::string HTEQPlatformHelper::getMemorySize(const std::string& type, unsigned int n) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getMemorySize(type, n) : std::string();
}

std::string HTEQPlatformHelper::getMemorySLR(const std::string& type, unsigned int n) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getMemorySLR(type, n) : std::string();
}

void HTEQPlatformHelper::getValidSLRNames(StringVector& out) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getValidSLRNames(out);
}

std::string HTEQPlatformHelper::getDefaultClockFrequency() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getDefaultClockFrequency() : std::string();
}

std::string HTEQPlatformHelper::getDefaultClockId() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getDefaultClockId() : std::string();
}

std::string HTEQPlatformHelper::getClockFrequency(const std::string& name) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getClockFrequency(name) : std::string();
}

std::string HTEQPlatformHelper::getClockId(const std::string& name) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getClockId(name) : std::string();
}

std::string HTEQPlatformHelper::getPlatformFrequency(int index) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getPlatformFrequency(index) : std::string();
}

void HTEQPlatformHelper::getAllClockFrequencies(StringVector& names, StringVector& frequencies) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getAllClockFrequencies(names, frequencies);
}

void HTEQPlatformHelper::getAllResources(StringVector& types, StringVector& counts) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getAllResources(types, counts);
}

void HTEQPlatformHelper::getCpuClockNames(StringVector& out) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getCpuClockNames(out);
}

void HTEQPlatformHelper::getSystemClockNames(StringVector& out) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getSystemClockNames(out);
}

std::string HTEQPlatformHelper::getHostArch() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getHostArch() : std::string();
}

std::string HTEQPlatformHelper::getInterfaceDesc() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getInterfaceDesc() : std::string();
}

std::string HTEQPlatformHelper::getBoardId() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getBoardId() : std::string();
}

std::string HTEQPlatformHelper::getPlatformBoardRepo() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getBoardRepo() : std::string();
}

void HTEQPlatformHelper::getBoardImgZipEntries(StringVector& out) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getBoardImgZipEntries(out);
}

std::string HTEQPlatformHelper::getBoardConnectionsString() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getBoardConnectionsString() : std::string();
}

std::string HTEQPlatformHelper::getLockedBoardConnectionsString() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getLockedBoardConnectionsString() : std::string();
}

std::string HTEQPlatformHelper::getUnlockedBoardConnectionsString() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getUnlockedBoardConnectionsString() : std::string();
}

bool HTEQPlatformHelper::hasDimmConnectors() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->hasDimmConnectors() : false;
}

void HTEQPlatformHelper::getDimmConnectors(StringVector& out) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getDimmConnectors(out);
}

void HTEQPlatformHelper::getConnectedDimmConnectors(StringVector& names, StringVector& connectedNames) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getConnectedDimmConnectors(names, connectedNames);
}

void HTEQPlatformHelper::getLockedDimmConnectors(StringVector& out) const {
  if (const HTEQHardwarePlatform* hw = hardware_()) hw->getLockedDimmConnectors(out);
}

std::string HTEQPlatformHelper::getConnectorDisplayName(const std::string& name) const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getConnectorDisplayName(name) : std::string();
}

std::string HTEQPlatformHelper::getFpgaDevice() const {
  const HTEQHardwarePlatform* hw = hardware_();
  return hw != nullptr ? hw->getFpgaDevice() : std::string();
}
