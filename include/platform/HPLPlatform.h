#ifndef PLATFORM_HPLPLATFORM_H
#define PLATFORM_HPLPLATFORM_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/HPLBoard.h"
#include "platform/HSTFwdIter.h"
#include "platform/HSTOwningVector.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPfmFileTypes.h"

class HPLCore;
class HPLDevice;
class HPLFile;
class HPLInterface;
class HPLMemory;

// The archive-backed hardware platform, the one concrete hardware platform.
// Beyond the base it holds what a platform archive describes: version, host
// architecture and interface, binary format, compile and link switches, the
// board, devices, memories, host interfaces and the files inside the archive.
// From these it derives the names users know a platform by (VBNV, unique,
// pretty and device names).
//
// Readers fill it through the add... factories and setters; it owns every
// object it hands out. Queries never fail for missing data.
class ZR_PLATFORM_API HPLPlatform : public HTEQHardwarePlatform {
 public:
  enum HostArchType {
    HOST_ARCH_X86_64 = 0,
    HOST_ARCH_ARMV7L,
    HOST_ARCH_PPC64LE,
    HOST_ARCH_AARCH64,
    HOST_ARCH_UNKNOWN
  };
  enum HostInterfaceType { HOST_INTERFACE_PCIE = 0, HOST_INTERFACE_AXI, HOST_INTERFACE_UNKNOWN };

  using HPLDeviceVec = std::vector<HPLDevice*>;
  using HPLMemoryVec = std::vector<HPLMemory*>;
  using HPLInterfaceVec = std::vector<HPLInterface*>;
  using HPLFileVec = std::vector<HPLFile*>;
  using FileVecRange = std::pair<HPLFileVec::const_iterator, HPLFileVec::const_iterator>;

  HPLPlatform();
  HPLPlatform(const HPLPlatform&) = delete;
  HPLPlatform& operator=(const HPLPlatform&) = delete;

  // ---- Virtual operations of the base, in their slots ----
  // Writes the archive's own keys, then the base's. A platform whose board has
  // drivers cannot be written (HEXAlgException) and writes nothing.
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;
  ~HPLPlatform() override;
  std::string getBoardPart() const override { return board_.getBoardPart(); }
  // Unpacks the board repository directory of the archive into the tool's
  // temporary directory and gives its path there; empty when there is none.
  std::string getBoardRepo() const override;
  std::string getBoardConnectionsString() const override { return board_.getBoardConnectionsString(); }
  std::string getLockedBoardConnectionsString() const override {
    return board_.getLockedBoardConnectionsString();
  }
  std::string getUnlockedBoardConnectionsString() const override {
    return board_.getUnlockedBoardConnectionsString();
  }
  // "major.minor".
  std::string getVersion() const override;
  // The VBNV.
  std::string getUniqueName() const override;
  // "BOARD (name)", or the plain name for an embedded design.
  std::string getPrettyName() const override;
  // vendor_board_name_major_minor.
  std::string getDeviceName() const override;
  unsigned int getNumDDRs() const override;
  // Type of the first memory; "ddr4" without memories.
  std::string getMemType() const override;
  // Total size as "N GB"; "8 GB" when nothing is known.
  std::string getMemSize() const override;
  // The host link ("PCIe gen3x16", or the first interface's name and type),
  // only for server-managed or external-host designs.
  std::string getInterfaceDesc() const override;
  // Low, medium and high density board images, in that order.
  void getBoardImgZipEntries(StringVector& out) const override;
  void getTargetCategories(StringVector& out) const override;
  void getDevices(TEQDeviceVec& out) const override;
  // First device of exactly this name, or null.
  HPLDevice* getDevice(const std::string& name) const override;
  // The last device's compute units; 10 without devices.
  unsigned int getNumComputeUnits() const override;
  int getRegisterCount() const override;
  std::string getHostArch() const override { return getHostArchAsStr(hostArch_); }
  bool hasDimmConnectors() const override { return board_.hasDimmConnectors(); }
  void getDimmConnectors(StringVector& out) const override { board_.getDimmConnectors(out); }
  void getLockedDimmConnectors(StringVector& out) const override { board_.getLockedDimmConnectors(out); }
  void getConnectedDimmConnectors(StringVector& names, StringVector& connectedNames) const override {
    board_.getConnectedDimmConnectors(names, connectedNames);
  }
  std::string getConnectorDisplayName(const std::string& name) const override {
    return board_.getConnectorDisplayName(name);
  }
  void getValidSLRNames(StringVector& out) const override;
  // `name` is a file type word, compared without regard to case; the member
  // name of the last file of that type, or empty.
  std::string getFile(const std::string& name) const override;
  // getFile on the text of the file type.
  std::string getFile(HTEQPfmFileTypes::FileType type) const override;
  bool hasFile(const std::string& name) const override { return !getFile(name).empty(); }
  bool hasFile(HTEQPfmFileTypes::FileType type) const override { return !getFile(type).empty(); }
  // The text of the archive's extended metadata member, or empty.
  std::string getExtMetaJsonAsString() const override;
  // That text read as JSON into `tree`; an empty text leaves `tree` alone.
  // Invalid JSON raises HEXDataException.
  void getExtMetaJsonAsPtree(boost::property_tree::ptree& tree) const override;
  void setComputedDesignIntent(HTEQDesignIntentStorage::Key key, bool value) override;
  void setExplicitDesignIntent(HTEQDesignIntentStorage::Key key, bool value) override;

