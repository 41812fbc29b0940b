#ifndef PLATFORM_HTEQHARDWAREPLATFORM_H
#define PLATFORM_HTEQHARDWAREPLATFORM_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "platform/HSTFwdIter.h"
#include "platform/HSTOwningVector.h"
#include "platform/HSTVector.h"
#include "platform/HTEQDesignIntentStorage.h"
#include "platform/HTEQPfmFileTypes.h"
#include "platform/HTEQTilHardware.h"
#include "platform/HTEQTilPartition.h"
#include "platform/JSONSerializable.h"

class HTEQHardwareBusInterface;
class HTEQSystemClock;
class HTEQHardwareIPParam;
class HTEQHardwareNocConnectivity;
class HTEQHardwareFeatureRom;
class HTEQDesignIPInstance;
class HTEQReconfigPartition;
class HTEQDevice;
class HPLDevice;
class HHSMHardwareDb;

// The hardware side of one platform: identity, targets, clocks, bus interfaces
// and the memory banks behind them, feature ROMs, reconfigurable partition ids
// and tile-array data, and its JSON form. Abstract: HPLPlatform adds what an
// archive holds and fills the pure virtual operations.
//
// Readers fill a platform through setters and the add... factories; the
// platform owns every object it hands out. Queries never fail for missing
// data: they answer an empty string, 0, false or null.
class ZR_PLATFORM_API HTEQHardwarePlatform : public teq_platform::JSONSerializable {
 public:
  using StringVector = std::vector<std::string>;
  using TEQHardwareBusInterfaceVec = std::vector<HTEQHardwareBusInterface*>;
  using TEQDeviceVec = std::vector<HTEQDevice*>;
  using TEQSystemClockVec = std::vector<HTEQSystemClock*>;
  using TEQHardwareIPParamVec = std::vector<HTEQHardwareIPParam*>;
  using TEQHardwareNocConnectivityVec = std::vector<HTEQHardwareNocConnectivity*>;
  using TEQHardwareFeatureRomVec = std::vector<HTEQHardwareFeatureRom*>;
  using TEQDesignIPInstanceVec = std::vector<HTEQDesignIPInstance*>;
  using TEQReconfigPartitionVec = std::vector<HTEQReconfigPartition*>;
  using FeatureRomVecRange =
      std::pair<TEQHardwareFeatureRomVec::const_iterator, TEQHardwareFeatureRomVec::const_iterator>;

  enum PlatformState { synth = 0, impl = 1, pre_synth = 2, unknown_state = 3 };

  // Memory index state: whether the platform's memory banks are addressed
  // through one indexed memory subsystem.
  enum MemoryIndexState { kNotIndexed = 0, kIndexed = 1, kIndexUnknown = 2 };

  HTEQHardwarePlatform();
  HTEQHardwarePlatform(const HTEQHardwarePlatform&) = delete;
  HTEQHardwarePlatform& operator=(const HTEQHardwarePlatform&) = delete;

