#ifndef PLATFORM_HTEQSEMANTICLABELREADER_H
#define PLATFORM_HTEQSEMANTICLABELREADER_H

#include <boost/property_tree/ptree.hpp>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "platform/JSONSerializable.h"
#include "platform/ZrPlatformExport.h"

// The records of a labels file and its reader. Each record is built from one
// object of the file; a missing required key or a number that does not parse
// sends the record's message and leaves it partly filled (it is still listed).
// Numbers are unsigned decimal, "0x" hexadecimal or "0" octal; a sign, no
// digits, or a value too large for the field is a parse failure.

class ZR_PLATFORM_API HTEQSemanticUuid : public teq_platform::JSONSerializable {
 public:
  enum UuidType { LOGIC = 0, INTERFACE = 1, UNKNOWN = 2 };
  explicit HTEQSemanticUuid(const boost::property_tree::ptree& tree);
  UuidType getType() const { return type_; }
  const std::string& getDesignComponent() const { return component_; }
  const std::string& getUuid() const { return uuid_; }
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  UuidType type_ = UNKNOWN;
  std::string component_;
  std::string uuid_;
};

class ZR_PLATFORM_API HTEQSemanticPcieBar : public teq_platform::JSONSerializable {
 public:
  enum BarType { AXI_BRIDGE_MASTER = 0, DMA = 1, UNKNOWN = 2 };
  explicit HTEQSemanticPcieBar(const boost::property_tree::ptree& tree);
  BarType getType() const { return type_; }
  int getPhysicalFunction() const { return pf_; }
  int getBar() const { return bar_; }
  std::uint64_t getOffset() const { return offset_; }
  std::uint64_t getRange() const { return range_; }
  const std::string& getDmaType() const { return dmaType_; }
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  BarType type_ = UNKNOWN;
  int pf_ = 0;
  int bar_ = 0;
  std::uint64_t offset_ = 0;
  std::uint64_t range_ = 0x10;
  std::string dmaType_ = "INVALID";
};

// What PCIe and CPU endpoints share; never read by itself.
class ZR_PLATFORM_API HTEQSemanticEndpoint : public teq_platform::JSONSerializable {
 public:
  const std::string& getEndpointName() const { return name_; }
  const std::string& getVlnv() const { return vlnv_; }
  const std::string& getCellPath() const { return cell_; }
  const std::string& getInterfacePath() const { return interface_; }
  const std::string& getAddressSegment() const { return addrSeg_; }
  const std::string& getRegisterAbstraction() const { return regAbs_; }
  const std::string& getPartition() const { return partition_; }
  const std::string& getPartitionPath() const { return partitionPath_; }
  std::uint64_t getAddr() const { return addr_; }
  std::uint64_t getAddrRange() const { return range_; }
  const std::string& getInterruptSource() const { return irqSource_; }
  const std::string& getInterruptSink() const { return irqSink_; }
  const std::string& getInterruptSinkCell() const { return irqSinkCell_; }
  const std::string& getInterruptSinkVlnv() const { return irqSinkVlnv_; }
  int getInterruptLeft() const { return irqLeft_; }
  int getInterruptRight() const { return irqRight_; }
  const std::string& getFirmwareProduct() const { return fwProduct_; }
  const std::string& getFirmwareBranch() const { return fwBranch_; }
  const std::string& getFirmwareVersion() const { return fwVersion_; }
  bool interruptValid() const { return !irqSource_.empty(); }
  bool firmwareValid() const { return !fwProduct_.empty(); }
  bool firmwareVersionValid() const { return !fwVersion_.empty(); }
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 protected:
  HTEQSemanticEndpoint() = default;
  // Reads the shared keys; throws what a missing key or a bad number throws.
  void read_(const boost::property_tree::ptree& tree);

