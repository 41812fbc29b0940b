#include "platform/HTEQEmulationUtils.h"

#include <boost/property_tree/ptree.hpp>
#include <map>
#include <memory>
#include <sstream>

#include "emulation/HTEQEmulationCfaMember.h"
#include "hardware/HexForm.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"
#include "host/JunTclTasks.h"
#include "json/JsonDocument.h"
#include "platform/HPLFile.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaXmlReader.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationXMLReader.h"
#include "platform/HTEQEmulationXMLWriter.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareFeatureRom.h"

namespace {

using Tree = boost::property_tree::ptree;
using Pairs = std::map<std::string, std::string>;

const char* const kInstallVar = "TORVANE_MORWEN";
const char* const kPropDir = "hw_emu_prop";
const char* const kPropScript = "hw_emu_prop.tcl";
const char* const kOverlay = "overlay";
const char* const kDriver = "emu_update_cfa.tcl";
const char* const kTempProp = "temp_prop.json";
const char* const kTempUserProp = "temp_user_prop.json";
const char* const kPreLink = "dynamic_pre_sys_link.tcl";
const char* const kPostLink = "dynamic_post_sys_link.tcl";
const char* const kHpfmSuffix = "_emu.hpfm";
constexpr unsigned kPropMaxDepth = 64;

// Message ids and their arguments.
const char* const kMsgMissing = "@74-32@%s";
const char* const kMsgNoBlockDesign = "@74-33@";
const char* const kMsgNoInstall = "@74-35@";
const char* const kMsgNotRegular = "@74-36@%s";
const char* const kMsgNoDefaultProps = "@74-56@%s";
const char* const kMsgNoOutDir = "@74-57@";
const char* const kMsgFailed = "@74-1@%s";

// What the JSON property sources hold, merged: a later source overrides a
// key of an earlier one.
struct PropertyMaps {
  std::map<unsigned long, Pairs> ddrBanks;
  std::map<std::string, Pairs> instances;  // by SP tag, else VLNV
  Pairs clocks;
  Pairs general;  // every other top-level key with a plain value
};

// The pairs of an object with plain (string) values, other keys skipped.
void collectPairs(const Tree& object, Pairs& into, const char* skip = nullptr) {
  for (const auto& child : object) {
    if (!child.second.empty() || child.first.empty()) continue;
    if (skip != nullptr && child.first == skip) continue;
    into[child.first] = child.second.data();
  }
}

// Reads one property source; a file that does not exist is skipped. Text
// that is not JSON of the expected shape raises HEXDataException.
void populateDdrPropMap(const std::string& file, PropertyMaps& maps) {
  if (file.empty() || !HUTFile::exists(file)) return;
  Tree tree;
  try {
    zr_json::parseTree(HUTFile::readAll(file, HUTEnv::instance().getMaxMetadataSize(), "metadata size limit"),
                       tree, kPropMaxDepth, file);
  } catch (const boost::property_tree::ptree_error& e) {
    throw HEXDataException("the property file '" + file + "' is not valid JSON: " + e.what());
  }
  for (const auto& top : tree) {
    const std::string& key = top.first;
    if (key == "DdrBanks") {
      for (const auto& bank : top.second) {
        const std::string number = bank.second.get("bank", std::string());
        if (number.empty() || number.find_first_not_of("0123456789") != std::string::npos ||
            number.size() > 9)
          throw HEXDataException("the property file '" + file + "' has a DDR bank without a bank number");
        collectPairs(bank.second, maps.ddrBanks[std::stoul(number)], "bank");
      }
    } else if (key == "DesignIpInstances") {
      for (const auto& instance : top.second) {
        const std::string tag = instance.second.get("SP_TAG", std::string());
        const std::string name = tag.empty() ? instance.second.get("VLNV", std::string()) : tag;
        Pairs& pairs = maps.instances[name];
        if (const auto config = instance.second.get_child_optional("Configuration"))
          collectPairs(*config, pairs);
      }
    } else if (key == "SystemClocks") {
      collectPairs(top.second, maps.clocks);
    } else if (top.second.empty() && !key.empty()) {
      maps.general[key] = top.second.data();
    }
  }
}

bool isPlainChar(char c) {
  switch (c) {
    case ' ':
    case '\t':
    case '\n':
    case '\r':
    case '\v':
    case '\f':
    case '{':
    case '}':
    case '[':
    case ']':
    case '$':
    case '"':
    case '\\':
    case ';':
      return false;
    default:
      return c != '\0';
  }
}

// Whether braces keep the value literal and whole: they do unless it holds a
// backslash, a NUL or unbalanced braces.
bool keptWholeByBraces(const std::string& value) {
  int depth = 0;
  for (char c : value) {
    if (c == '\\' || c == '\0') return false;
    if (c == '{') ++depth;
    if (c == '}' && --depth < 0) return false;
  }
  return depth == 0;
}

// A value inside braces, as the text of the script shows it, when braces
// keep it whole; else the value quoted as a word.
std::string braced(const std::string& value) {
  return keptWholeByBraces(value) ? "{" + value + "}" : HTEQEmulationUtils::tclWord(value);
}

// A value inside double quotes, as the text of the script shows it, when no
// substitution can happen there; else the value quoted as a word.
std::string quoted(const std::string& value) {
  return value.find_first_of(std::string("$[]\\\"\0", 6)) == std::string::npos
             ? "\"" + value + "\""
             : HTEQEmulationUtils::tclWord(value);
}

// The empty text is written as "" in the memory dictionaries.
std::string memoryValue(const std::string& value) {
  return value.empty() ? "\"\"" : HTEQEmulationUtils::tclWord(value);
}

// Removes the temporary copies of the property files on every way out.
class TempFiles {
 public:
  TempFiles() = default;
  ~TempFiles() {
    for (const std::string& file : files_)
      if (HUTFile::isFile(file)) HUTFile::rm(file);
  }
  TempFiles(const TempFiles&) = delete;
  TempFiles& operator=(const TempFiles&) = delete;
  void add(const std::string& file) { files_.push_back(file); }