  // ---- Virtual operations, in their fixed order ----
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;
  ~HTEQHardwarePlatform() override;
  virtual std::string getName() const;
  virtual std::string getVendor() const;
  virtual std::string getBoardPart() const = 0;
  virtual std::string getBoardRepo() const = 0;
  virtual std::string getBoardConnectionsString() const = 0;
  virtual std::string getLockedBoardConnectionsString() const = 0;
  virtual std::string getUnlockedBoardConnectionsString() const = 0;
  virtual std::string getBoardId() const;
  virtual std::string getVersion() const = 0;
  virtual std::string getDescription() const;
  virtual std::string getDetailedDescription() const;
  virtual std::string getUniqueName() const;
  virtual std::string getPrettyName() const;
  virtual std::string getPartName() const;
  virtual std::string getFpgaPart() const;
  virtual std::string getFpgaDevice() const;
  virtual std::string getDeviceName() const = 0;
  virtual unsigned int getNumDDRs() const = 0;
  virtual std::string getMemType() const = 0;
  virtual std::string getMemSize() const = 0;
  virtual bool isMemoryResourceIndexed() const;
  virtual unsigned int getUniqueMemoryTypeCount() const;
  virtual unsigned int getUniqueMemoryTypeStrings(StringVector& out) const;
  virtual unsigned int getMemoryTypeCount(const std::string& type) const;
  virtual unsigned int getMemoryIndex(const std::string& type, unsigned int n) const;
  virtual std::string getMemorySize(const std::string& type, unsigned int n) const;
  virtual std::string getMemorySLR(const std::string& type, unsigned int n) const;
  virtual std::string getInterfaceDesc() const = 0;
  virtual const std::string& getPlatformFile() const;
  virtual void getBoardImgZipEntries(StringVector& out) const = 0;
  virtual void getTargetCategories(StringVector& out) const = 0;
  virtual void getDevices(TEQDeviceVec& out) const = 0;
  virtual HPLDevice* getDevice(const std::string& name) const = 0;
  virtual void getSystemClockNames(StringVector& out) const;
  virtual void getCpuClockNames(StringVector& out) const;
  virtual std::string getClockFrequency(const std::string& name) const;
  virtual void getAllClockFrequencies(StringVector& names, StringVector& frequencies) const;
  virtual void getAllResources(StringVector& types, StringVector& counts) const;
  virtual std::string getClockId(const std::string& name) const;
  virtual std::string getPlatformFrequency(int id) const;
  virtual HTEQSystemClock* getDefaultClock() const;
  virtual std::string getDefaultClockFrequency() const;
  virtual std::string getDefaultClockId() const;
  virtual std::string getDefaultClockName() const;
  virtual int getBRAMCount() const;
  virtual int getDSPCount() const;
  virtual int getLUTCount() const;
  virtual int getFFCount() const;
  virtual int getRegisterCount() const;
  virtual unsigned int getNumComputeUnits() const = 0;
  virtual std::string getHostArch() const = 0;
  virtual HSTFwdIter<HTEQSystemClock*>* createSystemClockIter() const;
  virtual void getSystemClocks(TEQSystemClockVec& out) const;
  virtual HSTFwdIter<HTEQHardwareIPParam*>* createIPParamIter() const;
  virtual void getHardwareIPParams(TEQHardwareIPParamVec& out) const;
  virtual HSTFwdIter<HTEQHardwareNocConnectivity*>* createNocConnectivityIter() const;
  virtual HSTFwdIter<HTEQHardwareBusInterface*>* createBusInterfaceIter() const;
  virtual void getNocConnectivity(TEQHardwareNocConnectivityVec& out) const;
  virtual void getBusInterfaces(TEQHardwareBusInterfaceVec& out) const;
  virtual HTEQHardwareBusInterface* getBusInterfaceByName(const std::string& name) const;
  virtual void getMemoryBusInterfaces(TEQHardwareBusInterfaceVec& out) const;
  virtual const std::string& getHpfmString() const;
  virtual std::string getHwDbName() const;
  virtual HHSMHardwareDb* getHwDb() const;
  virtual HHSMHardwareDb* getHwDb(const std::string& name) const;
  virtual void getFeatureRoms(TEQHardwareFeatureRomVec& out) const;
  virtual HSTFwdIter<HTEQHardwareFeatureRom*>* createFeatureRomIter() const;
  virtual bool hasDimmConnectors() const = 0;
  virtual void getDimmConnectors(StringVector& out) const = 0;
  virtual void getLockedDimmConnectors(StringVector& out) const = 0;
  virtual void getConnectedDimmConnectors(StringVector& names, StringVector& connectedNames) const = 0;
  virtual std::string getConnectorDisplayName(const std::string& name) const = 0;
  virtual void getValidSLRNames(StringVector& out) const = 0;
  virtual const std::string& getGeneratedName() const;
  virtual const std::string& getGeneratedVersion() const;
  virtual unsigned int getGeneratedChangeList() const;
  virtual const std::string& getGeneratedIpChangeList() const;
  virtual const std::string& getGeneratedSharedDataChangeList() const;
  virtual const std::string& getGeneratedTimestamp() const;
  virtual bool isGeneratedByLink() const;
  virtual const std::string& getIdCode() const;
  virtual const std::string& getExtendedIdCode() const;
  // A file type word such as "SIM_BINARY"; the member name, or empty.
  virtual std::string getFile(const std::string& name) const = 0;
  virtual std::string getFile(HTEQPfmFileTypes::FileType type) const = 0;
  virtual bool hasFile(const std::string& name) const = 0;
  virtual bool hasFile(HTEQPfmFileTypes::FileType type) const = 0;
  virtual std::string getExtMetaJsonAsString() const = 0;
  virtual bool supportsHardware() const;
  virtual bool supportsSWEmulation() const;
  virtual bool supportsHWEmulation() const;
  virtual bool supportsTwoHwEmuBd() const;
  virtual bool supportsMemoryResourceIndex() const;
  virtual void setUsesNIFD(bool v);
  virtual bool usesNIFD() const;
  virtual FeatureRomVecRange getFeatureRomVecRange() const;
  virtual void getExtMetaJsonAsPtree(boost::property_tree::ptree& tree) const = 0;
  virtual void setExpandable(bool v);
  virtual void setUnifiedPlatform(bool v);
  virtual void setName(const std::string& v);
  virtual void setDescription(const std::string& v);
  virtual void setDetailedDescription(const std::string& v);
  virtual void setVendor(const std::string& v);
  virtual void setBoardId(const std::string& v);
  virtual void setComputedDesignIntent(HTEQDesignIntentStorage::Key key, bool value) = 0;
  virtual void setExplicitDesignIntent(HTEQDesignIntentStorage::Key key, bool value) = 0;
  virtual void setPlatformFile(const std::string& file);
  virtual HTEQHardwareIPParam* addHardwareIPParam();
  virtual HTEQHardwareNocConnectivity* addNocConnectivity();
  virtual HTEQHardwareBusInterface* addBusInterface();
  virtual HTEQSystemClock* addSystemClock();
  virtual HTEQHardwareFeatureRom* addFeatureRom();

