// The labels file: its records, the reader, and the two documents derived
// from it (partition metadata, extended metadata of one partition).

#include "platform/HTEQSemanticLabelReader.h"

#include <boost/property_tree/json_parser.hpp>
#include <cctype>
#include <cinttypes>
#include <climits>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "hardware/VendorDomain.h"
#include "host/ComMsgMgr.h"
#include "host/HUTFile.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

namespace {

using Tree = boost::property_tree::ptree;

const unsigned kErrorMask = 0x20000000;
const unsigned kWarningMask = 0x10000000;

// The leaf at a key of the object (never a path: keys may hold "."), or
// nullptr. An object or array where a value belongs counts as missing.
const Tree* leaf(const Tree& tree, const char* key) {
  const auto it = tree.find(key);
  if (it == tree.not_found() || !it->second.empty()) return nullptr;
  return &it->second;
}

std::string required(const Tree& tree, const char* key) {
  const Tree* value = leaf(tree, key);
  if (value == nullptr) throw std::invalid_argument(std::string("missing key '") + key + "'");
  return value->data();
}

std::string optional(const Tree& tree, const char* key, const char* fallback = "") {
  const Tree* value = leaf(tree, key);
  return value == nullptr ? std::string(fallback) : value->data();
}

// Unsigned, with C's base-0 prefixes. Unlike stoull no sign is taken: "-1"
// would otherwise wrap round to the largest value.
std::uint64_t toU64(const std::string& text) {
  std::size_t at = 0;
  while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at]))) ++at;
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) throw std::invalid_argument("stoull");
  return std::stoull(text, nullptr, 0);
}

int toInt(const std::string& text) {
  const std::uint64_t value = toU64(text);
  if (value > static_cast<std::uint64_t>(INT_MAX)) throw std::out_of_range("stoull");
  return static_cast<int>(value);
}

// "0x" and upper-case hexadecimal digits, at least `width` of them.
std::string hex(std::uint64_t value, int width) {
  char text[24];
  std::snprintf(text, sizeof text, "0x%0*" PRIX64, width, value);
  return text;
}

void put(Tree& tree, const std::string& key, const std::string& value) { tree.push_back({key, Tree(value)}); }
void put(Tree& tree, const std::string& key, Tree child) { tree.push_back({key, std::move(child)}); }

Tree schemaVersion() {
  Tree version;
  put(version, "minor", hex(0, 1));
  put(version, "major", hex(1, 1));
  return version;
}

// The interfaces list of both documents.
Tree interfaces(const std::vector<HTEQSemanticUuid>& uuids) {
  Tree list;
  for (const auto& uuid : uuids) {
    if (uuid.getType() != HTEQSemanticUuid::INTERFACE) continue;
    Tree item;
    put(item, "interface_uuid", uuid.getUuid());
    put(list, "", std::move(item));
  }
  return list;
}

// The tree as pretty JSON, by the property tree writer.
std::string prettyText(const Tree& tree) {
  std::ostringstream text;
  boost::property_tree::write_json(text, tree, true);
  return text.str();
}

const char* uuidTypeName(HTEQSemanticUuid::UuidType type) {
  switch (type) {
    case HTEQSemanticUuid::LOGIC:
      return "logic";
    case HTEQSemanticUuid::INTERFACE:
      return "interface";
    default:
      return "UNKNOWN";
  }
}

const char* barTypeName(HTEQSemanticPcieBar::BarType type) {
  switch (type) {
    case HTEQSemanticPcieBar::AXI_BRIDGE_MASTER:
      return "AXI_Bridge_Master";
    case HTEQSemanticPcieBar::DMA:
      return "DMA";
    default:
      return "UNKNOWN";
  }
}

}  // namespace

HTEQSemanticUuid::HTEQSemanticUuid(const Tree& tree) {
  try {
    const std::string type = required(tree, "uuid_type");
    type_ = type == "logic" ? LOGIC : type == "interface" ? INTERFACE : UNKNOWN;
    component_ = required(tree, "uuid_design_component");
    uuid_ = required(tree, "uuid");
  } catch (const std::exception&) {
    ZR_SEND_MSG("@74-82@", kErrorMask);
  }
}

void HTEQSemanticUuid::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("uuid_type", uuidTypeName(type_));
  writer.addKey("uuid_design_component", component_);
  writer.addKey("uuid", uuid_);
}

HTEQSemanticPcieBar::HTEQSemanticPcieBar(const Tree& tree) {
  try {
    const std::string type = required(tree, "bar_type");
    type_ = type == "AXI_Bridge_Master" ? AXI_BRIDGE_MASTER : type == "DMA" ? DMA : UNKNOWN;
    pf_ = toInt(required(tree, "physical_function"));
    bar_ = toInt(required(tree, "bar"));
    offset_ = toU64(optional(tree, "offset", "0x0"));
    range_ = toU64(optional(tree, "range", "0x10"));
    if (type_ == DMA) dmaType_ = required(tree, "dma_type");
  } catch (const std::exception&) {
    ZR_SEND_MSG("@74-85@", kErrorMask);
  }
}

