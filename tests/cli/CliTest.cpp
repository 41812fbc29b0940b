#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <boost/property_tree/json_parser.hpp>
#include <cstdlib>
#include <sstream>

#include "emulation/EmuInstallSupport.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"
#include "platform/HTEQPlatformCAPI.h"
#include "support/TestSupport.h"

using namespace zr_test;

namespace {

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

// Runs the tool with the arguments (already quoted) and collects its streams.
Outcome run(const TempDir& dir, const std::string& args) {
  const std::string out = dir.file(".out"), err = dir.file(".err");
  const std::string cmd = std::string(ZR_CLI_PATH) + " " + args + " >" + out + " 2>" + err + " </dev/null";
  const int rc = std::system(cmd.c_str());
  Outcome r;
  r.status = WIFEXITED(rc) ? WEXITSTATUS(rc) : -1;
  r.out = readFile(out);
  r.err = readFile(err);
  return r;
}

// The last line of a text, without its line end.
std::string lastLine(std::string s) {
  if (!s.empty() && s.back() == '\n') s.pop_back();
  return s.substr(s.rfind('\n') == std::string::npos ? 0 : s.rfind('\n') + 1);
}

int lines(const std::string& s) {
  int n = 0;
  for (char c : s) n += c == '\n';
  return n;
}

std::string entryPoint(char* (*entry)(const char*), const std::string& file) {
  char* text = entry(file.c_str());
  std::string s = text ? text : "";
  hteq_free_json_string(text);
  return s;
}

boost::property_tree::ptree parse(const std::string& text) {
  boost::property_tree::ptree t;
  std::istringstream in(text);
  boost::property_tree::read_json(in, t);
  return t;
}

// One sample repository for the suite, which the commands only read: the
// descriptors that gen-sample listed, in its order.
class Cli : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    sample_ = new TempDir;
    const Outcome gen = run(*sample_, "gen-sample " + sample_->file("repo") + " --scale 0.1");
    ASSERT_EQ(gen.status, 0) << gen.err;
    std::istringstream list(gen.out);
    for (std::string f; std::getline(list, f);) files_.push_back(f);
  }
  static void TearDownTestSuite() {
    delete sample_;
    sample_ = nullptr;
    files_.clear();
  }
  static std::string repo() { return sample_->file("repo"); }

  static TempDir* sample_;
  static std::vector<std::string> files_;
  TempDir dir_;
};

TempDir* Cli::sample_ = nullptr;
std::vector<std::string> Cli::files_;

}  // namespace

TEST_F(Cli, UsageErrorsExitWithTwoAndOneLine) {
  for (const char* args :
       {"", "--bogus json x", "json", "gen-sample d --count 0", "--tool-version 2026 json x", "frobnicate",
        "--tool-version 99999999999.1 json x", "--tool-version 1.99999999999 json x",
        "--metadata-limit 0 json x", "--ratio-limit -1 json x"}) {
    SCOPED_TRACE(args);
    const Outcome r = run(dir_, args);
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(lines(r.err), 1) << r.err;
    EXPECT_EQ(r.out, "");
  }
  const Outcome help = run(dir_, "json --help");
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("FILE"), std::string::npos);
}

