#include "platform/NativeDictService.h"

#include "platform/NativeObjectService.h"

namespace teq {
namespace platform {

namespace {

using Tree = boost::property_tree::ptree;

// Steps a (a leaf goes in under the working prefix) and b (an array moves the
// working prefix to the next index) stand in this order on purpose: an array
// of plain values lands one place behind, as files written from the
// dictionary expect.
void traverse(DictService::Dict& dict, const Tree& node, const std::string& prefix) {
  std::string working;
  bool isArray = false;
  if (!prefix.empty()) {
    if (!node.empty() && node.front().first.empty())
      isArray = true;
    else
      working = prefix + ".";
  }
  unsigned long long counter = 0;
  for (const auto& child : node) {
    if (child.second.empty()) dict.emplace(working + child.first, child.second.data());
    if (isArray) working = prefix + "[" + std::to_string(counter++) + "]";
    traverse(dict, child.second, working + child.first);
  }
}

}  // namespace

const DictService::KeySet& NativeDictService::defaultIncludeKeys() {
  static const KeySet keys = {"tilHardware.arch",
                              "tilHardware.coreRows.num",
                              "tilHardware.coreRows.start",
                              "tilHardware.shimRows.num",
                              "tilHardware.shimRows.start",
                              "designIDs.tilngineIDs.nodeID",
                              "designIDs.tilngineIDs.puID",
                              "designIDs.designID",
                              "designIDs.nodeID",
                              "designIDs.parentID",
                              "reconfigPartitionIDs[*].designID",
                              "reconfigPartitionIDs[*].nodeID",
                              "reconfigPartitionIDs[*].parentID",
                              "static",
                              "rm",
                              "files[*].name",
                              "files[*].type",
                              "idCode",
                              "extendedIdCode"};
  return keys;
}

std::string NativeDictService::normalizeKey(const std::string& key) {
  // The regular expression "\[.*\]" replaced by "[*]" everywhere, written out:
  // a match runs from a '[' to the last ']' before the next line end ('.'
  // does not match '\n' or '\r'), and the search goes on after it. Done by
  // hand so that a long key costs linear time and no deep recursion.
  std::string result;
  result.reserve(key.size());
  std::size_t i = 0;
  while (i < key.size()) {
    const std::size_t open = key.find('[', i);
    if (open == std::string::npos) break;
    std::size_t lineEnd = key.find_first_of("\r\n", open);
    if (lineEnd == std::string::npos) lineEnd = key.size();
    const std::size_t close = key.rfind(']', lineEnd - 1);
    if (close == std::string::npos || close <= open) {
      // No '[' before this line end can match either.
      result.append(key, i, lineEnd - i);
      i = lineEnd;
      continue;
    }
    result.append(key, i, open - i);
    result += "[*]";
    i = close + 1;
  }
  result.append(key, i, std::string::npos);
  return result;
}

DictService::Dict NativeDictService::getAsDict(const boost::property_tree::ptree& tree,
                                               const std::string& prefix) const {
  Dict dict;
  traverse(dict, tree, prefix);
  return dict;
}

DictService::Dict NativeDictService::getAsDict(const std::string& file, const std::string& path,
                                               bool& found) const {
  const NativeObjectService objects;
  if (path.empty()) {
    found = true;
    return getAsDict(objects.getAsPropertyTree(file), std::string());
  }
  const Tree node = objects.getNodeByPath(objects.getAsJsonStr(file), path, found);
  return found ? getAsDict(node, path) : Dict();
}

DictService::Dict NativeDictService::getFilteredDict(const std::string& file, const std::string& path) const {
  return getFilteredDict(file, path, defaultIncludeKeys());
}

DictService::Dict NativeDictService::getFilteredDict(const std::string& file, const std::string& path,
                                                     const KeySet& keys) const {
  bool found = false;
  const Dict dict = getAsDict(file, path, found);
  Dict result;
  for (const auto& entry : dict)
    if (keys.count(normalizeKey(entry.first)) != 0) result.insert(entry);
  return result;
}

}  // namespace platform
}  // namespace teq
