#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "platform/HTEQBootImg.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSoftwarePlatformXMLReader.h"
#include "platform/HTEQSystemConfig.h"
#include "software/TEQSoftwarePlatformLMX.h"
#include "support/TestSupport.h"

using Names = std::vector<std::string>;

namespace {

// Builders of .spfm text. Each element starts on a line of its own, so that a
// failure's line number can be predicted from the pieces.
std::string spfm(const std::string& configurations, const std::string& systemAttrs = "") {
  return "<?xml version=\"1.0\"?>\n"
         "<teq:platform xmlns:teq=\"urn:teq:platform\" teq:vendor=\"acme\" teq:library=\"lib\" "
         "teq:name=\"board\" teq:version=\"1.0\">\n"
         "<teq:description>A software platform</teq:description>\n"
         "<teq:systemConfigurations" +
         systemAttrs + ">\n" + configurations + "</teq:systemConfigurations>\n</teq:platform>\n";
}

std::string configuration(const std::string& name, const std::string& body = "",
                          const std::string& attrs = "",
                          const std::string& description = "<teq:description>desc</teq:description>\n") {
  return "<teq:configuration teq:name=\"" + name + "\" teq:displayName=\"" + name + " display\"" + attrs +
         ">\n" + description + body + "</teq:configuration>\n";
}

std::string processorGroup(const std::string& name, const std::string& osAttrs,
                           const std::string& attrs = "") {
  return "<teq:processorGroup teq:name=\"" + name + "\" teq:displayName=\"" + name +
         " display\" teq:cpuType=\"cortex\"" + attrs +
         ">\n<teq:os teq:name=\"linux\" teq:displayName=\"Linux\"" + osAttrs + "/>\n</teq:processorGroup>\n";
}

std::string bootImages(const std::string& imageAttrs) {
  return "<teq:bootImages teq:default=\"standard\">\n"
         "<teq:image teq:name=\"standard\" teq:bif=\"boot.bif\" teq:readme=\"readme.txt\"" +
         imageAttrs + "/>\n</teq:bootImages>\n";
}

struct ReadResult {
  bool ok = false;
  std::string error;
  std::string printed;
};

class SoftwarePlatformReader : public ::testing::Test {
 protected:
  ReadResult read(const std::string& text) {
    file_ = dir_.write("sw/platform.spfm", text);
    HTEQSoftwarePlatformXMLReader reader(file_, &sw_);
    ReadResult r;
    ::testing::internal::CaptureStdout();
    r.ok = reader.parseFile();
    r.printed = ::testing::internal::GetCapturedStdout();
    r.error = reader.getErrorMsg();
    return r;
  }

  HTEQSystemConfig* only() {
    HTEQSoftwarePlatform::TEQSystemConfigVec configs;
    sw_.getSystemConfigs(configs);
    return configs.size() == 1 ? configs.front() : nullptr;
  }

  // Expects a parse failure reported at `line`, with the message and texts it carries.
  void expectFailureAt(const std::string& text, int line, const std::string& reasonPart = "") {
    ComMsgCapture cap;
    const ReadResult r = read(text);
    EXPECT_FALSE(r.ok);
    const std::string head =
        "Error parsing software platform file: " + file_ + "\nLine number:" + std::to_string(line) + ". ";
    EXPECT_EQ(r.error.substr(0, head.size()), head) << r.error;
    EXPECT_GT(r.error.size(), head.size()) << "the reason is missing";
    EXPECT_NE(r.error.find(reasonPart), std::string::npos) << r.error;
    EXPECT_EQ(r.printed, r.error + "\n");
    const ComMsg* msg = cap.find("@74-51@%s%d");
    ASSERT_NE(msg, nullptr);
    EXPECT_EQ(msg->args, (Names{file_, std::to_string(line)}));
    EXPECT_EQ(msg->mask, ComMsgMask::kError);
  }

  zr_test::TempDir dir_;
  std::string file_;
  HTEQSoftwarePlatform sw_;
};

}  // namespace

