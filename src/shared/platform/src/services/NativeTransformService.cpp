#include "platform/NativeTransformService.h"

#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/NativeObjectService.h"
#include "services/ServiceJson.h"

namespace teq {
namespace platform {

std::string NativeTransformService::getAsJsonStr(const std::string& file) const {
  return NativeObjectService().getAsJsonStr(file);
}

std::string NativeTransformService::getAsJsonStr(teq_platform::PlatformLoader* loader) const {
  return NativeObjectService().getAsJsonStr(loader);
}

std::string NativeTransformService::getTransformSpecAsJsonStr(const std::string& specFile) const {
  static const std::string kExtension = ".json";
  if (specFile.size() < kExtension.size() ||
      specFile.compare(specFile.size() - kExtension.size(), kExtension.size(), kExtension) != 0)
    return std::string();
  try {
    // Regular files only: a FIFO or device is refused without being opened.
    return HUTFile::readAll(specFile, HUTEnv::instance().getMaxMetadataSize(), "metadata size limit");
  } catch (const HEXAll&) {
    return std::string();
  }
}

std::int32_t NativeTransformService::getObjectsBySpec(const std::string& /*file*/,
                                                      const std::string& specFile) const {
  const std::string text = getTransformSpecAsJsonStr(specFile);
  if (text.empty()) return 0;
  boost::property_tree::ptree tree;
  zr_services::parseDocument(text, tree);
  // Read and not yet acted upon.
  const std::string operation = tree.get<std::string>("operation", std::string());
  static_cast<void>(operation);
  return static_cast<std::int32_t>(tree.get_child("spec").size());
}

std::string NativeTransformService::getObjectsBySpec(teq_platform::PlatformLoader* /*loader*/,
                                                     const std::string& specFile) const {
  return getTransformSpecAsJsonStr(specFile);
}

}  // namespace platform
}  // namespace teq
