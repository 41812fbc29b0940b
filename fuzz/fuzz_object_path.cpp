// (path, document) pairs through the path language: the input up to its first
// NUL is the path, the rest the document. Every operation must answer or raise
// the property tree's own errors; a flag that says "not found" with a result,
// or a document walk that disagrees with the existence check, aborts.
#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/json_parser.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "FuzzSupport.h"
#include "json/JsonDocument.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/NativeDictService.h"
#include "platform/NativeDocService.h"
#include "platform/NativeKeyService.h"
#include "platform/NativeObjectService.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace teq::platform;
  using Tree = boost::property_tree::ptree;
  static const bool silenced = zr_fuzz::silenceStdout() && std::freopen("/dev/null", "w", stderr);
  static_cast<void>(silenced);
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t nul = input.find('\0');
  const std::string path = input.substr(0, nul);
  const std::string document = nul == std::string::npos ? std::string() : input.substr(nul + 1);

  const NativeObjectService objects;
  Tree tree;
  try {
    zr_json::parseTree(document, tree, HTEQJSONUtils::kMaxDepth);
  } catch (const boost::property_tree::json_parser_error&) {
    return 0;
  }
  try {
    bool found = true;
    const std::string result = objects.getObjectsByPath(document, path, found);
    if (!found && !result.empty()) std::abort();
    bool nodeFound = true;
    const Tree node = objects.getNodeByPath(document, path, nodeFound);
    if (nodeFound != found) std::abort();
    // Without a legacy root to substitute, the walk and the check agree.
    if (!path.empty() && !document.empty() &&
        !NativeObjectService::isLegacyHwPlatformPath(NativeObjectService::removeArrayMarkers(path)) &&
        objects.hasNodeAtPath(document, path) != found)
      std::abort();
  } catch (const boost::property_tree::json_parser_error&) {
  }

  // The tree rules, which read ".." with the tree's own lookup.
  const auto child = objects.getChildOptional(tree, path);
  if (objects.getStringValue(tree, path) != (child ? child->data() : std::string())) std::abort();
  objects.getBoolValue(tree, path, false);
  try {
    objects.getBoolValue(tree, path);
  } catch (const boost::property_tree::ptree_bad_data&) {
  }
  NativeKeyService().get(tree);
  NativeDictService().getAsDict(tree, path);
  NativeDictService::normalizeKey(path);
  NativeDocService docs;
  docs.getDocKeyBranch(tree, path);
  try {
    docs.isValidDocKey(tree, path);
  } catch (const std::out_of_range&) {
  }
  return 0;
}
