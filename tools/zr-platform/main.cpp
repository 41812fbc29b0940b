// zr-platform: the library from the command line.
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
#include <memory>
#include <string>
#include <vector>

#include "CliSupport.h"
#include "SampleGenerator.h"
#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "platform/HTEQPlatformCAPI.h"
#include "platform/PlatformLoader.h"

namespace {

using zr_cli::guarded;

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
  return guarded(file, [&](zr_cli::MessageCollector& messages) {
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
  std::string toolVersion;
  app.add_option("--app-root", appRoots,
                 "Application root of the tool (repeatable; the first is the main one). "
                 "Default: ZR_PLATFORM_APP_ROOTS");
  app.add_option("--tmp-dir", tmpDir, "Temporary directory. Default: TMPDIR or /tmp");
  app.add_option("--tool-version", toolVersion, "Tool version as MAJOR.MINOR. Default: this build's")
      ->check(CLI::Validator([](std::string& v) { return checkToolVersion(v); }, "MAJOR.MINOR"));

  std::string file;
  auto* json = app.add_subcommand("json", "Print the platform's full JSON document");
  json->add_option("FILE", file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();
  auto* shortCmd = app.add_subcommand("short", "Print the platform's short JSON document");
  shortCmd->add_option("FILE", file, "Platform file (.zdf, .cfa, .lfa or .spfm)")->required();

  std::string archive, member, dest;
  auto* members = app.add_subcommand("members", "List the members of a hardware archive");
  members->add_option("ARCHIVE", archive, "Hardware archive (.cfa or .lfa)")->required();
  auto* extract = app.add_subcommand("extract", "Copy one member of a hardware archive out to a file");
  extract->add_option("ARCHIVE", archive, "Hardware archive (.cfa or .lfa)")->required();
  extract->add_option("MEMBER", member, "Member name, as `members` lists it")->required();
  extract->add_option("DEST", dest, "File to write, or an existing directory to write MEMBER below")
      ->required();

  std::string sampleDir;
  zr_cli::SampleOptions sample;
  auto* genSample = app.add_subcommand("gen-sample", "Write a sample repository of platforms");
  genSample->add_option("DIR", sampleDir, "Directory to write into (made when missing)")->required();
  genSample->add_option("--count", sample.count, "Number of platforms (the first five are one of each kind)")
      ->check(CLI::Range(1, 100000));
  genSample->add_option("--scale", sample.scale, "Size of each platform's metadata (1: about 430 KB)")
      ->check(CLI::Range(0.01, 1000.0));

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

  // From here on standard output carries the result alone.
  zr_cli::ResultOutput result;
  std::ostream& out = result.out();
  if (json->parsed()) return printJson(out, file, hteq_get_platform_json);
  if (shortCmd->parsed()) return printJson(out, file, hteq_get_short_platform_json);
  if (members->parsed()) {
    return guarded(archive, [&](zr_cli::MessageCollector&) {
      zr_cli::requireRegularFile(archive);
      for (const auto& name : HUTZip::getFiles(archive)) out << zr_cli::escapeControls(name) << "\n";
      return int(zr_cli::kOk);
    });
  }
  if (extract->parsed()) {
    return guarded(archive, [&](zr_cli::MessageCollector&) {
      zr_cli::requireRegularFile(archive);
      // Into a directory the member keeps its path; the archive layer refuses
      // a name that would leave the directory. A failure to write throws.
      const bool ok = HUTFile::isDir(dest) ? HUTZip::uncompress(archive, member, dest, true)
                                           : HUTZip::extractMember(archive, member, dest);
      if (!ok) {
        zr_cli::reportError(archive, "no member '" + member + "'");
        return int(zr_cli::kCannotLoad);
      }
      return int(zr_cli::kOk);
    });
  }
  if (genSample->parsed()) {
    return guarded(sampleDir, [&](zr_cli::MessageCollector&) {
      for (const auto& written : zr_cli::generateSample(sampleDir, sample)) out << written << "\n";
      return int(zr_cli::kOk);
    });
  }
  return zr_cli::kUsage;
}
