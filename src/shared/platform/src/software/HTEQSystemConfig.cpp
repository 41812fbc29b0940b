#include "platform/HTEQSystemConfig.h"

#include <memory>

#include "host/HSTStringUtils.h"
#include "platform/HTEQBootImg.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

HTEQSystemConfig::HTEQSystemConfig() = default;

HTEQSystemConfig::~HTEQSystemConfig() = default;

void HTEQSystemConfig::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("prettyName", prettyName_);
  writer.addKey("description", desc_);
  writer.addKey("defaultProcessorGroup", getDefaultProcGrpName());
  writer.addKey("defaultBootImage", getDefaultBootImgName());
  writer.addKey("prebuiltData", prebuiltData_);
  writer.addKey("qemu", supportsQemu_);
  teq_platform::JSONListWriter groups;
  for (const HTEQProcessorGroup* g : procGrps_) groups.addItem(g);
  writer.addKey("processorGroups", std::move(groups));
  teq_platform::JSONListWriter images;
  for (const HTEQBootImg* b : bootImgs_) images.addItem(b);
  writer.addKey("bootImages", std::move(images));
  writer.addKey("runtimes", runtimes_);
}

std::string HTEQSystemConfig::getName() const { return name_; }
std::string HTEQSystemConfig::getDesc() const { return desc_; }
std::string HTEQSystemConfig::getPrettyName() const { return prettyName_; }

std::string HTEQSystemConfig::getDefaultProcGrpName() const {
  if (!defaultProcGrpName_.empty()) return defaultProcGrpName_;
  if (!procGrps_.empty()) return procGrps_.front()->getName();
  return std::string();
}

std::string HTEQSystemConfig::getPrebuiltData() const { return prebuiltData_; }

void HTEQSystemConfig::getProcessorGroups(TEQProcessorGroupVec& out) const {
  out.insert(out.end(), procGrps_.begin(), procGrps_.end());
}

void HTEQSystemConfig::getProcessorGroups(StringVector& out) const {
  out.insert(out.end(), procGrpNames_.begin(), procGrpNames_.end());
}

void HTEQSystemConfig::getRuntimes(StringVector& out) const {
  out.insert(out.end(), runtimes_.begin(), runtimes_.end());
}

void HTEQSystemConfig::getRuntimesByPrettyName(StringVector& out) const {
  for (const std::string& r : runtimes_) {
    if (HSTStringUtils::iequals(r, "ocl"))
      out.push_back("OpenCL");
    else if (HSTStringUtils::iequals(r, "cpp"))
      out.push_back("C/C++");
    else
      out.push_back(r);
  }
}

HTEQProcessorGroup* HTEQSystemConfig::getProcGrpByName(const std::string& name) const {
  // No early exit: a later group of the same name overrides an earlier one.
  HTEQProcessorGroup* found = nullptr;
  for (HTEQProcessorGroup* g : procGrps_)
    if (g->getName() == name) found = g;
  return found;
}

std::string HTEQSystemConfig::getDefaultBootImgName() const {
  if (!defaultBootImgName_.empty()) return defaultBootImgName_;
  if (!bootImgs_.empty()) return bootImgs_.front()->getName();
  return std::string();
}

void HTEQSystemConfig::getBootImgs(TEQBootImgVec& out) const {
  out.insert(out.end(), bootImgs_.begin(), bootImgs_.end());
}

HTEQBootImg* HTEQSystemConfig::getBootImgByName(const std::string& name) const {
  HTEQBootImg* found = nullptr;
  for (HTEQBootImg* b : bootImgs_)
    if (b->getName() == name) found = b;
  return found;
}

void HTEQSystemConfig::setName(const std::string& name) { name_ = name; }
void HTEQSystemConfig::setDesc(const std::string& desc) { desc_ = desc; }
void HTEQSystemConfig::setPrettyName(const std::string& name) { prettyName_ = name; }
void HTEQSystemConfig::setDefaultProcGrpName(const std::string& name) { defaultProcGrpName_ = name; }
void HTEQSystemConfig::setDefaultBootImgName(const std::string& name) { defaultBootImgName_ = name; }

HTEQBootImg* HTEQSystemConfig::addBootImg() { return bootImgs_.emplace(); }

void HTEQSystemConfig::addProcessorGroup(const std::string& name) { procGrpNames_.push_back(name); }

HTEQProcessorGroup* HTEQSystemConfig::addProcessorGroup() { return procGrps_.emplace(); }

void HTEQSystemConfig::setSupportsQemu(bool supports) { supportsQemu_ = supports; }
void HTEQSystemConfig::addRuntime(const std::string& runtime) { runtimes_.push_back(runtime); }
