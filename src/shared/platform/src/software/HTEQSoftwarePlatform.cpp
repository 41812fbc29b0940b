#include "platform/HTEQSoftwarePlatform.h"

#include <algorithm>
#include <memory>

#include "host/HSTStringUtils.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQSystemConfig.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

namespace {

// Appends each name that `out` does not hold yet, keeping first-seen order.
void appendNew(const std::vector<std::string>& names, std::vector<std::string>& out) {
  for (const std::string& n : names)
    if (std::find(out.begin(), out.end(), n) == out.end()) out.push_back(n);
}

}  // namespace

HTEQSoftwarePlatform::HTEQSoftwarePlatform() = default;

HTEQSoftwarePlatform::~HTEQSoftwarePlatform() = default;

void HTEQSoftwarePlatform::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("linuxRootFileSystemPath", linuxRootFileSystemPath_);
  writer.addKey("defaultConfig", getDefaultConfigName());
  teq_platform::JSONListWriter configs;
  for (const HTEQSystemConfig* c : systemConfigs_) configs.addItem(c);
  writer.addKey("systemConfigurations", std::move(configs));
}

HTEQSystemConfig* HTEQSoftwarePlatform::addSystemConfig() { return systemConfigs_.emplace(); }

HTEQSystemConfig* HTEQSoftwarePlatform::getSystemConfig() const {
  return systemConfigs_.empty() ? nullptr : systemConfigs_.front();
}

void HTEQSoftwarePlatform::getSystemConfigs(TEQSystemConfigVec& out) const {
  out.insert(out.end(), systemConfigs_.begin(), systemConfigs_.end());
}

HTEQSystemConfig* HTEQSoftwarePlatform::getSystemConfigByName(const std::string& name) const {
  // The walk has no early exit: when several configurations match, by name or
  // by pretty name, the last one in file order is the answer.
  HTEQSystemConfig* found = nullptr;
  for (HTEQSystemConfig* c : systemConfigs_)
    if (c->getName() == name || c->getPrettyName() == name) found = c;
  return found;
}

HTEQSystemConfig* HTEQSoftwarePlatform::getSystemConfigByPrettyName(const std::string& name) const {
  return getSystemConfigByName(name);
}

HTEQSystemConfig* HTEQSoftwarePlatform::getDefaultSystemConfig() const {
  if (!defaultConfigName_.empty()) {
    if (HTEQSystemConfig* c = getSystemConfigByName(defaultConfigName_)) return c;
  }
  return getSystemConfig();
}

std::string HTEQSoftwarePlatform::getDefaultConfigName() const {
  if (!defaultConfigName_.empty()) return defaultConfigName_;
  const HTEQSystemConfig* c = getDefaultSystemConfig();
  return c ? c->getName() : defaultConfigName_;
}

void HTEQSoftwarePlatform::setDefaultConfigName(const std::string& name) { defaultConfigName_ = name; }

bool HTEQSoftwarePlatform::isRuntimeSupported(const std::string& runtime) const {
  for (const char* known : {"ocl", "OpenCL", "cpp", "C/C++"})
    if (HSTStringUtils::iequals(runtime, known)) return true;
  return false;
}

void HTEQSoftwarePlatform::getSupportedRuntimes(StringVector& out) const {
  for (const HTEQSystemConfig* c : systemConfigs_) {
    StringVector runtimes;
    c->getRuntimes(runtimes);
    appendNew(runtimes, out);
  }
}

void HTEQSoftwarePlatform::getSupportedRuntimesByPrettyName(StringVector& out) const {
  for (const HTEQSystemConfig* c : systemConfigs_) {
    StringVector runtimes;
    c->getRuntimesByPrettyName(runtimes);
    appendNew(runtimes, out);
  }
}

int HTEQSoftwarePlatform::getNumRuntimes() const {
  StringVector runtimes;
  getSupportedRuntimes(runtimes);
  return static_cast<int>(runtimes.size());
}

bool HTEQSoftwarePlatform::isSystemConfigSupported(const std::string& name) const {
  const HTEQSystemConfig* c = getSystemConfigByName(name);
  if (c == nullptr) return false;
  StringVector runtimes;
  c->getRuntimes(runtimes);
  if (runtimes.empty()) return true;
  for (const std::string& r : runtimes)
    if (isRuntimeSupported(r)) return true;
  return false;
}

int HTEQSoftwarePlatform::getSystemConfigNames(StringVector& out, const std::string& libraryType) const {
  const bool isStatic = HSTStringUtils::iequals(libraryType, "static");
  const bool isShared = HSTStringUtils::iequals(libraryType, "shared");
  const bool isCCallable = HSTStringUtils::iequals(libraryType, "c-callable");
  for (const HTEQSystemConfig* c : systemConfigs_) {
    if (isStatic) {
      out.push_back(c->getName());
      continue;
    }
    if (!isShared && !isCCallable) continue;
    // A shared library needs a Linux processor group; a C-callable one is
    // also served by a standalone one. The first qualifying group decides, so
    // a configuration is listed at most once.
    HTEQSystemConfig::TEQProcessorGroupVec groups;
    c->getProcessorGroups(groups);
    for (const HTEQProcessorGroup* g : groups) {
      const std::string os = g->getOSName();
      const bool isLinux = HSTStringUtils::iequals(os, "linux");
      if (isLinux || (isCCallable && HSTStringUtils::iequals(os, "standalone"))) {
        out.push_back(c->getName());
        break;
      }
    }
  }
  return static_cast<int>(out.size());
}