TEST_F(SoftwarePlatformReader, EveryCarriedAttributeReachesTheModel) {
  const std::string os =
      " teq:hypervisorGuest=\"no\" teq:includePaths=\"/inc\" teq:libraryPaths=\"/lib\" teq:libraryNames=\"m\""
      " teq:ldscript=\"l.ld\" teq:sysRoot=\"/sysroot\" teq:bspConfig=\"cfg\" teq:bspLibraryPaths=\"/bsplib\""
      " teq:bspIncludePaths=\"/bspinc\" teq:bspRepo=\"repo\" teq:compilerOptions=\"-O2 -g\""
      " teq:linkerOptions=\"-lm\" teq:osDependency=\"dep\" teq:crossCompilerType=\"gcc\" "
      "teq:toolConfig=\"tc\"";
  const std::string image =
      " teq:type=\"sd\" teq:imageData=\"img/\" teq:bootmode=\"sd\" teq:rootfs=\"rootfs.ext4\""
      " teq:mountPath=\"/mnt\" teq:qemuDevicetree=\"dt.dtb\" teq:qemuBoot=\"qboot\" "
      "teq:qemuArguments=\"qargs\""
      " teq:hwBootBin=\"BOOT.BIN\"";
  const std::string body =
      "<teq:prebuilt teq:data=\"prebuilt/dir\"/>\n" + bootImages(image) +
      processorGroup("a53", os, " teq:architecture=\"aarch64\" teq:cpuInstance=\"cpu0\"") +
      processorGroup("r5", "");
  const ReadResult r = read(
      spfm(configuration("linux_cfg", body, " teq:defaultProcessorGroup=\"r5\" teq:runtimes=\"ocl,cpp\"") +
               configuration("bare"),
           " teq:defaultConfiguration=\"bare\""));
  ASSERT_TRUE(r.ok) << r.error;
  EXPECT_EQ(r.error, "");
  EXPECT_EQ(r.printed, "");

  EXPECT_EQ(sw_.getDefaultConfigName(), "bare");
  HTEQSoftwarePlatform::TEQSystemConfigVec configs;
  sw_.getSystemConfigs(configs);
  ASSERT_EQ(configs.size(), 2u);
  const HTEQSystemConfig* c = configs[0];
  EXPECT_EQ(sw_.getDefaultSystemConfig(), configs[1]);
  EXPECT_EQ((Names{c->getName(), c->getPrettyName(), c->getDesc(), c->getPrebuiltData(),
                   c->getDefaultProcGrpName()}),
            (Names{"linux_cfg", "linux_cfg display", "desc", "prebuilt/dir", "r5"}));
  Names runtimes;
  c->getRuntimes(runtimes);
  EXPECT_EQ(runtimes, (Names{"ocl", "cpp"}));
  EXPECT_TRUE(c->isQemuSupported());

  HTEQSystemConfig::TEQProcessorGroupVec groups;
  c->getProcessorGroups(groups);
  ASSERT_EQ(groups.size(), 2u);
  const HTEQProcessorGroup* g = groups[0];
  EXPECT_EQ((Names{g->getName(), g->getPrettyName(), g->getCpuType(), g->getArch(), g->getCpuInstance(),
                   g->getOSName(), g->getOSPrettyName(), g->getIncludePaths(), g->getLibraryPaths(),
                   g->getSysRoot(), g->getBSPLibraryPaths(), g->getBSPIncludePaths(), g->getCompilerOptions(),
                   g->getLinkerOptions()}),
            (Names{"a53", "a53 display", "cortex", "aarch64", "cpu0", "linux", "Linux", "/inc", "/lib",
                   "/sysroot", "/bsplib", "/bspinc", "-O2 -g", "-lm"}));
  EXPECT_FALSE(g->IsHypervisorGuest());
  EXPECT_EQ((Names{groups[1]->getArch(), groups[1]->getIncludePaths()}), (Names{"", ""}));

  HTEQSystemConfig::TEQBootImgVec images;
  c->getBootImgs(images);
  ASSERT_EQ(images.size(), 1u);
  const HTEQBootImg* b = images[0];
  EXPECT_EQ(c->getDefaultBootImgName(), "standard");
  EXPECT_EQ((Names{b->getName(), b->getType(), b->getBif(), b->getImgData(), b->getBootMode(), b->getRootFS(),
                   b->getMountPath(), b->getReadMe(), b->getQemuDevTree(), b->getQemuBoot(), b->getQemuArgs(),
                   b->getHwBootBin()}),
            (Names{"standard", "sd", "boot.bif", "img/", "sd", "rootfs.ext4", "/mnt", "readme.txt", "dt.dtb",
                   "qboot", "qargs", "BOOT.BIN"}));

  // The second configuration has none of the optional parts.
  const HTEQSystemConfig* bare = configs[1];
  EXPECT_EQ((Names{bare->getPrebuiltData(), bare->getDefaultProcGrpName(), bare->getDefaultBootImgName()}),
            (Names{"", "", ""}));
  runtimes.clear();
  bare->getRuntimes(runtimes);
  EXPECT_TRUE(runtimes.empty());
}

