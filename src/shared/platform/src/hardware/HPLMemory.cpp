#include "platform/HPLMemory.h"

#include <algorithm>
#include <vector>

#include "hardware/HPLMemSizeParser.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

namespace {

// The parameter names a memory of this type may carry: fixed names first, then
// the names of its family ("DDR3" or "DDR4").
std::vector<std::string> permittedConfigParams(const std::string& type) {
  static const char* const fixedNames[] = {"AXI_ARBITRATION_SCHEME", "MEMORY_PART",      "MEM_ADDR_MAP",
                                           "TIMEPERIOD_PS",          "DATA_WIDTH",       "CAS_LATENCY",
                                           "CAS_WRITE_LATENCY",      "BURST_LENGTH",     "C0.APP_ADDR_WIDTH",
                                           "C0.APP_DATA_WIDTH",      "C0.ControllerType"};
  static const char* const familySuffixes[] = {"_ADDR_WIDTH",
                                               "_AXI_ADDR_WIDTH",
                                               "_AXI_DATA_WIDTH",
                                               "_AXI_ID_WIDTH",
                                               "_AutoPrecharge",
                                               "_AxiNarrowBurst",
                                               "_BANK_GROUP_WIDTH",
                                               "_BANK_WIDTH",
                                               "_CL",
                                               "_COLUMN_WIDTH",
                                               "_CWL",
                                               "_Mem_Add_Map",
                                               "_Ordering",
                                               "_RANK_WIDTH",
                                               "_ROW_WIDTH",
                                               "_tCK",
                                               "_tCKE",
                                               "_tFAW",
                                               "_tMRD",
                                               "_tRAS",
                                               "_tRCD",
                                               "_tREFI",
                                               "_tRFC",
                                               "_tRP",
                                               "_tRRD",
                                               "_tRRD_L",
                                               "_tRRD_S",
                                               "_tRTP",
                                               "_tWR",
                                               "_tWTR",
                                               "_tWTR_L",
                                               "_tWTR_S",
                                               "_tXPR",
                                               "_tZQCS",
                                               "_tZQI",
                                               "_tZQINIT"};
  const std::string family = type == "ddr3" ? "DDR3" : "DDR4";
  std::vector<std::string> names(std::begin(fixedNames), std::end(fixedNames));
  for (const char* suffix : familySuffixes) names.push_back("C0." + family + suffix);
  return names;
}

}  // namespace

void HPLMemory::addConfigParam(const std::string& name, const std::string& value) {
  const std::vector<std::string> permitted = permittedConfigParams(type_);
  if (std::find(permitted.begin(), permitted.end(), name) == permitted.end()) return;
  configParams_[name] = value;
}

int HPLMemory::sizeTextToGb(const std::string& size) {
  std::string digits = HPLMemSizeParser::keepGigabyteNumbers(size);
  if (digits.empty() || digits == size) digits = "0";
  return std::stoi(digits, nullptr, 10);
}

int HPLMemory::getMemSizeInGb(const std::vector<HPLMemory*>& memories, size_t index) {
  if (memories.empty()) return 0;
  return sizeTextToGb(memories.at(index)->getSize());
}

int HPLMemory::getTotalMemSizeInGb(const std::vector<HPLMemory*>& memories) {
  int total = 0;
  for (size_t i = 0; i < memories.size(); ++i) total += getMemSizeInGb(memories, i);
  return total;
}

std::string HPLMemory::totalGbToText(int totalGb) {
  return totalGb == 0 ? std::string("8 GB") : std::to_string(totalGb) + " GB";
}

std::string HPLMemory::getMemType(const std::vector<HPLMemory*>& memories) {
  return memories.empty() ? std::string("ddr4") : memories.front()->getType();
}

void HPLMemory::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("type", type_);
  writer.addKey("size", size_);
  if (!areLowAndHighAddrsAtDefault_()) {
    writer.addKey("lowAddress", static_cast<unsigned long long>(lowestAddress_));
    writer.addKey("highAddress", static_cast<unsigned long long>(highestAddress_));
  }
  teq_platform::JSONListWriter params;
  for (const auto& entry : configParams_) {
    teq_platform::JSONObjectWriter param;
    param.addKey("name", entry.first);
    param.addKey("value", entry.second);
    params.addItem(std::move(param));
  }
  writer.addKey("configParams", std::move(params));
}
