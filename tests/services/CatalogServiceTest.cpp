// The catalog report and the support policy: the calendar rule, exemptions,
// the exception list, the versionless tool, pre-synthesis and opening, report
// shapes, and a catalog over a repository that mixes good and broken platforms.

#include <gtest/gtest.h>
#include <unistd.h>

#include <boost/property_tree/json_parser.hpp>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "SampleGenerator.h"
#include "host/ComMsgMgr.h"
#include "host/HUTEnv.h"
#include "host/IslXp.h"
#include "platform/HTEQEnv.h"
#include "platform/NativeCatalogService.h"
#include "platform/PlatformLoader.h"
#include "repository/SupportPolicy.h"
#include "support/RepoBuilder.h"
#include "support/ScopedInstance.h"
#include "support/TestSupport.h"

namespace {

using teq::platform::NativeCatalogService;
using zr_test::RepoPlatform;
using zr_test::ScopedInstance;
using zr_test::TempDir;
using Tree = boost::property_tree::ptree;

class CatalogPolicy : public ::testing::Test {
 protected:
  void SetUp() override { useAppRoot(app_.path()); }
  // The list lookup keeps the first application root it sees: each test starts it again.
  void useAppRoot(const std::string& root) {
    env_.setAppRoots({root});
    teq::platform::support_policy::resetExceptionListLookup();
    service_.setTestCompilerVersion_("2021.1");
  }

  // A unified data-center platform of the given version.
  RepoPlatform platform(const std::string& name, int major, int minor) const {
    RepoPlatform p;
    p.name = name;
    p.versionMajor = major;
    p.versionMinor = minor;
    p.unified = true;
    return p;
  }
  std::string write(const RepoPlatform& p) const { return zr_test::writeRepoPlatform(repo_.path(), p); }
  std::string listPath() const { return app_.file("platforms/achromatic"); }
  void writeList(const std::string& json) const {
    app_.write("platforms/keep", "");
    isl::iostreams::xp::write_file(listPath(), json);
  }
  // A list entry for this product whose key path yields the platform's name.
  static std::string entry(const std::string& name, const std::string& reason) {
    return "{\"products\":[\"other\",\"" + HTEQEnv::getProductName() +
           "\"],\"key\":\"hardwarePlatform.name\",\"value\":\"" + name + "\",\"reason\":\"" + reason + "\"}";
  }
  int color(const std::string& file, std::string& reason) {
    teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
    return NativeCatalogService::getColor(&loader, reason);
  }

  TempDir repo_, app_;
  HUTEnv env_;
  ScopedInstance<HUTEnv> installedEnv_{&env_};
  ComMsgCapture messages_;
  ScopedInstance<ComMsgSink> installedSink_{&messages_};
  NativeCatalogService service_;
};

TEST_F(CatalogPolicy, CalendarRuleAndItsSentences) {
  const std::string newer = "the platform version can not be newer than the current tool version";
  const std::string older = "the platform version can not be older than 2017.4";
  const std::string calendar =
      "platforms are supported for the remainder of the calendar year release plus the following calendar "
      "year release";
  struct Row {
    const char* tool;
    int major, minor;
    bool supported;
    std::string words;
  } rows[] = {
      {"2021.1", 2020, 2, true, ""},        {"2021.1", 2020, 1, true, ""},
      {"2021.1", 2021, 1, true, ""},        {"2021.1", 2019, 2, false, calendar},
      {"2021.1", 2021, 2, false, newer},    {"2021.1", 2022, 0, false, newer},
      {"2021.1", 2017, 3, false, older},    {"2021.1", 2016, 9, false, older},
      {"2021.1", 2017, 4, false, calendar}, {"2018.1", 2017, 4, true, ""},
      {"2017.4", 2017, 4, true, ""},        {"2019.1", 2017, 4, false, calendar},
  };
  int i = 0;
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.tool) + " " + std::to_string(row.major) + "." + std::to_string(row.minor));
    const std::string name = "cal" + std::to_string(i++);
    const std::string file = write(platform(name, row.major, row.minor));
    service_.setTestCompilerVersion_(row.tool);
    std::string reason;
    EXPECT_EQ(row.supported, service_.isUnderWarranty(file, reason, ""));
    if (row.words.empty()) {
      EXPECT_EQ("", reason);
    } else {
      EXPECT_EQ("Platform '" + name + ".zdf' (version " + std::to_string(row.major) + "." +
                    std::to_string(row.minor) + ") is not supported by the current tool version (" +
                    row.tool + "). By policy, " + row.words,
                reason);
    }
  }
  EXPECT_TRUE(messages_.has("@74-78@%s"));
}

