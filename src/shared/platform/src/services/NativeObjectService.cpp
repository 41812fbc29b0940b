#include "platform/NativeObjectService.h"

#include <cstdlib>
#include <iterator>
#include <memory>

#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "json/JsonText.h"
#include "json/JsonTextWriter.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/JSONObjectWriter.h"
#include "services/ServiceJson.h"

namespace teq {
namespace platform {

namespace {

using Tree = boost::property_tree::ptree;
using Tokens = std::vector<NativeObjectService::PathToken>;

const char* const kLegacyRoot = "hardwarePlatform";
const char* const kDefaultRoot = "hardwarePlatforms.hardwarePlatform";
const char* const kRPRoot = "hardwarePlatforms.reconfigurablePartitions[0].hardwarePlatform";
const char* const kRPRootAlt = "hardwarePlatforms.reconfigurablePartitions..hardwarePlatform";

// One step of a walk: the child named by the token (the node itself for an
// empty name), then, with an index, that child's child at the position,
// counting every child whatever its key.
const Tree* findNode(const Tree& node, const NativeObjectService::PathToken& token) {
  const Tree* found = &node;
  if (!token.name.empty()) {
    const auto it = node.find(token.name);
    if (it == node.not_found()) return nullptr;
    found = &it->second;
  }
  if (!token.hasIndex) return found;
  // Sign-extended and taken unsigned, so that a negative index never matches.
  const auto index = static_cast<std::uint64_t>(static_cast<std::int64_t>(token.index));
  if (found->empty() || index >= found->size()) return nullptr;
  auto child = found->begin();
  std::advance(child, static_cast<std::ptrdiff_t>(index));
  return &child->second;
}

const Tree* walk(const Tree& root, const Tokens& tokens) {
  const Tree* node = &root;
  for (const auto& token : tokens) {
    node = findNode(*node, token);
    if (node == nullptr) return nullptr;
  }
  return node;
}

// The document rules on a parsed document: markers deleted, the language's
// own walk, no root substitution, no tree lookup notation.
bool documentHasNode(const Tree& tree, const std::string& path) {
  const Tokens tokens = NativeObjectService::scanJsonPath(NativeObjectService::removeArrayMarkers(path));
  return !tokens.empty() && walk(tree, tokens) != nullptr;
}

std::string documentRootPath(const Tree& tree) {
  for (const char* root : {kLegacyRoot, kDefaultRoot, kRPRoot})
    if (documentHasNode(tree, root)) return root;
  return std::string();
}

std::string documentPathWithActualRoot(const Tree& tree, const std::string& path) {
  if (!NativeObjectService::isLegacyHwPlatformPath(path)) return path;
  if (documentHasNode(tree, kLegacyRoot)) return path;
  const std::string root = documentRootPath(tree);
  return root.empty() ? path : NativeObjectService::replaceLegacyHwPlatformPath(path, root);
}

// The tree's own lookup, where an empty segment is the first nameless child.
boost::optional<const Tree&> treeLookup(const Tree& tree, const std::string& path) {
  return tree.get_child_optional(Tree::path_type(path, '.'));
}

}  // namespace

std::string NativeObjectService::getLegacyHwPlatformRootPath() { return kLegacyRoot; }
std::string NativeObjectService::getDefaultHwPlatformRootPath() { return kDefaultRoot; }
std::string NativeObjectService::getDefaultRPHwPlatformRootPath() { return kRPRoot; }
std::string NativeObjectService::getDefaultRPHwPlatformRootPathAlt() { return kRPRootAlt; }

bool NativeObjectService::isLegacyHwPlatformPath(const std::string& path) {
  const std::string legacy = kLegacyRoot;
  return path == legacy || path.compare(0, legacy.size() + 1, legacy + ".") == 0;
}

std::string NativeObjectService::replaceLegacyHwPlatformPath(const std::string& path,
                                                             const std::string& root) {
  if (!isLegacyHwPlatformPath(path)) return path;
  return root + path.substr(std::string(kLegacyRoot).size());
}

bool NativeObjectService::pathHasBoostArray(const std::string& path) {
  return path.find("..") != std::string::npos;
}

std::string NativeObjectService::removeArrayMarkers(const std::string& path) {
  // One pass from the left: a marker is deleted where it stands, and what the
  // deletion brings together is not looked at again.
  std::string result;
  result.reserve(path.size());
  for (std::size_t i = 0; i < path.size();) {
    if (path.compare(i, 2, "[]") == 0) {
      i += 2;
    } else if (path.compare(i, 3, "[*]") == 0) {
      i += 3;
    } else {
      result += path[i++];
    }
  }
  return result;
}

std::vector<NativeObjectService::PathToken> NativeObjectService::scanJsonPath(const std::string& path) {
  std::vector<PathToken> tokens;
  std::size_t start = 0;
  while (true) {
    const std::size_t dot = path.find('.', start);
    const std::string piece = path.substr(start, dot == std::string::npos ? std::string::npos : dot - start);
    PathToken token;
    token.name = piece;
    const std::size_t open = piece.rfind('[');
    if (open != std::string::npos && piece.size() > open + 1 && piece.back() == ']') {
      token.name = piece.substr(0, open);
      const std::string indexText = piece.substr(open + 1, piece.size() - open - 2);
      // A longer index text is no index at all: the name stands alone.
      if (indexText.size() <= 6) {
        token.hasIndex = true;
        token.index = static_cast<std::int32_t>(std::strtol(indexText.c_str(), nullptr, 10));
      }
    }
    tokens.push_back(std::move(token));
    if (dot == std::string::npos) break;
    start = dot + 1;
  }
  return tokens;
}

bool NativeObjectService::hasNodeAtPath(const std::string& document, const std::string& path) const {
  Tree tree;
  zr_services::parseDocument(document, tree);
  return documentHasNode(tree, path);
}

bool NativeObjectService::hasNodeAtPath(const Tree& tree, const std::string& path) const {
  if (pathHasBoostArray(path)) return static_cast<bool>(treeLookup(tree, path));
  return documentHasNode(tree, path);
}

bool NativeObjectService::hasLegacyHwPlatformRootPath(const std::string& document) const {
  return hasNodeAtPath(document, kLegacyRoot);
}

bool NativeObjectService::hasLegacyHwPlatformRootPath(const Tree& tree) const {
  return hasNodeAtPath(tree, kLegacyRoot);
}

std::string NativeObjectService::getHwPlatformRootPath(const std::string& document) const {
  Tree tree;
  zr_services::parseDocument(document, tree);
  return documentRootPath(tree);
}

std::string NativeObjectService::getHwPlatformRootPath(const Tree& tree) const {
  return _getHwPlatformRootPath(tree, false);
}

std::string NativeObjectService::_getHwPlatformRootPath(const Tree& tree, bool useAlt) const {
  for (const char* root : {kLegacyRoot, kDefaultRoot, useAlt ? kRPRootAlt : kRPRoot})
    if (hasNodeAtPath(tree, root)) return root;
  return std::string();
}

std::string NativeObjectService::getPathWithActualHwPlatformRoot(const std::string& document,
                                                                 const std::string& path) const {
  if (!isLegacyHwPlatformPath(path)) return path;
  Tree tree;
  zr_services::parseDocument(document, tree);
  return documentPathWithActualRoot(tree, path);
}

std::string NativeObjectService::getPathWithActualHwPlatformRoot(const Tree& tree,
                                                                 const std::string& path) const {
  if (!isLegacyHwPlatformPath(path)) return path;
  if (hasLegacyHwPlatformRootPath(tree)) return path;
  // The root is written in the notation of the path, so that the result is
  // read by the same lookup.
  const std::string root = _getHwPlatformRootPath(tree, pathHasBoostArray(path));
  return root.empty() ? path : replaceLegacyHwPlatformPath(path, root);
}

boost::optional<const NativeObjectService::Tree&> NativeObjectService::getChildOptional(
    const Tree& tree, const std::string& path) const {
  if (pathHasBoostArray(path)) return treeLookup(tree, getPathWithActualHwPlatformRoot(tree, path));
  const Tree* node =
      walk(tree, scanJsonPath(getPathWithActualHwPlatformRoot(tree, removeArrayMarkers(path))));
  if (node == nullptr) return boost::none;
  return boost::optional<const Tree&>(*node);
}

NativeObjectService::Tree NativeObjectService::getChild(const Tree& tree, const std::string& path) const {
  const auto node = getChildOptional(tree, path);
  return node ? *node : Tree();
}

std::string NativeObjectService::getStringValue(const Tree& tree, const std::string& path) const {
  const auto node = getChildOptional(tree, path);
  return node ? node->data() : std::string();
}

bool NativeObjectService::getBoolValue(const Tree& tree, const std::string& path) const {
  const auto node = getChildOptional(tree, path);
  // The tree's own translator: "true", "false", "1", "0"; anything else is
  // the tree's bad-data error.
  return node ? node->get_value<bool>() : false;
}

bool NativeObjectService::getBoolValue(const Tree& tree, const std::string& path, bool defaultValue) const {
  const auto node = getChildOptional(tree, path);
  return node ? node->get_value<bool>(defaultValue) : defaultValue;
}

NativeObjectService::Tree NativeObjectService::getNodeByPath(const std::string& document,
                                                             const std::string& path, bool& found) const {
  if (document.empty() || path.empty()) return Tree();
  found = true;
  Tree tree;
  zr_services::parseDocument(document, tree);
  const Tree* node = walk(tree, scanJsonPath(documentPathWithActualRoot(tree, removeArrayMarkers(path))));
  if (node == nullptr) {
    found = false;
    return Tree();
  }
  return *node;
}

std::string NativeObjectService::getObjectsByPath(const std::string& document, const std::string& path,
                                                  bool& found) const {
  if (document.empty() || path.empty()) return std::string();
  found = true;
  Tree tree;
  zr_services::parseDocument(document, tree);
  const std::string actual = documentPathWithActualRoot(tree, removeArrayMarkers(path));
  const Tree* node = walk(tree, scanJsonPath(actual));
  if (node == nullptr) {
    found = false;
    return std::string();
  }
  if (node->empty()) return node->data();
  if (!node->front().first.empty()) return zr_services::prettyJson(*node);
  // An array comes back as an object with one key, what follows the path's
  // last '.' (an index kept); a path of one segment gives the empty key, so
  // an array holding the array. The wrapper is built by appending the pair:
  // the key may be empty or hold brackets, and is no path.
  const std::size_t dot = actual.rfind('.');
  Tree wrapper;
  wrapper.push_back(
      Tree::value_type(dot == std::string::npos ? std::string() : actual.substr(dot + 1), *node));
  return zr_services::prettyJson(wrapper);
}

std::string NativeObjectService::getObjectsByPath(teq_platform::PlatformLoader* loader,
                                                  const std::string& path, bool& found) const {
  if (loader == nullptr || path.empty()) return std::string();
  return getObjectsByPath(getAsJsonStr(loader), path, found);
}

std::string NativeObjectService::getObjectsByPath(const std::string& document,
                                                  const std::string& path) const {
  bool found = false;
  return getObjectsByPath(document, path, found);
}

std::string NativeObjectService::getAsJsonStr(teq_platform::PlatformLoader* loader) const {
  if (loader == nullptr) return std::string();
  const std::shared_ptr<HTEQPlatform> platform = loader->load();
  if (!platform) return std::string();
  // The text is printed from the model directly unless the document needs
  // the tree's path semantics; both give the same bytes.
  try {
    std::unique_ptr<char[]> text(teq_platform::platformText(*platform));
    return std::string(text.get());
  } catch (const teq_platform::TextNeedsTree&) {
  }
  teq_platform::JSONObjectWriter writer;
  writer.writeObject(platform.get());
  return zr_services::prettyJson(writer.getTree());
}

std::string NativeObjectService::getAsJsonStr(const std::string& file) const {
  if (file.empty()) return std::string();
  const std::string ext = HUTPathUtils::getExtension(file);
  const bool hardware = HTEQHardwarePlatform::isValidPlatformExt(ext);
  const bool software = ext == ".spfm";
  const bool descriptor = file.size() >= 4 && file.compare(file.size() - 4, 4, ".zdf") == 0;
  if (!descriptor && !hardware && !software) return std::string();
  teq_platform::PlatformLoader loader(file, mode_);
  if (descriptor) return getAsJsonStr(&loader);
  // A lone hardware or software file: the part of the document it fills. The
  // legacy path finds the hardware platform wherever the document keeps it.
  return getObjectsByPath(getAsJsonStr(&loader), hardware ? kLegacyRoot : "softwarePlatform");
}

NativeObjectService::Tree NativeObjectService::getAsPropertyTree(const std::string& file) const {
  Tree tree;
  if (!HUTFile::exists(file)) return tree;
  const std::string text = getAsJsonStr(file);
  if (!text.empty()) zr_services::parseDocument(text, tree);
  return tree;
}

NativeObjectService::Tree NativeObjectService::getAsPropertyTree(teq_platform::PlatformLoader* loader) const {
  Tree tree;
  const std::string text = getAsJsonStr(loader);
  if (!text.empty()) zr_services::parseDocument(text, tree);
  return tree;
}

}  // namespace platform
}  // namespace teq

std::string zr_services::prettyJson(const boost::property_tree::ptree& tree) {
  std::string text;
  zr_json::appendText(tree, text);
  return text;
}
