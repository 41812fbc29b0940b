#include <gtest/gtest.h>

#include <sstream>

#include "host/HEXAll.h"
#include "host/JunTclTasks.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQEmulationUtils.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "support/TestSupport.h"

using zr_test::ScopedEnvVar;
using zr_test::TempDir;
using Utils = HTEQEmulationUtils;

namespace {

std::string eval(const std::string& command) {
  return jun::tcltasks::task_manager::instance().eval_in_tcl(command, false, true);
}

// The driver as the generator writes it, with the installation at /inst.
const char* const kDriver = R"(proc emu_update_cfa { } { 
  source hw_emu_prop/hw_emu_prop.tcl
  emu_prop_gen 

  set isStreaming [dict get $config::config_info UseStreaming]
  if { [string tolower $isStreaming] eq "true"} {
    source /inst/data/emulation/hw_em/scripts/streaming/run.tcl
  } else {
    source /inst/data/emulation/hw_em/scripts/memss/run.tcl
  }
  pre_sys_link_gen "pre.tcl" 
  post_sys_link_gen "post.tcl" 
  source pre.tcl

  emu_bd_gen 

  set shell_name [dict get $config::config_info cfa_name]
  emu_hpfm_gen ${shell_name}_emu.hpfm 

  set overlay_dir overlay
  file delete -force $overlay_dir
  file mkdir $overlay_dir
  set projName            [dict get $config::config_info project_name]
  set bdName              [dict get $config::config_info bd_name]
  set cfaPath             [dict get $config::config_info cfa_name]
  set cfaName             [file tail $cfaPath]
  set platformName        [lindex [split $cfaName .] 0]
  set ipRepos             [dict get $config::config_info ip_repo_paths] 

  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir
  if {$ipRepos ne ""} {
    file copy -force $ipRepos  $overlay_dir/$bdName/user_ip_repo
  }
  file copy -force "pre.tcl" $overlay_dir/$bdName
  file copy -force "post.tcl" $overlay_dir/$bdName
  file rename -force ${shell_name}_emu.hpfm  $overlay_dir/$bdName

  set list_projs [get_projects -quiet]
  if { [lsearch -exact -inline $list_projs $projName] eq $projName } {
    save_bd_design
    current_project $projName
    close_project
  }
}

set status [catch { emu_update_cfa } msg ]
if {$status != 0} { 
  puts "Updating CFA with emulation files was unsuccessful, message: '${msg}'"
  exit 0
}
)";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

TEST(EmuGenerator, DriverTextWithAndWithoutDynamicRegion) {
  ScopedEnvVar install("TORVANE_MORWEN", "/inst");
  std::ostringstream plain, dr;
  Utils::writeEmuUpdateCfa(plain, "hw_emu_prop/hw_emu_prop.tcl", "overlay", "p_emu.hpfm", "pre.tcl",
                           "post.tcl", false);
  EXPECT_EQ(plain.str(), kDriver);
  Utils::writeEmuUpdateCfa(dr, "hw_emu_prop/hw_emu_prop.tcl", "overlay", "p_emu.hpfm", "pre.tcl", "post.tcl",
                           true);
  std::string expected = kDriver;
  for (const char* flow : {"streaming", "memss"})
    expected =
        replaced(expected, std::string("scripts/") + flow, std::string("scripts/emu_platform_build/") + flow);
  expected = replaced(expected, "  set cfaPath",
                      "  set drBdName            [dict get $config::config_info dr_bd_name]\n  set cfaPath");
  expected =
      replaced(expected, "  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir\n",
               "  file mkdir $overlay_dir/$bdName/\n"
               "  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir/$bdName/\n"
               "  file copy -force  $projName/$projName.srcs/sources_1/bd/$drBdName $overlay_dir/$bdName/\n");
  EXPECT_EQ(dr.str(), expected);
}

