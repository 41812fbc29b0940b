#ifndef TESTS_SUPPORT_REPOBUILDER_H
#define TESTS_SUPPORT_REPOBUILDER_H

#include <string>

namespace zr_test {

// One platform of a repository built in code: a descriptor, a hardware archive
// with JSON metadata, and a software file.
struct RepoPlatform {
  std::string name;  // stem of the descriptor and its archive
  std::string vendor = "acme";
  std::string board = "card";
  int versionMajor = 1;
  int versionMinor = 0;
  // "dataCenter", "embedded", "externalHost" or "serverManaged", or several
  // joined by ',', set explicitly true (the others explicitly false); ""
  // leaves the intents out.
  std::string designIntent = "dataCenter";
  bool unified = false;
  std::string state = "impl";
  // When not empty, the archive also holds "meta.json" with this text, listed
  // as a file of type META_JSON.
  std::string metaJson;
  std::string archiveExt = ".lfa";
  // When not empty, one device "fpga0" with this part string ("arch:device:package:speed...").
  std::string part;
  std::string hostInterface;  // "pcie", "axi", or "" for none
  std::string boardPart;      // the board's "vendor:board:version", or "" for no board
  // The software file's one configuration: its runtimes attribute, and the
  // include paths of its "linux" processor group "apu".
  std::string runtimes;
  std::string includePaths;
};

// A platform with the defaults above and the given name.
inline RepoPlatform namedPlatform(const std::string& name) {
  RepoPlatform p;
  p.name = name;
  return p;
}

// Writes below `dir`: NAME/NAME.zdf, NAME/hw/NAME<ext>, NAME/sw/NAME.spfm.
// Returns the descriptor's path.
std::string writeRepoPlatform(const std::string& dir, const RepoPlatform& platform);

// A loose hardware archive at `path` (its extension picks the member name),
// with the platform's metadata; the hardware name is the platform's name.
void writeHardwareArchive(const std::string& path, const RepoPlatform& platform);

// The descriptor text naming hw/HW and sw/SW relative to its directory.
std::string repoZdfText(const std::string& hardwareFile, const std::string& softwareFile);

}  // namespace zr_test

#endif
