#include "platform/NativeKeyService.h"

#include "platform/NativeObjectService.h"
#include "services/ServiceJson.h"

namespace teq {
namespace platform {

namespace {

using Tree = boost::property_tree::ptree;

void traverse(KeyService::KeySet& keys, const Tree& node, const std::string& prefix) {
  std::string extended = prefix;
  if (!prefix.empty()) extended += (!node.empty() && node.front().first.empty()) ? "[]" : ".";
  for (const auto& child : node) {
    const std::string path = extended + child.first;
    keys.insert(path);
    traverse(keys, child.second, path);
  }
}

}  // namespace

KeyService::KeySet NativeKeyService::get(const Tree& tree) const {
  KeySet keys;
  traverse(keys, tree, std::string());
  return keys;
}

KeyService::KeySet NativeKeyService::get(teq_platform::PlatformLoader* loader) const {
  // The document is written to text and read back, as every service sees it.
  return get(NativeObjectService(mode_).getAsPropertyTree(loader));
}

KeyService::KeySet NativeKeyService::get(const std::string& file) const {
  teq_platform::PlatformLoader loader(file, mode_);
  return get(&loader);
}

std::string NativeKeyService::getAsJsonStr(teq_platform::PlatformLoader* loader) const {
  Tree list;
  for (const auto& key : get(loader)) list.push_back(Tree::value_type(std::string(), Tree(key)));
  Tree tree;
  tree.push_back(Tree::value_type("keys", list));
  return zr_services::prettyJson(tree);
}

std::string NativeKeyService::getAsJsonStr(const std::string& file) const {
  teq_platform::PlatformLoader loader(file, mode_);
  return getAsJsonStr(&loader);
}

}  // namespace platform
}  // namespace teq
