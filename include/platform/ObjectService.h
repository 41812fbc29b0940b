#ifndef PLATFORM_OBJECTSERVICE_H
#define PLATFORM_OBJECTSERVICE_H

#include <boost/optional.hpp>
#include <boost/property_tree/ptree.hpp>
#include <string>

#include "platform/ZrPlatformExport.h"

namespace teq_platform {
class PlatformLoader;
}

namespace teq {
namespace platform {

// A platform as one JSON document, and a small path language that picks nodes
// out of it. "Document" arguments are JSON text; trees are property trees.
// NativeObjectService is the implementation.
class ZR_PLATFORM_API ObjectService {
 public:
  using Tree = boost::property_tree::ptree;

  virtual ~ObjectService() = default;
  virtual std::string getAsJsonStr(const std::string& file) const = 0;
  virtual std::string getAsJsonStr(teq_platform::PlatformLoader* loader) const = 0;
  virtual Tree getAsPropertyTree(const std::string& file) const = 0;
  virtual Tree getAsPropertyTree(teq_platform::PlatformLoader* loader) const = 0;
  virtual Tree getNodeByPath(const std::string& document, const std::string& path, bool& found) const = 0;
  virtual std::string getObjectsByPath(const std::string& document, const std::string& path,
                                       bool& found) const = 0;
  virtual std::string getObjectsByPath(teq_platform::PlatformLoader* loader, const std::string& path,
                                       bool& found) const = 0;
  virtual std::string getHwPlatformRootPath(const std::string& document) const = 0;
  virtual std::string getHwPlatformRootPath(const Tree& tree) const = 0;
  virtual Tree getChild(const Tree& tree, const std::string& path) const = 0;
  virtual boost::optional<const Tree&> getChildOptional(const Tree& tree, const std::string& path) const = 0;
  virtual std::string getStringValue(const Tree& tree, const std::string& path) const = 0;
  virtual bool getBoolValue(const Tree& tree, const std::string& path) const = 0;
  virtual bool getBoolValue(const Tree& tree, const std::string& path, bool defaultValue) const = 0;
  virtual std::string getObjectsByPath(const std::string& document, const std::string& path) const = 0;
};

}  // namespace platform
}  // namespace teq

#endif