 private:
  std::vector<std::string> files_;
};

bool installationSet() {
  if (HUTEnv::instance().get(kInstallVar).empty()) {
    ZR_SEND_MSG(kMsgNoInstall, ComMsgMask::kError);
    return false;
  }
  return true;
}

// Reads the archive and writes its property script to `out`; the copies of
// the property members go into tmpDir. `scriptsDir` is where the default
// property file is looked for ("" when there is no installation).
bool writePropertyScript(const std::string& platformFile, const std::string& name, bool isDr,
                         const std::string& scriptsDir, const std::string& tmpDir, std::ostream& out) {
  HPLPlatform platform;
  HTEQCfaXmlReader reader(platformFile, &platform);
  if (!reader.parseCFA()) {
    ZR_SEND_MSG(kMsgFailed, ComMsgMask::kError, reader.getErrorMsg());
    return false;
  }
  const std::string archive = HUTFile::getCanonicalName(platformFile);

  HTEQEmulationUtils::PropertySources sources;
  TempFiles temps;
  HTEQEmulations emulations;
  const std::string emuXml = HTEQEmulationUtils::getEmuXmlFile(&platform);
  if (HUTZip::containsFile(archive, HTEQEmulationCfaMember::reduceMemberName(emuXml)))
    HTEQEmulationXMLReader::parseFromCfa(archive, emuXml, &emulations);
  for (const HTEQEmulation* emulation : emulations.getEmulations())
    for (const HTEQEmulationFile* file : emulation->getFiles()) {
      std::string* copy = file->getType() == "PROP_JSON"        ? &sources.propJsonFile
                          : file->getType() == "USER_PROP_JSON" ? &sources.userPropJsonFile
                                                                : nullptr;
      if (copy == nullptr) continue;
      *copy = HUTPathUtils::join(tmpDir, file->getType() == "PROP_JSON" ? kTempProp : kTempUserProp);
      temps.add(*copy);
      HUTFile::writeAtomically(*copy, HTEQEmulationCfaMember::read(archive, file->getName()));
    }

  if (!scriptsDir.empty()) {
    const std::string config = HUTPathUtils::join(scriptsDir, "platform_config");
    sources.defaultPropFile = HUTPathUtils::join(config, name + ".json");
    if (!HUTFile::isFile(sources.defaultPropFile))
      sources.defaultPropFile = HUTPathUtils::join(config, "default_prop.json");
  }
  if (!HUTFile::isFile(sources.defaultPropFile)) {
    ZR_SEND_MSG(kMsgNoDefaultProps, ComMsgMask::kWarning, name);
    sources.defaultPropFile.clear();
  }
  sources.boardRepoPath = platform.getBoardRepo();
  sources.uniqueName = platform.getUniqueName();
  std::string customScript;
  HTEQEmulationUtils::writeEmuPropertiesDict(&platform, sources, out, HUTPathUtils::getStem(archive), isDr,
                                             customScript);
  return true;
}

}  // namespace