  // ---- Virtual operations of this class ----
  // Sum of the memory sizes in gigabytes.
  virtual int getTotalMemSizeInGb() const;
  virtual const StringVector& getZuncCompileXpSwitches() const { return compileSwitches_; }
  virtual const StringVector& getZuncLinkXpSwitches() const { return linkSwitches_; }

  // ---- Plain state ----
  unsigned int getVersionMajor() const { return versionMajor_; }
  void setVersionMajor(unsigned int v) { versionMajor_ = v; }
  unsigned int getVersionMinor() const { return versionMinor_; }
  void setVersionMinor(unsigned int v) { versionMinor_ = v; }
  const std::string& getTopModuleName() const { return topModuleName_; }
  void setTopModuleName(const std::string& v) { topModuleName_ = v; }
  const std::string& getAcceleratorBinaryFormat() const { return acceleratorBinaryFormat_; }
  void setAcceleratorBinaryFormat(const std::string& v) { acceleratorBinaryFormat_ = v; }
  const std::string& getAcceleratorBinaryContent() const { return acceleratorBinaryContent_; }
  void setAcceleratorBinaryContent(const std::string& v) { acceleratorBinaryContent_ = v; }
  bool isDcpFuncStripped() const { return dcpFuncStripped_; }
  void setDcpFuncStripped(bool v) { dcpFuncStripped_ = v; }
  bool isDcpEncrypt() const { return dcpEncrypt_; }
  void setDcpEncrypt(bool v) { dcpEncrypt_ = v; }
  const std::string& getDefaultOutputType() const { return defaultOutputType_; }
  void setDefaultOutputType(const std::string& v) { defaultOutputType_ = v; }
  uint64_t getOldFeatureRomTime() const { return oldFeatureRomTime_; }
  void setOldFeatureRomTime(uint64_t v) { oldFeatureRomTime_ = v; }
  // Path of the metadata file the platform was read from.
  void setXmlFile(const std::string& v) { xmlFile_ = v; }
  // Its canonical form; empty when unset.
  std::string getXmlFile() const;
  // Its parent directory; empty when unset.
  std::string getDirectory() const;
  void setHpfmString(const std::string& v) { setHpfmString_(v); }

  // Each value once, in the order first added.
  void addValidBinaryContentValue(const std::string& value);
  const StringVector& getValidBinaryContentValues() const { return validBinaryContentValues_; }
  void addValidOutputTypeValue(const std::string& value);
  const StringVector& getValidOutputTypeValues() const { return validOutputTypeValues_; }
  // The values joined with ",".
  std::string getValidBinaryContentValuesAsStr() const;
  std::string getValidOutputTypeValuesAsStr() const;
  // Duplicates are kept.
  void addZuncCompileXpSwitch(const std::string& s) { compileSwitches_.push_back(s); }
  void addZuncLinkXpSwitch(const std::string& s) { linkSwitches_.push_back(s); }