TEST_F(SoftwarePlatformReader, QemuSupportFollowsFromTheImage) {
  const ReadResult r = read(spfm(configuration("none") + configuration("plain", bootImages("")) +
                                 configuration("boot", bootImages(" teq:qemuBoot=\"q\"")) +
                                 configuration("args", bootImages(" teq:qemuArguments=\"\"")) +
                                 configuration("dt", bootImages(" teq:qemuDevicetree=\"d\""))));
  ASSERT_TRUE(r.ok) << r.error;
  HTEQSystemConfig::TEQBootImgVec images;
  sw_.getSystemConfigByName("none")->getBootImgs(images);
  EXPECT_TRUE(images.empty());
  // Set, even to the empty text ("args"), counts.
  for (const auto& c : std::vector<std::pair<const char*, bool>>{
           {"none", false}, {"plain", false}, {"boot", true}, {"args", true}, {"dt", true}})
    EXPECT_EQ(sw_.getSystemConfigByName(c.first)->isQemuSupported(), c.second) << c.first;
}

TEST_F(SoftwarePlatformReader, HypervisorGuestIsTheWordYesInAnyCase) {
  const ReadResult r = read(spfm(configuration(
      "c", processorGroup("upper", " teq:hypervisorGuest=\"YES\"") +
               processorGroup("mixed", " teq:hypervisorGuest=\"yEs\"") +
               processorGroup("truth", " teq:hypervisorGuest=\"true\"") + processorGroup("unset", ""))));
  ASSERT_TRUE(r.ok) << r.error;
  const HTEQSystemConfig* c = only();
  ASSERT_NE(c, nullptr);
  for (const auto& g : std::vector<std::pair<const char*, bool>>{
           {"upper", true}, {"mixed", true}, {"truth", false}, {"unset", false}})
    EXPECT_EQ(c->getProcGrpByName(g.first)->IsHypervisorGuest(), g.second) << g.first;
}

TEST_F(SoftwarePlatformReader, RuntimesSplitAtEveryComma) {
  const ReadResult r = read(spfm(configuration("two", "", " teq:runtimes=\"ocl,cpp\"") +
                                 configuration("gap", "", " teq:runtimes=\"ocl,,cpp\"") +
                                 configuration("blank", "", " teq:runtimes=\"\"") +
                                 configuration("spaced", "", " teq:runtimes=\"ocl, cpp\"")));
  ASSERT_TRUE(r.ok) << r.error;
  auto runtimesOf = [this](const std::string& name) {
    Names out;
    sw_.getSystemConfigByName(name)->getRuntimes(out);
    return out;
  };
  EXPECT_EQ(runtimesOf("two"), (Names{"ocl", "cpp"}));
  EXPECT_EQ(runtimesOf("gap"), (Names{"ocl", "", "cpp"}));
  EXPECT_EQ(runtimesOf("blank"), Names{""});
  EXPECT_EQ(runtimesOf("spaced"), (Names{"ocl", " cpp"}));
  // A configuration whose only runtime is empty names a runtime, none supported.
  EXPECT_FALSE(sw_.isSystemConfigSupported("blank"));
}

