#include "platform/HPLCore.h"

#include <algorithm>
#include <cstdlib>

#include "host/HSTStringUtils.h"
#include "platform/HPLPort.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

namespace {

// A decimal number at the start of the text; text that is no number gives 0.
long decimal(const std::string& text) { return std::strtol(text.c_str(), nullptr, 10); }

unsigned width(const std::string& text) {
  long v = decimal(text);
  return v > 0 ? static_cast<unsigned>(v) : 0u;
}

}  // namespace

HPLCore::HPLCore() = default;

HPLCore::~HPLCore() = default;

std::string HPLCore::getClockFreq() const {
  if (!clockFreq_.empty()) return clockFreq_;
  for (const HPLPort* port : ports_) {
    if (!HSTStringUtils::iequals(port->getType(), "clk")) continue;
    const std::string& name = port->getName();
    if (HSTStringUtils::iequals(name, "ACLK") || HSTStringUtils::iequals(name, "KERNEL_CLK") ||
        HSTStringUtils::iequals(name, "DATA_CLK")) {
      return port->getFrequency();
    }
  }
  return clockFreq_;
}

std::string HPLCore::getDynamicPblockName_() const {
  if (pblockResources_.size() == 1) return pblockResources_.begin()->first;
  return "pblock_dynamic_region";
}

int HPLCore::getResCount(const std::string& type, const std::string& pblock,
                         const std::string& variant) const {
  const bool dsp = HSTStringUtils::iequals(type, "DSP");
  std::string suffix;
  if (!variant.empty()) suffix = (dsp ? "s_" : "_") + variant;
  const std::string key = type + suffix;
  for (const auto& entry : pblockResources_) {
    if (!HSTStringUtils::iequals(entry.first, pblock)) continue;
    const ResourceMap& resources = entry.second;
    auto found = resources.find(key);
    if (found == resources.end() && dsp) found = resources.find(key + "s");
    if (found != resources.end()) return static_cast<int>(decimal(found->second));
  }
  return 0;
}

int HPLCore::getResCount(const std::string& type, const std::string& variant) const {
  return getResCount(type, getDynamicPblockName_(), variant);
}

std::string HPLCore::countOrResources_(const std::string& fixed, const char* type) const {
  if (!fixed.empty()) return fixed;
  int count = getResCount(type, std::string());
  return count != 0 ? std::to_string(count) : std::string();
}

std::string HPLCore::getBRAMCount() const { return countOrResources_(bramCount_, "BRAM"); }
std::string HPLCore::getLUTCount() const { return countOrResources_(lutCount_, "LUT"); }
std::string HPLCore::getDSPCount() const { return countOrResources_(dspCount_, "DSP"); }
std::string HPLCore::getRegisterCount() const { return countOrResources_(registerCount_, "REG"); }

HPLPort* HPLCore::addPort() { return ports_.emplace(); }

void HPLCore::removePort(HPLPort* port) { ports_.erase(port); }

HSTFwdIter<HPLPort*>* HPLCore::createPortIter() const { return HSTCreateFwdIter(ports_.view()); }

void HPLCore::addResourceInfo(const std::string& pblock, const std::string& name, const std::string& value) {
  ResourceMap& resources = pblockResources_[pblock];
  if (name.empty() && value.empty()) return;
  resources[name] = value;
}

bool HPLCore::hasResourceInfo() const {
  return !bramCount_.empty() || !lutCount_.empty() || !registerCount_.empty() || !dspCount_.empty() ||
         !pblockResources_.empty();
}

void HPLCore::addSLRInfo(const std::string& pblock, const std::string& commaSeparatedNames) {
  addSLRInfo(pblock, HSTStringUtils::split(commaSeparatedNames, ','));
}

void HPLCore::addSLRInfo(const std::string& pblock, const std::vector<std::string>& names) {
  if (names.empty()) return;
  addSLRInfo(pblock, std::set<std::string>(names.begin(), names.end()));
}

void HPLCore::addSLRInfo(const std::string& pblock, const std::set<std::string>& names) {
  slrNames_.emplace(pblock, names);
}

void HPLCore::getSLRNames(const std::string& pblock, std::set<std::string>& out) const {
  for (const auto& entry : slrNames_) {
    if (HSTStringUtils::iequals(entry.first, pblock)) out = entry.second;
  }
}

void HPLCore::getValidSLRNames(std::vector<std::string>& out) const {
  for (const auto& entry : pblockResources_) {
    std::set<std::string> names;
    getSLRNames(entry.first, names);
    for (const std::string& n : names) {
      if (std::find(out.begin(), out.end(), n) == out.end()) out.push_back(n);
    }
  }
}

unsigned HPLCore::getMaxAddrWidth() const {
  unsigned widest = 0;
  for (const HPLPort* p : ports_) widest = std::max(widest, width(p->getAddrWidth()));
  return widest;
}

unsigned HPLCore::getMaxDataWidth() const {
  unsigned widest = 0;
  for (const HPLPort* p : ports_) widest = std::max(widest, width(p->getDataWidth()));
  return widest;
}

void HPLCore::toJSON(teq_platform::JSONObjectWriter& writer) const {
  using teq_platform::JSONListWriter;
  using teq_platform::JSONObjectWriter;

  writer.addKey("name", name_);
  writer.addKey("type", type_);
  writer.addKey("instPath", instPath_);
  writer.addKey("sourceViewInstPath", sourceViewInstPath_);
  writer.addKey("parentRMInstPath", parentRMInstPath_);
  writer.addKey("reconfigModuleName", reconfigModuleName_);
  writer.addKey("drBDName", drBDName_);
  writer.addKey("vlnv", vlnv_);
  writer.addKey("clockFreq", getClockFreq());
  writer.addKey("numComputeUnits", std::to_string(numComputeUnits_));

  JSONObjectWriter available;
  available.addKey("bramCount", getBRAMCount());
  available.addKey("dspCount", getDSPCount());
  available.addKey("lutCount", getLUTCount());
  available.addKey("registerCount", getRegisterCount());
  JSONListWriter pblocks;
  for (const auto& entry : pblockResources_) {
    JSONObjectWriter pblock;
    pblock.addKey("name", entry.first);
    std::set<std::string> slrs;
    getSLRNames(entry.first, slrs);
    pblock.addKey("validSlrs", std::vector<std::string>(slrs.begin(), slrs.end()));
    JSONListWriter resources;
    for (const auto& resource : entry.second) {
      JSONObjectWriter item;
      item.addKey("name", resource.first);
      item.addKey("value", resource.second);
      resources.addItem(std::move(item));
    }
    pblock.addKey("resources", std::move(resources));
    pblocks.addItem(std::move(pblock));
  }
  available.addKey("pBlocks", std::move(pblocks));
  writer.addKey("availableResources", std::move(available));

  JSONListWriter params;
  for (const auto& entry : configParams_) {
    JSONObjectWriter item;
    item.addKey("name", entry.first);
    item.addKey("value", entry.second);
    params.addItem(std::move(item));
  }
  writer.addKey("configParams", std::move(params));

  JSONListWriter ports;
  for (const HPLPort* p : ports_) ports.addItem(p);
  writer.addKey("ports", std::move(ports));
}
