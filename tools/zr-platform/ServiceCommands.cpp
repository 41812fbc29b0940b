// query, keys, dict, doc, spec: the query services over a platform's document.

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "CliSupport.h"
#include "Commands.h"
#include "platform/NativeDictService.h"
#include "platform/NativeDocService.h"
#include "platform/NativeKeyService.h"
#include "platform/NativeObjectService.h"
#include "platform/NativeTransformService.h"

namespace zr_cli {
namespace {

using teq::platform::NativeObjectService;

struct Args {
  std::string file;
  std::string path;
  std::vector<std::string> keys;
  bool json = false;
  bool filtered = false;
};

std::string ensureLineEnd(const std::string& text) {
  return text.empty() || text.back() == '\n' ? text : text + "\n";
}

int runQuery(std::ostream& out, const Args& a) {
  return guarded(a.file, [&](MessageCollector&) {
    requireRegularFile(a.file);
    const NativeObjectService service;
    bool found = false;
    const std::string result = service.getObjectsByPath(service.getAsJsonStr(a.file), a.path, found);
    if (!found) {
      reportError(a.file, "no node at " + a.path);
      return int(kCannotLoad);
    }
    out << ensureLineEnd(result);
    return int(kOk);
  });
}

int runKeys(std::ostream& out, const Args& a) {
  return guarded(a.file, [&](MessageCollector&) {
    requireRegularFile(a.file);
    const teq::platform::NativeKeyService service;
    if (a.json) {
      out << service.getAsJsonStr(a.file);
    } else {
      for (const auto& key : service.get(a.file)) out << key << "\n";
    }
    return int(kOk);
  });
}

int runDict(std::ostream& out, const Args& a) {
  return guarded(a.file, [&](MessageCollector&) {
    requireRegularFile(a.file);
    const teq::platform::NativeDictService service;
    bool found = false;
    teq::platform::DictService::Dict dict;
    if (!a.keys.empty()) {
      dict = service.getFilteredDict(a.file, a.path, std::set<std::string>(a.keys.begin(), a.keys.end()));
    } else if (a.filtered) {
      dict = service.getFilteredDict(a.file, a.path);
    } else {
      dict = service.getAsDict(a.file, a.path, found);
      if (!found) {
        reportError(a.file, "no node at " + a.path);
        return int(kCannotLoad);
      }
    }
    if (a.json) {
      boost::property_tree::ptree tree;
      for (const auto& entry : dict)
        tree.push_back(
            boost::property_tree::ptree::value_type(entry.first, boost::property_tree::ptree(entry.second)));
      out << teq::platform::NativeDocService().getAsJsonStr(tree);
    } else {
      for (const auto& entry : dict) out << entry.first << "=" << entry.second << "\n";
    }
    return int(kOk);
  });
}

int runDoc(std::ostream& out, const std::string& key) {
  return guarded("platform_keys_doc.json", [&](MessageCollector&) {
    const teq::platform::NativeDocService service;
    boost::property_tree::ptree tree;
    if (service.getFromFile(tree).empty()) return int(kCannotLoad);
    if (key.empty() || key == "all") {
      out << service.getAsJsonStr(tree.get_child("documentation_keys", boost::property_tree::ptree()));
      return int(kOk);
    }
    if (key == "list_keys") {
      for (const auto& k : teq::platform::NativeKeyService().get(tree)) out << k << "\n";
      return int(kOk);
    }
    if (!service.isValidDocKey(tree, key)) return int(kCannotLoad);
    // The texts hang under documentation_keys with indexes left out, the
    // hardware platform documented once under its legacy root.
    std::string stripped;
    for (std::size_t i = 0; i < key.size(); ++i) {
      const auto close = key[i] == '[' ? key.find(']', i) : std::string::npos;
      if (close != std::string::npos)
        i = close;
      else
        stripped += key[i];
    }
    for (const std::string& root :
         {std::string("hardwarePlatforms.reconfigurablePartitions.hardwarePlatform"),
          NativeObjectService::getDefaultHwPlatformRootPath()})
      if (stripped.compare(0, root.size() + 1, root + ".") == 0)
        stripped = NativeObjectService::getLegacyHwPlatformRootPath() + stripped.substr(root.size());
    // Arrays of the documentation hold one element that describes them all.
    auto branch = service.getDocKeyBranch(tree, "documentation_keys");
    std::size_t start = 0;
    while (start <= stripped.size()) {
      const auto dot = std::min(stripped.find('.', start), stripped.size());
      if (!branch.empty() && branch.front().first.empty())
        branch = boost::property_tree::ptree(branch.front().second);
      const auto it = branch.find(stripped.substr(start, dot - start));
      if (it == branch.not_found()) break;
      branch = boost::property_tree::ptree(it->second);
      start = dot + 1;
    }
    if (!branch.empty() && branch.front().first.empty())
      branch = boost::property_tree::ptree(branch.front().second);
    out << (branch.empty() ? branch.data() : branch.get<std::string>("_about", "")) << "\n";
    return int(kOk);
  });
}

int runSpec(std::ostream& out, const std::string& specFile) {
  return guarded(specFile, [&](MessageCollector&) {
    requireRegularFile(specFile);
    const teq::platform::NativeTransformService service;
    if (service.getTransformSpecAsJsonStr(specFile).empty()) {
      reportError(specFile, "not a readable transform specification (a non-empty .json file)");
      return int(kCannotLoad);
    }
    out << service.getObjectsBySpec(std::string(), specFile) << "\n";
    return int(kOk);
  });
}

}  // namespace

void addServiceCommands(CLI::App& app, Commands& commands) {
  auto a = std::make_shared<Args>();
  auto* query = app.add_subcommand("query", "Print the node at PATH of the platform's document");
  query->add_option("FILE", a->file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();
  query->add_option("PATH", a->path, "Path such as hardwarePlatform.memories[0].name")->required();
  commands.push_back({query, [a](std::ostream& out) { return runQuery(out, *a); }});

  auto* keys = app.add_subcommand("keys", "List every key of the platform's document, arrays as []");
  keys->add_option("FILE", a->file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();
  keys->add_flag("--json", a->json, "Print {\"keys\": [...]}");
  commands.push_back({keys, [a](std::ostream& out) { return runKeys(out, *a); }});

  auto* dict = app.add_subcommand("dict", "Print a branch of the document as key=value lines");
  dict->add_option("FILE", a->file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();
  dict->add_option("PATH", a->path, "Branch to flatten (default: the whole document)");
  dict->add_flag("--filtered", a->filtered, "Keep only the default keys");
  dict->add_option("--key", a->keys, "Keep only this key pattern, such as files[*].name (repeatable)");
  dict->add_flag("--json", a->json, "Print one JSON object");
  commands.push_back({dict, [a](std::ostream& out) { return runDict(out, *a); }});

  auto* doc = app.add_subcommand("doc", "Print the documentation of a key (all, list_keys, or a key)");
  doc->add_option("KEY", a->path, "Key of the platform document");
  commands.push_back({doc, [a](std::ostream& out) { return runDoc(out, a->path); }});

  auto* spec = app.add_subcommand("spec", "Check a transform specification and print its number of entries");
  spec->add_option("SPECFILE", a->file, "Transform specification (.json)")->required();
  commands.push_back({spec, [a](std::ostream& out) { return runSpec(out, a->file); }});
}

}  // namespace zr_cli
