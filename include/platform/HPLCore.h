#ifndef PLATFORM_HPLCORE_H
#define PLATFORM_HPLCORE_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/HSTFwdIter.h"
#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HPLPort;

// The region of a device's shell that kernels are placed in: its names and
// paths, its ports, its configuration parameters, and the resources that are
// free in its reconfigurable regions (pblocks) with the SLRs they span.
class ZR_PLATFORM_API HPLCore : public teq_platform::JSONSerializable {
 public:
  using ParamMap = std::map<std::string, std::string>;
  using ResourceMap = std::map<std::string, std::string>;
  using PBlockResourceMap = std::map<std::string, ResourceMap>;
  using SLRMap = std::map<std::string, std::set<std::string>>;

  HPLCore();
  ~HPLCore() override;
  HPLCore(const HPLCore&) = delete;
  HPLCore& operator=(const HPLCore&) = delete;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(const std::string& v) { name_ = v; }
  const std::string& getType() const { return type_; }
  void setType(const std::string& v) { type_ = v; }
  // The set frequency; without one, the frequency of the first clock port named
  // ACLK, KERNEL_CLK or DATA_CLK.
  std::string getClockFreq() const;
  void setClockFreq(const std::string& v) { clockFreq_ = v; }
  uint16_t getNumComputeUnits() const { return numComputeUnits_; }
  void setNumComputeUnits(uint16_t v) { numComputeUnits_ = v; }
  const std::string& getVlnv() const { return vlnv_; }
  void setVlnv(const std::string& v) { vlnv_ = v; }
  const std::string& getSourceViewInstPath() const { return sourceViewInstPath_; }
  void setSourceViewInstPath(const std::string& v) { sourceViewInstPath_ = v; }
  const std::string& getInstPath() const { return instPath_; }
  void setInstPath(const std::string& v) { instPath_ = v; }
  // Not empty for a platform with expanded partial reconfiguration.
  const std::string& getParentRMInstPath() const { return parentRMInstPath_; }
  void setParentRMInstPath(const std::string& v) { parentRMInstPath_ = v; }
  const std::string& getReconfigModuleName() const { return reconfigModuleName_; }
  void setReconfigModuleName(const std::string& v) { reconfigModuleName_ = v; }
  const std::string& getDRBaseAddress() const { return drBaseAddress_; }
  void setDRBaseAddress(const std::string& v) { drBaseAddress_ = v; }
  const std::string& getDRBDName() const { return drBDName_; }
  void setDRBDName(const std::string& v) { drBDName_ = v; }

  // Fixed counts take precedence over the pblock data.
  void setBRAMCount(const std::string& v) { bramCount_ = v; }
  void setLUTCount(const std::string& v) { lutCount_ = v; }
  void setDSPCount(const std::string& v) { dspCount_ = v; }
  void setRegisterCount(const std::string& v) { registerCount_ = v; }
  // The fixed count, else the count of the dynamic pblock as "%d" text, else "".
  std::string getBRAMCount() const;
  std::string getLUTCount() const;
  std::string getDSPCount() const;
  std::string getRegisterCount() const;
  // The count of a resource type (with an optional variant) in the named
  // pblock, compared without regard to case; 0 when no pblock lists it.
  int getResCount(const std::string& type, const std::string& pblock, const std::string& variant) const;
  // The same in the dynamic pblock.
  int getResCount(const std::string& type, const std::string& variant) const;

  HPLPort* addPort();
  // Takes the port out and deletes it; a port that is not here changes nothing.
  void removePort(HPLPort* port);
  HSTFwdIter<HPLPort*>* createPortIter() const;

  ParamMap& getConfigParamMap() { return configParams_; }
  const ParamMap& getReadOnlyConfigParamMap() const { return configParams_; }
  void addConfigParam(const std::string& name, const std::string& value) { configParams_[name] = value; }

  PBlockResourceMap& getPBlockToResourceMap() { return pblockResources_; }
  const PBlockResourceMap& getReadOnlyPBlockToResourceMap() const { return pblockResources_; }
  // The pblock's resources, made empty when the pblock has none.
  ResourceMap& getResourceMap(const std::string& pblock) { return pblockResources_[pblock]; }
  // Always makes the pblock; stores the value unless name and value are both empty.
  void addResourceInfo(const std::string& pblock, const std::string& name, const std::string& value);
  bool hasResourceInfo() const;

  // The first names given for a pblock stay; later ones are dropped.
  void addSLRInfo(const std::string& pblock, const std::string& commaSeparatedNames);
  void addSLRInfo(const std::string& pblock, const std::vector<std::string>& names);
  void addSLRInfo(const std::string& pblock, const std::set<std::string>& names);
  // The SLR names of the pblock, compared without regard to case; `out` is
  // replaced by the last matching entry and left alone without one.
  void getSLRNames(const std::string& pblock, std::set<std::string>& out) const;
  // The SLR names of every pblock that has resources, each name once.
  void getValidSLRNames(std::vector<std::string>& out) const;

  // The widest port address or data width; 0 without ports.
  unsigned getMaxAddrWidth() const;
  unsigned getMaxDataWidth() const;

 private:
  std::string getDynamicPblockName_() const;
  std::string countOrResources_(const std::string& fixed, const char* type) const;

  std::string name_;
  std::string type_;
  std::string clockFreq_;
  uint16_t numComputeUnits_ = 0;
  std::string vlnv_;
  std::string sourceViewInstPath_;
  std::string instPath_;
  std::string parentRMInstPath_;
  std::string reconfigModuleName_;
  std::string drBaseAddress_;
  std::string drBDName_;
  HSTOwningVector<HPLPort> ports_;
  ParamMap configParams_;
  PBlockResourceMap pblockResources_;
  SLRMap slrNames_;
  std::string bramCount_;
  std::string lutCount_;
  std::string registerCount_;
  std::string dspCount_;
};

#endif