 private:
  std::string name_, vlnv_, cell_, interface_, addrSeg_, regAbs_, partition_, partitionPath_;
  std::uint64_t addr_ = 0;
  std::uint64_t range_ = 0;
  std::string irqSource_, irqSink_, irqSinkCell_, irqSinkVlnv_;
  int irqLeft_ = 0;
  int irqRight_ = 0;
  std::string fwProduct_, fwBranch_, fwVersion_;
};

class ZR_PLATFORM_API HTEQSemanticPcieEndpoint : public HTEQSemanticEndpoint {
 public:
  explicit HTEQSemanticPcieEndpoint(const boost::property_tree::ptree& tree);
  int getPhysicalFunction() const { return pf_; }
  int getBar() const { return bar_; }
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  int pf_ = 0;
  int bar_ = 0;
};

class ZR_PLATFORM_API HTEQSemanticCpuEndpoint : public HTEQSemanticEndpoint {
 public:
  explicit HTEQSemanticCpuEndpoint(const boost::property_tree::ptree& tree);
  const std::string& getCpuType() const { return cpuType_; }
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  std::string cpuType_;
};

class ZR_PLATFORM_API HTEQSemanticDebugNetwork : public teq_platform::JSONSerializable {
 public:
  explicit HTEQSemanticDebugNetwork(const boost::property_tree::ptree& tree);
  int getPhysicalFunction() const { return pf_; }
  int getBar() const { return bar_; }
  std::uint64_t getBarAddress() const { return barAddr_; }
  std::uint64_t getSystemAddress() const { return systemAddr_; }
  const std::string& getPartition() const { return partition_; }
  const std::string& getPartitionPath() const { return partitionPath_; }
  bool supportsCorvexDebug() const { return corvex_; }
  bool supportsJtagFallback() const { return jtag_; }
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  int pf_ = 0;
  int bar_ = 0;
  std::uint64_t barAddr_ = 0;
  std::uint64_t systemAddr_ = 0;
  std::string partition_, partitionPath_;
  bool corvex_ = false;
  bool jtag_ = false;
};

// Reads a labels file and derives the partition metadata and the extended
// metadata of one partition from it. The generated documents are plain trees
// whose values are all strings; to a file or stream they go as pretty JSON.
class ZR_PLATFORM_API HTEQSemanticLabelReader : public teq_platform::JSONSerializable {
 public:
  using Tree = boost::property_tree::ptree;

  // False, after a message, when the file is missing or cannot be read.
  bool parseFile(const std::string& path);
  void parseRoot(const Tree& root);
  void clear();

  const std::vector<HTEQSemanticUuid>& getUuids() const { return uuids_; }
  const std::vector<HTEQSemanticPcieBar>& getPcieBars() const { return bars_; }
  const std::vector<HTEQSemanticPcieEndpoint>& getPcieEndpoints() const { return pcieEndpoints_; }
  const std::vector<HTEQSemanticCpuEndpoint>& getCpuEndpoints() const { return cpuEndpoints_; }
  const std::vector<HTEQSemanticDebugNetwork>& getDebugNetworks() const { return debugNetworks_; }

  void generatePartitionMetadata(Tree& out) const;
  // The file is written whole through a temporary, or not at all (HEXUserException).
  void generatePartitionMetadata(const std::string& file) const;
  void generatePartitionMetadata(std::ostream& out) const;
  void generateExtMetadata(const std::string& partitionPath, Tree& out) const;
  void generateExtMetadata(const std::string& partitionPath, const std::string& file) const;
  void generateExtMetadata(const std::string& partitionPath, std::ostream& out) const;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  void generateAddressableEndpoints(const std::string& partitionPath, Tree& out) const;

  std::vector<HTEQSemanticUuid> uuids_;
  std::vector<HTEQSemanticPcieBar> bars_;
  std::vector<HTEQSemanticPcieEndpoint> pcieEndpoints_;
  std::vector<HTEQSemanticCpuEndpoint> cpuEndpoints_;
  std::vector<HTEQSemanticDebugNetwork> debugNetworks_;
};

#endif
