#include "platform/HTEQSoftwarePlatformUtils.h"

#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformUtils.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSystemConfig.h"

namespace {

// The processor group of a configuration found among the candidates, when
// its OS name equals `osName` exactly; null otherwise.
const HTEQProcessorGroup* groupFor(const std::vector<HTEQSoftwarePlatform*>& candidates,
                                   const std::string& configName, const std::string& procGrpName,
                                   const std::string& osName) {
  const HTEQSystemConfig* config =
      HTEQSoftwarePlatformUtils::getSystemConfigurationIn(candidates, configName);
  if (config == nullptr) return nullptr;
  const HTEQProcessorGroup* group = config->getProcGrpByName(procGrpName);
  if (group == nullptr || group->getOSName() != osName) return nullptr;
  return group;
}

// The software platforms of every platform known under `uniqueName`, in order.
std::vector<HTEQSoftwarePlatform*> candidatesFor(const std::string& uniqueName) {
  HTEQPlatformUtils::TEQPlatformVec platforms;
  HTEQPlatformUtils::getPlatformsByUniqueName(uniqueName, platforms);
  std::vector<HTEQSoftwarePlatform*> candidates;
  for (const HTEQPlatform* p : platforms)
    candidates.insert(candidates.end(), p->getSoftwarePlatforms().begin(), p->getSoftwarePlatforms().end());
  return candidates;
}

}  // namespace

HTEQSystemConfig* HTEQSoftwarePlatformUtils::getSystemConfigByPrettyName(HTEQSoftwarePlatform* platform,
                                                                         const std::string& prettyName) {
  if (platform == nullptr) return nullptr;
  HTEQSoftwarePlatform::TEQSystemConfigVec configs;
  platform->getSystemConfigs(configs);
  HTEQSystemConfig* found = nullptr;
  for (HTEQSystemConfig* c : configs)
    if (c->getPrettyName() == prettyName) found = c;
  return found;
}

bool HTEQSoftwarePlatformUtils::isQemuSupported(HTEQSoftwarePlatform* platform,
                                                const std::string& prettyName) {
  const HTEQSystemConfig* c = getSystemConfigByPrettyName(platform, prettyName);
  return c != nullptr && c->isQemuSupported();
}

HTEQSystemConfig* HTEQSoftwarePlatformUtils::getSystemConfigurationIn(
    const std::vector<HTEQSoftwarePlatform*>& candidates, const std::string& configName) {
  HTEQSystemConfig* found = nullptr;
  for (const HTEQSoftwarePlatform* sw : candidates) {
    if (sw == nullptr) continue;
    HTEQSoftwarePlatform::TEQSystemConfigVec configs;
    sw->getSystemConfigs(configs);
    for (HTEQSystemConfig* c : configs)
      if (c->getName() == configName) found = c;
  }
  return found;
}

std::string HTEQSoftwarePlatformUtils::getIncludePaths(const std::vector<HTEQSoftwarePlatform*>& candidates,
                                                       const std::string& configName,
                                                       const std::string& procGrpName,
                                                       const std::string& osName) {
  const HTEQProcessorGroup* g = groupFor(candidates, configName, procGrpName, osName);
  return g ? g->getIncludePaths() : std::string();
}

std::string HTEQSoftwarePlatformUtils::getLibraryPaths(const std::vector<HTEQSoftwarePlatform*>& candidates,
                                                       const std::string& configName,
                                                       const std::string& procGrpName,
                                                       const std::string& osName) {
  const HTEQProcessorGroup* g = groupFor(candidates, configName, procGrpName, osName);
  return g ? g->getLibraryPaths() : std::string();
}

HTEQSystemConfig* HTEQSoftwarePlatformUtils::getSystemConfigurationByUniqueName(
    const std::string& uniqueName, const std::string& configName) {
  return getSystemConfigurationIn(candidatesFor(uniqueName), configName);
}

std::string HTEQSoftwarePlatformUtils::getIncludePaths(const std::string& uniqueName,
                                                       const std::string& configName,
                                                       const std::string& procGrpName,
                                                       const std::string& osName) {
  return getIncludePaths(candidatesFor(uniqueName), configName, procGrpName, osName);
}

std::string HTEQSoftwarePlatformUtils::getLibraryPaths(const std::string& uniqueName,
                                                       const std::string& configName,
                                                       const std::string& procGrpName,
                                                       const std::string& osName) {
  return getLibraryPaths(candidatesFor(uniqueName), configName, procGrpName, osName);
}
