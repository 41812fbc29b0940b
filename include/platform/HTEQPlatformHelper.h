#ifndef PLATFORM_HTEQPLATFORMHELPER_H
#define PLATFORM_HTEQPLATFORMHELPER_H

#include <memory>
#include <string>

#include "platform/HSTVector.h"
#include "platform/ZrPlatformExport.h"

class HBOBoard;
class HBOBoardCDataManager;
class HBOBoardComponent;
class HTEQHardwarePlatform;
class HTEQPlatform;
class HTEQSoftwarePlatform;
class HTEQSystemConfig;

// One platform behind flat questions that answer in strings and lists, for
// compiler front ends and the JVM side. Without a platform (isValid() false)
// every question answers false, 0, "" or null and leaves lists unchanged.
class ZR_PLATFORM_API HTEQPlatformHelper {
 public:
  using StringVector = HSTVector<std::string>;

  // Wraps a platform the caller keeps alive; no board data store, so
  // getCompatibleConnectors finds nothing.
  explicit HTEQPlatformHelper(HTEQPlatform* platform);
  // `name` is a descriptor path, or a platform name that exactly one
  // descriptor of `repoPaths` and the default repositories answers to. The
  // platform is loaded; when it cannot be found or read the helper stays
  // invalid (a read failure has sent its own message).
  HTEQPlatformHelper(const std::string& name, const StringVector& repoPaths,
                     const StringVector& boardRepoPaths);
  virtual ~HTEQPlatformHelper();
  HTEQPlatformHelper(const HTEQPlatformHelper&) = delete;
  HTEQPlatformHelper& operator=(const HTEQPlatformHelper&) = delete;

  HTEQPlatform* getPlatform() const;
  bool isValid() const { return getPlatform() != nullptr; }

  std::string getVendor() const;
  std::string getLibrary() const;
  std::string getName() const;
  std::string getVersion() const;
  std::string getDescription() const;
  std::string getUniqueName() const;
  std::string getPlatformBaseName() const;
  std::string getPlatformFile() const;
  std::string getPlatformDir() const;
  std::string getDeviceName() const;
  std::string getSoftwarePlatformFile() const;
  void getTargetCategories(StringVector& out) const;

  bool isUnifiedPlatform() const;
  bool isUnified() const { return isUnifiedPlatform(); }
  bool isExpandablePlatform() const;
  bool isFixedPlatform() const;
  bool isPartialPlatform() const;
  bool hasSimContent() const;
  bool isProcessorGroupRelevant() const;
  bool isLinuxRootFSPathRelevant() const;
  // Not unified: an embedded intent. Unified: an AXI host interface.
  bool hasBootImg() const;

  // Questions on the first software platform.
  HTEQSystemConfig* getDefaultSystemConfig() const;
  HTEQSystemConfig* getSystemConfigByName(const std::string& name) const;
  int getSysConfigNames(StringVector& out, const std::string& libraryType = "static") const;
  bool isSystemConfigSupported(const std::string& name) const;
  bool isRuntimeSupported(const std::string& name) const;
  bool isQemuSupported(const std::string& systemConfig) const;
  // The paths of a processor group of a configuration, over all of this
  // platform's software platforms, when the group's OS name is `osName`.
  std::string getIncludePaths(const std::string& configName, const std::string& procGrpName,
                              const std::string& osName) const;
  std::string getLibraryPaths(const std::string& configName, const std::string& procGrpName,
                              const std::string& osName) const;

  void getRuntimes(const std::string& systemConfig, StringVector& out) const;
  void getRuntimesByPrettyName(const std::string& systemConfig, StringVector& out) const;
  unsigned int getNumRuntimes(const std::string& systemConfig) const;
  bool supportsMultipleRuntimes() const;

  // The part name of the hardware's first device, its part string as
  // stored, and its device field.
  std::string getFpgaPart() const;
  std::string getFpgaPartAsFields() const;
  std::string getFpgaDevice() const;

  int getBRAMCount() const;
  int getDSPCount() const;
  int getFFCount() const;
  int getLUTCount() const;
  unsigned int getNumDDRs() const;
  unsigned int getNumComputeUnits() const;
  void getAllResources(StringVector& types, StringVector& counts) const;

  std::string getMemType() const;
  std::string getMemSize() const;
  bool isMemoryResourceIndexed() const;
  unsigned int getUniqueMemoryTypeCount() const;
  unsigned int getUniqueMemoryTypeStrings(StringVector& out) const;
  unsigned int getMemoryTypeCount(const std::string& type) const;
  unsigned int getMemoryIndex(const std::string& type, unsigned int n) const;
  std::string getMemorySize(const std::string& type, unsigned int n) const;
  std::string getMemorySLR(const std::string& type, unsigned int n) const;
  void getValidSLRNames(StringVector& out) const;

  std::string getDefaultClockFrequency() const;
  std::string getDefaultClockId() const;
  std::string getClockFrequency(const std::string& name) const;
  std::string getClockId(const std::string& name) const;
  std::string getPlatformFrequency(int index) const;
  void getAllClockFrequencies(StringVector& names, StringVector& frequencies) const;
  void getCpuClockNames(StringVector& out) const;
  void getSystemClockNames(StringVector& out) const;

  std::string getHostArch() const;
  std::string getInterfaceDesc() const;

  std::string getBoardId() const;
  std::string getPlatformBoardRepo() const;
  void getBoardImgZipEntries(StringVector& out) const;
  std::string getBoardConnectionsString() const;
  std::string getLockedBoardConnectionsString() const;
  std::string getUnlockedBoardConnectionsString() const;

  bool hasDimmConnectors() const;
  void getDimmConnectors(StringVector& out) const;
  void getConnectedDimmConnectors(StringVector& names, StringVector& connectedNames) const;
  void getLockedDimmConnectors(StringVector& out) const;
  std::string getConnectorDisplayName(const std::string& name) const;
  // The DIMM connectors of the board that fit the DIMM connector `name`
  // (display name ignoring case, else name), looked up with the platform's
  // board repository behind the current ones; the current board repository
  // paths are restored afterwards, whatever happens.
  void getCompatibleConnectors(const std::string& name, StringVector& out);

  void getBoardRepoPaths(StringVector& out) const;
  void setBoardRepoPaths(const StringVector& paths);
  void clearBoardRepoPaths();

 private:
  HTEQHardwarePlatform* hardware_() const;
  HTEQSoftwarePlatform* software_() const;
  HBOBoard* getBaseBoard_() const;
  HBOBoardComponent* getConnector_(const std::string& name) const;

  std::shared_ptr<HTEQPlatform> loadedPlatform_;
  std::string platformFile_;
  HTEQPlatform* directPlatform_ = nullptr;
  std::shared_ptr<HBOBoardCDataManager> boardDataManager_;
  StringVector boardRepoPaths_;
};

#endif