// A platform with a board, a feature ROM and one DDR interface of two segments.
struct SmallModel {
  HPLPlatform platform;
  SmallModel() {
    platform.getBoard().setName("brd");
    platform.getBoard().setPart("pz250");
    HTEQHardwareFeatureRom* rom = platform.addFeatureRom();
    for (unsigned i = 0; i < 4; ++i) rom->setCDMABaseAddress(i, i == 0 ? 0x12345678u : i == 1 ? 0u : 0x100u);
    HTEQHardwareBusInterface* ddr = platform.addBusInterface();
    ddr->setSPTag("DDR");
    HTEQHardwareAddressSegment* s0 = ddr->addAddressSegment();
    s0->setSpTag("DDR[0]");
    s0->setAuto("true");
    s0->setSlr("SLR0");
    s0->setMaxMasters(15);
    ddr->addAddressSegment()->setIndex(1);  // no tag, no SLR
    platform.addBusInterface()->setSPTag("HBM");
  }
};

class EmuProps : public ::testing::Test {
 protected:
  // The property script of the small model; the three sources as given.
  std::string script(const std::string& defaults, const std::string& prop, const std::string& user, bool isDr,
                     int* flow = nullptr, std::string* custom = nullptr) {
    Utils::PropertySources sources{dir_.write("d.json", defaults), dir_.write("p.json", prop),
                                   dir_.write("u.json", user), "/repo/boards", "v:b:n:1"};
    std::ostringstream out;
    std::string customPath;
    const int kind = Utils::writeEmuPropertiesDict(&model_.platform, sources, out, "plat", isDr, customPath);
    if (flow) *flow = kind;
    if (custom) *custom = customPath;
    return out.str();
  }
  TempDir dir_;
  SmallModel model_;
};

TEST_F(EmuProps, ScriptFiltersOverridesAndQuotes) {
  const std::string text =
      script(R"({"DdrBanks": [{"bank": "1", "AS_LATENCY": "9", "SIZE": "4G"}, {"bank": "0", "SIZE": "old"}],
                 "DesignIpInstances": [{"SP_TAG": "MEMSS", "VLNV": "v:l:m:1",
                                        "Configuration": {"C_BASEADDR": "0", "WIDTH": "64 bit"}},
                                       {"VLNV": "v:l:n:1", "Configuration": {"K": "1"}}],
                 "SystemClocks": {"CPU": "100", "clk a": "300"},
                 "Tool": "old", "Empty": "", "Nested": {"x": "y"}})",
             R"({"DdrBanks": [{"bank": "0", "SIZE": "8G"}], "Tool": "mid", "UserIpRepoPath": "/ip repo"})",
             R"({"Tool": "new [x]"})", false);
  EXPECT_EQ(text, R"(proc emu_prop_gen { } { 
namespace eval config {
 set qlinkConfig [dict create] 
 set boardMemories {}
 dict set boardMemories_0 SIZE 8G
 lappend boardMemories $boardMemories_0
 dict set boardMemories_1 SIZE 4G
 lappend boardMemories $boardMemories_1
 dict set instance0 WIDTH {64 bit}
 dict set instanceConfig MEMSS $instance0
 dict set instance1 K {1}
 dict set instanceConfig v:l:n:1 $instance1
 set clk_info [dict create]
 dict set clk_info "clk a" 300
 set board_repo_paths {}
 lappend board_repo_paths "/repo/boards"
 set feature_map_info [dict create]
 dict set feature_map_info Cdma_Base_Address0 0x12345678
 dict set feature_map_info Cdma_Base_Address1 0x
 dict set feature_map_info Cdma_Base_Address2 0x100
 dict set feature_map_info Cdma_Base_Address3 0x100
 set memoryTags [dict create]
 set memories {}
 set DDR_0__0 [dict create]
 dict set DDR_0__0 index 0
 dict set DDR_0__0 auto  true
 dict set DDR_0__0 sptag  {DDR[0]}
 dict set DDR_0__0 slr  SLR0
 dict set DDR_0__0 max_masters  15
 lappend memories $DDR_0__0
 dict set memoryTags {DDR[0]} $DDR_0__0
 set _1 [dict create]
 dict set _1 index 1
 dict set _1 auto  ""
 dict set _1 sptag  ""
 dict set _1 slr  ""
 dict set _1 max_masters  0
 lappend memories $_1
 dict set memoryTags "" $_1
 set config_info [dict create]
 dict set config_info project_name         "project_unified_plat"
 dict set config_info board_repo_paths     $board_repo_paths
 dict set config_info board_part           "pz250"
 dict set config_info board_name           "brd"
 dict set config_info board_memories       $boardMemories 
 dict set config_info project_part         "pz250"
 dict set config_info bd_name              "emu" 
 dict set config_info cfa_name             "plat"
 dict set config_info platform_unique_name "v:b:n:1"
 dict set config_info qlink_config          $qlinkConfig 
 dict set config_info memory_tags          $memoryTags
 dict set config_info Tool {new [x]}
 dict set config_info UserIpRepoPath {/ip repo}
} 
 set ip_repo_paths {}
 lappend ip_repo_paths "/ip repo"
 dict set config::config_info ip_repo_paths  $ip_repo_paths
 dict set config::config_info UseStreaming    false
} 
)");
  const std::string dr = script("{}", "{}", "{}", true);
  EXPECT_EQ(zr_test::countOf(dr, "dr_bd_name           \"pfm_dynamic\""), 1u);
}