// Every failure to load, read or write exits with 1, prints nothing on
// standard output and ends with one line naming the file and the reason, its
// control characters escaped; a FIFO in the way is left as it is.
TEST_F(Cli, FailuresExitWithOneAndNameTheFileAndTheReason) {
  const std::string emu = repo() + "/acme_emu/hw/acme_emu.lfa", card = repo() + "/acme_card/acme_card.lfa";
  const std::string fifo = dir_.file("fifo.lfa");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  const std::string missing = dir_.file("nothing.zdf"), absent = dir_.file("absent.lfa");
  const std::string bad = dir_.write("bad.zdf", "<teq:platform"), spfm = dir_.write("a.spfm", spfmText());
  const std::string control = dir_.write("a\nb\x1b[31m.zdf", "<teq:platform");
  const std::string corrupt = dir_.write("corrupt.lfa", "PK\x03\x04 this is no archive");
  const std::string junk = dir_.write("junk.lfa", "junk");
  const std::string noHw = dir_.write("p/p.zdf", zdfText(zdfHw("hw", "missing.lfa")));
  const std::string junkHw = dir_.write("q/q.zdf", zdfText(zdfHw("hw", "junk.lfa")));
  dir_.write("q/hw/junk.lfa", "junk");
  const struct {
    std::string args, file, reason;
    bool oneLine;  // false where the library's words for the user come first
  } rows[] = {
      {"json " + missing, missing, ": no such file\n", true},
      {"members " + absent, absent, ": no such file\n", true},
      {"json " + bad, bad, "[@74-9@]", false},
      {"json '" + control + "'", dir_.path() + "/a\\nb\\x1b[31m.zdf", "", false},
      // A damaged archive is reported as one, not as the empty metadata it would give.
      {"short " + corrupt, corrupt, "not a readable zip archive", true},
      {"short " + junk, junk, "not a readable zip archive", true},
      {"members " + junk, junk, "", true},
      {"json " + fifo, fifo, "not a regular file", true},
      {"members " + fifo, fifo, "not a regular file", true},
      {"extract " + fifo + " m " + dir_.file("x"), fifo, "not a regular file", true},
      {"json " + dir_.path(), dir_.path(), "not a regular file", true},
      {"json " + noHw, noHw, dir_.file("p/hw/missing.lfa"), true},
      {"json " + junkHw, junkHw, "hardware platform '" + dir_.file("q/hw/junk.lfa") + "': ", true},
      {"extract " + emu + " hw_emu/lfa.json " + fifo, emu,
       ": cannot write '" + fifo + "': it is not a regular file\n", true},
      {"extract " + emu + " no/such/member " + dir_.file("x"), emu, ": no member 'no/such/member'\n", true},
      {"to-xml " + card + " " + fifo, card, "", true},
      {"--metadata-limit 100 --ratio-limit 0 json " + spfm, spfm, "metadata size limit of 100 bytes", false},
      {"labels " + bad, bad, "", true},
      {"labels " + missing, missing, "", true},
      {"rqa show " + bad, bad, "", true},
      {"xp unpack " + bad + " " + dir_.file("x"), bad, "", true},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.args);
    const Outcome o = run(dir_, r.args);
    EXPECT_EQ(o.status, 1);
    EXPECT_EQ(o.out, "");
    if (r.oneLine) {
      EXPECT_EQ(lines(o.err), 1) << o.err;
    }
    EXPECT_EQ(lastLine(o.err).rfind("zr-platform: " + r.file + ": ", 0), 0u) << o.err;
    EXPECT_NE(o.err.find(r.reason), std::string::npos) << o.err;
    EXPECT_EQ(o.err.find('\x1b'), std::string::npos) << o.err;
  }
  struct stat st;
  ASSERT_EQ(::lstat(fifo.c_str(), &st), 0);
  EXPECT_TRUE(S_ISFIFO(st.st_mode));
}

TEST_F(Cli, SampleRepositoryLoadsAndPrintsWhatTheEntryPointsGive) {
  const std::vector<std::string>& files = files_;
  ASSERT_EQ(files.size(), 5u);
  for (const auto& f : files) {
    SCOPED_TRACE(f);
    const Outcome full = run(dir_, "json " + f);
    EXPECT_EQ(full.status, 0) << full.err;
    EXPECT_EQ(full.out, entryPoint(hteq_get_platform_json, f));
    const Outcome brief = run(dir_, "short " + f);
    EXPECT_EQ(brief.status, 0);
    EXPECT_EQ(brief.out, entryPoint(hteq_get_short_platform_json, f));
  }
  // Each platform has what its name promises.
  const auto dc = parse(entryPoint(hteq_get_platform_json, files[0]));
  EXPECT_EQ(dc.get<std::string>("type"), "Fennick");
  EXPECT_TRUE(dc.get_child_optional("softwarePlatform"));
  const auto emb = parse(entryPoint(hteq_get_platform_json, files[1]));
  EXPECT_EQ(emb.get<std::string>("type"), "Lorimar");
  // The embedded platform's archive is the older kind, read through its XML member.
  EXPECT_EQ(emb.get<std::string>("hwFile").substr(emb.get<std::string>("hwFile").size() - 4), ".cfa");
  const auto rp = parse(entryPoint(hteq_get_platform_json, files[2]));
  EXPECT_EQ(rp.get<std::string>("defaultRPId"), "1");
  EXPECT_EQ(rp.get_child("hardwarePlatforms.reconfigurablePartitions").size(), 2u);
  const auto emu = parse(entryPoint(hteq_get_platform_json, files[3]));
  EXPECT_EQ(emu.get<std::string>("hardwareEmulation"), "true");
  const auto card = parse(entryPoint(hteq_get_platform_json, files[4]));
  EXPECT_EQ(card.get<std::string>("zdf"), "false");
  EXPECT_EQ(files[4].substr(files[4].size() - 4), ".lfa");
}

