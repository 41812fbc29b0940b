// The support policy of NativeCatalogService: which platforms this tool
// release accepts, and the sentence that explains a refusal.

#include "repository/SupportPolicy.h"

#include <sys/stat.h>

#include <boost/property_tree/ptree.hpp>
#include <exception>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>

#include "host/ComMsgMgr.h"
#include "host/HUTConsole.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/IslXp.h"
#include "json/JsonDocument.h"
#include "platform/HTEQEnv.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/NativeCatalogService.h"
#include "platform/NativeObjectService.h"
#include "platform/PlatformLoader.h"

namespace teq {
namespace platform {

namespace {

using Tree = NativeCatalogService::Tree;

constexpr unsigned kListMaskError = ComMsgMask::kWarning;
constexpr unsigned kToolVersionMask = ComMsgMask::kInfo;
constexpr unsigned kListMaxDepth = 32;

std::vector<std::string> splitDots(const std::string& text) {
  std::vector<std::string> pieces;
  std::string::size_type start = 0;
  while (true) {
    const std::string::size_type dot = text.find('.', start);
    pieces.push_back(text.substr(start, dot == std::string::npos ? std::string::npos : dot - start));
    if (dot == std::string::npos) break;
    start = dot + 1;
  }
  return pieces;
}

// The strict decimal conversion: std::stoi, whose std::invalid_argument
// carries the word "stoi" for text that does not start with a number.
int toInt(const std::string& piece) { return std::stoi(piece); }

struct ToolVersion {
  std::string text;
  int major = 0;
  int minor = 0;
};

// The tool's version; a versionless tool prints `warning` and uses the default.
ToolVersion readToolVersion(const std::string& compilerVersion, const char* warning, const char* fallback) {
  ToolVersion tool;
  tool.text = compilerVersion;
  std::vector<std::string> pieces = splitDots(compilerVersion);
  if (pieces.size() < 2 || pieces[0].empty() || pieces[1].empty()) {
    HUTConsole::out(std::string(warning) + "\n");
    tool.text = fallback;
    pieces = splitDots(tool.text);
  }
  tool.major = toInt(pieces[0]);
  tool.minor = toInt(pieces[1]);
  return tool;
}

const char kVersionless[] =
    "Critical Warning: the current tool is versionless, please set the appropriate product name/version";
const char kVersionlessPreSynth[] =
    "Critical Warning: the current tool is versionless, please set the appropriate product name/version. "
    "Setting a default value of 2020.1 for the major and minor version.";
const char kNotUnified[] =
    "' is not a unified platform. By policy, non-unified platforms are not supported by the current tool "
    "version";

std::string baseNameOf(const std::string& path) {
  const std::string::size_type slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool hasHostIntent(const HTEQPlatform& platform) {
  return platform.getDesignIntentDataCenter() || platform.getDesignIntentServerManaged() ||
         platform.getDesignIntentExternalHost();
}

bool isNewer(int major, int minor, const ToolVersion& tool) {
  return major > tool.major || (major == tool.major && minor > tool.minor);
}

// The exception list as last read, kept while its file keeps its size and
// modification time, so that a catalog of many platforms reads it once.
struct ListCache {
  std::mutex mutex;
  std::string path;
  bool valid = false;
  off_t size = 0;
  struct timespec mtime {};
  std::shared_ptr<const Tree> tree;
};

std::shared_ptr<const Tree> readList(const std::string& path) {
  static ListCache cache;
  auto tree = std::make_shared<Tree>();
  struct stat st {};
  // Only a regular file is read: a directory, FIFO or device gives the empty tree.
  if (::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return tree;
  std::lock_guard<std::mutex> lock(cache.mutex);
  if (cache.valid && cache.path == path && cache.size == st.st_size &&
      cache.mtime.tv_sec == st.st_mtim.tv_sec && cache.mtime.tv_nsec == st.st_mtim.tv_nsec)
    return cache.tree;
  // A list that is not packed is not in the library's format and is not read.
  if (isl::iostreams::xp::is_xp_format(path)) {
    try {
      zr_json::parseTree(isl::iostreams::xp::read_file(path), *tree, kListMaxDepth, path);
    } catch (const std::exception&) {
      tree->clear();
    }
  }
  cache.path = path;
  cache.valid = true;
  cache.size = st.st_size;
  cache.mtime = st.st_mtim;
  cache.tree = tree;
  return tree;
}

bool listsProduct(const Tree& entry, const std::string& product) {
  for (const auto& item : entry.get_child("products")) {
    if (item.second.data() == product) return true;
  }
  return false;
}

// Where the list lies and which product it is read for: taken from the
// environment on the first use and kept for the life of the process, as a
// host sets its application root and product once, before any check.
struct ListLookup {
  std::mutex mutex;
  bool set = false;
  std::string path;
  std::string product;
};

ListLookup& listLookup() {
  static ListLookup lookup;
  return lookup;
}

void listPathAndProduct(std::string& path, std::string& product) {
  ListLookup& lookup = listLookup();
  std::lock_guard<std::mutex> lock(lookup.mutex);
  if (!lookup.set) {
    lookup.path = NativeCatalogService::getAchromaticPath();
    lookup.product = HTEQEnv::getProductName();
    lookup.set = true;
  }
  path = lookup.path;
  product = lookup.product;
}

// What isUnderWarranty and canCfaBeOpened read before their own rules: the
// platform (refused unless unified, `noun` naming it in the sentence), the
// exemption of embedded platforms, then both versions.
struct HostChecks {
  enum Outcome { Refused, Supported, Compare };
  std::shared_ptr<HTEQPlatform> platform;
  std::string name;
  std::string version;
  int major = 0;
  int minor = 0;
  ToolVersion tool;
};

HostChecks::Outcome checkHostPlatform(teq_platform::PlatformLoader* loader, const char* noun,
                                      const std::string& compilerVersion, bool sayFailure, HostChecks& checks,
                                      std::string& reason) {
  if (loader != nullptr) checks.platform = loader->load();
  const HTEQPlatform* platform = checks.platform.get();
  if (platform == nullptr) {
    if (sayFailure) HUTConsole::out("Error: failed to load platform\n");
    return HostChecks::Refused;
  }
  checks.name = baseNameOf(loader->getFilePath());
  if (!platform->isUnified()) {
    reason = std::string(noun) + " '" + checks.name + kNotUnified;
    return HostChecks::Refused;
  }
  // Embedded platforms are under no version rule.
  if (!hasHostIntent(*platform)) return HostChecks::Supported;
  NativeCatalogService::getPlatformVersion(platform->getHardwarePlatform(), checks.version, checks.major,
                                           checks.minor);
  checks.tool = readToolVersion(compilerVersion, kVersionless, "2019.1");
  return HostChecks::Compare;
}

}  // namespace

namespace support_policy {

bool exceptionListNamesProduct() {
  std::string path;
  std::string product;
  listPathAndProduct(path, product);
  const std::shared_ptr<const Tree> list = readList(path);
  for (const auto& top : *list) {
    for (const auto& entry : top.second) {
      const boost::optional<const Tree&> products = entry.second.get_child_optional("products");
      if (products && listsProduct(entry.second, product)) return true;
    }
  }
  return false;
}

void resetExceptionListLookup() {
  ListLookup& lookup = listLookup();
  std::lock_guard<std::mutex> lock(lookup.mutex);
  lookup.set = false;
}

}  // namespace support_policy

std::string NativeCatalogService::getAchromaticPath() {
  const std::string sep = HUTFile::getSeparator();
  return HUTEnv::instance().getJUNAppRoot() + sep + "platforms" + sep + "achromatic";
}

int NativeCatalogService::getColor(teq_platform::PlatformLoader* loader, std::string& reason) {
  std::string path;
  std::string product;
  listPathAndProduct(path, product);
  const std::shared_ptr<const Tree> list = readList(path);
  if (list->empty()) {
    ZR_SEND_MSG("@74-49@%s", kListMaskError, path);
    return 2;
  }
  for (const auto& top : *list) {
    if (top.first != "black_list" && top.first != "white_list") {
      ZR_SEND_MSG("@74-50@%s", kListMaskError, path);
      return 2;
    }
  }
  const NativeObjectService objects;
  for (const auto& top : *list) {
    for (const auto& entry : top.second) {
      if (!entry.first.empty() || !entry.second.get_child_optional("products")) {
        ZR_SEND_MSG("@74-50@%s", kListMaskError, path);
        return 2;
      }
      if (!listsProduct(entry.second, product)) continue;
      const std::string key = entry.second.get("key", std::string());
      const std::string value = entry.second.get("value", std::string());
      bool found = false;
      const std::string actual = objects.getObjectsByPath(loader, key, found);
      if (!actual.empty() && actual == value) {
        reason = entry.second.get("reason", std::string());
        return top.first == "black_list" ? 0 : 1;
      }
    }
  }
  return 3;
}

bool NativeCatalogService::getPlatformVersion(const HTEQHardwarePlatform* hardware, std::string& text,
                                              int& major, int& minor) {
  major = 0;
  minor = 0;
  text.clear();
  if (hardware == nullptr) return false;
  text = hardware->getVersion();
  const std::vector<std::string> pieces = splitDots(text);
  major = toInt(pieces[0]);
  minor = pieces.size() > 1 ? toInt(pieces[1]) : 0;
  return true;
}

bool NativeCatalogService::isUnderWarranty(teq_platform::PlatformLoader* loader, std::string& reason,
                                           const std::string& productName) const {
  if (loader == nullptr) {
    HUTConsole::out("Error: failed to load platform\n");
    return false;
  }
  if (!productName.empty()) HUTEnv::instance().setProductName(productName);
  HostChecks checks;
  switch (checkHostPlatform(loader, "Platform", getCompilerVersion_(), true, checks, reason)) {
    case HostChecks::Refused:
      return false;
    case HostChecks::Supported:
      return true;
    case HostChecks::Compare:
      break;
  }
  const std::string& name = checks.name;
  const std::string& version = checks.version;
  const int major = checks.major;
  const int minor = checks.minor;
  const ToolVersion& tool = checks.tool;
  const std::string head = "Platform '" + name + "' (version " + version +
                           ") is not supported by the current tool version (" + tool.text + "). By policy, ";
  if (isNewer(major, minor, tool)) {
    reason = head + "the platform version can not be newer than the current tool version";
    return false;
  }
  ZR_SEND_MSG("@74-78@%s", kToolVersionMask, tool.text);

  // The document's "extensions" is the hardware platform's extension
  // metadata: without any there is no list, and the document is not built.
  const HTEQHardwarePlatform* hardware = checks.platform->getHardwarePlatform();
  if (tool.major != 0 && hardware != nullptr && !hardware->getExtMetaJsonAsString().empty()) {
    const NativeObjectService objects;
    const Tree document = objects.getAsPropertyTree(loader);
    const auto list = objects.getChildOptional(document, "hardwarePlatform.extensions.extended_warranty");
    if (list) {
      for (const auto& item : *list) {
        const std::vector<std::string> pieces = splitDots(item.second.data());
        const int wMajor = toInt(pieces[0]);
        const int wMinor = pieces.size() > 1 ? toInt(pieces[1]) : 0;
        if (wMajor == tool.major && wMinor == tool.minor) {
          reason = "Platform '" + name +
                   "' has been explicitly enabled for this release with an extended warranty.";
          return true;
        }
      }
    }
  }

  std::string listReason;
  const int color = getColor(loader, listReason);
  if (color == 0 || color == 1) {
    reason =
        "Platform '" + name + "' has been " +
        (color == 0 ? "marked unsupported due to known issues." : "explicitly enabled for this release.");
    if (!listReason.empty()) reason += " Reason: " + listReason;
    return color == 1;
  }
  if (major < 2017 || (major == 2017 && minor < 4)) {
    reason = head + "the platform version can not be older than 2017.4";
    return false;
  }
  if (tool.major == major || tool.major == major + 1) return true;
  reason = head +
           "platforms are supported for the remainder of the calendar year release plus the following "
           "calendar year release";
  return false;
}

bool NativeCatalogService::isPreSynthPlatformSupported(teq_platform::PlatformLoader* loader,
                                                       std::string& reason) const {
  if (loader == nullptr) return false;
  if (!isPreSynthPlatform(loader)) {
    reason = "Platform '" + loader->getFilePath() + "' is not a PRE_SYNTH platform";
    return false;
  }
  std::shared_ptr<HTEQPlatform> platform = loader->load();
  if (!platform) {
    reason =
        "Failed to load the platform. Can not continue with establishing platform support with respect to "
        "the "
        "tool flow.";
    HUTConsole::out("Error: failed to load platform\n");
    return false;
  }
  const std::string name = baseNameOf(loader->getFilePath());
  if (!platform->isUnified()) {
    reason = "Platform '" + name + kNotUnified;
    return false;
  }
  std::string version;
  int major = 0;
  int minor = 0;
  getPlatformVersion(platform->getHardwarePlatform(), version, major, minor);
  const ToolVersion tool = readToolVersion(getCompilerVersion_(), kVersionlessPreSynth, "2020.1");
  // A pre-synthesis platform is supported only on the release that created it.
  if (major == tool.major && minor == tool.minor) return true;
  const std::string head = "Platform '" + name + "' (version " + version +
                           ") is a PRE_SYNTH platform and is not supported by the current tool version (" +
                           tool.text;
  if (isNewer(major, minor, tool)) {
    reason = head + "). By policy, the platform version can not be newer than the current tool version";
  } else {
    reason = head +
             "). By policy, platforms are only supported on the same tool release on which the platform "
             "was created.";
  }
  return false;
}

bool NativeCatalogService::canCfaBeOpened(teq_platform::PlatformLoader* loader, std::string& reason) const {
  HostChecks checks;
  switch (checkHostPlatform(loader, "CFA", getCompilerVersion_(), false, checks, reason)) {
    case HostChecks::Refused:
      return false;
    case HostChecks::Supported:
      return true;
    case HostChecks::Compare:
      break;
  }
  // Opening is allowed for any older version: only a newer one is refused.
  if (isNewer(checks.major, checks.minor, checks.tool)) {
    reason = "CFA '" + checks.name + "' (version " + checks.version +
             ") is not supported by the current tool version (" + checks.tool.text +
             "). By policy, the CFA version can not be newer than the current tool version";
    return false;
  }
  return true;
}

bool NativeCatalogService::isUnderWarranty(const std::string& file, std::string& reason,
                                           const std::string& productName) const {
  teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
  return isUnderWarranty(&loader, reason, productName);
}

bool NativeCatalogService::isPreSynthPlatformSupported(const std::string& file, std::string& reason) const {
  teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
  return isPreSynthPlatformSupported(&loader, reason);
}

bool NativeCatalogService::canCfaBeOpened(const std::string& file, std::string& reason) const {
  teq_platform::PlatformLoader loader(file, teq_platform::PlatformLoader::Default);
  return canCfaBeOpened(&loader, reason);
}

}  // namespace platform
}  // namespace teq