  // ---- Plain state ----
  bool isUnifiedPlatform() const { return unifiedPlatform_; }
  bool isExpandable() const { return expandable_; }
  void setSupportsSWEmulation(bool v) { supportsSWEmulation_ = v; }
  void setSupportsHardware(bool v) { supportsHardware_ = v; }
  void setSupportsHWEmulation(bool v) { supportsHWEmulation_ = v; }
  bool isHWEmuPlatform() const { return isHWEmuPlatform_; }
  // true also turns hardware emulation support on; false leaves it alone.
  void setIsHWEmuPlatform(bool v);
  bool isChildHardwareEmuPlatform() const { return isChildHardwareEmuPlatform_; }
  void setIsChildHardwareEmuPlatform(bool v) { isChildHardwareEmuPlatform_ = v; }
  void setSupportsTwoHwEmuBd(bool v) { supportsTwoHwEmuBd_ = v; }
  const HTEQDesignIntentStorage& getDesignIntent() const { return designIntent_; }
  HTEQDesignIntentStorage& getDesignIntent() { return designIntent_; }
  bool usesPR() const { return usesPR_; }
  void setUsesPR(bool v) { usesPR_ = v; }
  const std::string& getPlatformState() const { return platformState_; }
  void setPlatformState(const std::string& v) { platformState_ = v; }
  void setHwDbName(const std::string& v) { hwDbName_ = v; }
  int getDefaultClkId() const { return defaultClkId_; }
  void setDefaultClkId(int v) { defaultClkId_ = v; }
  void setBRAMCount(int v) { bramCount_ = v; }
  void setDSPCount(int v) { dspCount_ = v; }
  void setLUTCount(int v) { lutCount_ = v; }
  void setFFCount(int v) { ffCount_ = v; }
  void setGeneratedName(const std::string& v) { generatedName_ = v; }
  void setGeneratedVersion(const std::string& v) { generatedVersion_ = v; }
  void setGeneratedChangeList(unsigned int v) { generatedChangeList_ = v; }
  void setGeneratedIpChangeList(const std::string& v) { generatedIpChangeList_ = v; }
  void setGeneratedSharedDataChangeList(const std::string& v) { generatedSharedDataChangeList_ = v; }
  void setGeneratedTimestamp(const std::string& v) { generatedTimestamp_ = v; }
  const std::string& getFlashInterfaceType() const { return flashInterfaceType_; }
  void setFlashInterfaceType(const std::string& v) { flashInterfaceType_ = v; }
  const std::string& getFlashOffsetAddress() const { return flashOffsetAddress_; }
  void setFlashOffsetAddress(const std::string& v) { flashOffsetAddress_ = v; }
  const std::string& getFlashSize() const { return flashSize_; }
  void setFlashSize(const std::string& v) { flashSize_ = v; }
  void setIdCode(const std::string& v) { idCode_ = v; }
  void setExtendedIdCode(const std::string& v) { extendedIdCode_ = v; }
  void setGeneratedByLink(bool v) { generatedByLink_ = v; }
  bool isGeneratedBySwEmuLink() const { return generatedBySwEmuLink_; }
  void setGeneratedBySwEmuLink(bool v) { generatedBySwEmuLink_ = v; }
  bool hasExternalSources() const { return hasExternalSources_; }
  void setHasExternalSources(bool v) { hasExternalSources_ = v; }
  bool hasRQAContent() const { return hasRQAContent_; }
  void setHasRQAContent(bool v) { hasRQAContent_ = v; }
  bool isStatic() const { return isStatic_; }
  void setStatic(bool v) { isStatic_ = v; }
  bool isRM() const { return isRM_; }
  void setRM(bool v) { isRM_ = v; }
  const std::string& getDrBdInstName() const { return drBdInstName_; }
  void setDrBdInstName(const std::string& v) { drBdInstName_ = v; }