std::string HTEQEmulationUtils::tclWord(const std::string& value) {
  if (value.empty()) return "{}";
  bool plain = value[0] != '#';
  for (char c : value) plain = plain && isPlainChar(c);
  if (plain) return value;
  if (keptWholeByBraces(value)) return "{" + value + "}";
  std::string word;
  for (char c : value) {
    switch (c) {
      case '\n':
        word += "\\n";
        break;
      case '\t':
        word += "\\t";
        break;
      case '\r':
        word += "\\r";
        break;
      case '\v':
        word += "\\v";
        break;
      case '\f':
        word += "\\f";
        break;
      case '\0':
        word += "\\x00";
        break;
      default:
        if (!isPlainChar(c) || c == '#') word.push_back('\\');
        word.push_back(c);
    }
  }
  return word;
}

std::string HTEQEmulationUtils::tclVarName(const std::string& name) {
  std::string safe = name;
  for (char& c : safe)
    if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_')) c = '_';
  return safe;
}

const std::set<std::string>& HTEQEmulationUtils::getUnUsedParamatersInDDRModel(int /*ddrModel*/) {
  static const std::set<std::string> kParams = {
      "AS_LATENCY",          "AS_WRITE_LATENCY",  "AXI_ARBITRATION_SCHEME",
      "BURST_LENGTH",        "DDR4_ADDR_WIDTH",   "DDR4_AXI_ADDR_WIDTH",
      "DDR4_AXI_DATA_WIDTH", "DDR4_AXI_ID_WIDTH", "DDR4_AutoPrecharge",
      "DDR4_AxiNarrowBurst", "DDR4_CL",           "DDR4_CWL",
      "DDR4_Ordering",       "DDR4_tXPR",         "DDR4_tZQCS",
      "DDR4_tZQI",           "DDR4_tZQINIT"};
  return kParams;
}

const std::set<std::string>& HTEQEmulationUtils::getUnUsedTeqMemorySubSystemParams() {
  static const std::set<std::string> kParams = {"C_BASEADDR", "C_HIGHADDR", "EDK_IPTYPE", "NUM_CLKS",
                                                "NUM_SI"};
  return kParams;
}

const std::set<std::string>& HTEQEmulationUtils::getUnUsedCLKSettings() {
  static const std::set<std::string> kParams = {"CPU"};
  return kParams;
}

std::string HTEQEmulationUtils::getTorvaneIPPath() {
  return installationSet() ? HUTEnv::instance().get(kInstallVar) : std::string();
}

std::string HTEQEmulationUtils::getSelbrookIPPath() {
  std::string root = HUTEnv::instance().get("TORVANE_SELBROOK");
  if (root.empty()) root = HUTEnv::instance().get("TORVANE_TEQ");
  return root.empty() ? root : HUTPathUtils::join(root, "platforms");
}

std::string HTEQEmulationUtils::getEmuScriptsDir(bool isDr) {
  const std::string root = getTorvaneIPPath();
  if (root.empty()) return root;
  const std::string scripts = HUTPathUtils::join(root, "data/emulation/hw_em/scripts");
  return isDr ? HUTPathUtils::join(scripts, "emu_platform_build") : scripts;
}

std::string HTEQEmulationUtils::getEmuXmlFile(HPLPlatform* platform) {
  const std::string member = platform != nullptr ? platform->getFile("EMU_XML") : std::string();
  return member.empty() ? "emu/emu.xml" : member;
}

void HTEQEmulationUtils::getAllRelativeInDir(const std::string& dir, std::vector<std::string>& out,
                                             const std::string& prefix) {
  const std::string base = dir.empty() || dir.back() == '/' ? dir : dir + "/";
  for (const std::string& file : HUTFile::listFilesRecursive(dir)) {
    const std::string relative = file.compare(0, base.size(), base) == 0 ? file.substr(base.size()) : file;
    out.push_back(prefix.empty() ? relative : prefix + "/" + relative);
  }
}

