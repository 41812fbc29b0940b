#ifndef TESTS_EMU_EMUINSTALLSUPPORT_H
#define TESTS_EMU_EMUINSTALLSUPPORT_H

// A fake installation for the emulation platform generator: the build
// scripts it sources (memss/run.tcl, streaming/run.tcl and their
// emu_platform_build/ copies) and the default property file. The scripts
// define the procedures and tool commands the driver calls; emu_bd_gen
// appends the flow's name to flow.txt, makes the block designs the
// configuration names and then runs `hook`, so that a test can make the build
// fail in a chosen way.

#include <unistd.h>

#include <string>

#include "support/TestSupport.h"

namespace emu_test {

inline std::string runTcl(const std::string& flow, const std::string& hook) {
  return R"(proc pre_sys_link_gen {file} { set f [open $file w]; puts $f "set ::emu_pre_linked 1"; close $f }
proc post_sys_link_gen {file} { set f [open $file w]; puts $f "# post"; close $f }
proc emu_bd_gen {} {
  set f [open flow.txt a]; puts $f )" +
         flow + R"(; close $f
  set proj [dict get $config::config_info project_name]
  set bd $proj/$proj.srcs/sources_1/bd
  set names [list [dict get $config::config_info bd_name]]
  if {[dict exists $config::config_info dr_bd_name]} { lappend names [dict get $config::config_info dr_bd_name] }
  foreach name $names { file mkdir $bd/$name; set f [open $bd/$name/$name.bd w]; puts $f bd; close $f }
  )" + hook +
         R"(
}
proc emu_hpfm_gen {file} { set f [open $file w]; puts $f hpfm; close $f }
proc get_projects {args} { return [list [dict get $config::config_info project_name]] }
proc save_bd_design {} { lappend ::emu_calls save_bd_design }
proc current_project {name} { lappend ::emu_calls current_project }
proc close_project {} { lappend ::emu_calls close_project }
)";
}

// Writes the installation below `root` (the value TORVANE_MORWEN takes).
inline void writeInstallation(const zr_test::TempDir& root, const std::string& hook = "",
                              const std::string& defaultProps = R"({"SystemClocks": {"clk_main": "300"}})") {
  for (const std::string level : {"", "emu_platform_build/"}) {
    const std::string scripts = "data/emulation/hw_em/scripts/" + level;
    root.write(scripts + "memss/run.tcl", runTcl("memss", hook));
    root.write(scripts + "streaming/run.tcl", runTcl("streaming", hook));
    root.write(scripts + "platform_config/default_prop.json", defaultProps);
  }
}

// Makes `dir` the current directory for the life of the object.
class ScopedCwd {
 public:
  explicit ScopedCwd(const std::string& dir) {
    char buffer[4096];
    old_ = ::getcwd(buffer, sizeof buffer) != nullptr ? buffer : "/";
    if (::chdir(dir.c_str()) != 0) throw std::runtime_error("cannot enter " + dir);
  }
  ~ScopedCwd() {
    if (::chdir(old_.c_str()) != 0) std::abort();
  }
  ScopedCwd(const ScopedCwd&) = delete;
  ScopedCwd& operator=(const ScopedCwd&) = delete;

 private:
  std::string old_;
};

}  // namespace emu_test

#endif