TEST_F(Cli, SampleGrowsWithCountAndScale) {
  const Outcome small = run(dir_, "gen-sample " + dir_.file("s") + " --count 7 --scale 0.5");
  ASSERT_EQ(small.status, 0) << small.err;
  EXPECT_EQ(lines(small.out), 7);
  const Outcome big = run(dir_, "gen-sample " + dir_.file("b") + " --count 1 --scale 2");
  ASSERT_EQ(big.status, 0);
  const auto smallDoc = entryPoint(hteq_get_platform_json, dir_.file("s/acme_dc/acme_dc.zdf"));
  const auto bigDoc = entryPoint(hteq_get_platform_json, dir_.file("b/acme_dc/acme_dc.zdf"));
  EXPECT_GT(bigDoc.size(), 3 * smallDoc.size());
}

TEST_F(Cli, SampleNeverWritesThroughALinkPlantedInItsDirectory) {
  const std::string kept = dir_.write("kept.txt", "keep");
  TempDir elsewhere;
  // A link in place of a directory, and one in place of a file.
  const struct {
    const char* link;
    std::string to;
  } cases[] = {{"acme_dc", elsewhere.path()}, {"acme_dc/sw/acme_dc.spfm", kept}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.link);
    const TempDir repo;
    HUTFile::mkDirRecursive(HUTPathUtils::getParent(repo.file(c.link)));
    ASSERT_EQ(::symlink(c.to.c_str(), repo.file(c.link).c_str()), 0);
    const Outcome r = run(dir_, "gen-sample " + repo.path() + " --count 1 --scale 0.05");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(lines(r.err), 1) << r.err;
    EXPECT_TRUE(boost::filesystem::is_empty(elsewhere.path()));
    EXPECT_EQ(readFile(kept), "keep");
  }
}

TEST_F(Cli, EnvironmentOptionsAreAccepted) {
  const std::string f = dir_.write("a.spfm", spfmText());
  const Outcome r = run(
      dir_, "--app-root /opt/tools/selbrook --tmp-dir " + dir_.path() + " --tool-version 2027.2 json " + f);
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, entryPoint(hteq_get_platform_json, f));
}

TEST_F(Cli, MembersAndExtractWorkOnArchives) {
  const std::string lfa = repo() + "/acme_emu/hw/acme_emu.lfa";
  const Outcome list = run(dir_, "members " + lfa);
  EXPECT_EQ(list.status, 0);
  EXPECT_EQ(list.out, "lfa.json\nhw_emu/lfa.json\n");
  Outcome r = run(dir_, "extract " + lfa + " hw_emu/lfa.json " + dir_.file("emu.json"));
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_NE(readFile(dir_.file("emu.json")).find("\"hardwareEmuPlatform\": \"true\""), std::string::npos);
  r = run(dir_, "extract " + lfa + " hw_emu/lfa.json " + dir_.path());
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(readFile(dir_.file("hw_emu/lfa.json")), readFile(dir_.file("emu.json")));

  // Member names keep to one line each, their control characters escaped.
  const std::string zip = dir_.file("names.zip");
  HUTZip::writeMember(zip, "line\nbreak\r.txt", "x");
  HUTZip::writeMember(zip, "plain.txt", "y");
  r = run(dir_, "members " + zip);
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "line\\nbreak\\r.txt\nplain.txt\n");
}

