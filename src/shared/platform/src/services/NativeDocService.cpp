#include "platform/NativeDocService.h"

#include <exception>

#include "host/HEXAll.h"
#include "host/HUTConsole.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/NativeKeyService.h"
#include "platform/NativeObjectService.h"
#include "services/ServiceJson.h"

namespace teq {
namespace platform {

namespace {

using Tree = boost::property_tree::ptree;

// Each '.' piece of the key, empty pieces included.
std::vector<std::string> splitKey(const std::string& key) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  while (true) {
    const std::size_t dot = key.find('.', start);
    pieces.push_back(key.substr(start, dot == std::string::npos ? std::string::npos : dot - start));
    if (dot == std::string::npos) return pieces;
    start = dot + 1;
  }
}

// The key in the listing's notation: in each piece the text between the last
// '[' and the last ']' goes, so a[3].b becomes a[].b. A piece with a '[' but
// no ']' raises the substring's std::out_of_range.
std::string listedForm(const std::string& key) {
  std::string result;
  bool first = true;
  for (const auto& piece : splitKey(key)) {
    if (!first) result += '.';
    first = false;
    const std::size_t open = piece.rfind('[');
    if (open == std::string::npos) {
      result += piece;
    } else {
      result += piece.substr(0, open + 1) + piece.substr(piece.rfind(']'));
    }
  }
  return result;
}

}  // namespace

std::string NativeDocService::getFromFile(Tree& tree) const {
  static const std::string path = HUTEnv::instance().getJUNAppRoot() + HUTFile::getSeparator() + "platforms" +
                                  HUTFile::getSeparator() + "platform_keys_doc.json";
  if (!HUTFile::exists(path)) {
    HUTConsole::err("\nCould not find the <" + path + " >. Check the install area.\n" +
                    "  Can not continue with this task.\n");
    return std::string();
  }
  std::string text;
  try {
    // A directory, FIFO or device is refused without being opened.
    text = HUTFile::readAll(path, HUTEnv::instance().getMaxMetadataSize(), "metadata size limit");
  } catch (const HEXAll&) {
    return path;
  }
  Tree result;
  zr_services::parseDocument(text, result);
  tree.swap(result);
  return path;
}

std::string NativeDocService::getAsJsonStr(const Tree& tree) const { return zr_services::prettyJson(tree); }

bool NativeDocService::isValidDocKey(Tree& tree, const std::string& key) const {
  KeyService::KeySet keys;
  try {
    keys = NativeKeyService(mode_).get(static_cast<const Tree&>(tree));
  } catch (const std::exception& e) {
    HUTConsole::err(std::string("Exception: ") + e.what() + "\n");
  }
  const std::string listed = listedForm(key);
  if (key == "all" || key == "list_keys") return true;
  if (keys.count(listed) != 0) return true;
  HUTConsole::err("Could not find the specified key: <" + key + ">.\n");
  return false;
}

NativeDocService::Tree NativeDocService::getBranch(const Tree& tree, const std::string& key,
                                                   bool& found) const {
  return NativeObjectService().getNodeByPath(getAsJsonStr(tree), key, found);
}

NativeDocService::Tree NativeDocService::getDocKeyBranch(const Tree& tree, const std::string& key) const {
  if (key.find("documentation_keys") == std::string::npos) return Tree();
  const Tree* current = &tree;
  for (const auto& piece : splitKey(key)) {
    const auto it = current->find(piece);
    if (it != current->not_found()) current = &it->second;
  }
  return *current;
}

}  // namespace platform
}  // namespace teq