  // ---- Host architecture and interface ----
  void setHostArch(const std::string& text) { hostArch_ = getHostArchType(text); }
  HostArchType getHostArchAsEnum() const { return hostArch_; }
  // The table value of the text, compared without regard to case; unknown otherwise.
  static HostArchType getHostArchType(const std::string& text);
  static std::string getHostArchAsStr(HostArchType value);
  // "x86_64", "armv7l", "ppc64le", "aarch64".
  static StringVector getHostArchTypesAsStr();
  void setHostInterface(const std::string& text) { hostInterface_ = getHostInterfaceType(text); }
  std::string getHostInterface() const { return getHostInterfaceAsStr(hostInterface_); }
  HostInterfaceType getHostInterfaceAsEnum() const { return hostInterface_; }
  static HostInterfaceType getHostInterfaceType(const std::string& text);
  static std::string getHostInterfaceAsStr(HostInterfaceType value);

  // ---- Identity ----
  static std::string getVBNVAsStr(const std::string& vendor, const std::string& board,
                                  const std::string& name, const std::string& version);
  std::string getVBNV() const;

  // ---- Board, devices, memories, interfaces ----
  HPLBoard& getBoard() { return board_; }
  const HPLBoard& getReadOnlyBoard() const { return board_; }
  HPLDevice* addDevice();
  HPLMemory* addMemory();
  HPLInterface* addInterface();
  HSTFwdIter<HPLDevice*>* createDeviceIter() const;
  HSTFwdIter<HPLMemory*>* createMemoryIter() const;
  HSTFwdIter<HPLInterface*>* createInterfaceIter() const;
  // Devices that have a core: every device.
  unsigned int getOCLRegionCount() const { return static_cast<unsigned int>(devices_.size()); }
  // The first core (that of device "fpga0") has a parent module path.
  bool usesExpandedPR() const;
  std::string getOclInstPath() const;
  // The memory's size in gigabytes: the number in front of "GB", 0 for other
  // units or without memories. An index out of range raises std::out_of_range;
  // a size whose number is not at its start raises std::invalid_argument.
  int getMemSizeInGb(unsigned int index) const;

  // ---- Files inside the archive ----
  // A new file; the type comes first.
  HPLFile* addFile(const std::string& type, const std::string& name);

  // The first file of exactly this type, or null.
  HPLFile* findFile(const std::string& type) const;
  // Takes the file out and deletes it; a file that is not here changes nothing.
  void removeFile(HPLFile* file);
  // Removes every file of exactly this type.
  void removeFileType(const std::string& type);
  // Replaces the file list by copies of `files`, in order (used to undo a
  // failed change of the archive).
  void restoreFiles_(const std::vector<HPLFile>& files);
  HSTFwdIter<HPLFile*>* createFileVecIter() const;
  FileVecRange getFileVecRange() const { return FileVecRange(files_.begin(), files_.end()); }
  unsigned int getNumFiles() const { return static_cast<unsigned int>(files_.size()); }

  // The two platforms write the same JSON text, compared without regard to case.
  bool isEquals(const HPLPlatform& other) const;

 private:
  // The body of toJSON, for the tree writer and for the library's text writer.
  friend struct teq_platform::TextDispatch;
  template <class Writer>
  void writeJSON_(Writer& writer) const;

  const HPLCore* firstCore_() const;
  // The member holding the extended metadata: META_JSON, else EXT_META_JSON.
  std::string extMetaJsonMember_() const;

  unsigned int versionMajor_ = 0;
  unsigned int versionMinor_ = 0;
  HostArchType hostArch_ = HOST_ARCH_UNKNOWN;
  HostInterfaceType hostInterface_ = HOST_INTERFACE_UNKNOWN;
  std::string topModuleName_;
  std::string acceleratorBinaryFormat_ = "rovapk2";
  std::string acceleratorBinaryContent_ = "bitstream";
  StringVector validBinaryContentValues_;
  StringVector compileSwitches_;
  StringVector linkSwitches_;
  bool dcpFuncStripped_ = false;
  bool dcpEncrypt_ = false;
  std::string defaultOutputType_ = "unknown";
  StringVector validOutputTypeValues_;
  HPLBoard board_;
  HSTOwningVector<HPLInterface> interfaces_;
  HSTOwningVector<HPLMemory> memories_;
  HSTOwningVector<HPLDevice> devices_;
  HSTOwningVector<HPLFile> files_;
  std::string xmlFile_;
  uint64_t oldFeatureRomTime_ = 0;
};

#endif