// The query commands over the sample repository: exit status, lines on
// standard output and one line that must be among them.
TEST_F(Cli, QueriesOverTheSampleRepository) {
  const std::string repo = Cli::repo();
  const std::string dc = repo + "/acme_dc/acme_dc.zdf";
  const std::string card = repo + "/acme_card/acme_card.lfa";
  struct Row {
    std::string args;
    int status;
    int lines;
    std::string found;
  } rows[] = {
      {"find acme_DC --no-defaults --dir " + repo, 0, 1, dc + "\n"},
      {"find nothing --no-defaults --dir " + repo, 1, 0, ""},
      // A roundabout directory still lists both kinds by their canonical names.
      {"platforms " + repo + "/../repo", 0, 7, "descriptor\t" + dc + "\n"},
      {"platforms --hardware-only " + repo, 0, 3, "hardware\t" + card + "\n"},
      {"platforms " + dir_.file("nothing"), 1, 0, ""},
      {"lookup " + repo, 0, 4, "acme:acme_dc:base:2.1\t" + dc + "\n"},
      {"lookup --vbnv :acme_dc " + repo, 0, 1, "acme:acme_dc:base:2.1\t" + dc + "\n"},
      {"lookup --vbnv acme:nope " + repo, 1, 0, ""},
      {"lookup --intent 4 " + repo, 2, 0, ""},  // intents need a part
      {"info acme_dc --repo " + repo, 0, 9, "file: " + dc + "\n"},
      {"info " + dc, 0, 9, "vbnv: acme:acme_dc:base:2.1\n"},
      {"info " + dc, 0, 9, "\nruntimes: OpenCL, C/C++\n"},
      {"info " + dc, 0, 9, "\nboot image: false\n"},
      {"info nothing --repo " + repo, 1, 0, ""},
      {"check " + dc, 0, 2, "not supported\n"},
      {"check --open " + dc, 0, 2, "not supported\n"},
      {"check " + dir_.file("none.zdf"), 1, 0, ""},
      {"check --pre-synth --open " + dc, 2, 0, ""},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.args);
    const Outcome o = run(dir_, r.args);
    EXPECT_EQ(o.status, r.status) << o.err;
    EXPECT_EQ(lines(o.out), r.lines) << o.out;
    EXPECT_NE(o.out.find(r.found), std::string::npos) << o.out;
  }
}

TEST_F(Cli, WritersConvert) {
  const std::string card = repo() + "/acme_card/acme_card.lfa";
  // A sample archive (JSON metadata) as CFA XML, loaded again as the XML member of an archive.
  Outcome r = run(dir_, "to-xml " + card + " " + dir_.file("card.xml"));
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, dir_.file("card.xml") + "\n");
  HUTZip::writeMember(dir_.file("back.cfa"), "cfa.xml", readFile(dir_.file("card.xml")));
  r = run(dir_, "json " + dir_.file("back.cfa"));
  ASSERT_EQ(r.status, 0) << r.err;
  const auto identity = [](const std::string& json) {
    const boost::property_tree::ptree hw = parse(json).get_child("hardwarePlatforms.hardwarePlatform");
    return hw.get<std::string>("vendor") + "|" + hw.get<std::string>("name") + "|" +
           hw.get<std::string>("board.name") + "|" + std::to_string(hw.get_child("memories").size());
  };
  EXPECT_EQ(identity(r.out), identity(run(dir_, "json " + card).out));

  const std::string emuXml = dir_.write(
      "emu.xml", R"(<Root VersionMajor="1" VersionMinor="0"><Emulations><Emulation Name="e"><Files>)"
                 R"(<File Type="T" Name="n"/></Files></Emulation></Emulations></Root>)");
  EXPECT_EQ(run(dir_, "emu-json " + emuXml + " " + dir_.file("emu.json")).status, 0);
  EXPECT_NE(readFile(dir_.file("emu.json")).find("\"type\": \"T\""), std::string::npos);

  EXPECT_EQ(run(dir_, "make-lfa " + dir_.file("made.lfa") + " " + emuXml).status, 0);
  EXPECT_EQ(HUTZip::getFiles(dir_.file("made.lfa")), (std::vector<std::string>{"emu.xml", "lfa.json"}));

  const std::string hdf = dir_.write("top.hdf", "h");
  r = run(dir_, "--tmp-dir " + dir_.path() + " hdf2cfa " + hdf + " " + dir_.path() + " conv.lfa");
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(HUTZip::getFiles(dir_.file("conv.lfa")),
            (std::vector<std::string>{"lfa.json", "lfa.xml", "top.hdf"}));
}