bool HTEQEmulationUtils::printMemoriesInfo(HPLPlatform* platform, std::ostream& out, std::string& dictName) {
  dictName.clear();
  if (platform == nullptr) return false;
  std::vector<HTEQHardwareAddressSegment*> segments;
  HTEQHardwarePlatform::TEQHardwareBusInterfaceVec interfaces;
  platform->getBusInterfaces(interfaces);
  for (const HTEQHardwareBusInterface* bus : interfaces) {
    if (!HSTStringUtils::iequals(bus->getSPTag(), "ddr")) continue;
    HTEQHardwareBusInterface::AddressSegmentVec own;
    bus->getAddressSegments(own);
    segments.insert(segments.end(), own.begin(), own.end());
  }
  if (segments.empty()) return false;
  dictName = "memoryTags";
  out << " set " << dictName << " [dict create]\n";
  out << " set memories {}\n";
  for (const HTEQHardwareAddressSegment* segment : segments) {
    const std::string name = tclVarName(segment->getSpTag() + "_" + std::to_string(segment->getIndex()));
    out << " set " << name << " [dict create]\n";
    out << " dict set " << name << " index " << segment->getIndex() << "\n";
    out << " dict set " << name << " auto  " << memoryValue(segment->getAuto()) << "\n";
    out << " dict set " << name << " sptag  " << memoryValue(segment->getSpTag()) << "\n";
    out << " dict set " << name << " slr  " << memoryValue(segment->getSlr()) << "\n";
    out << " dict set " << name << " max_masters  " << segment->getMaxMasters() << "\n";
    out << " lappend memories $" << name << "\n";
    out << " dict set " << dictName << " " << quoted(segment->getSpTag()) << " $" << name << "\n";
  }
  return true;
}

int HTEQEmulationUtils::writeEmuPropertiesDict(HPLPlatform* platform, const PropertySources& sources,
                                               std::ostream& out, const std::string& platformFile, bool isDr,
                                               std::string& customScriptPath) {
  PropertyMaps maps;
  for (const std::string* file : {&sources.defaultPropFile, &sources.propJsonFile, &sources.userPropJsonFile})
    populateDdrPropMap(*file, maps);

  out << "proc emu_prop_gen { } { \n";
  out << "namespace eval config {\n";
  out << " set qlinkConfig [dict create] \n";
  out << " set boardMemories {}\n";
  const auto& ddrFilter = getUnUsedParamatersInDDRModel();
  for (const auto& bank : maps.ddrBanks) {
    const std::string dict = "boardMemories_" + std::to_string(bank.first);
    for (const auto& pair : bank.second)
      if (ddrFilter.count(pair.first) == 0)
        out << " dict set " << dict << " " << tclWord(pair.first) << " " << tclWord(pair.second) << "\n";
    out << " lappend boardMemories $" << dict << "\n";
  }
  const auto& instanceFilter = getUnUsedTeqMemorySubSystemParams();
  unsigned number = 0;
  for (const auto& instance : maps.instances) {
    const std::string dict = "instance" + std::to_string(number++);
    for (const auto& pair : instance.second)
      if (instanceFilter.count(pair.first) == 0)
        out << " dict set " << dict << " " << tclWord(pair.first) << " " << braced(pair.second) << "\n";
    out << " dict set instanceConfig " << tclWord(instance.first) << " $" << dict << "\n";
  }
  out << " set clk_info [dict create]\n";
  const auto& clockFilter = getUnUsedCLKSettings();
  for (const auto& pair : maps.clocks)
    if (clockFilter.count(pair.first) == 0)
      out << " dict set clk_info " << quoted(pair.first) << " " << tclWord(pair.second) << "\n";

  const std::string boardName = platform != nullptr ? platform->getReadOnlyBoard().getName() : std::string();
  const std::string part = platform != nullptr ? platform->getReadOnlyBoard().getPart() : std::string();
  out << " set board_repo_paths {}\n";
  if (!sources.boardRepoPath.empty())
    out << " lappend board_repo_paths " << quoted(sources.boardRepoPath) << "\n";

  out << " set feature_map_info [dict create]\n";
  HTEQHardwarePlatform::TEQHardwareFeatureRomVec roms;
  if (platform != nullptr) platform->getFeatureRoms(roms);
  if (!roms.empty())
    for (unsigned i = 0; i < HTEQHardwareFeatureRom::getCDMABaseAddressSize(); ++i)
      out << " dict set feature_map_info Cdma_Base_Address" << i << " "
          << zr_hw::hexForm(roms[0]->getCDMABaseAddress(i), 4) << "\n";

  std::string memoryDict;
  printMemoriesInfo(platform, out, memoryDict);

  out << " set config_info [dict create]\n";
  out << " dict set config_info project_name         " << quoted("project_unified_" + platformFile) << "\n";
  out << " dict set config_info board_repo_paths     $board_repo_paths\n";
  out << " dict set config_info board_part           " << quoted(part) << "\n";
  out << " dict set config_info board_name           " << quoted(boardName) << "\n";
  out << " dict set config_info board_memories       $boardMemories \n";
  out << " dict set config_info project_part         " << quoted(part) << "\n";
  out << " dict set config_info bd_name              \"emu\" \n";
  if (isDr) out << " dict set config_info dr_bd_name           \"pfm_dynamic\" \n";
  out << " dict set config_info cfa_name             " << quoted(platformFile) << "\n";
  out << " dict set config_info platform_unique_name " << quoted(sources.uniqueName) << "\n";
  out << " dict set config_info qlink_config          $qlinkConfig \n";
  if (!memoryDict.empty()) out << " dict set config_info memory_tags          $" << memoryDict << "\n";
  for (const auto& pair : maps.general)
    if (!pair.second.empty())
      out << " dict set config_info " << tclWord(pair.first) << " " << tclWord(pair.second) << "\n";
  out << "} \n";

  out << " set ip_repo_paths {}\n";
  const auto repo = maps.general.find("UserIpRepoPath");
  if (repo != maps.general.end() && !repo->second.empty())
    out << " lappend ip_repo_paths " << quoted(repo->second) << "\n";
  out << " dict set config::config_info ip_repo_paths  $ip_repo_paths\n";

  int flow = FLOW_NONE;
  const auto streaming = maps.general.find("UseStreaming");
  if (streaming != maps.general.end() && HSTStringUtils::iequals(streaming->second, "true"))
    flow = FLOW_STREAMING;
  else
    out << " dict set config::config_info UseStreaming    false\n";
  out << "} \n";
  const auto memss = maps.general.find("UseTeqMemss");
  if (memss != maps.general.end() && HSTStringUtils::iequals(memss->second, "true")) flow = FLOW_MEMSS;
  const auto custom = maps.general.find("CustomScriptPath");
  if (custom != maps.general.end()) {
    customScriptPath = custom->second;
    flow = FLOW_CUSTOM;
  }
  return flow;
}

