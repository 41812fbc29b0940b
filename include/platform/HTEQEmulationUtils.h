#ifndef PLATFORM_HTEQEMULATIONUTILS_H
#define PLATFORM_HTEQEMULATIONUTILS_H

#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "platform/ZrPlatformExport.h"

class HPLPlatform;

// Makes what a hardware emulation run needs from a hardware archive of the
// older form (a .cfa with XML metadata): a Tcl script of the platform's
// properties ("hw_emu_prop/hw_emu_prop.tcl"), a driver script
// ("emu_update_cfa.tcl", always in the current directory) that runs the
// emulation build scripts of the installation through the process's Tcl
// service (jun::tcltasks::task_manager), and an "overlay" directory described
// by "overlay/emu/emu.xml" that is merged back into the archive.
//
// The installation root comes from the environment variable TORVANE_MORWEN;
// its emulation scripts lie in <root>/data/emulation/hw_em/scripts. Only the
// generator needs it: the property script can be made without.
//
// Failures are answered with false and a message:
//   "@74-32@%s" (error)   the archive does not exist
//   "@74-36@%s" (error)   the archive is not a regular file
//   "@74-35@"   (error)   TORVANE_MORWEN is not set
//   "@74-57@"   (error)   generateEmuDir without an output directory
//   "@74-56@%s" (warning) no default property file in the installation; the run goes on
//   "@74-33@"   (error)   the build left no block design in the overlay
//   "@74-1@%s"  (error)   anything else: the archive's metadata cannot be read
//                         (the reader's own message comes first), a property
//                         file is malformed, a file cannot be written
// A failing Tcl evaluation raises HEXUserException from the Tcl service
// (a script that calls `exit`, raises an error or runs past the time limit).
// The archive is changed only by updateCfa, in one update.
class ZR_PLATFORM_API HTEQEmulationUtils {
 public:
  // The five file and path strings the property script is made from.
  struct PropertySources {
    std::string defaultPropFile;   // <scripts>/platform_config/<name>.json or default_prop.json
    std::string propJsonFile;      // copy of the archive's PROP_JSON member
    std::string userPropJsonFile;  // copy of the archive's USER_PROP_JSON member
    std::string boardRepoPath;     // board repository, empty for none
    std::string uniqueName;        // the platform's unique name
  };

  // Flow kinds of writeEmuPropertiesDict.
  enum FlowKind { FLOW_NONE = 0, FLOW_MEMSS = 1, FLOW_STREAMING = 2, FLOW_CUSTOM = 3 };

  // The whole run: property script, driver, evaluation, overlay. Without an
  // output directory everything goes below the current directory and, when a
  // name is given, the overlay is merged into the archive; with one, the
  // property script and overlay go below it and the archive is left alone.
  static bool generateCfaEmu(const std::string& platformFile, const std::string& name,
                             const std::string& outDir);
  // Runs the driver with the dynamic-region layout into <outDir>/overlay.
  static bool generateEmuDir(const std::string& propScript, const std::string& hwPlatformName,
                             const std::string& outDir);
  // Writes "emu_update_cfa.tcl" in the current directory, evaluates it, and
  // describes the overlay in <overlay>/emu/emu.xml.
  static bool generateCfaEmuScripts(const std::string& propScript, const std::string& hwPlatformName,
                                    const std::string& overlayDir, bool isDr);
  // Writes <outDir>/hw_emu_prop.tcl (outDir "" is "hw_emu_prop") from the
  // archive; `isDr` looks for the default property file in the
  // dynamic-region scripts and writes the dynamic block design name.
  static bool generateEmuPropDict(const std::string& platformFile, const std::string& name, bool isDr,
                                  const std::string& outDir);

  // The property script of an archive, written to `out` without touching
  // the current directory: the default property file is taken from the
  // installation when TORVANE_MORWEN is set, else left out with "@74-56@".
  static bool printEmuPropDict(const std::string& platformFile, const std::string& name, bool isDr,
                               std::ostream& out);

  // The driver script's text.
  static void writeEmuUpdateCfa(std::ostream& out, const std::string& propScript,
                                const std::string& overlayDir, const std::string& hwPlatformFile,
                                const std::string& preLinkScript, const std::string& postLinkScript,
                                bool isDr);
  // The property script's text (procedure emu_prop_gen). `platformFile` is
  // the text the script names the platform by. Answers the flow kind; for
  // FLOW_CUSTOM the script to run is put in customScriptPath. A property
  // file that is not valid JSON raises HEXDataException.
  static int writeEmuPropertiesDict(HPLPlatform* platform, const PropertySources& sources, std::ostream& out,
                                    const std::string& platformFile, bool isDr,
                                    std::string& customScriptPath);
  // The dictionaries of the platform's DDR memory segments; `dictName` is
  // set to the name of the dictionary of all of them ("memoryTags").
  static bool printMemoriesInfo(HPLPlatform* platform, std::ostream& out, std::string& dictName);

  // Replaces the archive's members by the overlay's files of the same name,
  // adds the others ("overlay/..."), and stamps the digest, in one update.
  static bool updateCfa(const std::string& platformFile, const std::string& overlayDir);

  // The member of the platform's archive with its emulation metadata: the
  // file of type EMU_XML, else "emu/emu.xml".
  static std::string getEmuXmlFile(HPLPlatform* platform);
  // Appends the path of every regular file below `dir`, relative to it and
  // behind `prefix` (joined with "/" when not empty), in path order.
  static void getAllRelativeInDir(const std::string& dir, std::vector<std::string>& out,
                                  const std::string& prefix);

  // Parameters never written to the property script.
  static const std::set<std::string>& getUnUsedParamatersInDDRModel(int ddrModel = 4);
  static const std::set<std::string>& getUnUsedTeqMemorySubSystemParams();
  static const std::set<std::string>& getUnUsedCLKSettings();

  // The installation root (TORVANE_MORWEN); empty, with "@74-35@", when unset.
  static std::string getTorvaneIPPath();
  // <TORVANE_SELBROOK, else TORVANE_TEQ>/platforms; empty when neither is set.
  static std::string getSelbrookIPPath();
  // The emulation scripts of the installation, with the dynamic-region
  // level for isDr; empty, with "@74-35@", without an installation.
  static std::string getEmuScriptsDir(bool isDr);

  // A value as one Tcl word: plain words stay as they are, anything else is
  // quoted by Tcl's list rules so that it is never substituted.
  static std::string tclWord(const std::string& value);
  // A name usable as a Tcl variable: characters outside [A-Za-z0-9_] become "_".
  static std::string tclVarName(const std::string& name);
};

#endif