TEST_F(EmuProps, FlowKindFollowsTheProperties) {
  struct Case {
    const char* props;
    int flow;
    const char* custom;
    bool falseLine;
  } cases[] = {
      {"{}", Utils::FLOW_NONE, "", true},
      {R"({"UseStreaming": "True"})", Utils::FLOW_STREAMING, "", false},
      {R"({"UseStreaming": "true", "UseTeqMemss": "true"})", Utils::FLOW_MEMSS, "", false},
      {R"({"UseTeqMemss": "true", "CustomScriptPath": "/s.tcl"})", Utils::FLOW_CUSTOM, "/s.tcl", true},
  };
  for (const Case& c : cases) {
    int flow = -1;
    std::string custom;
    const std::string text = script("{}", "{}", c.props, false, &flow, &custom);
    EXPECT_EQ(flow, c.flow) << c.props;
    EXPECT_EQ(custom, c.custom) << c.props;
    EXPECT_EQ(zr_test::countOf(text, "UseStreaming    false"), c.falseLine ? 1u : 0u) << c.props;
  }
  EXPECT_THROW(script("{", "{}", "{}", false), HEXDataException);
  EXPECT_THROW(script(R"({"DdrBanks": [{"bank": "x"}]})", "{}", "{}", false), HEXDataException);
}

TEST_F(EmuProps, ScriptReadsBackInTcl) {
  model_.platform.getBoard().setName("my board $HOME");
  const std::string text = script("{}", "{}", R"({"Note": "a b; [exit 7]", "x$y{": "}{"})", false);
  dir_.write("props.tcl", text);
  eval("source " + Utils::tclWord(dir_.file("props.tcl")) + "; emu_prop_gen");
  EXPECT_EQ(eval("dict get $config::config_info board_name"), "my board $HOME");
  EXPECT_EQ(eval("dict get $config::config_info Note"), "a b; [exit 7]");
  EXPECT_EQ(eval("dict get $config::config_info x\\$y\\{"), "}{");
  EXPECT_EQ(eval("dict get [dict get $config::config_info memory_tags] DDR\\[0\\] slr"), "SLR0");
  EXPECT_EQ(eval("dict get $config::config_info cfa_name"), "plat");
  for (const std::string value : {"", "plain", "a b", "{", "}{", "a\\", "#x", "a\nb", "$x[y]", "\"q\""})
    EXPECT_EQ(eval("set v " + Utils::tclWord(value)), value);
  EXPECT_EQ(Utils::tclVarName("DDR[0] x-y"), "DDR_0__x_y");
}

}  // namespace