void HTEQEmulationUtils::writeEmuUpdateCfa(std::ostream& out, const std::string& propScript,
                                           const std::string& overlayDir, const std::string& hwPlatformFile,
                                           const std::string& preLinkScript,
                                           const std::string& postLinkScript, bool isDr) {
  // The procedure calls below take the hardware platform file from the
  // property script (cfa_name); the argument is what emu.xml names.
  (void)hwPlatformFile;
  const std::string scripts = getEmuScriptsDir(isDr);
  const std::string sep = HUTFile::getSeparator();
  out << "proc emu_update_cfa { } { \n";
  out << "  source " << tclWord(propScript) << "\n";
  out << "  emu_prop_gen \n";
  out << "\n";
  out << "  set isStreaming [dict get $config::config_info UseStreaming]\n";
  out << "  if { [string tolower $isStreaming] eq \"true\"} {\n";
  out << "    source " << tclWord(scripts + sep + "streaming" + sep + "run.tcl") << "\n";
  out << "  } else {\n";
  out << "    source " << tclWord(scripts + sep + "memss" + sep + "run.tcl") << "\n";
  out << "  }\n";
  out << "  pre_sys_link_gen " << quoted(preLinkScript) << " \n";
  out << "  post_sys_link_gen " << quoted(postLinkScript) << " \n";
  out << "  source " << tclWord(preLinkScript) << "\n";
  out << "\n";
  out << "  emu_bd_gen \n";
  out << "\n";
  out << "  set shell_name [dict get $config::config_info cfa_name]\n";
  out << "  emu_hpfm_gen ${shell_name}_emu.hpfm \n";
  out << "\n";
  out << "  set overlay_dir " << tclWord(overlayDir) << "\n";
  out << "  file delete -force $overlay_dir\n";
  out << "  file mkdir $overlay_dir\n";
  out << "  set projName            [dict get $config::config_info project_name]\n";
  out << "  set bdName              [dict get $config::config_info bd_name]\n";
  if (isDr) out << "  set drBdName            [dict get $config::config_info dr_bd_name]\n";
  out << "  set cfaPath             [dict get $config::config_info cfa_name]\n";
  out << "  set cfaName             [file tail $cfaPath]\n";
  out << "  set platformName        [lindex [split $cfaName .] 0]\n";
  out << "  set ipRepos             [dict get $config::config_info ip_repo_paths] \n";
  out << "\n";
  if (isDr) {
    out << "  file mkdir $overlay_dir/$bdName/\n";
    out << "  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir/$bdName/\n";
    out << "  file copy -force  $projName/$projName.srcs/sources_1/bd/$drBdName $overlay_dir/$bdName/\n";
  } else {
    out << "  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir\n";
  }
  out << "  if {$ipRepos ne \"\"} {\n";
  out << "    file copy -force $ipRepos  $overlay_dir/$bdName/user_ip_repo\n";
  out << "  }\n";
  out << "  file copy -force " << quoted(preLinkScript) << " $overlay_dir/$bdName\n";
  out << "  file copy -force " << quoted(postLinkScript) << " $overlay_dir/$bdName\n";
  out << "  file rename -force ${shell_name}_emu.hpfm  $overlay_dir/$bdName\n";
  out << "\n";
  out << "  set list_projs [get_projects -quiet]\n";
  out << "  if { [lsearch -exact -inline $list_projs $projName] eq $projName } {\n";
  out << "    save_bd_design\n";
  out << "    current_project $projName\n";
  out << "    close_project\n";
  out << "  }\n";
  out << "}\n";
  out << "\n";
  out << "set status [catch { emu_update_cfa } msg ]\n";
  out << "if {$status != 0} { \n";
  out << "  puts \"Updating CFA with emulation files was unsuccessful, message: '${msg}'\"\n";
  out << "  exit 0\n";
  out << "}\n";
}

