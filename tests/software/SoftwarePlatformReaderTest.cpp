#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSoftwarePlatformXMLReader.h"
#include "platform/HTEQSystemConfig.h"
#include "software/TEQSoftwarePlatformLMX.h"
#include "support/ExpectThrowMsg.h"
#include "support/TestSupport.h"
#include "support/TextPatch.h"

using Names = std::vector<std::string>;
using zr_test::patched;

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

  zr_test::TempDir dir_;
  std::string file_;
  HTEQSoftwarePlatform sw_;
};

}  // namespace

// The JSON text of the model carries every attribute the model keeps, in its
// key order; what it leaves out (architecture, default pointers) is asserted
// on its own.
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
  const std::string desc = "Gr\u00FC\u00DFe \u20AC";  // through wide strings and back
  const std::string body =
      "<teq:prebuilt teq:data=\"prebuilt/dir\"/>\n" + bootImages(image) +
      processorGroup("a53", os, " teq:architecture=\"aarch64\" teq:cpuInstance=\"cpu0\"") +
      processorGroup("r5", "");
  const ReadResult r =
      read(spfm(configuration("linux_cfg", body, " teq:defaultProcessorGroup=\"r5\" teq:runtimes=\"ocl,cpp\"",
                              "<teq:description>" + desc + "</teq:description>\n") +
                    configuration("bare"),
                " teq:defaultConfiguration=\"bare\""));
  ASSERT_TRUE(r.ok) << r.error;
  EXPECT_EQ(r.error + r.printed, "");
  EXPECT_EQ(
      zr_test::flatJson(sw_),
      R"({"defaultConfig":"bare","systemConfigurations":[{"name":"linux_cfg",)"
      R"("prettyName":"linux_cfg display","description":")" +
          desc +
          R"(","defaultProcessorGroup":"r5","defaultBootImage":"standard","prebuiltData":"prebuilt\/dir",)"
          R"("qemu":"true","processorGroups":[{"name":"a53","prettyName":"a53 display","cpuType":"cortex",)"
          R"("cpuInstance":"cpu0","osPrettyName":"Linux","osName":"linux","osIncludePaths":"\/inc",)"
          R"("osLibraryPaths":"\/lib","osCompilerOptions":"-O2 -g","osLinkerOptions":"-lm",)"
          R"("osHypervisorGuest":"false","osBSPIncludePaths":"\/bspinc","osBSPLibraryPaths":"\/bsplib",)"
          R"("osSysRoot":"\/sysroot"},{"name":"r5","prettyName":"r5 display","cpuType":"cortex",)"
          R"("osPrettyName":"Linux","osName":"linux","osHypervisorGuest":"false"}],"bootImages":[{)"
          R"("name":"standard","type":"sd","bif":"boot.bif","data":"img\/","rootFileSystem":"rootfs.ext4",)"
          R"("bootMode":"sd","mountPath":"\/mnt","readMe":"readme.txt","qemuArgs":"qargs",)"
          R"("qemuBoot":"qboot","qemuDevTree":"dt.dtb","hwBootBin":"BOOT.BIN"}],"runtimes":["ocl","cpp"]},)"
          R"({"name":"bare","prettyName":"bare display","description":"desc","qemu":"false"}]})");
  HTEQSoftwarePlatform::TEQSystemConfigVec configs;
  sw_.getSystemConfigs(configs);
  ASSERT_EQ(configs.size(), 2u);
  EXPECT_EQ(sw_.getDefaultSystemConfig(), configs[1]);
  EXPECT_EQ(configs[0]->getProcGrpByName("a53")->getArch(), "aarch64");
  EXPECT_EQ(configs[0]->getProcGrpByName("r5")->getArch(), "");
}