void HTEQSemanticPcieBar::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("bar_type", barTypeName(type_));
  writer.addKey("physical_function", pf_);
  writer.addKey("bar", bar_);
  writer.addKey("offset", offset_);
  writer.addKey("range", range_);
  writer.addKey("dma_type", dmaType_);
}

void HTEQSemanticEndpoint::read_(const Tree& tree) {
  try {
    name_ = required(tree, "endpoint_name");
    vlnv_ = required(tree, "cell_vlnv");
    cell_ = required(tree, "cell");
    interface_ = required(tree, "interface");
    addrSeg_ = required(tree, "addr_seg");
    regAbs_ = required(tree, "reg_abs");
    partition_ = required(tree, "partition");
    partitionPath_ = required(tree, "partition_path");
    addr_ = toU64(required(tree, "addr"));
    range_ = toU64(required(tree, "range"));
    irqSource_ = optional(tree, "interrupt_source");
    irqSink_ = optional(tree, "interrupt_sink");
    irqSinkCell_ = optional(tree, "interrupt_sink_cell");
    irqSinkVlnv_ = optional(tree, "interrupt_sink_cell_vlnv");
    irqLeft_ = toInt(optional(tree, "interrupt_sink_start", "0"));
    irqRight_ = toInt(optional(tree, "interrupt_sink_end", "0"));
    fwProduct_ = optional(tree, "firmware_product");
    fwBranch_ = optional(tree, "firmware_branch");
    fwVersion_ = optional(tree, "firmware_version");
  } catch (const std::exception&) {
    ZR_SEND_MSG("@74-84@", kErrorMask);
    throw;
  }
}

void HTEQSemanticEndpoint::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("endpoint_name", name_);
  writer.addKey("cell_vlnv", vlnv_);
  writer.addKey("cell", cell_);
  writer.addKey("interface", interface_);
  writer.addKey("addr_seg", addrSeg_);
  writer.addKey("reg_abs", regAbs_);
  writer.addKey("partition", partition_);
  writer.addKey("partition_path", partitionPath_);
  writer.addKey("addr_offset", std::to_string(addr_));
  writer.addKey("addr_range", std::to_string(range_));
  writer.addKey("has_interrupt", interruptValid());
  if (interruptValid()) {
    writer.addKey("interrupt_source", irqSource_);
    writer.addKey("interrupt_sink", irqSink_);
    writer.addKey("interrupt_sink_cell", irqSinkCell_);
    writer.addKey("interrupt_sink_cell_vlnv", irqSinkVlnv_);
    writer.addKey("interrupt_sink_start", irqLeft_);
    writer.addKey("interrupt_sink_end", irqRight_);
  }
  writer.addKey("has_firmware", firmwareValid());
  if (firmwareValid()) {
    writer.addKey("firmware_product", fwProduct_);
    writer.addKey("firmware_branch", fwBranch_);
    writer.addKey("firmware_has_version", firmwareVersionValid());
    if (firmwareVersionValid()) writer.addKey("firmware_version", fwVersion_);
  }
}

HTEQSemanticPcieEndpoint::HTEQSemanticPcieEndpoint(const Tree& tree) {
  try {
    read_(tree);
    pf_ = toInt(required(tree, "physical_function"));
    bar_ = toInt(required(tree, "bar"));
  } catch (const std::exception&) {
    ZR_SEND_MSG("@74-83@", kErrorMask);
  }
}

void HTEQSemanticPcieEndpoint::toJSON(teq_platform::JSONObjectWriter& writer) const {
  HTEQSemanticEndpoint::toJSON(writer);
  writer.addKey("physical_function", pf_);
  writer.addKey("bar", bar_);
}

HTEQSemanticCpuEndpoint::HTEQSemanticCpuEndpoint(const Tree& tree) {
  try {
    read_(tree);
    cpuType_ = required(tree, "cpu_type");
  } catch (const std::exception&) {
    ZR_SEND_MSG("@74-80@", kErrorMask);
  }
}

void HTEQSemanticCpuEndpoint::toJSON(teq_platform::JSONObjectWriter& writer) const {
  HTEQSemanticEndpoint::toJSON(writer);
  writer.addKey("cpu_type", cpuType_);
}