bool HTEQEmulationUtils::generateEmuPropDict(const std::string& platformFile, const std::string& name,
                                             bool isDr, const std::string& outDir) {
  const std::string dir = outDir.empty() ? std::string(kPropDir) : outDir;
  try {
    const std::string scripts = getEmuScriptsDir(isDr);
    if (scripts.empty()) return false;
    HUTFile::mkDirRecursive(dir);
    std::ostringstream text;
    if (!writePropertyScript(platformFile, name, isDr, scripts, HUTFile::getParent(dir), text)) return false;
    const std::string script = HUTPathUtils::join(dir, kPropScript);
    HUTFile::writeAtomically(script, text.str(), 0777);
    HUTFile::mkExecutable(script);
    return true;
  } catch (const std::exception& e) {
    ZR_SEND_MSG(kMsgFailed, ComMsgMask::kError, e.what());
    return false;
  }
}

bool HTEQEmulationUtils::generateCfaEmuScripts(const std::string& propScript,
                                               const std::string& hwPlatformName,
                                               const std::string& overlayDir, bool isDr) {
  if (!installationSet()) return false;
  const std::string hwPlatformFile = hwPlatformName + kHpfmSuffix;
  std::ostringstream driver;
  writeEmuUpdateCfa(driver, propScript, overlayDir, hwPlatformFile, kPreLink, kPostLink, isDr);
  HUTFile::writeAtomically(kDriver, driver.str(), 0777);
  HUTFile::mkExecutable(kDriver);

  jun::tcltasks::task_manager::instance().eval_in_tcl(std::string("source ") + kDriver, false, true);

  const std::string emuDir = HUTPathUtils::join(overlayDir, "emu");
  const std::string blockDesign = HUTPathUtils::join(emuDir, isDr ? "emu/emu.bd" : "emu.bd");
  if (!HUTFile::isFile(blockDesign)) {
    ZR_SEND_MSG(kMsgNoBlockDesign, ComMsgMask::kError);
    return false;
  }
  HTEQEmulations emulations;
  HTEQEmulation* emulation = emulations.createEmulation();
  if (isDr) emulation->createFile("TOP_BD", "emu/emu.bd");
  emulation->createFile("EMU_DR_BD", isDr ? "pfm_dynamic/pfm_dynamic.bd" : "emu.bd");
  emulation->createFile("EMU_HPFM", hwPlatformFile);
  emulation->createFile("POST_SYS_LINK_TCL", kPostLink);
  emulation->createFile("PRE_SYS_LINK_TCL", kPreLink);
  try {
    HTEQEmulationXMLWriter(&emulations, HUTPathUtils::join(emuDir, "emu.xml")).writeXml();
  } catch (const std::exception& e) {
    ZR_SEND_MSG(kMsgFailed, ComMsgMask::kError, e.what());
    return false;
  }
  return true;
}