TEST_F(Cli, CatalogValueAndPackedForm) {
  const Outcome catalog = run(dir_, "catalog --short " + repo());
  ASSERT_EQ(0, catalog.status) << catalog.err;
  const auto platforms = parse(catalog.out).get_child("platforms");
  ASSERT_FALSE(platforms.empty());
  const std::string zdf = platforms.front().second.get<std::string>("platformFile");
  EXPECT_EQ(platforms.front().second.get<std::string>("baseName") + "\n",
            run(dir_, "value " + zdf + " baseName").out);
  const std::string plain = dir_.write("list.json", "{\"black_list\":[]}");
  EXPECT_EQ(0, run(dir_, "xp pack " + plain + " " + dir_.file("list.xp")).status);
  EXPECT_NE(readFile(plain), readFile(dir_.file("list.xp")));
  EXPECT_EQ(0, run(dir_, "xp unpack " + dir_.file("list.xp") + " " + dir_.file("back.json")).status);
  EXPECT_EQ(readFile(plain), readFile(dir_.file("back.json")));
}

// The options and the exception list reach the verdict; the verdicts
// themselves are the catalog service's.
TEST_F(Cli, PolicySampleShowsTheVerdictsTheOptionsChange) {
  const std::string repo = dir_.file("repo");
  ASSERT_EQ(0, run(dir_, "--tool-version 2030.2 gen-sample --count 1 --scale 0.02 --policy " + repo).status);
  // Every platform misses the exception list (no application root); the list
  // is looked for once per process, so the warning comes once.
  const Outcome detailed = run(dir_, "catalog " + repo);
  EXPECT_EQ(0, detailed.status);
  const std::string missingList = "[@74-49@]";
  const auto first = detailed.err.find(missingList);
  EXPECT_NE(first, std::string::npos) << detailed.err;
  EXPECT_EQ(detailed.err.find(missingList, first + 1), std::string::npos) << detailed.err;

  // The application root's name gives the product the sample list names.
  const std::string root = dir_.file("selbrook");
  dir_.write("selbrook/platforms/keep", "");
  ASSERT_EQ(0, run(dir_, "xp pack " + std::string(ZR_SOURCE_DIR) + "/data/achromatic.json " + root +
                             "/platforms/achromatic")
                   .status);
  const struct {
    const char* name;
    const char* options;
    const char* verdict;
    const char* words;  // in the sentence
  } cases[] = {
      {"current", "", "supported", ""},
      {"old", "", "not supported", "remainder of the calendar year"},
      {"presynth", "--pre-synth", "supported", ""},
      {"current", "--pre-synth", "not supported", "is not a PRE_SYNTH platform"},
      {"refused", "", "not supported", "known issues. Reason: "},
      {"legacy", "", "supported", "explicitly enabled for this release. Reason: "},
      {"old", "--open", "supported", ""},
  };
  for (const auto& c : cases) {
    const std::string zdf = repo + "/acme_policy_" + c.name + "/acme_policy_" + c.name + ".zdf";
    SCOPED_TRACE(std::string(c.name) + " " + c.options);
    const Outcome r =
        run(dir_, "--app-root " + root + " --tool-version 2030.2 check " + c.options + " " + zdf);
    ASSERT_EQ(0, r.status) << r.err;
    EXPECT_EQ(c.verdict, r.out.substr(0, r.out.find('\n')));
    EXPECT_NE(std::string::npos, r.out.find(c.words)) << r.out;
  }
}

