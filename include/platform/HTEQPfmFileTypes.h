#ifndef PLATFORM_HTEQPFMFILETYPES_H
#define PLATFORM_HTEQPFMFILETYPES_H

#include <map>
#include <string>

#include "platform/ZrPlatformExport.h"

// The names of every kind of file a platform can hold, and of the script hooks
// of a build. Each enumerator's text is its name.
class ZR_PLATFORM_API HTEQPfmFileTypes {
 public:
  enum FileType {
    DCP,
    PR_SHELL_DCP,
    BB_LOCKED_IMPL_DCP,
    BB_SYNTH_DCP,
    FULL_BIT,
    PDI,
    PARTIAL_PDI,
    PL_PDI,
    BOOT_PDI,
    PLM_ELF,
    PMC_CDO,
    STAGE1_BIT,
    STAGE2_BIT,
    CLEAR_BIT,
    PARTIAL_BIT,
    MCS,
    SECONDARY_MCS,
    HPFM,
    REBUILD_TCL,
    DR_BD,
    TOP_BD,
    IP_REPO_PATH,
    IP_CACHE_DIR,
    BOARD_REPO_PATH,
    SIM_BINARY,
    META_JSON,
    EXT_META_JSON,
    EMU_JSON,
    EMU_XML,
    SEMANTIC_LABEL,
    PFM_PROP_RESTORE,
    MMI,
    TILPRJ,
    NOC_TRAFFIC,
    NOC_CONSTRAINT,
    NOC_SOLUTION,
    FEATURE_ROM_TCL,
    BIF,
    PARTITION_META,
    DTSI,
    ISS,
    ADDRESS_MAP,
    LINK_RUNTIME,
    PRE_SYS_LINK_TCL,
    POST_SYS_LINK_TCL,
    PRE_SYS_LINK_OVERLAY_TCL,
    POST_SYS_LINK_OVERLAY_TCL,
    POST_DEBUG_PROFILE_OVERLAY_TCL,
    PRE_CREATE_PROJECT_TCL,
    PRE_SYNTH_DESIGN_TCL,
    POST_SYNTH_DESIGN_TCL,
    PRE_INIT_TCL,
    POST_INIT_TCL,
    PRE_OPT_TCL,
    POST_OPT_TCL,
    PRE_POWER_OPT_TCL,
    POST_POWER_OPT_TCL,
    PRE_PLACE_TCL,
    POST_PLACE_TCL,
    PRE_POST_PLACE_POWER_OPT_TCL,
    POST_POST_PLACE_POWER_OPT_TCL,
    PRE_PHYS_OPT_TCL,
    POST_PHYS_OPT_TCL,
    PRE_ROUTE_TCL,
    POST_ROUTE_TCL,
    PRE_POST_ROUTE_PHYS_OPT_TCL,
    POST_POST_ROUTE_PHYS_OPT_TCL,
    PRE_WRITE_BITSTREAM_TCL,
    POST_WRITE_BITSTREAM_TCL,
    SYNTH_CONSTRS,
    IMPL_CONSTRS,
    UNKNOWN_FILE_TYPE
  };

  enum TclFileType {
    TCL_PRE_SYS_LINK_TCL,
    TCL_POST_SYS_LINK_TCL,
    TCL_PRE_SYS_LINK_OVERLAY_TCL,
    TCL_POST_SYS_LINK_OVERLAY_TCL,
    TCL_POST_DEBUG_PROFILE_OVERLAY_TCL,
    TCL_PRE_CREATE_PROJECT_TCL,
    TCL_PRE_SYNTH_DESIGN_TCL,
    TCL_POST_SYNTH_DESIGN_TCL,
    TCL_PRE_INIT_TCL,
    TCL_POST_INIT_TCL,
    TCL_PRE_OPT_TCL,
    TCL_POST_OPT_TCL,
    TCL_PRE_POWER_OPT_TCL,
    TCL_POST_POWER_OPT_TCL,
    TCL_PRE_PLACE_TCL,
    TCL_POST_PLACE_TCL,
    TCL_PRE_POST_PLACE_POWER_OPT_TCL,
    TCL_POST_POST_PLACE_POWER_OPT_TCL,
    TCL_PRE_PHYS_OPT_TCL,
    TCL_POST_PHYS_OPT_TCL,
    TCL_PRE_ROUTE_TCL,
    TCL_POST_ROUTE_TCL,
    TCL_PRE_POST_ROUTE_PHYS_OPT_TCL,
    TCL_POST_POST_ROUTE_PHYS_OPT_TCL,
    TCL_PRE_WRITE_BITSTREAM_TCL,
    TCL_POST_WRITE_BITSTREAM_TCL,
    TCL_SYNTH_CONSTRS,
    TCL_IMPL_CONSTRS,
    UNKNOWN_TCL_FILE_TYPE
  };

  static std::map<FileType, std::string> getFileTypeMap();
  static std::map<TclFileType, std::string> getTclFileTypeMap();
  // The text, or "" for a value without one.
  static std::string toString(FileType type);
  static std::string toString(TclFileType type);
  // The type whose text equals the name ignoring case; the unknown value otherwise.
  static FileType toFileType(const std::string& name);
  static TclFileType toTclFileType(const std::string& name);
};

#endif
