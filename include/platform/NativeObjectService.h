#ifndef PLATFORM_NATIVEOBJECTSERVICE_H
#define PLATFORM_NATIVEOBJECTSERVICE_H

#include <cstdint>
#include <string>
#include <vector>

#include "platform/ObjectService.h"
#include "platform/PlatformLoader.h"
#include "platform/ZrPlatformExport.h"

namespace teq {
namespace platform {

// The path language: segments separated by '.', each a key with an optional
// array index ("memories[1]"). The markers "[]" and "[*]" are deleted before
// any lookup. Paths written for the old layout, with the hardware platform at
// "hardwarePlatform", are rewritten to wherever the document keeps it.
//
// Operations on a document (JSON text) walk with the language's own rules: an
// empty segment stays on the same node. Operations on a tree hand a path that
// contains ".." to the property tree's own lookup, where an empty segment is
// the first array element. Malformed JSON raises the property tree's
// json_parser_error; nothing here writes a message.
class ZR_PLATFORM_API NativeObjectService : public ObjectService {
 public:
  // One segment of a path.
  struct PathToken {
    std::string name;
    bool hasIndex = false;
    std::int32_t index = 0;
  };

  NativeObjectService() : mode_(teq_platform::PlatformLoader::Default) {}
  explicit NativeObjectService(teq_platform::PlatformLoader::HwMetadataMode mode) : mode_(mode) {}

  std::string getAsJsonStr(const std::string& file) const override;
  std::string getAsJsonStr(teq_platform::PlatformLoader* loader) const override;
  Tree getAsPropertyTree(const std::string& file) const override;
  Tree getAsPropertyTree(teq_platform::PlatformLoader* loader) const override;
  Tree getNodeByPath(const std::string& document, const std::string& path, bool& found) const override;
  std::string getObjectsByPath(const std::string& document, const std::string& path,
                               bool& found) const override;
  std::string getObjectsByPath(teq_platform::PlatformLoader* loader, const std::string& path,
                               bool& found) const override;
  std::string getHwPlatformRootPath(const std::string& document) const override;
  std::string getHwPlatformRootPath(const Tree& tree) const override;
  Tree getChild(const Tree& tree, const std::string& path) const override;
  boost::optional<const Tree&> getChildOptional(const Tree& tree, const std::string& path) const override;
  std::string getStringValue(const Tree& tree, const std::string& path) const override;
  bool getBoolValue(const Tree& tree, const std::string& path) const override;
  bool getBoolValue(const Tree& tree, const std::string& path, bool defaultValue) const override;
  std::string getObjectsByPath(const std::string& document, const std::string& path) const override;

  bool hasNodeAtPath(const std::string& document, const std::string& path) const;
  bool hasNodeAtPath(const Tree& tree, const std::string& path) const;

  static std::string getLegacyHwPlatformRootPath();
  static std::string getDefaultHwPlatformRootPath();
  static std::string getDefaultRPHwPlatformRootPath();
  static std::string getDefaultRPHwPlatformRootPathAlt();

  // "hardwarePlatform" or "hardwarePlatform.<anything>".
  static bool isLegacyHwPlatformPath(const std::string& path);
  // A legacy path with its first segment replaced by `root`; others unchanged.
  static std::string replaceLegacyHwPlatformPath(const std::string& path, const std::string& root);
  // True when the path contains "..", the tree lookup's array notation.
  static bool pathHasBoostArray(const std::string& path);
  // The path without the markers "[]" and "[*]".
  static std::string removeArrayMarkers(const std::string& path);
  // The path's segments; the empty path is one empty token.
  static std::vector<PathToken> scanJsonPath(const std::string& path);

  bool hasLegacyHwPlatformRootPath(const std::string& document) const;
  bool hasLegacyHwPlatformRootPath(const Tree& tree) const;
  std::string getPathWithActualHwPlatformRoot(const std::string& document, const std::string& path) const;
  std::string getPathWithActualHwPlatformRoot(const Tree& tree, const std::string& path) const;
  // The first root that exists in the tree: legacy, default, then the
  // partition root (in the tree lookup's notation when `useAlt` is set).
  std::string _getHwPlatformRootPath(const Tree& tree, bool useAlt) const;

  teq_platform::PlatformLoader::HwMetadataMode getHwMetadataMode() const { return mode_; }

 private:
  teq_platform::PlatformLoader::HwMetadataMode mode_;
};

}  // namespace platform
}  // namespace teq

#endif