HTEQSemanticDebugNetwork::HTEQSemanticDebugNetwork(const Tree& tree) {
  try {
    pf_ = toInt(required(tree, "physical_function"));
    bar_ = toInt(required(tree, "bar"));
    barAddr_ = toU64(required(tree, "bar_addr"));
    systemAddr_ = toU64(required(tree, "system_addr"));
    partition_ = required(tree, "partition");
    partitionPath_ = required(tree, "partition_path");
    corvex_ = required(tree, "supports_corvex_debug") == "true";
    jtag_ = required(tree, "supports_jtag_fallback") == "true";
  } catch (const std::exception&) {
    ZR_SEND_MSG("@74-81@", kErrorMask);
  }
}

void HTEQSemanticDebugNetwork::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("physical_function", pf_);
  writer.addKey("bar", bar_);
  writer.addKey("bar_addr", barAddr_);
  writer.addKey("system_addr", systemAddr_);
  writer.addKey("partition", partition_);
  writer.addKey("partition_path", partitionPath_);
  writer.addKey("supports_corvex_debug", corvex_);
  writer.addKey("supports_jtag_fallback", jtag_);
}

void HTEQSemanticLabelReader::clear() {
  uuids_.clear();
  bars_.clear();
  pcieEndpoints_.clear();
  cpuEndpoints_.clear();
  debugNetworks_.clear();
}

bool HTEQSemanticLabelReader::parseFile(const std::string& path) {
  clear();
  if (!HUTFile::isFile(path)) {
    ZR_SEND_MSG("@74-87@%s", kErrorMask, path);
    return false;
  }
  try {
    std::ifstream in(path, std::ios::in | std::ios::binary);
    Tree root;
    HTEQJSONUtils::readJSON(in, root, path);
    parseRoot(root);
  } catch (const std::exception& e) {
    clear();
    ZR_SEND_MSG("@74-86@%s%s", kErrorMask, path, std::string(e.what()));
    return false;
  }
  return true;
}

void HTEQSemanticLabelReader::parseRoot(const Tree& root) {
  clear();
  for (const auto& member : root) {
    const std::string& key = member.first;
    if (key == "uuid") {
      uuids_.emplace_back(member.second);
    } else if (key == "pcie_bar") {
      bars_.emplace_back(member.second);
    } else if (key == "pcie_endpoint") {
      pcieEndpoints_.emplace_back(member.second);
    } else if (key == "cpu_endpoint") {
      cpuEndpoints_.emplace_back(member.second);
    } else if (key == "debug_network") {
      debugNetworks_.emplace_back(member.second);
    } else {
      ZR_SEND_MSG("@74-88@%s", kWarningMask, key);
    }
  }
}

void HTEQSemanticLabelReader::generateAddressableEndpoints(const std::string& partitionPath,
                                                           Tree& out) const {
  for (const auto& ep : pcieEndpoints_) {
    const std::string& own = ep.getPartitionPath();
    // Taken when the endpoint's whole partition path ends the given one.
    if (own.size() > partitionPath.size() ||
        partitionPath.compare(partitionPath.size() - own.size(), own.size(), own) != 0)
      continue;
    Tree item;
    put(item, "pcie_physical_function", hex(static_cast<std::uint64_t>(ep.getPhysicalFunction()), 1));
    put(item, "pcie_base_address_register", hex(static_cast<std::uint64_t>(ep.getBar()), 1));
    put(item, "offset", hex(ep.getAddr(), 16));
    put(item, "range", hex(ep.getAddrRange(), 16));
    put(item, "register_abstraction_type", ep.getRegisterAbstraction());
    if (ep.interruptValid()) {
      put(item, "msix_interrupt_start_index", hex(static_cast<std::uint64_t>(ep.getInterruptLeft()), 2));
      put(item, "msix_interrupt_end_index", hex(static_cast<std::uint64_t>(ep.getInterruptRight()), 2));
    }
    if (ep.firmwareValid()) {
      Tree firmware;
      put(firmware, "firmware_product_name", ep.getFirmwareProduct());
      put(firmware, "firmware_branch_name", ep.getFirmwareBranch());
      if (ep.firmwareVersionValid()) {
        static const char* const kParts[] = {"firmware_version_major", "firmware_version_minor",
                                             "firmware_version_revision"};
        const std::string& version = ep.getFirmwareVersion();
        std::size_t start = 0;
        for (const char* part : kParts) {
          const std::size_t dot = version.find('.', start);
          put(firmware, part,
              version.substr(start, dot == std::string::npos ? std::string::npos : dot - start));
          if (dot == std::string::npos) break;
          start = dot + 1;
        }
      }
      put(item, "firmware", std::move(firmware));
    }
    put(out, ep.getEndpointName(), std::move(item));
  }
}