TEST_F(SoftwarePlatformReader, UnknownDefaultConfigurationFallsBackToTheFirst) {
  const ReadResult r =
      read(spfm(configuration("first") + configuration("second"), " teq:defaultConfiguration=\"third\""));
  ASSERT_TRUE(r.ok) << r.error;
  EXPECT_EQ(sw_.getDefaultSystemConfig()->getName(), "first");
  EXPECT_EQ(sw_.getDefaultConfigName(), "third");
}

TEST_F(SoftwarePlatformReader, NonAsciiTextSurvivesTheWayThroughWideStrings) {
  const ReadResult r = read(spfm(configuration("c", "", "",
                                               "<teq:description>Gr\xC3\xBC\xC3\x9F"
                                               "e \xE2\x82\xAC</teq:description>\n")));
  ASSERT_TRUE(r.ok) << r.error;
  EXPECT_EQ(only()->getDesc(),
            "Gr\xC3\xBC\xC3\x9F"
            "e \xE2\x82\xAC");
}

TEST_F(SoftwarePlatformReader, StructuralErrorsFailWithTheirLine) {
  // Line 1 declaration, 2 root, 3 description, 4 systemConfigurations, 5 configuration.
  expectFailureAt(spfm(configuration("c", "", "", "")), 5, "configuration");  // description missing
  expectFailureAt(
      spfm("<teq:configuration teq:displayName=\"x\">\n<teq:description/>\n</teq:configuration>\n"), 5,
      "configuration");  // name missing
  expectFailureAt(spfm(configuration("c", "<teq:unknown/>\n")), 7);
  expectFailureAt(spfm(configuration("c", processorGroup("g", "") + "<teq:prebuilt teq:data=\"d\"/>\n")), 10);
  expectFailureAt(
      spfm(configuration("c", "<teq:prebuilt teq:data=\"a\"/>\n<teq:prebuilt teq:data=\"b\"/>\n")), 8);
  expectFailureAt(spfm(configuration("c", "<teq:prebuilt/>\n")), 7, "prebuilt");
  expectFailureAt(spfm(configuration("c", processorGroup("g", " teq:colour=\"red\""))), 8);
  expectFailureAt(spfm(""), 4, "systemConfigurations");  // no configuration at all
  expectFailureAt(spfm(configuration("c", "<teq:bootImages teq:default=\"x\">\n</teq:bootImages>\n")), 7);
}

TEST_F(SoftwarePlatformReader, RootErrorsFail) {
  std::string badVersion = spfm(configuration("c"));
  badVersion.replace(badVersion.find("teq:version=\"1.0\""), 17, "teq:version=\"one\"");
  expectFailureAt(badVersion, 2, "version");

  std::string noVendor = spfm(configuration("c"));
  noVendor.replace(noVendor.find("teq:vendor=\"acme\" "), 18, "");
  expectFailureAt(noVendor, 2, "platform");

  std::string otherNamespace = spfm(configuration("c"));
  otherNamespace.replace(otherNamespace.find("urn:teq:platform"), 16, "urn:teq:other");
  expectFailureAt(otherNamespace, 2);

  expectFailureAt("<?xml version=\"1.0\"?>\n<teq:platform xmlns:teq=\"urn:teq:platform\">\n<oops>\n", 4);
  expectFailureAt("", 1, "empty");
}

