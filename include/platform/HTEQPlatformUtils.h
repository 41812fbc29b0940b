#ifndef PLATFORM_HTEQPLATFORMUTILS_H
#define PLATFORM_HTEQPLATFORMUTILS_H

#include <string>

#include "platform/HSTVector.h"
#include "platform/ZrPlatformExport.h"

class HTEQDevice;
class HTEQPlatform;

// Questions about the platforms the global manager knows, in the vocabulary
// of compilers and the IDE. Every operation starts from the global manager's
// active list (scanning the default repositories on first use), and none
// throws for an unknown or incomplete platform: lookups answer null, lists
// stay as they were, Booleans are false. A platform's hardware is its own
// hardware platform, else its default partition's.
class ZR_PLATFORM_API HTEQPlatformUtils {
 public:
  using StringVector = HSTVector<std::string>;
  using TEQPlatformVec = HSTVector<HTEQPlatform*>;

  // Design-intent questions on the platform the manager finds for `name`.
  static bool isDUVPlatform(const std::string& name);
  static bool isWELPlatform(const std::string& name);
  static bool isUnifiedPlatform(const std::string& name);
  static bool isExpandablePlatform(const std::string& name);
  // Not expandable: an unknown name counts as fixed.
  static bool isFixedPlatform(const std::string& name);
  static bool isProcessorGroupRelevant(const std::string& name);
  static bool isLinuxRootFSPathRelevant(const std::string& name);
  // The platform's directory is not below an install platform directory.
  static bool isUserPlatform(const std::string& name);

  static HTEQPlatform* getPlatform(const std::string& name);
  static HTEQPlatform* getPlatformByZdfFileBaseName(const std::string& name);
  // Unique name exactly, or base name or platform file ignoring case; the first match.
  static HTEQPlatform* getPlatformByUniqueName(const std::string& name);
  // Compares canonical names. With GET_PLATFORM_BY_PATH_DEBUG_VAR set, traces
  // each comparison on standard output.
  static HTEQPlatform* getPlatformByFilePath(const std::string& path);
  static void getPlatformsByUniqueName(const std::string& name, TEQPlatformVec& out);
  // Empty strings match anything.
  static void getPlatformsByVBNV(const std::string& vendor, const std::string& board, const std::string& name,
                                 const std::string& version, TEQPlatformVec& out);
  static void getLatestPlatformsByVBNV(const std::string& vendor, const std::string& board,
                                       const std::string& name, const std::string& version,
                                       TEQPlatformVec& out);
  // Any device of the hardware whose part architecture equals `part`.
  static void getPlatformsByPart(const std::string& part, TEQPlatformVec& out);
  // "fennick" wants a data-center, external-host or server-managed intent,
  // "lorimar" an embedded one; other categories test no intent.
  static void getPlatformsByCategoryFamilyVendorAndBoard(const std::string& category, const std::string& part,
                                                         const std::string& vendor, const std::string& board,
                                                         bool latestOnly, TEQPlatformVec& out);
  // Every bit set is an intent the platform must have: 1 server managed,
  // 2 external host, 4 embedded, 8 data center.
  static void getPlatformsByDesignIntent(unsigned int intent, const std::string& part,
                                         const std::string& vendor, const std::string& board, bool latestOnly,
                                         TEQPlatformVec& out);
  // Board ids of the platforms of `part` whose descriptor vendor is
  // `vendor`, each once; the category is not consulted.
  static void getBoardsByCategoryFamilyAndVendor(const std::string& category, const std::string& part,
                                                 const std::string& vendor, StringVector& out);
  static void getBoardsByPartAndVendor(const std::string& part, const std::string& vendor, StringVector& out);
  // The first device of the platform's hardware, or null.
  static HTEQDevice* getDevice(const std::string& name);
  static std::string getFpgaPart(const std::string& name);
  // The device's part string as stored, fields separated by ':'.
  static std::string getFpgaPartAsFields(const std::string& name);
  static void getSupportedFpgaParts(StringVector& out);

  static void getRootInstallPlatformDirs(StringVector& out);
  static bool isInstallPlatformDir(const std::string& dir);
  static void getAllFactoryPlatformDirs(StringVector& out);
  static void getAllUserPlatformDirs(StringVector& out);
  static void getUnifiedPlatformDirs(StringVector& out);
  // Replaces the user platforms by those of `dirs`; returns the text for the
  // user ("No Platforms Found." first when nothing was added, then the
  // parsing errors).
  static std::string setUserPlatformDirs(const StringVector& dirs);
  // A ':' list of directories, each made canonical; empty pieces skipped.
  static StringVector splitToFullDirs(const std::string& path);

  static std::string getPrettyNameForProductType(const std::string& type);
  static std::string getPrettyNameForLibType(const std::string& type);
  static void getAllLibraryTypes(StringVector& out);
  static void getRuntimes(const std::string& name, const std::string& systemConfig, StringVector& out);
  static void getRuntimesByPrettyName(const std::string& name, const std::string& systemConfig,
                                      StringVector& out);
  static unsigned int getNumRuntimes(const std::string& name, const std::string& systemConfig);
  static bool supportsMultipleRuntimes(const std::string& name);

  // Whether no platform of `list` (or of the manager) with the same vendor,
  // board and name has a higher major.minor version. A platform without
  // hardware counts as latest.
  static bool isLatestVersion(const HTEQPlatform* platform);
  static bool isLatestVersion(const HTEQPlatform* platform, const TEQPlatformVec& list);
  static void filterOutOldPlatforms(TEQPlatformVec& list);

  // The same runtime rules on a platform already at hand (null gives nothing).
  static void getRuntimesOf(const HTEQPlatform* platform, const std::string& systemConfig, bool pretty,
                            StringVector& out);
};

#endif
