#include "platform/HTEQPfmFileTypes.h"

#include "host/HSTStringUtils.h"

namespace {

// Every file type's text in enumerator order; the hooks are the tail of it.
constexpr const char* kFileTypeNames[] = {"DCP",
                                          "PR_SHELL_DCP",
                                          "BB_LOCKED_IMPL_DCP",
                                          "BB_SYNTH_DCP",
                                          "FULL_BIT",
                                          "PDI",
                                          "PARTIAL_PDI",
                                          "PL_PDI",
                                          "BOOT_PDI",
                                          "PLM_ELF",
                                          "PMC_CDO",
                                          "STAGE1_BIT",
                                          "STAGE2_BIT",
                                          "CLEAR_BIT",
                                          "PARTIAL_BIT",
                                          "MCS",
                                          "SECONDARY_MCS",
                                          "HPFM",
                                          "REBUILD_TCL",
                                          "DR_BD",
                                          "TOP_BD",
                                          "IP_REPO_PATH",
                                          "IP_CACHE_DIR",
                                          "BOARD_REPO_PATH",
                                          "SIM_BINARY",
                                          "META_JSON",
                                          "EXT_META_JSON",
                                          "EMU_JSON",
                                          "EMU_XML",
                                          "SEMANTIC_LABEL",
                                          "PFM_PROP_RESTORE",
                                          "MMI",
                                          "TILPRJ",
                                          "NOC_TRAFFIC",
                                          "NOC_CONSTRAINT",
                                          "NOC_SOLUTION",
                                          "FEATURE_ROM_TCL",
                                          "BIF",
                                          "PARTITION_META",
                                          "DTSI",
                                          "ISS",
                                          "ADDRESS_MAP",
                                          "LINK_RUNTIME",
                                          "PRE_SYS_LINK_TCL",
                                          "POST_SYS_LINK_TCL",
                                          "PRE_SYS_LINK_OVERLAY_TCL",
                                          "POST_SYS_LINK_OVERLAY_TCL",
                                          "POST_DEBUG_PROFILE_OVERLAY_TCL",
                                          "PRE_CREATE_PROJECT_TCL",
                                          "PRE_SYNTH_DESIGN_TCL",
                                          "POST_SYNTH_DESIGN_TCL",
                                          "PRE_INIT_TCL",
                                          "POST_INIT_TCL",
                                          "PRE_OPT_TCL",
                                          "POST_OPT_TCL",
                                          "PRE_POWER_OPT_TCL",
                                          "POST_POWER_OPT_TCL",
                                          "PRE_PLACE_TCL",
                                          "POST_PLACE_TCL",
                                          "PRE_POST_PLACE_POWER_OPT_TCL",
                                          "POST_POST_PLACE_POWER_OPT_TCL",
                                          "PRE_PHYS_OPT_TCL",
                                          "POST_PHYS_OPT_TCL",
                                          "PRE_ROUTE_TCL",
                                          "POST_ROUTE_TCL",
                                          "PRE_POST_ROUTE_PHYS_OPT_TCL",
                                          "POST_POST_ROUTE_PHYS_OPT_TCL",
                                          "PRE_WRITE_BITSTREAM_TCL",
                                          "POST_WRITE_BITSTREAM_TCL",
                                          "SYNTH_CONSTRS",
                                          "IMPL_CONSTRS"};
constexpr int kFileTypeCount = sizeof(kFileTypeNames) / sizeof(kFileTypeNames[0]);
constexpr int kFirstTclType = HTEQPfmFileTypes::PRE_SYS_LINK_TCL;
constexpr int kTclTypeCount = kFileTypeCount - kFirstTclType;

static_assert(kFileTypeCount == HTEQPfmFileTypes::UNKNOWN_FILE_TYPE, "one text per file type");
static_assert(kTclTypeCount == HTEQPfmFileTypes::UNKNOWN_TCL_FILE_TYPE, "one text per hook");

const std::map<HTEQPfmFileTypes::FileType, std::string>& fileTypes() {
  static const auto map = [] {
    std::map<HTEQPfmFileTypes::FileType, std::string> m;
    for (int i = 0; i < kFileTypeCount; ++i)
      m[static_cast<HTEQPfmFileTypes::FileType>(i)] = kFileTypeNames[i];
    return m;
  }();
  return map;
}

const std::map<HTEQPfmFileTypes::TclFileType, std::string>& tclFileTypes() {
  static const auto map = [] {
    std::map<HTEQPfmFileTypes::TclFileType, std::string> m;
    for (int i = 0; i < kTclTypeCount; ++i)
      m[static_cast<HTEQPfmFileTypes::TclFileType>(i)] = kFileTypeNames[kFirstTclType + i];
    return m;
  }();
  return map;
}

template <class Map>
std::string textOf(const Map& map, typename Map::key_type key) {
  const auto it = map.find(key);
  return it == map.end() ? std::string() : it->second;
}

template <class Map>
typename Map::key_type typeOf(const Map& map, const std::string& name, typename Map::key_type unknown) {
  for (const auto& entry : map)
    if (HSTStringUtils::iequals(entry.second, name)) return entry.first;
  return unknown;
}

}  // namespace

std::map<HTEQPfmFileTypes::FileType, std::string> HTEQPfmFileTypes::getFileTypeMap() { return fileTypes(); }

std::map<HTEQPfmFileTypes::TclFileType, std::string> HTEQPfmFileTypes::getTclFileTypeMap() {
  return tclFileTypes();
}

std::string HTEQPfmFileTypes::toString(FileType type) { return textOf(fileTypes(), type); }
std::string HTEQPfmFileTypes::toString(TclFileType type) { return textOf(tclFileTypes(), type); }

HTEQPfmFileTypes::FileType HTEQPfmFileTypes::toFileType(const std::string& name) {
  return typeOf(fileTypes(), name, UNKNOWN_FILE_TYPE);
}

HTEQPfmFileTypes::TclFileType HTEQPfmFileTypes::toTclFileType(const std::string& name) {
  return typeOf(tclFileTypes(), name, UNKNOWN_TCL_FILE_TYPE);
}
