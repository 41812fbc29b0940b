// zr-platform: the library from the command line. Each group of subcommands
// lives in its own file (Commands.h lists them):
//
//   zr-platform json FILE     the platform's full JSON document
//   zr-platform short FILE    its short JSON document
//   zr-platform members ARCHIVE     the members of a hardware archive
//   zr-platform extract ARCHIVE MEMBER DEST
//                             copies one member out of an archive to DEST
//   zr-platform gen-sample DIR [--count N] [--scale S]
//                             writes a sample repository
//
// Exit status: 0 on success, 1 when the platform cannot be loaded, 2 on a usage
// error. Every error is one line on standard error naming the file; standard
// output carries the result alone (what the library prints for the user goes
// to standard error).

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HUTEnv.h"

namespace {

// MAJOR.MINOR, each a number that fits an int.
std::string checkToolVersion(const std::string& v) {
  const auto dot = v.find('.');
  if (dot == std::string::npos || dot == 0 || dot + 1 == v.size() ||
      v.find_first_not_of("0123456789.") != std::string::npos || v.find('.', dot + 1) != std::string::npos)
    return "expected MAJOR.MINOR";
  if (dot > 9 || v.size() - dot - 1 > 9) return "MAJOR and MINOR have at most nine digits each";
  return std::string();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{
      "Reads acceleration platforms: descriptors (.zdf), hardware archives (.cfa, .lfa) and "
      "software platforms (.spfm)."};
  app.name("zr-platform");
  app.require_subcommand(1);

  std::vector<std::string> appRoots;
  std::string tmpDir;
  unsigned long long metadataLimit = 0;
  unsigned ratioLimit = 0;
  bool ratioGiven = false;
  std::string toolVersion;
  unsigned workers = 0;
  app.add_option("--app-root", appRoots,
                 "Application root of the tool (repeatable; the first is the main one). "
                 "Default: ZR_PLATFORM_APP_ROOTS");
  app.add_option("--tmp-dir", tmpDir, "Temporary directory. Default: TMPDIR or /tmp");
  app.add_option("--metadata-limit", metadataLimit,
                 "Largest metadata member or XML document read, in bytes. Default: 64 MiB")
      ->check(CLI::Range(1ULL, 1ULL << 40));
  app.add_option_function<unsigned>(
         "--ratio-limit",
         [&](const unsigned& r) {
           ratioLimit = r;
           ratioGiven = true;
         },
         "Largest compression ratio of an archive member over 1 MiB (0: none). Default: 200")
      ->check(CLI::Range(0U, 1000000U));
  app.add_option("--tool-version", toolVersion, "Tool version as MAJOR.MINOR. Default: this build's")
      ->check(CLI::Validator([](std::string& v) { return checkToolVersion(v); }, "MAJOR.MINOR"));
  app.add_option("--workers", workers,
                 "Threads a catalog loads platforms on (1: one after the other). "
                 "Default: ZR_PLATFORM_CATALOG_WORKERS, else one per processor, at most 4")
      ->check(CLI::Range(1U, 16U));

  zr_cli::Commands commands;
  zr_cli::addPlatformCommands(app, commands);
  zr_cli::addArchiveCommands(app, commands);
  zr_cli::addSampleCommands(app, commands);
  zr_cli::addRepoCommands(app, commands);
  zr_cli::addServiceCommands(app, commands);
  zr_cli::addQueryCommands(app, commands);
  zr_cli::addWriterCommands(app, commands);
  zr_cli::addCatalogCommands(app, commands);
  zr_cli::addLabelCommands(app, commands);
  zr_cli::addEmuCommands(app, commands);

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    std::cerr << "zr-platform: " << e.what() << " (see zr-platform --help)\n";
    return zr_cli::kUsage;
  }

  HUTEnv& env = HUTEnv::instance();
  if (!appRoots.empty()) env.setAppRoots(appRoots);
  if (!tmpDir.empty()) env.setTmpDir(tmpDir);
  if (metadataLimit != 0) env.setMaxMetadataSize(metadataLimit);
  if (ratioGiven) env.setMaxCompressionRatio(ratioLimit);
  if (workers != 0) env.setCatalogWorkers(workers);
  if (!toolVersion.empty()) {
    const auto dot = toolVersion.find('.');
    env.setVersion(std::stoi(toolVersion.substr(0, dot)), std::stoi(toolVersion.substr(dot + 1)));
  }

  // From here on standard output carries the result alone.
  zr_cli::ResultOutput result;
  std::ostream& out = result.out();
  for (const auto& command : commands)
    if (command.app->parsed()) return command.run(out);
  return zr_cli::kUsage;
}
