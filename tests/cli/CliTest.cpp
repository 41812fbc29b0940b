#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <boost/property_tree/json_parser.hpp>
#include <cstdlib>
#include <sstream>

#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
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

class Cli : public ::testing::Test {
 protected:
  TempDir dir_;
};

}  // namespace

TEST_F(Cli, UsageErrorsExitWithTwoAndOneLine) {
  for (const char* args :
       {"", "--bogus json x", "json", "gen-sample d --count 0", "--tool-version 2026 json x", "frobnicate"}) {
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

TEST_F(Cli, LoadFailuresExitWithOneAndNameTheFile) {
  const std::string missing = dir_.file("nothing.zdf");
  Outcome r = run(dir_, "json " + missing);
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "zr-platform: " + missing + ": no such file\n");

  const std::string bad = dir_.write("bad.zdf", "<teq:platform");
  r = run(dir_, "json " + bad);
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(lines(r.err), 1);
  EXPECT_NE(r.err.find(bad), std::string::npos);
  EXPECT_NE(r.err.find("[@74-9@]"), std::string::npos);

  const std::string corrupt = dir_.write("corrupt.lfa", "PK\x03\x04 this is no archive");
  r = run(dir_, "short " + corrupt);
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(lines(r.err), 1);
  EXPECT_EQ(r.err.rfind("zr-platform: " + corrupt + ": ", 0), 0u);
  // The most specific message of the failed load names the reason.
  EXPECT_NE(r.err.find("[@74-6"), std::string::npos) << r.err;

  const std::string noHardware = dir_.write("p/p.zdf", zdfText(zdfHw("hw", "missing.lfa")));
  r = run(dir_, "json " + noHardware);
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find(dir_.file("p/hw/missing.lfa")), std::string::npos) << r.err;
}

TEST_F(Cli, SampleRepositoryLoadsAndPrintsWhatTheEntryPointsGive) {
  const Outcome gen = run(dir_, "gen-sample " + dir_.file("repo") + " --scale 0.2");
  ASSERT_EQ(gen.status, 0) << gen.err;
  std::vector<std::string> files;
  std::istringstream list(gen.out);
  for (std::string f; std::getline(list, f);) files.push_back(f);
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
  ASSERT_EQ(run(dir_, "gen-sample " + dir_.file("repo") + " --count 4 --scale 0.1").status, 0);
  const std::string lfa = dir_.file("repo/acme_emu/hw/acme_emu.lfa");
  const Outcome list = run(dir_, "members " + lfa);
  EXPECT_EQ(list.status, 0);
  EXPECT_EQ(list.out, "lfa.json\nhw_emu/lfa.json\n");

  Outcome r = run(dir_, "extract " + lfa + " hw_emu/lfa.json " + dir_.file("emu.json"));
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_NE(readFile(dir_.file("emu.json")).find("\"hardwareEmuPlatform\": \"true\""), std::string::npos);
  r = run(dir_, "extract " + lfa + " hw_emu/lfa.json " + dir_.path());
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(readFile(dir_.file("hw_emu/lfa.json")), readFile(dir_.file("emu.json")));

  r = run(dir_, "extract " + lfa + " no/such/member " + dir_.file("x"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "zr-platform: " + lfa + ": no member 'no/such/member'\n");
  r = run(dir_, "members " + dir_.write("junk.lfa", "junk"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(lines(r.err), 1);
  r = run(dir_, "members " + dir_.file("absent.lfa"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "zr-platform: " + dir_.file("absent.lfa") + ": no such file\n");
}
