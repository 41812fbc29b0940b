// zr-platform: the library from the command line.
//
//   zr-platform json FILE     the platform's full JSON document
//   zr-platform short FILE    its short JSON document
//
// Exit status: 0 on success, 1 when the platform cannot be loaded, 2 on a usage
// error. Every error is one line on standard error naming the file.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "CliSupport.h"
#include "host/HUTEnv.h"
#include "platform/HTEQPlatformCAPI.h"

namespace {

using zr_cli::guarded;

// Prints what one of the C entry points returns for the file.
int printJson(const std::string& file, char* (*entry)(const char*)) {
  return guarded(file, [&](zr_cli::MessageCollector& messages) {
    std::unique_ptr<char[], void (*)(char*)> text(entry(file.c_str()), hteq_free_json_string);
    if (!text) {
      const std::string reason = messages.worst();
      zr_cli::reportError(file, reason.empty() ? "the platform cannot be loaded" : reason);
      return int(zr_cli::kCannotLoad);
    }
    std::cout << text.get();
    return int(zr_cli::kOk);
  });
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"Reads acceleration platforms: descriptors (.zdf), hardware archives (.cfa, .lfa) and "
               "software platforms (.spfm)."};
  app.name("zr-platform");
  app.require_subcommand(1);

  std::vector<std::string> appRoots;
  std::string tmpDir;
  std::string toolVersion;
  app.add_option("--app-root", appRoots,
                 "Application root of the tool (repeatable; the first is the main one). "
                 "Default: ZR_PLATFORM_APP_ROOTS");
  app.add_option("--tmp-dir", tmpDir, "Temporary directory. Default: TMPDIR or /tmp");
  app.add_option("--tool-version", toolVersion, "Tool version as MAJOR.MINOR. Default: this build's")
      ->check(CLI::Validator(
          [](std::string& v) {
            const auto dot = v.find('.');
            if (dot == std::string::npos || dot == 0 || dot + 1 == v.size() ||
                v.find_first_not_of("0123456789.") != std::string::npos || v.find('.', dot + 1) != std::string::npos)
              return std::string("expected MAJOR.MINOR");
            return std::string();
          },
          "MAJOR.MINOR"));

  std::string file;
  auto* json = app.add_subcommand("json", "Print the platform's full JSON document");
  json->add_option("FILE", file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();
  auto* shortCmd = app.add_subcommand("short", "Print the platform's short JSON document");
  shortCmd->add_option("FILE", file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();

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
  if (!toolVersion.empty()) {
    const auto dot = toolVersion.find('.');
    env.setVersion(std::stoi(toolVersion.substr(0, dot)), std::stoi(toolVersion.substr(dot + 1)));
  }

  if (json->parsed()) return printJson(file, hteq_get_platform_json);
  if (shortCmd->parsed()) return printJson(file, hteq_get_short_platform_json);
  return zr_cli::kUsage;
}