  // ---- Derived queries ----
  bool hasSimContent() const { return !getFile("SIM_BINARY").empty(); }
  int getBusInterfaceMaxDataWidth() const;
  unsigned int getMaxAXIMMManagers() const;
  unsigned int getMaxAXIMMSubordinates() const;
  unsigned int getMaxInterrupts() const;
  bool hasScalableClocks() const;
  bool hasUserDefinedScalableClocks() const;
  bool hasFixedClocks() const;
  std::string getReconfigModuleName() const;

  // ---- State ----
  PlatformState getState() const;
  void setState(int state);
  bool isPreSynthFlatShell() const;
  bool isSynthFlatShell() const;
  bool isFlatShell() const;

  // ---- Memory banks ----
  unsigned int getMemoryResourceBusInterfacesIndexed_(TEQHardwareBusInterfaceVec& out) const;
  unsigned int getMemoryResourceBusInterfacesNonIndexed_(TEQHardwareBusInterfaceVec& out) const;
  int getMemoryIndexState() const { return memIndexState_; }
  void setHBMPresent() { hbmPresent_ = true; }
  bool isHBMPresent() const { return hbmPresent_; }
  // Counts one auto-assignable bank of the HBM instance. Only the first
  // instance is tracked: a bank of another one sends "@74-261@" and counts
  // nothing.
  void updateHBMBankInfo(const std::string& instance, bool isDefault);
  uint64_t getHBMBankCount() const { return hbmBankCount_; }
  uint64_t getHBMDefaultBankCount() const { return hbmDefaultBankCount_; }
  const std::string& getHBMInstanceName() const { return hbmInstanceName_; }
  void setNormalizeMemoryBanks(bool v) { normalizeMemoryBanks_ = v; }
  bool getNormalizeMemoryBanks() const { return normalizeMemoryBanks_; }
  // Advises on the stream when only some auto-assignable HBM banks are default.
  void issueNormalizeMemoryBanksMessage(std::ostream& out) const;

  // ---- Design IP and reconfigurable partitions ----
  HTEQDesignIPInstance* addDesignIPInstance();
  HSTFwdIter<HTEQDesignIPInstance*>* createDesignIPInstanceIter() const;
  HTEQReconfigPartition* addReconfigPartition();
  const TEQReconfigPartitionVec& getReconfigPartitions() const { return reconfigPartitions_.view(); }
  // First child partition with this node id, or null.
  HTEQReconfigPartition* findReconfigPartition(uint32_t nodeId) const;
  const HTEQReconfigPartition& getDesignIDs() const { return *designIds_; }
  uint32_t getDesignID() const;
  void setDesignID(uint32_t v);
  uint32_t getParentID() const;
  void setParentID(uint32_t v);
  uint32_t getNodeID() const;
  void setNodeID(uint32_t v);
  uint32_t getFunctionID() const;
  void setFunctionID(uint32_t v);
  uint32_t getTILPlInterfaceID() const;
  void setTILPlInterfaceID(uint32_t v);
  uint32_t getTILNodeID() const;
  void setTILNodeID(uint32_t v);
  uint32_t getTILUniqueID() const;
  void setTILUniqueID(uint32_t v);
  uint32_t getTILPuID() const;
  void setTILPuID(uint32_t v);

