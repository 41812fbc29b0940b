#ifndef TOOLS_ZR_PLATFORM_COMMANDS_H
#define TOOLS_ZR_PLATFORM_COMMANDS_H

// The tool's subcommands, one group per file. Each group adds its subcommands
// to the application and, for each, what it does once parsed: it writes its
// result alone to `out` and returns the exit status (ExitCode).

#include <CLI/CLI.hpp>
#include <functional>
#include <ostream>
#include <vector>

namespace zr_cli {

struct Command {
  CLI::App* app;
  std::function<int(std::ostream& out)> run;
};
using Commands = std::vector<Command>;

// json, short (PlatformCommands.cpp)
void addPlatformCommands(CLI::App& app, Commands& commands);
// members, extract (ArchiveCommands.cpp)
void addArchiveCommands(CLI::App& app, Commands& commands);
// gen-sample (SampleCommands.cpp)
void addSampleCommands(CLI::App& app, Commands& commands);
// find, platforms (RepoCommands.cpp)
void addRepoCommands(CLI::App& app, Commands& commands);
// query, keys, dict, doc, spec (ServiceCommands.cpp)
void addServiceCommands(CLI::App& app, Commands& commands);
// lookup, info (QueryCommands.cpp)
void addQueryCommands(CLI::App& app, Commands& commands);
// to-xml, emu-json, make-lfa, hdf2cfa (WriterCommands.cpp)
void addWriterCommands(CLI::App& app, Commands& commands);
// catalog, value, check, xp pack|unpack (CatalogCommands.cpp)
void addCatalogCommands(CLI::App& app, Commands& commands);
// labels, rqa show|add|extract (LabelCommands.cpp)
void addLabelCommands(CLI::App& app, Commands& commands);
// emu-props, emu-gen (EmuCommands.cpp)
void addEmuCommands(CLI::App& app, Commands& commands);

}  // namespace zr_cli

#endif
