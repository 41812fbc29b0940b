#include "platform/HTEQTilHardware.h"

#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "platform/JSONObjectWriter.h"

const std::map<HTEQTilHardware::Arch, std::string>& HTEQTilHardware::getArchMap() {
  static const std::map<Arch, std::string> archMap = {{NO_TIL, "NO_TIL"}, {TIL1, "TIL1"},
                                                      {TILML, "TILML"},   {TIL2P, "TIL2P"},
                                                      {TIL2PS, "TIL2PS"}, {TIL2PK, "TIL2PK"}};
  return archMap;
}

HTEQTilHardware::Arch HTEQTilHardware::stringToArch(const std::string& text) {
  std::string name = text;
  if (HSTStringUtils::iequals(name, "NONE")) {
    name = "NO_TIL";
  } else if (HSTStringUtils::iequals(name, "TIL")) {
    name = "TIL1";
  }
  for (const auto& entry : getArchMap()) {
    if (HSTStringUtils::iequals(entry.second, name)) return entry.first;
  }
  throw HEXAlgException("HTEQTilHardware::setArch() - Invalid til architecture specified: " + text);
}

std::string HTEQTilHardware::archToString(Arch arch) {
  const auto& archMap = getArchMap();
  const auto it = archMap.find(arch);
  return it == archMap.end() ? std::string("NO_TIL") : it->second;
}

void HTEQTilHardware::setArch(const std::string& arch) { arch_ = stringToArch(arch); }

namespace {
void addRows(teq_platform::JSONObjectWriter& writer, const char* key, int start, int num) {
  if (num == 0) return;
  teq_platform::JSONObjectWriter rows;
  rows.addKey("start", start);
  rows.addKey("num", num);
  writer.addKey(key, rows);
}
}  // namespace

void HTEQTilHardware::toJSON(teq_platform::JSONObjectWriter& writer) const {
  if (arch_ != NO_TIL) writer.addKey("arch", archToString(arch_));
  if (npiBaseAddress_ != 0) writer.addKey("npiBaseAddress", npiBaseAddress_);
  addRows(writer, "shimRows", startShimRow_, numShimRows_);
  addRows(writer, "coreRows", startCoreRow_, numCoreRows_);
  addRows(writer, "memRows", startMemRow_, numMemRows_);
}
