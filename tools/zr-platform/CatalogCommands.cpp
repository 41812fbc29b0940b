// catalog, value, check, xp pack|unpack: the catalog report, the support
// policy's verdict, and the packed form of the support exception list.

#include <unistd.h>

#include <cstddef>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HEXAll.h"
#include "host/IslXp.h"
#include "platform/NativeCatalogService.h"

namespace zr_cli {
namespace {

using teq::platform::NativeCatalogService;

// Catalogs of more platforms than this show a progress line.
constexpr std::size_t kProgressFrom = 300;

struct Args {
  std::vector<std::string> dirs;
  bool brief = false;
  std::string file;
  std::string key;
  std::string product;
  bool preSynth = false;
  bool open = false;
  std::string in;
  std::string out;
};

int runCatalog(std::ostream& out, const Args& a) {
  return guarded(a.dirs.empty() ? std::string("catalog") : a.dirs.front(), [&](MessageCollector&) {
    std::string pathList;
    for (const std::string& dir : a.dirs) pathList += (pathList.empty() ? "" : ":") + dir;
    NativeCatalogService::Progress progress;
    // A long scan shows how far it got, on a terminal only.
    if (::isatty(STDERR_FILENO) == 1) {
      progress = [](std::size_t done, std::size_t total) {
        if (total <= kProgressFrom) return;
        std::cerr << "\rcatalog: " << done << "/" << total << " platforms" << (done == total ? "\n" : "")
                  << std::flush;
      };
    }
    out << NativeCatalogService().getAllAsJsonStr(pathList, !a.brief, progress);
    return int(kOk);
  });
}

int runValue(std::ostream& out, const Args& a) {
  return guarded(a.file, [&](MessageCollector&) {
    requireRegularFile(a.file);
    out << NativeCatalogService().getValue(a.file, a.key) << "\n";
    return int(kOk);
  });
}

int runCheck(std::ostream& out, const Args& a) {
  return guarded(a.file, [&](MessageCollector&) {
    requireRegularFile(a.file);
    const NativeCatalogService service;
    std::string reason;
    bool supported = false;
    if (a.preSynth) {
      supported = service.isPreSynthPlatformSupported(a.file, reason);
    } else if (a.open) {
      supported = service.canCfaBeOpened(a.file, reason);
    } else {
      supported = service.isUnderWarranty(a.file, reason, a.product);
    }
    out << (supported ? "supported" : "not supported") << "\n";
    if (!reason.empty()) out << reason << "\n";
    return int(kOk);
  });
}

std::string readRegular(const std::string& path) {
  requireRegularFile(path);
  std::ifstream in(path, std::ios::binary);
  if (!in) throw HEXUserException("cannot be read");
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

int runPack(const Args& a) {
  return guarded(a.in, [&](MessageCollector&) {
    isl::iostreams::xp::write_file(a.out, readRegular(a.in));
    return int(kOk);
  });
}

int runUnpack(const Args& a) {
  return guarded(a.in, [&](MessageCollector&) {
    requireRegularFile(a.in);
    if (!isl::iostreams::xp::is_xp_format(a.in)) throw HEXUserException("not in the packed form");
    const std::string data = isl::iostreams::xp::read_file(a.in);
    std::ofstream file(a.out, std::ios::binary | std::ios::trunc);
    if (!(file << data) || !file.flush()) throw HEXUserException("cannot write " + a.out);
    return int(kOk);
  });
}

}  // namespace

void addCatalogCommands(CLI::App& app, Commands& commands) {
  auto a = std::make_shared<Args>();

  auto* catalog = app.add_subcommand("catalog", "Print the catalog report of every platform found");
  catalog->add_option("DIR", a->dirs, "Repository to search (default: the default search path)");
  catalog->add_flag("--short", a->brief, "Only the ten keys of the short report");
  commands.push_back({catalog, [a](std::ostream& out) { return runCatalog(out, *a); }});

  auto* value = app.add_subcommand("value", "Print one key of the platform's detailed catalog report");
  value->add_option("FILE", a->file, "Platform descriptor (.zdf)")->required();
  value->add_option("KEY", a->key, "Key path such as partArchitecture")->required();
  commands.push_back({value, [a](std::ostream& out) { return runValue(out, *a); }});

  auto* check = app.add_subcommand("check", "Say whether this tool release supports the platform, and why");
  check->add_option("FILE", a->file, "Platform descriptor (.zdf)")->required();
  check->add_option("--product", a->product, "Product name to set before the check");
  auto* pre = check->add_flag("--pre-synth", a->preSynth, "Check support of a pre-synthesis platform");
  auto* open = check->add_flag("--open", a->open, "Check whether the hardware platform may be opened");
  pre->excludes(open);
  commands.push_back({check, [a](std::ostream& out) { return runCheck(out, *a); }});

  auto* xp = app.add_subcommand("xp", "Pack or unpack a data file in the packed form");
  xp->require_subcommand(1);
  auto* pack = xp->add_subcommand("pack", "Pack IN into OUT");
  pack->add_option("IN", a->in, "File to pack")->required();
  pack->add_option("OUT", a->out, "Packed file to write")->required();
  commands.push_back({pack, [a](std::ostream&) { return runPack(*a); }});
  auto* unpack = xp->add_subcommand("unpack", "Unpack IN into OUT");
  unpack->add_option("IN", a->in, "Packed file")->required();
  unpack->add_option("OUT", a->out, "File to write")->required();
  commands.push_back({unpack, [a](std::ostream&) { return runUnpack(*a); }});
}

}  // namespace zr_cli
