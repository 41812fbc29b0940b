// find and platforms: the repository search and the platform registry.

#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HUTFile.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformMgr.h"
#include "platform/NativePlatformRepoService.h"

namespace zr_cli {
namespace {

struct FindOptions {
  std::vector<std::string> args;
  std::vector<std::string> dirs;
  bool noDefaults = false;
  bool path = false;
};

int runFind(std::ostream& out, const FindOptions& o) {
  teq::platform::NativePlatformRepoService service;
  if (o.path) {
    std::vector<std::string> dirs = o.dirs;
    dirs.insert(dirs.end(), o.args.begin(), o.args.end());
    out << escapeControls(service.getPlatformRepoPath(dirs, !o.noDefaults)) << "\n";
    return kOk;
  }
  if (o.args.size() != 1) {
    std::cerr << "zr-platform: find: give one NAME, or --path (see zr-platform find --help)\n";
    return kUsage;
  }
  return guarded(o.args[0], [&](MessageCollector&) {
    std::vector<std::string> files;
    service.getZdfFiles(o.args[0], o.dirs, !o.noDefaults, files);
    for (const auto& file : files) out << escapeControls(file) << "\n";
    return files.empty() ? int(kCannotLoad) : int(kOk);
  });
}

struct PlatformsOptions {
  std::vector<std::string> dirs;
  bool hardwareOnly = false;
};

int runPlatforms(std::ostream& out, const PlatformsOptions& o) {
  const std::string what = o.dirs.empty() ? std::string("default repositories") : o.dirs.front();
  return guarded(what, [&](MessageCollector&) {
    HTEQPlatformMgr mgr;
    HTEQPlatformMgr::StringVector dirs = o.dirs;
    if (dirs.empty()) mgr.getDefaultTeqPlatformDirs(dirs);
    mgr.addPlatformsFromDirs(dirs);
    HTEQPlatformMgr::StringVector errors;
    mgr.getParsingErrorMsgs(errors);
    for (const auto& text : errors) std::cerr << escapeControls(text) << "\n";
    HTEQPlatformMgr::TEQPlatformVec all;
    if (!o.hardwareOnly) mgr.getPlatforms(all);
    HTEQPlatformMgr::TEQPlatformVec hardware;
    mgr.getCFAPlatforms(hardware);
    // Both kinds are printed canonical, whatever form the directories were given in.
    auto print = [&out](const char* kind, const HTEQPlatform* p) {
      out << kind << "\t" << escapeControls(HUTFile::getCanonicalName(p->getPlatformFile())) << "\n";
    };
    for (const HTEQPlatform* p : all) print("descriptor", p);
    for (const HTEQPlatform* p : hardware) print("hardware", p);
    return all.empty() && hardware.empty() ? int(kCannotLoad) : int(kOk);
  });
}

}  // namespace

void addRepoCommands(CLI::App& app, Commands& commands) {
  auto find = std::make_shared<FindOptions>();
  auto* findCmd = app.add_subcommand("find", "Find the descriptors (.zdf) that answer to a name");
  findCmd->add_option("ARGS", find->args,
                      "NAME (a platform name or a descriptor path); with --path, directories");
  findCmd->add_option("--dir", find->dirs, "Repository to search before the defaults (repeatable)");
  findCmd->add_flag("--no-defaults", find->noDefaults, "Search only the repositories given");
  findCmd->add_flag("--path", find->path, "Print the search path instead, directories joined with ':'");
  commands.push_back({findCmd, [find](std::ostream& out) { return runFind(out, *find); }});

  auto platforms = std::make_shared<PlatformsOptions>();
  auto* platformsCmd =
      app.add_subcommand("platforms", "Register the platforms of repositories and list them with their kind");
  platformsCmd->add_option("DIR", platforms->dirs,
                           "Repository (repeatable). Default: the default repositories");
  platformsCmd->add_flag("--hardware-only", platforms->hardwareOnly,
                         "List only the platforms made from a hardware archive alone");
  commands.push_back(
      {platformsCmd, [platforms](std::ostream& out) { return runPlatforms(out, *platforms); }});
}

}  // namespace zr_cli
