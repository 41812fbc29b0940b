#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HUTFile.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/HTEQSemanticLabelReader.h"
#include "support/TestSupport.h"

using zr_test::TempDir;
using Tree = boost::property_tree::ptree;

namespace {

// Two uuids of each kind, a DMA and a bridge BAR, endpoints in the root and
// in a partition (one with interrupts and firmware), a CPU endpoint and two
// debug networks.
const char* const kLabels = R"({
  "uuid": {"uuid_type": "logic", "uuid_design_component": "a", "uuid": "L1"},
  "uuid": {"uuid_type": "interface", "uuid_design_component": "b", "uuid": "I1"},
  "uuid": {"uuid_type": "logic", "uuid_design_component": "c", "uuid": "L2"},
  "pcie_bar": {"bar_type": "DMA", "physical_function": "1", "bar": "2", "dma_type": "qdma"},
  "pcie_bar": {"bar_type": "AXI_Bridge_Master", "physical_function": "0", "bar": "0",
               "offset": "0xabc", "range": "4096"},
  "pcie_endpoint": {"endpoint_name": "ep.root", "cell_vlnv": "v", "cell": "c", "interface": "i",
      "addr_seg": "s", "reg_abs": "ra", "partition": "p", "partition_path": "/", "addr": "0x1f000",
      "range": "0x1000", "physical_function": "0", "bar": "2", "interrupt_source": "irq",
      "interrupt_sink_start": "10", "interrupt_sink_end": "0x1f", "firmware_product": "fw",
      "firmware_branch": "main", "firmware_version": "3.14"},
  "pcie_endpoint": {"endpoint_name": "ep_part", "cell_vlnv": "v", "cell": "c", "interface": "i",
      "addr_seg": "s", "reg_abs": "", "partition": "p", "partition_path": "/slot0", "addr": "16",
      "range": "010", "physical_function": "1", "bar": "4"},
  "cpu_endpoint": {"endpoint_name": "cpu", "cell_vlnv": "v", "cell": "c", "interface": "i",
      "addr_seg": "s", "reg_abs": "r", "partition": "p", "partition_path": "/", "addr": "0",
      "range": "1", "cpu_type": "arm"},
  "debug_network": {"physical_function": "0", "bar": "1", "bar_addr": "0", "system_addr": "0xdead",
      "partition": "p", "partition_path": "/", "supports_corvex_debug": "true",
      "supports_jtag_fallback": "yes"},
  "debug_network": {"physical_function": "2", "bar": "3", "bar_addr": "0", "system_addr": "1",
      "partition": "p", "partition_path": "/", "supports_corvex_debug": "false",
      "supports_jtag_fallback": "true"}
})";

// The generated documents, as the contract states them, in the flat form.
const char* const kPartitionMetadata =
    R"({"partition_metadata":{"interfaces":[{"interface_uuid":"I1"}],)"
    R"("pcie":{"bars":[{"pcie_physical_function":"0x1","pcie_base_address_register":"0x2",)"
    R"("offset":"0x0000000000000000","range":"0x0000000000000010"},{"pcie_physical_function":"0x0",)"
    R"("pcie_base_address_register":"0x0","offset":"0x0000000000000ABC","range":"0x0000000000001000"}]},)"
    R"("addressable_endpoints":{"ep_qdma_00":{"pcie_physical_function":"0x1",)"
    R"("pcie_base_address_register":"0x2","offset":"0x0000000000000000","range":"0x0000000000000010",)"
    R"("register_abstraction_type":"platforms.zr.example:reg_abs:qdma:1.0"},)"
    R"("ep.root":{"pcie_physical_function":"0x0","pcie_base_address_register":"0x2",)"
    R"("offset":"0x000000000001F000","range":"0x0000000000001000","register_abstraction_type":"ra",)"
    R"("msix_interrupt_start_index":"0x0A","msix_interrupt_end_index":"0x1F",)"
    R"("firmware":{"firmware_product_name":"fw","firmware_branch_name":"main","firmware_version_major":"3",)"
    R"("firmware_version_minor":"14"}}},"schema_version":{"minor":"0x0","major":"0x1"},"logic_uuid":"L2"}})";

const char* const kExtMetadata =
    R"({"rovapk":{"append_sections":{"partition_metadata":{"interfaces":[{"interface_uuid":"I1"}],)"
    R"("addressable_endpoints":{"ep_part":{"pcie_physical_function":"0x1",)"
    R"("pcie_base_address_register":"0x4","offset":"0x0000000000000010","range":"0x0000000000000008",)"
    R"("register_abstraction_type":""}},"schema_version":{"minor":"0x0","major":"0x1"}}}},)"
    R"("lumiprobe_debug":{"debug_networks":{"mgmt":{"is_user_visible":"false",)"
    R"("name":"Management Debug Network","pcie_pf":"0","bar_number":"1",)"
    R"("axi_baseaddr":"0x000000000000DEAD","supports_corvex_debug":"true",)"
    R"("supports_jtag_fallback":"false"},"pf2":{"is_user_visible":"true",)"
    R"("name":"Debug network for physical function 2","pcie_pf":"2","bar_number":"3",)"
    R"("axi_baseaddr":"0x0000000000000001","supports_corvex_debug":"false",)"
    R"("supports_jtag_fallback":"true"}}}})";

Tree treeOf(const std::string& text) {
  Tree t;
  HTEQJSONUtils::readJSON(text, t, "labels");
  return t;
}

}  // namespace