void HTEQSemanticLabelReader::generatePartitionMetadata(Tree& out) const {
  out.clear();
  std::string logic = "UNDEFINED";
  for (const auto& uuid : uuids_)
    if (uuid.getType() == HTEQSemanticUuid::LOGIC) logic = uuid.getUuid();
  Tree bars, endpoints;
  for (const auto& bar : bars_) {
    Tree item;
    put(item, "pcie_physical_function", hex(static_cast<std::uint64_t>(bar.getPhysicalFunction()), 1));
    put(item, "pcie_base_address_register", hex(static_cast<std::uint64_t>(bar.getBar()), 1));
    put(item, "offset", hex(bar.getOffset(), 16));
    put(item, "range", hex(bar.getRange(), 16));
    if (bar.getType() == HTEQSemanticPcieBar::DMA) {
      Tree ep = item;
      put(ep, "register_abstraction_type",
          std::string(zr_platform::kVendorDomain) + ":reg_abs:" + bar.getDmaType() + ":1.0");
      put(endpoints, "ep_" + bar.getDmaType() + "_00", std::move(ep));
    }
    put(bars, "", std::move(item));
  }
  generateAddressableEndpoints("/", endpoints);
  Tree metadata;
  Tree list = interfaces(uuids_);
  if (!list.empty()) put(metadata, "interfaces", std::move(list));
  if (!bars.empty()) {
    Tree pcie;
    put(pcie, "bars", std::move(bars));
    put(metadata, "pcie", std::move(pcie));
  }
  if (!endpoints.empty()) put(metadata, "addressable_endpoints", std::move(endpoints));
  put(metadata, "schema_version", schemaVersion());
  put(metadata, "logic_uuid", logic);
  put(out, "partition_metadata", std::move(metadata));
}

void HTEQSemanticLabelReader::generateExtMetadata(const std::string& partitionPath, Tree& out) const {
  out.clear();
  Tree endpoints;
  generateAddressableEndpoints(partitionPath, endpoints);
  Tree networks;
  for (const auto& net : debugNetworks_) {
    const int pf = net.getPhysicalFunction();
    const std::string n = std::to_string(pf);
    Tree item;
    put(item, "is_user_visible", pf == 0 ? "false" : "true");
    put(item, "name",
        pf == 0   ? std::string("Management Debug Network")
        : pf == 1 ? std::string("User Debug Network")
                  : "Debug network for physical function " + n);
    put(item, "pcie_pf", n);
    put(item, "bar_number", std::to_string(net.getBar()));
    put(item, "axi_baseaddr", hex(net.getSystemAddress(), 16));
    put(item, "supports_corvex_debug", net.supportsCorvexDebug() ? "true" : "false");
    put(item, "supports_jtag_fallback", net.supportsJtagFallback() ? "true" : "false");
    put(networks, pf == 0 ? std::string("mgmt") : pf == 1 ? std::string("user") : "pf" + n, std::move(item));
  }
  Tree metadata;
  Tree list = interfaces(uuids_);
  if (!list.empty()) put(metadata, "interfaces", std::move(list));
  if (!endpoints.empty()) put(metadata, "addressable_endpoints", std::move(endpoints));
  put(metadata, "schema_version", schemaVersion());
  Tree sections;
  put(sections, "partition_metadata", std::move(metadata));
  Tree top;
  put(top, "append_sections", std::move(sections));
  put(out, "rovapk", std::move(top));
  if (!networks.empty()) {
    Tree debug;
    put(debug, "debug_networks", std::move(networks));
    put(out, "lumiprobe_debug", std::move(debug));
  }
}

void HTEQSemanticLabelReader::generatePartitionMetadata(std::ostream& out) const {
  Tree tree;
  generatePartitionMetadata(tree);
  out << prettyText(tree);
}

void HTEQSemanticLabelReader::generatePartitionMetadata(const std::string& file) const {
  Tree tree;
  generatePartitionMetadata(tree);
  HUTFile::writeAtomically(file, prettyText(tree));
}

void HTEQSemanticLabelReader::generateExtMetadata(const std::string& partitionPath, std::ostream& out) const {
  Tree tree;
  generateExtMetadata(partitionPath, tree);
  out << prettyText(tree);
}

void HTEQSemanticLabelReader::generateExtMetadata(const std::string& partitionPath,
                                                  const std::string& file) const {
  Tree tree;
  generateExtMetadata(partitionPath, tree);
  HUTFile::writeAtomically(file, prettyText(tree));
}

template <class T>
static void writeList(teq_platform::JSONObjectWriter& writer, const char* key, const std::vector<T>& items) {
  teq_platform::JSONListWriter list;
  for (const auto& item : items) list.addItem(&item);
  writer.addKey(key, std::move(list));
}

void HTEQSemanticLabelReader::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writeList(writer, "uuid", uuids_);
  writeList(writer, "pcie_bar", bars_);
  writeList(writer, "pcie_endpoint", pcieEndpoints_);
  writeList(writer, "cpu_endpoint", cpuEndpoints_);
  writeList(writer, "debug_network", debugNetworks_);
}
