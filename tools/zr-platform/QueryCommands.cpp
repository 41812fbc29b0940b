// lookup and info: the platform queries and the engine helper.

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HSTStringUtils.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformHelper.h"
#include "platform/HTEQPlatformMgr.h"
#include "platform/HTEQPlatformUtils.h"

namespace zr_cli {
namespace {

struct LookupOptions {
  std::vector<std::string> dirs;
  std::string vbnv, part, category;
  unsigned intent = 0;
  bool intentGiven = false;
  bool latest = false;
};

std::string vbnvOf(const HTEQPlatform* p) {
  const HTEQHardwarePlatform* hw = p->getHardwarePlatform();
  if (hw == nullptr) return ":::";
  return hw->getVendor() + ":" + hw->getBoardId() + ":" + hw->getName() + ":" + hw->getVersion();
}

int runLookup(std::ostream& out, const LookupOptions& o) {
  std::vector<std::string> vbnv =
      o.vbnv.empty() ? std::vector<std::string>() : HSTStringUtils::split(o.vbnv, ':');
  if (vbnv.size() > 4 || ((o.intentGiven || !o.category.empty()) && o.part.empty())) {
    std::cerr << "zr-platform: lookup: --vbnv takes at most four fields, and --intent and --category need "
                 "--part (see zr-platform lookup --help)\n";
    return kUsage;
  }
  vbnv.resize(4);
  const std::string what = o.dirs.empty() ? std::string("default repositories") : o.dirs.front();
  return guarded(what, [&](MessageCollector&) {
    // The queries ask the global manager: register the repositories there.
    HTEQPlatformMgr* mgr = HTEQPlatformMgr::getGlobalNoInit();
    HTEQPlatformMgr::StringVector dirs = o.dirs;
    if (dirs.empty()) mgr->getDefaultTeqPlatformDirs(dirs);
    mgr->addPlatformsFromDirs(dirs);
    HTEQPlatformMgr::StringVector errors;
    mgr->getParsingErrorMsgs(errors);
    for (const auto& text : errors) std::cerr << escapeControls(text) << "\n";

    HTEQPlatformUtils::TEQPlatformVec found;
    HTEQPlatformUtils::getPlatformsByVBNV(vbnv[0], vbnv[1], vbnv[2], vbnv[3], found);
    if (!o.part.empty()) {
      HTEQPlatformUtils::TEQPlatformVec byPart;
      if (o.intentGiven)
        HTEQPlatformUtils::getPlatformsByDesignIntent(o.intent, o.part, vbnv[0], vbnv[1], false, byPart);
      else
        HTEQPlatformUtils::getPlatformsByCategoryFamilyVendorAndBoard(o.category, o.part, vbnv[0], vbnv[1],
                                                                      false, byPart);
      HTEQPlatformUtils::TEQPlatformVec both;
      for (HTEQPlatform* p : found)
        if (std::find(byPart.begin(), byPart.end(), p) != byPart.end()) both.push_back(p);
      found.swap(both);
    }
    if (o.latest) HTEQPlatformUtils::filterOutOldPlatforms(found);
    for (const HTEQPlatform* p : found)
      out << escapeControls(vbnvOf(p)) << "\t" << escapeControls(p->getPlatformFile()) << "\n";
    return found.empty() ? int(kCannotLoad) : int(kOk);
  });
}

struct InfoOptions {
  std::string name;
  std::vector<std::string> repos;
};

std::string joined(const std::vector<std::string>& items) {
  std::string text;
  for (const auto& item : items) text += (text.empty() ? "" : ", ") + item;
  return text;
}

int runInfo(std::ostream& out, const InfoOptions& o) {
  return guarded(o.name, [&](MessageCollector& messages) {
    HTEQPlatformHelper helper(o.name, o.repos, {});
    if (!helper.isValid()) {
      const std::string worst = messages.worst();
      reportError(o.name, worst.empty() ? "no single readable platform answers to this name" : worst);
      return int(kCannotLoad);
    }
    HTEQPlatformHelper::StringVector names, frequencies, types, runtimes;
    helper.getAllClockFrequencies(names, frequencies);
    std::vector<std::string> clocks;
    for (std::size_t i = 0; i < names.size() && i < frequencies.size(); ++i)
      clocks.push_back(names[i] + "=" + frequencies[i]);
    helper.getUniqueMemoryTypeStrings(types);
    std::vector<std::string> memories;
    for (const auto& type : types)
      memories.push_back(type + " x" + std::to_string(helper.getMemoryTypeCount(type)));
    helper.getRuntimesByPrettyName("", runtimes);
    const std::pair<const char*, std::string> facts[] = {
        {"file", helper.getPlatformFile()},
        {"vbnv", vbnvOf(helper.getPlatform())},
        {"part", helper.getFpgaPartAsFields()},
        {"clocks", joined(clocks)},
        {"memories", joined(memories)},
        {"runtimes", joined(runtimes)},
        {"host arch", helper.getHostArch()},
        {"host interface", helper.getInterfaceDesc()},
        {"boot image", helper.hasBootImg() ? "true" : "false"},
    };
    for (const auto& fact : facts) out << fact.first << ": " << escapeControls(fact.second) << "\n";
    return int(kOk);
  });
}

}  // namespace

void addQueryCommands(CLI::App& app, Commands& commands) {
  auto lookup = std::make_shared<LookupOptions>();
  auto* lookupCmd = app.add_subcommand("lookup", "Register repositories and list the platforms that match");
  lookupCmd->add_option("DIR", lookup->dirs, "Repository (repeatable). Default: the default repositories");
  lookupCmd->add_option("--vbnv", lookup->vbnv,
                        "VENDOR:BOARD:NAME:VERSION; empty or missing fields match all");
  lookupCmd->add_option("--part", lookup->part, "Part architecture of a device of the platform");
  lookupCmd
      ->add_option_function<unsigned>(
          "--intent",
          [lookup](const unsigned& bits) {
            lookup->intent = bits;
            lookup->intentGiven = true;
          },
          "Design intents all required: 1 server managed, 2 external host, 4 embedded, 8 data center")
      ->check(CLI::Range(0U, 15U));
  lookupCmd->add_option("--category", lookup->category, "fennick or lorimar (with --part)");
  lookupCmd->add_flag("--latest", lookup->latest, "Keep only the latest version of each vendor:board:name");
  commands.push_back({lookupCmd, [lookup](std::ostream& out) { return runLookup(out, *lookup); }});

  auto info = std::make_shared<InfoOptions>();
  auto* infoCmd = app.add_subcommand("info", "Print a platform's main facts as key: value lines");
  infoCmd->add_option("NAME", info->name, "Descriptor path, or a name one descriptor answers to")->required();
  infoCmd->add_option("--repo", info->repos, "Repository to search before the defaults (repeatable)");
  commands.push_back({infoCmd, [info](std::ostream& out) { return runInfo(out, *info); }});
}

}  // namespace zr_cli
