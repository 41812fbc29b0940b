#include <gtest/gtest.h>
#include <sys/stat.h>

#include <set>

#include "emulation/EmuInstallSupport.h"
#include "emulation/EmuTestSupport.h"
#include "formats/CfaXmlReaderTestSupport.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "host/JunTclTasks.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationUtils.h"
#include "platform/HTEQEmulationXMLReader.h"
#include "platform/HTEQEmulations.h"
#include "support/ZipTestSupport.h"

using emu_test::ScopedCwd;
using zr_test::readFile;
using zr_test::ScopedEnvVar;
using zr_test::TempDir;
using Utils = HTEQEmulationUtils;

namespace {

// The Tcl calls the fake tool commands recorded, reset for the next run.
std::string eval_in_tcl_calls() {
  return jun::tcltasks::task_manager::instance().eval_in_tcl(
      "set c [expr {[info exists ::emu_calls] ? $::emu_calls : {}}]; set ::emu_calls {}; set c", false, true);
}

// A fake installation, a fresh working directory and a small .cfa archive
// whose emulation metadata lists a property file.
class EmuRun : public ::testing::Test {
 protected:
  explicit EmuRun(const std::string& hook = "", const std::string& props = "{}")
      : install_("TORVANE_MORWEN", root_.path().c_str()), cwd_(work_.path()) {
    emu_test::writeInstallation(root_, hook);
    archive_ = cfa_test::makeArchive(data_, cfa_test::CfaDoc().text(),
                                     {{"emu/emu.xml", emu_test::xmlDocument(emu_test::xmlEmulation(
                                                          "e", {{"PROP_JSON", "emu/prop.json"}}))},
                                      {"emu/prop.json", props},
                                      {"keep.txt", "kept"}},
                                     "plat.v1.cfa");
    original_ = readFile(archive_);
    eval_in_tcl_calls();
  }

  // The files emu.xml in the directory names, each checked to exist there.
  std::vector<std::string> describedFiles(const std::string& emuDir) {
    HTEQEmulations model;
    HTEQEmulationXMLReader(emuDir + "/emu.xml", &model).parseXml();
    std::vector<std::string> names;
    for (const HTEQEmulationFile* f : model.getEmulations()[0]->getFiles()) {
      names.push_back(f->getType() + ":" + f->getName());
      EXPECT_TRUE(HUTFile::isFile(emuDir + "/" + f->getName())) << f->getName();
    }
    return names;
  }

