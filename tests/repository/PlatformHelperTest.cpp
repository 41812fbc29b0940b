#include <sys/stat.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/HBOBoard.h"
#include "host/HBOBoardCDataManager.h"
#include "host/HBOBoardComponent.h"
#include "platform/HTEQPlatformHelper.h"
#include "platform/HTEQPlatformUtils.h"
#include "platform/HTEQSystemConfig.h"
#include "repository/QueryRepo.h"

using namespace zr_test;
using Names = std::vector<std::string>;
using H = HTEQPlatformHelper;

namespace {

class PlatformHelper : public QueryRepo {};

TEST_F(PlatformHelper, NamedConstructorFindsExactlyOneDescriptorOrStaysInvalid) {
  const std::string fifo = dir_.file("pipe.zdf");
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  writeFile(dir_.file("junk.zdf"), "<teq:platform");
  struct Row {
    std::string name;
    Names repos;
    std::string file;  // "" for an invalid helper
  } rows[] = {
      {"emb", {user_}, emb_},
      {"uni", {}, factory_ + "/uni/uni.zdf"},  // the application root's repository is a default
      {emb_, {}, emb_},                        // an existing path loads without a search
      {"dc", {user_}, ""},                     // two descriptors answer
      {"nope", {user_}, ""},
      {"", {user_}, ""},
      {fifo, {}, ""},
      {dir_.file("junk.zdf"), {}, ""},
      {user_, {}, ""},  // a directory
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    H helper(r.name, r.repos, {});
    EXPECT_EQ(!r.file.empty(), helper.isValid());
    EXPECT_EQ(r.file, helper.getPlatformFile());
  }
}

// Every operation on an invalid helper, grouped; each group gives "" when
// every answer in it is the safe one (false, 0, "", null, a list left as it was).
TEST_F(PlatformHelper, InvalidHelperAnswersSafely) {
  using Op = std::function<std::string(H&)>;
  auto b = [](bool v) { return v ? std::string("true") : std::string(); };
  auto n = [](long long v) { return v ? std::to_string(v) : std::string(); };
  auto list = [](const std::function<void(Names&)>& fill) {
    Names out{"keep"};
    fill(out);
    return out == Names{"keep"} ? std::string() : std::string("changed");
  };
  auto two = [](const std::function<void(Names&, Names&)>& fill) {
    Names a{"keep"}, c{"keep"};
    fill(a, c);
    return a.size() + c.size() == 2 ? std::string() : std::string("changed");
  };
  const std::vector<std::pair<const char*, Op>> ops = {
      {"names",
       [](H& h) {
         return h.getVendor() + h.getLibrary() + h.getName() + h.getVersion() + h.getDescription() +
                h.getUniqueName() + h.getPlatformBaseName() + h.getPlatformFile() + h.getPlatformDir() +
                h.getDeviceName() + h.getSoftwarePlatformFile();
       }},
      {"kinds",
       [&](H& h) {
         return b(h.isUnifiedPlatform() || h.isUnified() || h.isExpandablePlatform() || h.isFixedPlatform() ||
                  h.isPartialPlatform() || h.hasSimContent() || h.isProcessorGroupRelevant() ||
                  h.isLinuxRootFSPathRelevant() || h.hasBootImg() || h.hasDimmConnectors());
       }},
      {"software",
       [&](H& h) {
         Names o;
         return b(h.getDefaultSystemConfig() != nullptr || h.getSystemConfigByName("linux_cfg") != nullptr ||
                  h.isSystemConfigSupported("linux_cfg") || h.isRuntimeSupported("ocl") ||
                  h.isQemuSupported("linux_cfg") || h.supportsMultipleRuntimes()) +
                n(h.getSysConfigNames(o)) + (o.empty() ? "" : "changed") + n(h.getNumRuntimes("")) +
                h.getIncludePaths("linux_cfg", "apu", "linux") +
                h.getLibraryPaths("linux_cfg", "apu", "linux");
       }},
      {"lists",
       [&](H& h) {
         return list([&](Names& o) { h.getTargetCategories(o); }) +
                list([&](Names& o) { h.getRuntimes("", o); }) +
                list([&](Names& o) { h.getRuntimesByPrettyName("", o); }) +
                list([&](Names& o) { h.getUniqueMemoryTypeStrings(o); }) +
                list([&](Names& o) { h.getValidSLRNames(o); }) +
                list([&](Names& o) { h.getCpuClockNames(o); }) +
                list([&](Names& o) { h.getSystemClockNames(o); }) +
                list([&](Names& o) { h.getBoardImgZipEntries(o); }) +
                list([&](Names& o) { h.getDimmConnectors(o); }) +
                list([&](Names& o) { h.getLockedDimmConnectors(o); }) +
                list([&](Names& o) { h.getCompatibleConnectors("dimm0", o); });
       }},
      {"pairs",
       [&](H& h) {
         return two([&](Names& a, Names& c) { h.getAllResources(a, c); }) +
                two([&](Names& a, Names& c) { h.getAllClockFrequencies(a, c); }) +
                two([&](Names& a, Names& c) { h.getConnectedDimmConnectors(a, c); });
       }},
      {"part", [](H& h) { return h.getFpgaPart() + h.getFpgaPartAsFields() + h.getFpgaDevice(); }},
      {"resources",
       [&](H& h) {
         return n(h.getBRAMCount() + h.getDSPCount() + h.getFFCount() + h.getLUTCount() + h.getNumDDRs() +
                  h.getNumComputeUnits());
       }},
      {"memories",
       [&](H& h) {
         return h.getMemType() + h.getMemSize() + h.getMemorySize("DDR", 0) + h.getMemorySLR("DDR", 0) +
                n(h.isMemoryResourceIndexed() + h.getUniqueMemoryTypeCount() + h.getMemoryTypeCount("DDR") +
                  h.getMemoryIndex("DDR", 0));
       }},
      {"clocks",
       [](H& h) {
         return h.getDefaultClockFrequency() + h.getDefaultClockId() + h.getClockFrequency("c") +
                h.getClockId("c") + h.getPlatformFrequency(0);
       }},
      {"host and board",
       [](H& h) {
         return h.getHostArch() + h.getInterfaceDesc() + h.getBoardId() + h.getPlatformBoardRepo() +
                h.getBoardConnectionsString() + h.getLockedBoardConnectionsString() +
                h.getUnlockedBoardConnectionsString() + h.getConnectorDisplayName("dimm0");
       }},
  };
  H direct(nullptr);
  H named("nope", {user_}, {});
  for (H* helper : {&direct, &named}) {
    ASSERT_FALSE(helper->isValid());
    for (const auto& op : ops) EXPECT_EQ("", op.second(*helper)) << op.first;
  }
  // The same table tells a valid helper apart, so it does exercise the operations.
  H valid("emb", {user_}, {});
  ASSERT_TRUE(valid.isValid());
  int answered = 0;
  for (const auto& op : ops) answered += op.second(valid).empty() ? 0 : 1;
  EXPECT_GE(answered, 8);
}

TEST_F(PlatformHelper, ForwardsToThePlatformAndItsSoftware) {
  H helper("emb", {user_}, {});
  ASSERT_TRUE(helper.isValid());
  EXPECT_EQ("emb", helper.getPlatformBaseName());
  EXPECT_EQ("dev2-pkg2-1-i", helper.getFpgaPart());
  EXPECT_EQ(kPartB, helper.getFpgaPartAsFields());
  EXPECT_EQ("eboard", helper.getBoardId());
  EXPECT_TRUE(helper.isProcessorGroupRelevant());
  ASSERT_NE(nullptr, helper.getDefaultSystemConfig());
  EXPECT_EQ(helper.getDefaultSystemConfig(), helper.getSystemConfigByName("Linux"));
  Names configs;
  EXPECT_EQ(1, helper.getSysConfigNames(configs));
  EXPECT_EQ(0, helper.getSysConfigNames(configs, "dynamic") - 1);
  EXPECT_EQ("/inc/emb", helper.getIncludePaths("linux_cfg", "apu", "linux"));
  EXPECT_EQ("", helper.getIncludePaths("linux_cfg", "apu", "Linux"));
  Names runtimes;
  helper.getRuntimesByPrettyName("", runtimes);
  EXPECT_EQ(Names{"C/C++"}, runtimes);
}

TEST_F(PlatformHelper, BootImageFollowsIntentOrHostInterface) {
  struct Row {
    std::string name;
    bool boot;
  } rows[] = {{"emb", true},     // not unified, embedded
              {dcNew_, false},   // not unified, data center
              {"axi", true},     // unified, AXI host interface
              {"uni", false},    // unified, PCIe
              {"bare", false}};  // unified, no host interface
  for (const Row& r : rows) {
    H helper(HTEQPlatformUtils::getPlatform(r.name));
    ASSERT_TRUE(helper.isValid()) << r.name;
    EXPECT_EQ(r.boot, helper.hasBootImg()) << r.name;
  }
}

// A board store with one board of three connectors, two of them DIMM
// connectors; every connector is compatible with the last two. It records the
// paths it holds when asked for a board, and may throw there.
struct FakeConnector : HBOBoardComponent {
  FakeConnector(std::string n, std::string d, bool dimm)
      : name(std::move(n)), display(std::move(d)), isDimm(dimm) {}
  std::string getName() const override { return name; }
  std::string getDisplayName() const override { return display; }
  bool isDIMMConnector() const override { return isDimm; }
  std::string name, display;
  bool isDimm;
};

struct FakeBoard : HBOBoard {
  void getConnectorsList(std::vector<HBOBoardComponent*>& out) const override {
    for (auto* each : connectors) out.push_back(each);
  }
  void getCompatibleConnectorsList(const HBOBoardComponent*,
                                   std::vector<HBOBoardComponent*>& out) const override {
    out.push_back(connectors[1]);
    out.push_back(connectors[2]);
  }
  FakeConnector a{"dimm0", "DIMM A", true}, b{"dimm1", "DIMM B", true}, g{"gpio", "GPIO", false};
  std::vector<FakeConnector*> connectors{&a, &b, &g};
};

FakeBoard gBoard;
std::vector<std::string> gStorePaths, gPathsAtLookup;
bool gThrow = false;
int gLookups = 0;

struct FakeStore : HBOBoardCDataManager {
  void setBoardPartRepoPaths(const std::vector<std::string>& paths) override { gStorePaths = paths; }
  std::vector<std::string> getBoardPartRepoPaths() const override { return gStorePaths; }
  HBOBoard* getBoard(const std::string& part) override {
    ++gLookups;
    gPathsAtLookup = gStorePaths;
    if (gThrow) throw std::runtime_error("store failed");
    return part == "acme:eboard:1.0" ? &gBoard : nullptr;
  }
};

TEST_F(PlatformHelper, CompatibleConnectorsRestoreBoardPathsOnEveryWayOut) {
  ScopedBoardStoreFactory factory(
      []() -> std::unique_ptr<HBOBoardCDataManager> { return std::make_unique<FakeStore>(); });
  gThrow = false;
  H helper("emb", {user_}, {"/boards/one"});
  ASSERT_TRUE(helper.isValid());
  struct Row {
    std::string connector;
    Names expected;
  } rows[] = {{"dimm a", {"dimm1"}}, {"dimm0", {"dimm1"}}, {"DIMM0", {}}, {"gpio", {}}, {"nope", {}}};
  for (const Row& r : rows) {
    SCOPED_TRACE(r.connector);
    Names out;
    gPathsAtLookup.clear();
    helper.getCompatibleConnectors(r.connector, out);
    EXPECT_EQ(r.expected, out);
    EXPECT_EQ(2u, gPathsAtLookup.size());  // the platform's board repository behind the current ones
    EXPECT_EQ(Names{"/boards/one"}, gStorePaths);
  }
  gThrow = true;
  Names out;
  EXPECT_THROW(helper.getCompatibleConnectors("dimm0", out), std::runtime_error);
  gThrow = false;
  Names paths;
  helper.getBoardRepoPaths(paths);
  EXPECT_EQ(Names{"/boards/one"}, paths);
  EXPECT_EQ(Names{"/boards/one"}, gStorePaths);
  helper.clearBoardRepoPaths();
  EXPECT_TRUE(gStorePaths.empty());

  // A helper made on a platform has no store and asks none.
  const int before = gLookups;
  H direct(HTEQPlatformUtils::getPlatform("emb"));
  direct.getCompatibleConnectors("dimm0", out);
  EXPECT_EQ(before, gLookups);
}

}  // namespace