  // Reconfigurable module archives: a file names a partition of this platform
  // through the node id of the platform inside it.
  uint32_t getNodeIDFromLfa(const std::string& file) const;
  bool isValidRmLfa(const std::string& file) const;
  bool validateRmLfaFiles(const StringVector& files) const;

  // ---- Hardware database ----
  HHSMHardwareDb* createHwDb() const;
  HHSMHardwareDb* createHwDb(const std::string& name) const;
  HHSMHardwareDb* createHwDb(const StringVector& rmFiles) const;
  HHSMHardwareDb* createHwDb(const std::string& name, const StringVector& rmFiles) const;

  // ---- Tile array ----
  const HTEQTilHardware& getTilHardware() const { return tilHardware_; }
  HTEQTilHardware& getTilHardware() { return tilHardware_; }
  HTEQTilPartition& addTilPartition();
  HTEQTilPartition& addTilPartition(int startColumn, int numColumns);
  bool hasTilPartitions() const;
  const std::vector<HTEQTilPartition>& getTilPartitions() const;
  std::vector<HTEQTilPartition>& getTilPartitions();
  const HTEQTilPartition& findTilPartition(const std::string& name) const;
  bool hasTilPartition(const std::string& name) const;
  void parseTILPartitions(const std::string& file);
  // Reads the "MetaData" list of a JSON file into out, by "name" to "value".
  static void parseMetaData(const std::string& file, std::map<std::string, std::string>& out);
  std::string getTILPlInterfaceIDAsString() const;
  void initTilPartitions() const;

  // ---- Files inside the archive ----
  std::string getPlatformExt() const;
  std::string getJsonFileName() const;
  std::string getAltJsonFileName() const;
  std::string getHwEmuDir() const;
  std::string getHwEmuJsonFileName() const;
  std::string getAltHwEmuJsonFileName() const;
  std::string getHwEmuXmlFileName() const;
  std::string getXmlFileName() const;
  bool containsChildHardwareEmuPlatform() const;

  static const std::vector<std::string>& getValidPlatformExts();
  // Exact search; the extension is passed with its dot (".lfa").
  static bool isValidPlatformExt(const std::string& extension);

  // ---- Copying members out of the archive, writing into it ----
  // Copies one member of an archive to the file dest, making its directory.
  // False, never an exception, when the member cannot be read or dest cannot
  // be written; a partly written dest is removed.
  static bool extract(const std::string& member, const std::string& archive, const std::string& dest);
  // The member of the first file of this type, copied from the platform archive.
  bool extractFile(const std::string& type, const std::string& dest) const;
  // A member of the platform archive (below "hw_emu" for a child emulation
  // platform); false when either name is empty.
  bool extractFileFromPlatform(const std::string& member, const std::string& dest) const;
  // The files of the platform by type; false when the platform lists none.
  // With fixHpfm a copied hpfm gets its HBM address segments repaired.
  bool extractHPFMFile(const std::string& dest, bool fixHpfm) const;
  bool extractDrBdFile(const std::string& dest) const;
  bool extractEmuXmlFile(const std::string& dest) const;
  bool extractEmuJsonFile(const std::string& dest) const;
  bool extractNTSFile(const std::string& dest) const;
  bool extractNCRFile(const std::string& dest) const;
  // The tile-array project archive itself; true at once when dest is a file.
  bool extractTILPRJFile(const std::string& dest) const;
  // Files inside the tile-array project; older archives held the first two
  // as plain members of their own types.
  bool extractLARCHFile(const std::string& dest) const;
  bool extractINTFCSTFile(const std::string& dest) const;
  bool extractINTFSOLFile(const std::string& dest) const;
  bool extractTILCSTFile(const std::string& dest) const;
  bool extractTILMetadataFile(const std::string& dest) const;
  // Rewrites the JSON metadata member from the model. Does nothing without a
  // platform file or member name.
  void writeToJSON() const;
  // Puts the file source into the archive as member, makes it the one file
  // of this type in the model, rewrites the JSON metadata and stamps the
  // archive. All or nothing: when a step fails, the archive and the model's
  // file list are left as they were.
  void archiveFile(const std::string& type, const std::string& member, const std::string& source);
  // Copies the file source into the archive as member, nothing else.
  void _archiveFile(const std::string& member, const std::string& source) const;
  void attachDigest() const;