bool HTEQEmulationUtils::generateEmuDir(const std::string& propScript, const std::string& hwPlatformName,
                                        const std::string& outDir) {
  if (outDir.empty()) {
    ZR_SEND_MSG(kMsgNoOutDir, ComMsgMask::kError);
    return false;
  }
  return generateCfaEmuScripts(propScript, hwPlatformName, HUTPathUtils::join(outDir, kOverlay), true);
}

bool HTEQEmulationUtils::updateCfa(const std::string& platformFile, const std::string& overlayDir) {
  try {
    std::vector<std::string> members;
    std::string dir = overlayDir;
    while (dir.size() > 1 && dir.back() == '/') dir.pop_back();
    getAllRelativeInDir(dir, members, HUTPathUtils::getFileName(dir));
    std::vector<std::string> files;
    getAllRelativeInDir(dir, files, dir);
    std::vector<std::pair<std::string, std::string>> updates;
    for (std::size_t i = 0; i < members.size(); ++i) updates.emplace_back(members[i], files[i]);
    HUTZip::updateFiles(platformFile, updates, true);
    return true;
  } catch (const std::exception& e) {
    ZR_SEND_MSG(kMsgFailed, ComMsgMask::kError, e.what());
    return false;
  }
}

bool HTEQEmulationUtils::generateCfaEmu(const std::string& platformFile, const std::string& name,
                                        const std::string& outDir) {
  if (!HUTFile::exists(platformFile)) {
    ZR_SEND_MSG(kMsgMissing, ComMsgMask::kError, platformFile);
    return false;
  }
  if (!HUTFile::isFile(platformFile)) {
    ZR_SEND_MSG(kMsgNotRegular, ComMsgMask::kError, platformFile);
    return false;
  }
  if (!installationSet()) return false;
  // The hardware platform is named after the archive, as the property script names it (cfa_name).
  const std::string stem = HUTPathUtils::getStem(platformFile);
  const std::string propDir = HUTPathUtils::join(outDir, kPropDir);
  if (!generateEmuPropDict(platformFile, name, false, propDir)) return false;
  if (name.empty()) return true;
  const std::string overlay = HUTPathUtils::join(outDir, kOverlay);
  if (!generateCfaEmuScripts(HUTPathUtils::join(propDir, kPropScript), stem, overlay, false)) return false;
  return !outDir.empty() || updateCfa(platformFile, overlay);
}

bool HTEQEmulationUtils::printEmuPropDict(const std::string& platformFile, const std::string& name, bool isDr,
                                          std::ostream& out) {
  try {
    if (!HUTFile::exists(platformFile)) {
      ZR_SEND_MSG(kMsgMissing, ComMsgMask::kError, platformFile);
      return false;
    }
    if (!HUTFile::isFile(platformFile)) {
      ZR_SEND_MSG(kMsgNotRegular, ComMsgMask::kError, platformFile);
      return false;
    }
    const std::string scripts =
        HUTEnv::instance().get(kInstallVar).empty() ? std::string() : getEmuScriptsDir(isDr);
    const std::string tmpRoot = HUTEnv::instance().getJUNTmpDir();
    HUTFile::mkDirRecursive(tmpRoot);
    const std::string tmpDir = HUTFile::makeTmpDir(HUTPathUtils::join(tmpRoot, "zr-emu-props-"));
    struct Remove {
      std::string dir;
      ~Remove() { HUTFile::rmRecursive(dir); }
    } remove{tmpDir};
    std::ostringstream text;
    if (!writePropertyScript(platformFile, name, isDr, scripts, tmpDir, text)) return false;
    out << text.str();
    return true;
  } catch (const std::exception& e) {
    ZR_SEND_MSG(kMsgFailed, ComMsgMask::kError, e.what());
    return false;
  }
}