TEST(SemanticLabels, RepresentativeFileGivesTheGoldenDocumentsInEveryForm) {
  TempDir dir;
  HTEQSemanticLabelReader reader;
  ComMsgCapture capture;
  ASSERT_TRUE(reader.parseFile(dir.write("labels.json", kLabels)));
  EXPECT_TRUE(capture.messages().empty());
  EXPECT_EQ(reader.getCpuEndpoints().size(), 1u);
  std::ostringstream partition, ext;
  reader.generatePartitionMetadata(partition);
  reader.generateExtMetadata("/top/slot0", ext);
  EXPECT_EQ(zr_test::flat(partition.str()), kPartitionMetadata);
  EXPECT_EQ(zr_test::flat(ext.str()), kExtMetadata);
  // The file form holds the same text, and reads back as the same tree.
  reader.generatePartitionMetadata(dir.file("pm.json"));
  reader.generateExtMetadata("/top/slot0", dir.file("ext.json"));
  EXPECT_EQ(zr_test::readFile(dir.file("pm.json")), partition.str());
  EXPECT_EQ(zr_test::readFile(dir.file("ext.json")), ext.str());
  Tree direct;
  reader.generateExtMetadata("/top/slot0", direct);
  EXPECT_EQ(treeOf(zr_test::readFile(dir.file("ext.json"))), direct);
}

TEST(SemanticLabels, SelectionAndNumberForms) {
  const std::string ep =
      R"("endpoint_name": "e", "cell_vlnv": "v", "cell": "c", "interface": "i", "addr_seg": "s",
         "reg_abs": "r", "partition": "p", "physical_function": "0", "bar": "0", "range": "1")";
  struct Case {
    std::string fields;  // partition path and address of the one endpoint
    std::string path;    // asked partition path
    std::string offset;  // expected "offset", "" when the endpoint is not taken
  } cases[] = {
      {R"("partition_path": "", "addr": "0")", "/any/where", "0x0000000000000000"},
      {R"("partition_path": "/", "addr": "0x10")", "/", "0x0000000000000010"},
      {R"("partition_path": "/b", "addr": "0X1f")", "/a/b", "0x000000000000001F"},
      {R"("partition_path": "/b", "addr": "1")", "/b/a", ""},
      {R"("partition_path": "/a/b", "addr": "1")", "b", ""},
      {R"("partition_path": "/", "addr": "017")", "/", "0x000000000000000F"},
      {R"("partition_path": "/", "addr": "18446744073709551615")", "/", "0xFFFFFFFFFFFFFFFF"},
  };
  for (const auto& c : cases) {
    HTEQSemanticLabelReader reader;
    reader.parseRoot(treeOf("{\"pcie_endpoint\": {" + ep + ", " + c.fields + "}}"));
    Tree out;
    reader.generateExtMetadata(c.path, out);
    const auto got = out.get_optional<std::string>(
        Tree::path_type("rovapk/append_sections/partition_metadata/addressable_endpoints/e/offset", '/'));
    EXPECT_EQ(got.value_or(""), c.offset) << c.fields << " at " << c.path;
  }
}

TEST(SemanticLabels, FailuresSendTheirIdAndKeepThePartialRecord) {
  struct Case {
    std::string text;
    const char* id;
    std::size_t records;  // records of the member's kind still listed
  } cases[] = {
      {R"({"uuid": {"uuid_type": "logic"}})", "@74-82@", 1},
      {R"({"pcie_bar": {"bar_type": "DMA", "physical_function": "1", "bar": "0"}})", "@74-85@", 1},
      {R"({"pcie_bar": {"bar_type": "x", "physical_function": "-1", "bar": "0"}})", "@74-85@", 1},
      {R"({"pcie_bar": {"bar_type": "x", "physical_function": "0", "bar": "0", "range": "0x1ffffffffffffffff"}})",
       "@74-85@", 1},
      {R"({"pcie_endpoint": {"endpoint_name": "e"}})", "@74-84@", 1},
      {R"({"pcie_endpoint": {"endpoint_name": "e"}})", "@74-83@", 1},
      {R"({"cpu_endpoint": {"endpoint_name": {"x": "y"}}})", "@74-80@", 1},
      {R"({"debug_network": {"physical_function": "4294967296"}})", "@74-81@", 1},
      {R"({"widget": {}})", "@74-88@%s", 0},
  };
  for (const auto& c : cases) {
    ComMsgCapture capture;
    HTEQSemanticLabelReader reader;
    reader.parseRoot(treeOf(c.text));
    EXPECT_TRUE(capture.has(c.id)) << c.text;
    const std::size_t n = reader.getUuids().size() + reader.getPcieBars().size() +
                          reader.getPcieEndpoints().size() + reader.getCpuEndpoints().size() +
                          reader.getDebugNetworks().size();
    EXPECT_EQ(n, c.records) << c.text;
  }
  TempDir dir;
  const std::string files[][2] = {{dir.file("missing.json"), "@74-87@%s"},
                                  {dir.path(), "@74-87@%s"},
                                  {dir.write("bad.json", "{\"uuid\": "), "@74-86@%s%s"},
                                  {dir.write("deep.json", std::string(10000, '[')), "@74-86@%s%s"}};
  for (const auto& f : files) {
    ComMsgCapture capture;
    HTEQSemanticLabelReader reader;
    EXPECT_FALSE(reader.parseFile(f[0])) << f[0];
    EXPECT_TRUE(capture.has(f[1])) << f[0];
  }
}