  TempDir root_, work_, data_;
  ScopedEnvVar install_;
  ScopedCwd cwd_;
  std::string archive_, original_;
};

TEST_F(EmuRun, MemssRunMergesTheOverlayIntoTheArchive) {
  for (int run = 0; run < 2; ++run) {
    ASSERT_TRUE(Utils::generateCfaEmu(archive_, "plat", "")) << run;
    EXPECT_EQ(readFile("flow.txt"), run == 0 ? "memss\n" : "memss\nmemss\n");
  }
  EXPECT_EQ(describedFiles("overlay/emu"),
            (std::vector<std::string>{"EMU_DR_BD:emu.bd", "EMU_HPFM:plat.v1_emu.hpfm",
                                      "POST_SYS_LINK_TCL:dynamic_post_sys_link.tcl",
                                      "PRE_SYS_LINK_TCL:dynamic_pre_sys_link.tcl"}));
  EXPECT_EQ(eval_in_tcl_calls(),
            "save_bd_design current_project close_project save_bd_design current_project close_project");
  EXPECT_FALSE(HUTFile::exists("temp_prop.json"));
  EXPECT_TRUE(HUTFile::isFile("emu_update_cfa.tcl"));

  std::vector<std::string> members = HUTZip::getFiles(archive_);
  std::set<std::string> unique(members.begin(), members.end());
  EXPECT_EQ(unique.size(), members.size()) << "a second run replaces, never duplicates";
  for (const char* f : {"overlay/emu/emu.xml", "overlay/emu/emu.bd", "overlay/emu/plat.v1_emu.hpfm",
                        "overlay/emu/dynamic_pre_sys_link.tcl", "overlay/emu/dynamic_post_sys_link.tcl",
                        "keep.txt", "emu/prop.json", "cfa.xml"})
    EXPECT_TRUE(unique.count(f)) << f;
  EXPECT_EQ(HUTZip::verifyDigest(archive_), HUTZip::DIGEST_VALID);
}

class StreamingRun : public EmuRun {
 protected:
  StreamingRun() : EmuRun("", R"({"UseStreaming": "true"})") {}
};

TEST_F(StreamingRun, OutputDirectoryLeavesTheArchiveAlone) {
  ASSERT_TRUE(Utils::generateCfaEmu(archive_, "plat", "out"));
  EXPECT_EQ(readFile("flow.txt"), "streaming\n");
  EXPECT_TRUE(HUTFile::isFile("out/hw_emu_prop/hw_emu_prop.tcl"));
  EXPECT_EQ(describedFiles("out/overlay/emu").size(), 4u);
  EXPECT_FALSE(HUTFile::exists("overlay"));
  EXPECT_FALSE(HUTFile::exists("out/temp_prop.json"));
  EXPECT_EQ(readFile(archive_), original_);
}

TEST_F(EmuRun, DynamicRegionLayout) {
  ASSERT_TRUE(Utils::generateEmuPropDict(archive_, "plat", true, "out/hw_emu_prop"));
  EXPECT_EQ(Utils::generateEmuDir("out/hw_emu_prop/hw_emu_prop.tcl", "plat.v1", ""), false);
  ASSERT_TRUE(Utils::generateEmuDir("out/hw_emu_prop/hw_emu_prop.tcl", "plat.v1", "out"));
  EXPECT_EQ(describedFiles("out/overlay/emu"),
            (std::vector<std::string>{
                "TOP_BD:emu/emu.bd", "EMU_DR_BD:pfm_dynamic/pfm_dynamic.bd", "EMU_HPFM:plat.v1_emu.hpfm",
                "POST_SYS_LINK_TCL:dynamic_post_sys_link.tcl", "PRE_SYS_LINK_TCL:dynamic_pre_sys_link.tcl"}));
  EXPECT_EQ(readFile(archive_), original_);
}

// Each way a run can fail: the process lives, the archive keeps its bytes,
// and the failure is a false answer with a message or an exception.
struct Failure {
  const char* name;
  std::string hook;
  std::string archive;  // "" the fixture's; else a file name below the working directory
  std::string expect;   // message id for false, or text of the exception
};

void PrintTo(const Failure& f, std::ostream* os) { *os << f.name; }

class EmuFailure : public EmuRun, public ::testing::WithParamInterface<Failure> {
 protected:
  EmuFailure() : EmuRun(GetParam().hook, GetParam().name == std::string("badjson") ? "{" : "{}") {}
};

TEST_P(EmuFailure, ProcessLivesAndArchiveIsUnchanged) {
  const Failure& f = GetParam();
  std::string file = archive_;
  if (f.archive == "json") {
    file = data_.file("j.cfa");
    zr_test::makeZip(file, {{"cfa.json", "{}"}});
  } else if (f.archive == "dir") {
    file = data_.path();
  } else if (f.archive == "fifo") {
    file = data_.file("fifo.cfa");
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  } else if (f.archive == "missing") {
    file = data_.file("none.cfa");
  }
  const std::string before = HUTFile::isFile(file) ? readFile(file) : "";
  std::unique_ptr<ScopedEnvVar> unset;
  if (f.archive == "noinstall") unset = std::make_unique<ScopedEnvVar>("TORVANE_MORWEN", nullptr);
  const unsigned long limit = jun::tcltasks::task_manager::getTimeLimit();
  jun::tcltasks::task_manager::setTimeLimit(500);
  ComMsgCapture messages;
  try {
    const bool ok = Utils::generateCfaEmu(file, "plat", "");
    EXPECT_FALSE(ok);
    const ComMsg* sent = messages.find(f.expect);
    ASSERT_NE(sent, nullptr) << f.expect;
    EXPECT_EQ(sent->mask, f.expect == "@74-56@%s" ? ComMsgMask::kWarning : ComMsgMask::kError);
  } catch (const HEXUserException& e) {
    EXPECT_NE(std::string(e.what()).find(f.expect), std::string::npos) << e.what();
  }
  jun::tcltasks::task_manager::setTimeLimit(limit);
  if (!before.empty()) {
    EXPECT_EQ(readFile(file), before);
  }
  EXPECT_EQ(jun::tcltasks::task_manager::instance().eval_in_tcl("expr {6 * 7}", false, true), "42")
      << "the interpreter is usable afterwards";
}

INSTANTIATE_TEST_SUITE_P(
    Cases, EmuFailure,
    ::testing::Values(
        Failure{"boom", "error boom", "", "message: 'boom'"},
        Failure{"exit", "exit 3", "", "exit with status 3"},
        Failure{"childexit", "interp create c; c eval {exit 4}", "", "exit with status 4"},
        Failure{"grandchildexit", "set c [interp create]; $c eval {set d [interp cr]; $d eval {exit 5}}", "",
                "exit with status 5"},
        // A safe interpreter's hidden exit is gone: invoking it is a
        // plain error, which the driver's catch turns into exit 0.
        Failure{"hiddenexit", "set s [interp create -safe]; $s invokehidden exit 6", "",
                "exit with status 0"},
        Failure{"safechildexit", "interp create -safe s; interp eval s {exit 7}", "", "exit with status 7"},
        Failure{"loop", "while 1 { catch { after 20 } }", "", "time limit"},
        Failure{"nobd", "file delete $bd/emu/emu.bd", "", "@74-33@"}, Failure{"badjson", "", "", "@74-1@%s"},
        Failure{"noinstall", "", "noinstall", "@74-35@"}, Failure{"missing", "", "missing", "@74-32@%s"},
        Failure{"dir", "", "dir", "@74-36@%s"}, Failure{"fifo", "", "fifo", "@74-36@%s"},
        Failure{"json", "", "json", "@74-1@%s"}),
    [](const ::testing::TestParamInfo<Failure>& p) { return std::string(p.param.name); });

}  // namespace