TEST_F(SoftwarePlatformReader, DerivedValuesFollowTheAttributes) {
  const struct {
    const char* name;
    std::string body;
    std::string attrs;
    bool qemu;
    Names runtimes;
  } rows[] = {
      {"none", "", "", false, {}},
      {"plain", bootImages(""), " teq:runtimes=\"ocl,cpp\"", false, {"ocl", "cpp"}},
      {"boot", bootImages(" teq:qemuBoot=\"q\""), " teq:runtimes=\"ocl,,cpp\"", true, {"ocl", "", "cpp"}},
      // A qemu attribute counts when set, even to the empty text.
      {"args", bootImages(" teq:qemuArguments=\"\""), " teq:runtimes=\"\"", true, {""}},
      {"dt", bootImages(" teq:qemuDevicetree=\"d\""), " teq:runtimes=\"ocl, cpp\"", true, {"ocl", " cpp"}},
  };
  std::string configs;
  for (const auto& row : rows) configs += configuration(row.name, row.body, row.attrs);
  const std::string guests = processorGroup("upper", " teq:hypervisorGuest=\"YES\"") +
                             processorGroup("mixed", " teq:hypervisorGuest=\"yEs\"") +
                             processorGroup("truth", " teq:hypervisorGuest=\"true\"") +
                             processorGroup("unset", "");
  const ReadResult r =
      read(spfm(configs + configuration("groups", guests), " teq:defaultConfiguration=\"x\""));
  ASSERT_TRUE(r.ok) << r.error;
  for (const auto& row : rows) {
    const HTEQSystemConfig* c = sw_.getSystemConfigByName(row.name);
    EXPECT_EQ(c->isQemuSupported(), row.qemu) << row.name;
    Names runtimes;
    c->getRuntimes(runtimes);
    EXPECT_EQ(runtimes, row.runtimes) << row.name;
  }
  // A configuration whose only runtime is empty names a runtime, none supported.
  EXPECT_FALSE(sw_.isSystemConfigSupported("args"));
  // A default that names no configuration falls back to the first.
  EXPECT_EQ(sw_.getDefaultSystemConfig()->getName(), "none");
  EXPECT_EQ(sw_.getDefaultConfigName(), "x");
  // A hypervisor guest is the word "yes" in any case.
  const HTEQSystemConfig* groups = sw_.getSystemConfigByName("groups");
  for (const auto& g : std::vector<std::pair<const char*, bool>>{
           {"upper", true}, {"mixed", true}, {"truth", false}, {"unset", false}})
    EXPECT_EQ(groups->getProcGrpByName(g.first)->IsHypervisorGuest(), g.second) << g.first;
}

// Each failure is reported at its line (1 declaration, 2 root, 3 description,
// 4 systemConfigurations, 5 configuration), as message "@74-51@%s%d" and as
// the error text, which is also printed.
TEST_F(SoftwarePlatformReader, InvalidDocumentsFailWithTheirLine) {
  const std::string good = spfm(configuration("c"));
  const struct {
    std::string text;
    int line;
    const char* reason;
  } rows[] = {
      {spfm(configuration("c", "", "", "")), 5, "configuration"},  // no description
      {patched(good, "teq:name=\"c\" ", ""), 5, "configuration"},
      {spfm(configuration("c", processorGroup("g", "") + "<teq:prebuilt teq:data=\"d\"/>\n")), 10, ""},
      {spfm(configuration("c", "<teq:prebuilt teq:data=\"a\"/>\n<teq:prebuilt teq:data=\"b\"/>\n")), 8, ""},
      {spfm(configuration("c", "<teq:prebuilt/>\n")), 7, "prebuilt"},
      {spfm(""), 4, "systemConfigurations"},
      {spfm(configuration("c", "<teq:bootImages teq:default=\"x\">\n</teq:bootImages>\n")), 7, ""},
      {patched(good, "teq:version=\"1.0\"", "teq:version=\"one\""), 2, "version"},
      {patched(good, "teq:vendor=\"acme\" ", ""), 2, "platform"},
      {patched(good, "urn:teq:platform", "urn:teq:other"), 2, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    ComMsgCapture cap;
    const ReadResult r = read(row.text);
    EXPECT_FALSE(r.ok);
    const std::string head =
        "Error parsing software platform file: " + file_ + "\nLine number:" + std::to_string(row.line) + ". ";
    EXPECT_EQ(r.error.substr(0, head.size()), head);
    EXPECT_GT(r.error.size(), head.size()) << "the reason is missing";
    EXPECT_NE(r.error.find(row.reason), std::string::npos) << r.error;
    EXPECT_EQ(r.printed, r.error + "\n");
    const ComMsg* msg = cap.find("@74-51@%s%d");
    ASSERT_NE(msg, nullptr);
    EXPECT_EQ(msg->args, (Names{file_, std::to_string(row.line)}));
    EXPECT_EQ(msg->mask, ComMsgMask::kError);
  }
}

TEST_F(SoftwarePlatformReader, MissingFileThrowsAndASuccessfulParseClearsTheError) {
  EXPECT_THROW_MSG(HTEQSoftwarePlatformXMLReader(dir_.file("none.spfm"), &sw_), HEXFileNotFoundException,
                   dir_.file("none.spfm"));
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
      patched(spfm(configuration("c",
                                 bootImages(" teq:hwBootBin=\"B\" teq:type=\"t\"") +
                                     processorGroup("g", " teq:toolConfig=\"tc\" teq:hypervisorGuest=\"\""),
                                 " teq:runtimes=\"ocl\""),
                   " teq:defaultConfiguration=\"c\""),
              "teq:version=\"1.0\"", "teq:version=\" 1.10 \" teq:schemaVersion=\"2\"");
  const Platform p = unmarshalString(text, "mem.spfm");
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