TEST_F(Cli, MetadataArchiveAddShowExtract) {
  const std::string rqa = dir_.file("m.rqa"), src = dir_.write("pins.xdc", "pins");
  EXPECT_EQ(run(dir_, "rqa add " + dir_.file("n.rqa") + " X ../up " + src).status, 1);
  EXPECT_FALSE(HUTFile::exists(dir_.file("n.rqa"))) << "a failed add leaves no new archive";
  ASSERT_EQ(run(dir_, "rqa add " + rqa + " XDC sub/p.xdc " + src).status, 0);
  const Outcome show = run(dir_, "rqa show " + rqa);
  ASSERT_EQ(show.status, 0) << show.err;
  EXPECT_EQ(parse(show.out).get_child("files").front().second.get<std::string>("name"), "sub/p.xdc");
  const Outcome got = run(dir_, "rqa extract " + rqa + " XDC " + dir_.file("out"));
  EXPECT_EQ(got.out, dir_.file("out") + "/sub/p.xdc\n");
  EXPECT_EQ(readFile(dir_.file("out/sub/p.xdc")), "pins");
  EXPECT_EQ(run(dir_, "rqa extract " + rqa + " NONE " + dir_.file("out")).status, 1);
}

TEST_F(Cli, LabelsPrintsEitherDocumentAndSkipsAnUnreadableRecord) {
  const std::string file =
      dir_.write("labels.json",
                 R"({"uuid": {"uuid_type": "logic", "uuid_design_component": "a", "uuid": "L"},
          "debug_network": {"physical_function": "1", "bar": "0", "bar_addr": "0", "system_addr": "0",
                            "partition": "p", "partition_path": "/", "supports_corvex_debug": "true",
                            "supports_jtag_fallback": "true"}})");
  const Outcome pm = run(dir_, "labels " + file);
  ASSERT_EQ(pm.status, 0) << pm.err;
  EXPECT_EQ(parse(pm.out).get<std::string>("partition_metadata.logic_uuid"), "L");
  const Outcome ext = run(dir_, "labels " + file + " --partition /x");
  ASSERT_EQ(ext.status, 0) << ext.err;
  EXPECT_EQ(parse(ext.out).get<std::string>("lumiprobe_debug.debug_networks.user.name"),
            "User Debug Network");
  EXPECT_EQ(pm.err, "");
  // A record that cannot be read is skipped, and said so on standard error.
  const Outcome skipped = run(dir_, "labels " + dir_.write("half.json", R"({"uuid": {"uuid": "L"}})"));
  EXPECT_EQ(skipped.status, 0);
  EXPECT_NE(skipped.err.find("ERROR: "), std::string::npos) << skipped.err;
  EXPECT_NE(skipped.err.find("[@74-82@]"), std::string::npos) << skipped.err;
}

TEST_F(Cli, EmuPropsAndEmuGenOverASampleArchive) {
  const std::string cfa = repo() + "/acme_emb/hw/acme_emb.cfa", before = readFile(cfa);
  ScopedEnvVar unset("TORVANE_MORWEN", nullptr);
  Outcome r = run(dir_, "emu-props " + cfa + " acme_emb --dr");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out.rfind("proc emu_prop_gen { } { \n", 0), 0u);
  EXPECT_NE(r.out.find("cfa_name             \"acme_emb\"\n"), std::string::npos);
  EXPECT_NE(r.out.find("dr_bd_name"), std::string::npos);
  r = run(dir_, "emu-gen " + cfa + " acme_emb");
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(lastLine(r.err).find("@74-35@"), std::string::npos) << r.err;

  TempDir install, work;
  emu_test::writeInstallation(install);
  ScopedEnvVar root("TORVANE_MORWEN", install.path().c_str());
  emu_test::ScopedCwd cwd(work.path());
  r = run(dir_, "emu-gen " + cfa + " acme_emb --out out");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "out/overlay\n");
  EXPECT_TRUE(HUTFile::isFile(work.file("out/overlay/emu/acme_emb_emu.hpfm")));
  EXPECT_EQ(readFile(cfa), before);
}
