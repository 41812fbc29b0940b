// emu-props: the emulation property script of a hardware archive. emu-gen:
// the whole emulation platform generator over an installation.

#include <memory>
#include <string>

#include "CliSupport.h"
#include "Commands.h"
#include "host/JunTclTasks.h"
#include "platform/HTEQEmulationUtils.h"

namespace zr_cli {

void addEmuCommands(CLI::App& app, Commands& commands) {
  auto archive = std::make_shared<std::string>();
  auto name = std::make_shared<std::string>();
  auto dr = std::make_shared<bool>(false);
  auto* props = app.add_subcommand(
      "emu-props", "Print the emulation property script (Tcl) of a .cfa archive; needs no installation");
  props->add_option("ARCHIVE", *archive, "Hardware archive (.cfa, XML metadata)")->required();
  props->add_option("NAME", *name, "Name of the platform's property file in the installation")->required();
  props->add_flag("--dr", *dr, "Dynamic-region layout (adds dr_bd_name)");
  commands.push_back({props, [archive, name, dr](std::ostream& out) {
                        return guarded(*archive, [&](MessageCollector& messages) {
                          requireRegularFile(*archive);
                          if (!HTEQEmulationUtils::printEmuPropDict(*archive, *name, *dr, out)) {
                            reportError(*archive, messages.worst());
                            return int(kCannotLoad);
                          }
                          return int(kOk);
                        });
                      }});

  auto outDir = std::make_shared<std::string>();
  auto seconds = std::make_shared<unsigned long>(3600);
  auto* gen = app.add_subcommand(
      "emu-gen",
      "Run the emulation platform generator on a .cfa archive (needs TORVANE_MORWEN, the installation root). "
      "Without --out the archive gains the overlay; the overlay directory goes to standard output");
  gen->add_option("ARCHIVE", *archive, "Hardware archive (.cfa, XML metadata)")->required();
  gen->add_option("NAME", *name, "Name of the platform's property file in the installation")->required();
  gen->add_option("--out", *outDir, "Output directory; the archive is left unchanged");
  gen->add_option("--time-limit", *seconds, "Longest time the build scripts may run, in seconds (0: none)")
      ->check(CLI::Range(0UL, 7UL * 24 * 3600));
  commands.push_back({gen, [archive, name, outDir, seconds](std::ostream& out) {
                        return guarded(*archive, [&](MessageCollector& messages) {
                          requireRegularFile(*archive);
                          jun::tcltasks::task_manager::setTimeLimit(*seconds * 1000);
                          if (!HTEQEmulationUtils::generateCfaEmu(*archive, *name, *outDir)) {
                            reportError(*archive, messages.worst());
                            return int(kCannotLoad);
                          }
                          out << (outDir->empty() ? std::string("overlay") : *outDir + "/overlay") << "\n";
                          return int(kOk);
                        });
                      }});
}

}  // namespace zr_cli