TEST_F(CatalogPolicy, ExemptionsEmbeddedNonUnifiedAndExtendedWarranty) {
  struct Row {
    const char* name;
    std::string intent;
    bool unified;
    int major;
    std::string extensions;
    bool supported;
    std::string reason;
  } rows[] = {
      {"emb", "embedded", true, 2030, "", true, ""},
      {"flat", "dataCenter", false, 2021, "", false,
       "Platform 'flat.zdf' is not a unified platform. By policy, non-unified platforms are not supported by "
       "the current tool version"},
      {"flatemb", "embedded", false, 2021, "", false,
       "Platform 'flatemb.zdf' is not a unified platform. By policy, non-unified platforms are not supported "
       "by the current tool version"},
      {"ext", "serverManaged", true, 2018, "{\"extended_warranty\":[\"2020.1\",\"2021.1\"]}", true,
       "Platform 'ext.zdf' has been explicitly enabled for this release with an extended warranty."},
      {"extyear", "externalHost", true, 2018, "{\"extended_warranty\":[\"2021\"]}", false,
       "Platform 'extyear.zdf' (version 2018.1) is not supported by the current tool version (2021.1). By "
       "policy, platforms are supported for the remainder of the calendar year release plus the following "
       "calendar year release"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    RepoPlatform p = platform(row.name, row.major, 1);
    p.designIntent = row.intent;
    p.unified = row.unified;
    p.metaJson = row.extensions;
    std::string reason;
    EXPECT_EQ(row.supported, service_.isUnderWarranty(write(p), reason, ""));
    EXPECT_EQ(row.reason, reason);
  }
  std::string reason;
  RepoPlatform bad = platform("badext", 2018, 1);
  bad.metaJson = "{\"extended_warranty\":[\"next\"]}";
  EXPECT_THROW(service_.isUnderWarranty(write(bad), reason, ""), std::invalid_argument);
}

TEST_F(CatalogPolicy, ExceptionListCases) {
  const std::string file = write(platform("listed", 2019, 2));  // refused by the calendar rule
  const std::string product = HTEQEnv::getProductName();
  struct Row {
    const char* label;
    std::string packed;  // "-" for no file, "plain:" prefix for an unpacked file
    int color;
    const char* message;
    std::string reason;
  } rows[] = {
      {"missing", "-", 2, "@74-49@%s", ""},
      {"unpacked", "plain:{\"white_list\":[" + entry("listed", "") + "]}", 2, "@74-49@%s", ""},
      {"malformed", "{\"white_list\":[", 2, "@74-49@%s", ""},
      {"wrong top key", "{\"grey_list\":[]}", 2, "@74-50@%s", ""},
      {"named entry", "{\"white_list\":{\"a\":" + entry("listed", "") + "}}", 2, "@74-50@%s", ""},
      {"no products", "{\"white_list\":[{\"key\":\"hardwarePlatform.name\",\"value\":\"listed\"}]}", 2,
       "@74-50@%s", ""},
      {"product mismatch",
       "{\"white_list\":[{\"products\":[\"other\"],\"key\":\"hardwarePlatform.name\",\"value\":\"listed\"}]}",
       3, nullptr, ""},
      {"value mismatch", "{\"white_list\":[" + entry("other", "x") + "]}", 3, nullptr, ""},
      {"unresolved key",
       "{\"white_list\":[{\"products\":[\"" + product + "\"],\"key\":\"hardwarePlatform.none.x\"}]}", 3,
       nullptr, ""},
      {"white", "{\"white_list\":[" + entry("listed", "checked") + "]}", 1, nullptr, "checked"},
      {"black", "{\"black_list\":[" + entry("listed", "bad dma") + "]}", 0, nullptr, "bad dma"},
      {"first match wins",
       "{\"black_list\":[" + entry("listed", "b") + "],\"white_list\":[" + entry("listed", "w") + "]}", 0,
       nullptr, "b"},
      {"first match wins, white first",
       "{\"white_list\":[" + entry("listed", "w") + "],\"black_list\":[" + entry("listed", "b") + "]}", 1,
       nullptr, "w"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    zr_test::TempDir app;
    useAppRoot(app.path());
    if (row.packed.rfind("plain:", 0) == 0) {
      app.write("platforms/achromatic", row.packed.substr(6));
    } else if (row.packed != "-") {
      app.write("platforms/keep", "");
      isl::iostreams::xp::write_file(app.file("platforms/achromatic"), row.packed);
    }
    messages_.clear();
    std::string reason;
    EXPECT_EQ(row.color, color(file, reason));
    EXPECT_EQ(row.reason, reason);
    if (row.message != nullptr) {
      EXPECT_TRUE(messages_.has(row.message));
    }
  }
  zr_test::TempDir app;
  useAppRoot(app.path());
  app.write("platforms/achromatic/inside", "");  // a directory is no list
  std::string reason;
  EXPECT_EQ(2, color(file, reason));
}

TEST_F(CatalogPolicy, ListVerdictsInTheSentenceAndAfterTheNewerRule) {
  writeList("{\"white_list\":[" + entry("old", "") + "],\"black_list\":[" + entry("cur", "bad dma") + "," +
            entry("new", "") + "]}");
  struct Row {
    const char* name;
    int major, minor;
    bool supported;
    std::string reason;
  } rows[] = {
      {"old", 2015, 1, true, "Platform 'old.zdf' has been explicitly enabled for this release."},
      {"cur", 2021, 1, false,
       "Platform 'cur.zdf' has been marked unsupported due to known issues. Reason: bad dma"},
      {"new", 2022, 1, false,
       "Platform 'new.zdf' (version 2022.1) is not supported by the current tool version (2021.1). By "
       "policy, "
       "the platform version can not be newer than the current tool version"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::string reason;
    EXPECT_EQ(row.supported, service_.isUnderWarranty(write(platform(row.name, row.major, row.minor)), reason,
                                                      "named-product"));
    EXPECT_EQ(row.reason, reason);
  }
  EXPECT_EQ("named-product", env_.getProductName());
}

TEST_F(CatalogPolicy, VersionlessToolPreSynthAndOpen) {
  RepoPlatform pre = platform("pre", 2020, 1);
  pre.state = "pre_synth";
  const std::string preFile = write(pre);
  const std::string plainFile = write(platform("plain", 2020, 1));
  RepoPlatform flat = platform("flat", 2010, 1);
  flat.unified = false;
  const std::string flatFile = write(flat);
  const std::string warning =
      "Critical Warning: the current tool is versionless, please set the appropriate product name/version";

  struct Row {
    const char* label;
    const char* tool;
    int op;  // 0 warranty, 1 pre-synth, 2 open
    std::string file;
    bool answer;
    std::string reason;
    std::string out;
  } rows[] = {
      {"versionless warranty", "2021", 0, plainFile, false,
       "Platform 'plain.zdf' (version 2020.1) is not supported by the current tool version (2019.1). By "
       "policy, "
       "the platform version can not be newer than the current tool version",
       warning + "\n"},
      {"versionless pre-synth", ".1", 1, preFile, true, "",
       warning + ". Setting a default value of 2020.1 for the major and minor version.\n"},
      {"pre-synth same", "2020.1", 1, preFile, true, "", ""},
      {"pre-synth older", "2021.1", 1, preFile, false,
       "Platform 'pre.zdf' (version 2020.1) is a PRE_SYNTH platform and is not supported by the current tool "
       "version (2021.1). By policy, platforms are only supported on the same tool release on which the "
       "platform was created.",
       ""},
      {"pre-synth newer", "2019.2", 1, preFile, false,
       "Platform 'pre.zdf' (version 2020.1) is a PRE_SYNTH platform and is not supported by the current tool "
       "version (2019.2). By policy, the platform version can not be newer than the current tool version",
       ""},
      {"not pre-synth", "2020.1", 1, plainFile, false,
       "Platform '" + plainFile + "' is not a PRE_SYNTH platform", ""},
      {"open older", "2021.1", 2, plainFile, true, "", ""},
      {"open newer", "2019.2", 2, plainFile, false,
       "CFA 'plain.zdf' (version 2020.1) is not supported by the current tool version (2019.2). By policy, "
       "the "
       "CFA version can not be newer than the current tool version",
       ""},
      {"open versionless", "2019.", 2, plainFile, false,
       "CFA 'plain.zdf' (version 2020.1) is not supported by the current tool version (2019.1). By policy, "
       "the "
       "CFA version can not be newer than the current tool version",
       ""},
      {"open non-unified", "2021.1", 2, flatFile, false,
       "CFA 'flat.zdf' is not a unified platform. By policy, non-unified platforms are not supported by the "
       "current tool version",
       ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    service_.setTestCompilerVersion_(row.tool);
    std::string reason;
    ::testing::internal::CaptureStdout();
    bool answer = false;
    if (row.op == 0) answer = service_.isUnderWarranty(row.file, reason, "");
    if (row.op == 1) answer = service_.isPreSynthPlatformSupported(row.file, reason);
    if (row.op == 2) answer = service_.canCfaBeOpened(row.file, reason);
    const std::string out = ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(row.answer, answer);
    EXPECT_EQ(row.reason, reason);
    if (!row.out.empty()) {
      EXPECT_EQ(row.out, out);
    }
  }
  std::string reason;
  EXPECT_FALSE(service_.canCfaBeOpened(static_cast<teq_platform::PlatformLoader*>(nullptr), reason));
  EXPECT_FALSE(
      service_.isPreSynthPlatformSupported(static_cast<teq_platform::PlatformLoader*>(nullptr), reason));
}

std::vector<std::string> keysOf(const Tree& tree) {
  std::vector<std::string> keys;
  for (const auto& child : tree) keys.push_back(child.first);
  return keys;
}

Tree parse(const std::string& text) {
  Tree tree;
  std::istringstream in(text);
  boost::property_tree::read_json(in, tree);
  return tree;
}

TEST_F(CatalogPolicy, ReportShapes) {
  RepoPlatform p = platform("shape", 2021, 1);
  p.part = "arch9:dev:pkg:-2";
  const std::string file = write(p);
  const std::vector<std::string> shortKeys{"baseName", "version",      "type",          "dataCenter",
                                           "embedded", "externalHost", "serverManaged", "platformState",
                                           "usesPR",   "platformFile"};
  const Tree brief = parse(service_.getAsJsonStr(file, false, false));
  EXPECT_EQ(shortKeys, keysOf(brief));
  EXPECT_EQ("true", brief.get<std::string>("dataCenter"));
  EXPECT_EQ("impl", brief.get<std::string>("platformState"));

  std::vector<std::string> detailedKeys = shortKeys;
  for (const char* key :
       {"platformHwFile", "platformHwEmuFile", "platformSwFile", "systemClockCount", "partArchitecture",
        "warranty", "hardware", "hardwareEmulation", "twoHwEmuBd", "softwareEmulation"})
    detailedKeys.push_back(key);
  const Tree full = parse(service_.getAsJsonStr(file, true, false));
  EXPECT_EQ(detailedKeys, keysOf(full));
  EXPECT_EQ("true", full.get<std::string>("warranty"));
  EXPECT_EQ("", full.get<std::string>("platformHwEmuFile"));  // empty values stay in the report
  EXPECT_EQ(service_.getValue(file, "partArchitecture"), full.get<std::string>("partArchitecture"));
  EXPECT_FALSE(full.get<std::string>("partArchitecture").empty());

  // A refused platform carries its reason right after "warranty".
  const Tree refused = parse(service_.getAsJsonStr(write(platform("late", 2023, 1)), true, false));
  const std::vector<std::string> keys = keysOf(refused);
  ASSERT_EQ(detailedKeys.size() + 1, keys.size());
  EXPECT_EQ("warrantyReason", keys[16]);
  EXPECT_EQ("false", refused.get<std::string>("warranty"));

  ::testing::internal::CaptureStdout();
  EXPECT_EQ("", service_.getValue(file, "noSuchKey"));
  EXPECT_EQ("", service_.getValue(file, ""));
  EXPECT_EQ("error: key path 'noSuchKey' doens't exist\n", ::testing::internal::GetCapturedStdout());
}

TEST_F(CatalogPolicy, CatalogOfAMixedRepositoryHoldsEveryGoodPlatform) {
  write(platform("good1", 2021, 1));
  write(platform("good2", 2015, 1));
  RepoPlatform emb = platform("good3", 2030, 1);
  emb.designIntent = "embedded";
  write(emb);
  repo_.write("broken/broken.zdf", "<not-a-descriptor");
  repo_.write("nohw/nohw.zdf", zr_test::repoZdfText("nohw.lfa", "nohw.spfm"));
  repo_.write("garbage/garbage.zdf", std::string("\0\1\2", 3));
  // Its policy check throws on the version text "next": left out like a failed load.
  RepoPlatform unreadable = platform("badext", 2018, 1);
  unreadable.metaJson = "{\"extended_warranty\":[\"next\"]}";
  write(unreadable);
  ::testing::internal::CaptureStdout();
  const Tree catalog = parse(service_.getAllAsJsonStr(repo_.path(), true, false));
  ::testing::internal::GetCapturedStdout();
  std::set<std::string> names;
  for (const auto& entry : catalog.get_child("platforms"))
    names.insert(entry.second.get<std::string>("baseName"));
  EXPECT_EQ(3u, names.size());
  for (const auto& entry : catalog.get_child("platforms")) {
    EXPECT_EQ(entry.second.get<std::string>("baseName") != "good2" ? "true" : "false",
              entry.second.get<std::string>("warranty"));
  }
  TempDir empty;
  EXPECT_EQ("", parse(service_.getAllAsJsonStr(empty.path(), false, false)).get<std::string>("platforms"));
}

TEST_F(CatalogPolicy, HiddenPlatformHasNoReport) {
  // The hidden platform is the one whose unique name, its path as given, is
  // the reserved name; the same descriptor under another spelling is reported.
  const std::string file = write(platform("hid", 2021, 1));
  const std::string dir = file.substr(0, file.rfind('/'));
  const std::string reserved = "torvane:rq118:linux-uart:1.0";
  zr_test::writeFile(dir + "/" + reserved, zr_test::readFile(file));
  char previous[4096];
  ASSERT_NE(nullptr, ::getcwd(previous, sizeof previous));
  ASSERT_EQ(0, ::chdir(dir.c_str()));
  const std::string hidden = service_.getAsJsonStr(reserved, true, false);
  const std::string shown = service_.getAsJsonStr("./" + reserved, true, false);
  ASSERT_EQ(0, ::chdir(previous));
  EXPECT_EQ("", hidden);
  EXPECT_NE("", shown);
}

}  // namespace

namespace {

TEST_F(CatalogPolicy, ShippedSampleListRefusesAndEnablesItsPlatforms) {
  // Every product of the shipped list is a name the library derives from an
  // application root; the entries are checked under this process's product.
  Tree list = parse(zr_test::readFile(std::string(ZR_SOURCE_DIR) + "/data/achromatic.json"));
  for (auto& top : list) {
    for (auto& item : top.second) {
      Tree& products = item.second.get_child("products");
      for (const auto& product : products) {
        EXPECT_EQ(product.second.data(), HTEQEnv::computeProductName("/opt/" + product.second.data(), false));
      }
      products.push_back(std::make_pair(std::string(), Tree(HTEQEnv::getProductName())));
    }
  }
  std::ostringstream text;
  boost::property_tree::write_json(text, list);
  writeList(text.str());
  std::string reason;
  EXPECT_FALSE(service_.isUnderWarranty(write(platform("acme_policy_refused", 2021, 1)), reason, ""));
  EXPECT_EQ(
      "Platform 'acme_policy_refused.zdf' has been marked unsupported due to known issues. Reason: its "
      "memory "
      "controller drops writes under load",
      reason);
  EXPECT_TRUE(service_.isUnderWarranty(write(platform("acme_policy_legacy", 2015, 1)), reason, ""));
}

}  // namespace

namespace {

TEST_F(CatalogPolicy, PartitionArrayOfThePartitionedSample) {
  zr_cli::SampleOptions options;
  options.scale = 0.02;
  zr_cli::generateSample(repo_.file("sample"), options);
  const std::string file = repo_.file("sample/acme_rp/acme_rp.zdf");
  const Tree report = parse(service_.getAsJsonStr(file, true, false));
  const Tree& partitions = report.get_child("reconfigurablePartitions");
  ASSERT_EQ(2u, partitions.size());
  int i = 0;
  for (const auto& partition : partitions) {
    EXPECT_EQ("", partition.first);
    EXPECT_EQ((std::vector<std::string>{"platformHwFile", "systemClockCount", "platformHwEmuFile"}),
              keysOf(partition.second));
    EXPECT_NE(std::string::npos,
              partition.second.get<std::string>("platformHwFile").find("_rp" + std::to_string(i++)));
  }
  EXPECT_EQ("", service_.getValue(file, "reconfigurablePartitions"));
  EXPECT_EQ(report.get<std::string>("systemClockCount"), service_.getValue(file, "systemClockCount"));
  EXPECT_FALSE(
      parse(service_.getAsJsonStr(file, false, false)).get_child_optional("reconfigurablePartitions"));
}

TEST_F(CatalogPolicy, CatalogEntriesEqualTheReportsOfFullLoads) {
  // The catalog reads only what reports show of the hardware metadata, and
  // loads again in full where the policy reads the document; each entry must
  // be the report of a full load.
  zr_cli::SampleOptions options;
  options.scale = 0.02;
  options.policy = true;
  zr_cli::generateSample(repo_.file("sample"), options);
  for (const bool listed : {false, true}) {
    SCOPED_TRACE(listed ? "list names this product" : "no list");
    if (listed) writeList("{\"black_list\":[" + entry("acme_dc", "") + "]}");
    for (const bool detailed : {true, false}) {
      ::testing::internal::CaptureStdout();
      const Tree catalog = parse(service_.getAllAsJsonStr(repo_.file("sample"), detailed, false));
      ::testing::internal::GetCapturedStdout();
      ASSERT_GT(catalog.get_child("platforms").size(), 10u);
      for (const auto& item : catalog.get_child("platforms")) {
        const std::string file = item.second.get<std::string>("platformFile");
        SCOPED_TRACE(file);
        EXPECT_TRUE(item.second == parse(service_.getAsJsonStr(file, detailed, false)));
      }
    }
  }
}

}  // namespace

namespace {

// Every message as "id|args|mask", with the threads that delivered them.
class ThreadRecordingSink : public ComMsgSink {
 public:
  void receive(const ComMsg& msg) override {
    std::string line = msg.id + "|";
    for (const std::string& arg : msg.args) line += arg + ",";
    lines.push_back(line + "|" + std::to_string(msg.mask));
    threads.insert(std::this_thread::get_id());
  }
  std::vector<std::string> lines;
  std::set<std::thread::id> threads;
};

TEST_F(CatalogPolicy, WorkersGiveTheTextMessagesAndProgressOfOneThread) {
  // Good, broken, refused and unreadable platforms, some of which
  // speak while they load: whatever the number of workers, the text, the
  // console words, the messages (all on the calling thread) and the progress
  // are those of one platform after the other.
  zr_cli::SampleOptions options;
  options.count = 12;
  options.scale = 0.02;
  options.policy = true;
  zr_cli::generateSample(repo_.file("sample"), options);
  repo_.write("sample/broken/broken.zdf", "<not-a-descriptor");
  repo_.write("sample/nohw/nohw.zdf", zr_test::repoZdfText("nohw.lfa", "nohw.spfm"));
  RepoPlatform unreadable = platform("badext", 2018, 1);
  unreadable.metaJson = "{\"extended_warranty\":[\"next\"]}";
  zr_test::writeRepoPlatform(repo_.file("sample"), unreadable);
  for (const bool listed : {false, true}) {
    if (listed) writeList("{\"black_list\":[" + entry("acme_dc", "broken") + "]}");
    for (const bool detailed : {true, false}) {
      SCOPED_TRACE(std::string(listed ? "list" : "no list") + (detailed ? ", detailed" : ", short"));
      struct Run {
        std::string text, console;
        std::vector<std::string> messages;
        std::vector<std::size_t> progress;
        std::set<std::thread::id> threads;
      };
      std::vector<Run> runs;
      for (const unsigned workers : {1u, 4u}) {
        env_.setCatalogWorkers(workers);
        ThreadRecordingSink sink;
        const ScopedInstance<ComMsgSink> installed(&sink);
        Run run;
        ::testing::internal::CaptureStdout();
        run.text =
            service_.getAllAsJsonStr(repo_.file("sample"), detailed,
                                     [&](std::size_t done, std::size_t) { run.progress.push_back(done); });
        run.console = ::testing::internal::GetCapturedStdout();
        run.messages = sink.lines;
        run.threads = sink.threads;
        runs.push_back(run);
      }
      EXPECT_GT(parse(runs[0].text).get_child("platforms").size(), 10u);
      EXPECT_NE(std::string::npos, runs[0].console.find("Error"));
      EXPECT_FALSE(runs[0].messages.empty());
      EXPECT_EQ(runs[0].text, runs[1].text);
      EXPECT_EQ(runs[0].console, runs[1].console);
      EXPECT_EQ(runs[0].messages, runs[1].messages);
      EXPECT_EQ(runs[0].progress, runs[1].progress);
      EXPECT_EQ((std::set<std::thread::id>{std::this_thread::get_id()}), runs[1].threads);
    }
  }
}

}  // namespace