TEST_F(SoftwarePlatformReader, MissingFileThrowsAndAVanishedOneFails) {
  HTEQSoftwarePlatform sw;
  const std::string missing = dir_.file("none.spfm");
  try {
    HTEQSoftwarePlatformXMLReader reader(missing, &sw);
    FAIL() << "no exception";
  } catch (const HEXFileNotFoundException& e) {
    EXPECT_EQ(e.getFileName(), missing);
  }

  // A directory exists but is no document.
  ComMsgCapture cap;
  HTEQSoftwarePlatformXMLReader reader(dir_.path(), &sw);
  ::testing::internal::CaptureStdout();
  EXPECT_FALSE(reader.parseFile());
  ::testing::internal::GetCapturedStdout();
  EXPECT_TRUE(cap.has("@74-51@%s%d"));
  EXPECT_NE(reader.getErrorMsg(), "");
}

TEST_F(SoftwarePlatformReader, ErrorTextIsClearedByASuccessfulParse) {
  ComMsgCapture cap;
  const std::string path = dir_.write("again.spfm", "<broken");
  HTEQSoftwarePlatformXMLReader reader(path, &sw_);
  ::testing::internal::CaptureStdout();
  EXPECT_FALSE(reader.parseFile());
  ::testing::internal::GetCapturedStdout();
  EXPECT_NE(reader.getErrorMsg(), "");
  zr_test::writeFile(path, spfm(configuration("c")));
  EXPECT_TRUE(reader.parseFile());
  EXPECT_EQ(reader.getErrorMsg(), "");
}

TEST(TEQSoftwarePlatformRecords, KeepSetFlagsAndWriteBackInFormatOrder) {
  using namespace TEQSoftwarePlatform;
  const std::string text =
      spfm(configuration("c",
                         bootImages(" teq:hwBootBin=\"B\" teq:type=\"t\"") +
                             processorGroup("g", " teq:toolConfig=\"tc\" teq:hypervisorGuest=\"\""),
                         " teq:runtimes=\"ocl\""),
           " teq:defaultConfiguration=\"c\"");
  std::string spaced = text;
  spaced.replace(spaced.find("teq:version=\"1.0\""), 17, "teq:version=\" 1.10 \" teq:schemaVersion=\"2\"");
  const Platform p = unmarshalString(spaced, "mem.spfm");
  EXPECT_EQ(p.GetVersion().get_as_string(), "1.10");
  EXPECT_EQ(p.GetSchemaVersion().get_as_string(), "2");
  EXPECT_EQ(HI18N::convert(p.GetDescription()), "A software platform");
  ASSERT_EQ(p.GetSystemConfigurations().SizeConfiguration(), 1u);
  const Configuration& c = p.GetSystemConfigurations().GetConfiguration(0);
  EXPECT_TRUE(c.IssetRuntimes());
  EXPECT_FALSE(c.IssetDefaultProcessorGroup());
  EXPECT_FALSE(c.IssetPrebuilt());
  ASSERT_TRUE(c.IssetBootImages());
  EXPECT_FALSE(c.GetBootImages().GetImage().IssetImageData());
  EXPECT_TRUE(c.GetBootImages().GetImage().IssetHwBootBin());
  const Os& os = c.GetProcessorGroup(0).GetOs();
  EXPECT_TRUE(os.IssetHypervisorGuest());
  EXPECT_TRUE(os.GetHypervisorGuest().empty());
  EXPECT_EQ(HI18N::convert(os.GetToolConfig()), "tc");
  EXPECT_FALSE(os.IssetIncludePaths());

  // Written back, the attributes come in the order of the format, whatever
  // order the document had, and the text reads back to the same records.
  const std::string written = marshal(p);
  EXPECT_LT(written.find("teq:type=\"t\""), written.find("teq:hwBootBin=\"B\""));
  EXPECT_LT(written.find("teq:hypervisorGuest"), written.find("teq:toolConfig"));
  EXPECT_LT(written.find("<teq:bootImages"), written.find("<teq:processorGroup"));
  const Platform again = unmarshalString(written, "again.spfm");
  EXPECT_EQ(marshal(again), written);

  // Records that break the format are refused before anything is written.
  Platform broken = p;
  broken.GetSystemConfigurations().GetConfiguration(0).UnsetName();
  EXPECT_THROW(marshal(broken), HXMLException);
}
