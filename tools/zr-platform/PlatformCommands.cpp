// json and short: a platform's JSON documents, as the C entry points give them.

#include <memory>
#include <string>

#include "CliSupport.h"
#include "Commands.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HTEQPlatformCAPI.h"
#include "platform/PlatformLoader.h"

namespace zr_cli {
namespace {

bool isArchivePath(const std::string& file) {
  const auto dot = file.rfind('.');
  const std::string ext = dot == std::string::npos ? std::string() : file.substr(dot);
  return ext == ".cfa" || ext == ".lfa";
}

// Throws when a hardware archive is not one: reading it as a platform would
// only report its metadata as an empty document.
void requireArchive(const std::string& file) {
  zr_cli::requireRegularFile(file);
  HUTZip::getFiles(file);
}

// Why the hardware archive a descriptor names cannot be read, or "" when it
// can be or when the descriptor itself cannot be read.
std::string archiveProblemOf(const std::string& descriptor) {
  try {
    teq_platform::PlatformLoader loader(descriptor, teq_platform::PlatformLoader::Default);
    const std::string archive = loader.getHardwarePlatformFile();
    if (archive.empty() || !HUTFile::exists(archive)) return std::string();
    try {
      requireArchive(archive);
    } catch (const HEXAll& e) {
      return "hardware platform '" + archive + "': " + e.getText();
    }
  } catch (...) {
  }
  return std::string();
}

// Prints what one of the C entry points returns for the file.
int printJson(std::ostream& out, const std::string& file, char* (*entry)(const char*)) {
  return zr_cli::guarded(file, [&](zr_cli::MessageCollector& messages) {
    zr_cli::requireRegularFile(file);
    if (isArchivePath(file)) requireArchive(file);
    std::unique_ptr<char[], void (*)(char*)> text(entry(file.c_str()), hteq_free_json_string);
    if (!text) {
      // A descriptor that was read names an archive that may be no archive:
      // that is the reason to give, not the empty metadata it leads to.
      std::string reason = messages.worst();
      if (!isArchivePath(file) && reason.find("[@74-9@]") == std::string::npos) {
        const std::string problem = archiveProblemOf(file);
        if (!problem.empty()) reason = problem;
      }
      zr_cli::reportError(file, reason.empty() ? "the platform cannot be loaded" : reason);
      return int(zr_cli::kCannotLoad);
    }
    out << text.get() << std::flush;
    return int(zr_cli::kOk);
  });
}

}  // namespace

void addPlatformCommands(CLI::App& app, Commands& commands) {
  auto file = std::make_shared<std::string>();
  auto* json = app.add_subcommand("json", "Print the platform's full JSON document");
  json->add_option("FILE", *file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();
  commands.push_back(
      {json, [file](std::ostream& out) { return printJson(out, *file, hteq_get_platform_json); }});
  auto* shortCmd = app.add_subcommand("short", "Print the platform's short JSON document");
  shortCmd->add_option("FILE", *file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();
  commands.push_back(
      {shortCmd, [file](std::ostream& out) { return printJson(out, *file, hteq_get_short_platform_json); }});
}

}  // namespace zr_cli