 protected:
  // The body of toJSON (derived platforms call it), for the tree writer and for the library's text writer.
  friend struct teq_platform::TextDispatch;
  template <class Writer>
  void writeJSON_(Writer& writer) const;

  // The three archive steps of archiveFile, on the archive at `archive`.
  void writeJsonTo_(const std::string& archive) const;
  void archiveFileTo_(const std::string& archive, const std::string& member, const std::string& source) const;
  void setHpfmString_(const std::string& v) { hpfmString_ = v; }
  bool hasHardwareDef_() const;

 private:
  static bool isMemPortIndexed_(const HTEQHardwareBusInterface& bi);
  static bool isMemPortNonIndexed_(const HTEQHardwareBusInterface& bi);
  bool archiveHasMember_(const std::string& member) const;
  bool hasUniqueMemoryType_(const std::string& type) const;
  HTEQSystemClock* findLastClock_(const std::string* name, const int* id) const;
  HPLDevice* firstFpgaDevice_() const;

  bool unifiedPlatform_ = false;
  bool expandable_ = true;
  bool supportsSWEmulation_ = true;
  bool supportsHardware_ = true;
  bool supportsHWEmulation_ = false;
  bool isHWEmuPlatform_ = false;
  bool isChildHardwareEmuPlatform_ = false;
  bool supportsTwoHwEmuBd_ = false;
  bool usesNIFD_ = false;
  HTEQDesignIntentStorage designIntent_;
  mutable int memIndexState_ = kIndexUnknown;
  bool usesPR_ = true;
  std::string platformState_;
  std::string vendor_;
  std::string boardId_;
  std::string name_;
  std::string description_;
  std::string detailedDescription_;
  std::string platformFile_;
  std::string hpfmString_;
  mutable std::string hwDbName_;
  int defaultClkId_ = 0;
  int bramCount_ = 0;
  int dspCount_ = 0;
  int lutCount_ = 0;
  int ffCount_ = 0;
  int registerCount_ = 0;
  std::string generatedName_;
  std::string generatedVersion_;
  unsigned int generatedChangeList_ = 0;
  std::string generatedIpChangeList_;
  std::string generatedSharedDataChangeList_;
  std::string generatedTimestamp_;
  std::string flashInterfaceType_;
  std::string flashOffsetAddress_;
  std::string flashSize_;
  std::string idCode_;
  std::string extendedIdCode_;
  bool generatedByLink_ = false;
  bool generatedBySwEmuLink_ = false;
  bool hasExternalSources_ = false;
  bool hasRQAContent_ = false;
  HSTOwningVector<HTEQHardwareIPParam> ipParams_;
  HSTOwningVector<HTEQHardwareNocConnectivity> nocConnectivity_;
  HSTOwningVector<HTEQHardwareBusInterface> busInterfaces_;
  HSTOwningVector<HTEQSystemClock> systemClocks_;
  HSTOwningVector<HTEQHardwareFeatureRom> featureRoms_;
  HSTOwningVector<HTEQDesignIPInstance> designIpInstances_;
  bool isStatic_ = false;
  bool isRM_ = false;
  std::string drBdInstName_;
  std::unique_ptr<HTEQReconfigPartition> designIds_;
  HSTOwningVector<HTEQReconfigPartition> reconfigPartitions_;
  HTEQTilHardware tilHardware_;
  mutable std::vector<HTEQTilPartition> tilPartitions_;
  mutable bool tilPartitionsRead_ = false;
  bool normalizeMemoryBanks_ = false;
  bool hbmPresent_ = false;
  uint64_t hbmBankCount_ = 0;
  uint64_t hbmDefaultBankCount_ = 0;
  std::string hbmInstanceName_;
};

#endif
