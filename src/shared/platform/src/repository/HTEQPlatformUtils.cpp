#include "platform/HTEQPlatformUtils.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>

#include "host/HSTStringUtils.h"
#include "host/HUTConsole.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/HTEQDevice.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformMgr.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSystemConfig.h"
#include "repository/RepoWalk.h"

namespace {

using StringVector = HTEQPlatformUtils::StringVector;
using TEQPlatformVec = HTEQPlatformUtils::TEQPlatformVec;

const char kDebugVar[] = "GET_PLATFORM_BY_PATH_DEBUG_VAR";

// The manager's active list, empty when there is no manager.
TEQPlatformVec activePlatforms() {
  TEQPlatformVec all;
  const HTEQPlatformMgr* mgr = HTEQPlatformMgr::getGlobal();
  if (mgr == nullptr) return all;
  std::unique_ptr<HSTFwdIter<HTEQPlatform*>> it(mgr->createPlatformIter());
  if (it == nullptr) return all;
  while (it->hasNext())
    if (HTEQPlatform* p = it->next()) all.push_back(p);
  return all;
}

HTEQPlatform* lookup(const std::string& name) {
  const HTEQPlatformMgr* mgr = HTEQPlatformMgr::getGlobal();
  return mgr == nullptr ? nullptr : mgr->getPlatform(name);
}

HTEQHardwarePlatform* hardwareOf(const HTEQPlatform* p) {
  if (p == nullptr) return nullptr;
  HTEQHardwarePlatform* hw = p->getHardwarePlatform();
  return hw != nullptr ? hw : p->getDefaultRPHardwarePlatform();
}

HTEQDevice* firstDevice(const HTEQPlatform* p) {
  const HTEQHardwarePlatform* hw = hardwareOf(p);
  if (hw == nullptr) return nullptr;
  HTEQHardwarePlatform::TEQDeviceVec devices;
  hw->getDevices(devices);
  return devices.empty() ? nullptr : devices.front();
}

void appendOnce(StringVector& out, const std::string& text) {
  if (std::find(out.begin(), out.end(), text) == out.end()) out.push_back(text);
}

bool isDataCenterLike(const HTEQPlatform* p) {
  return p->getDesignIntentDataCenter() || p->getDesignIntentServerManaged() ||
         p->getDesignIntentExternalHost();
}

bool matchesUniqueName(const HTEQPlatform* p, const std::string& name) {
  return p->getUniqueName() == name || HSTStringUtils::iequals(p->getPlatformBaseName(), name) ||
         HSTStringUtils::iequals(p->getPlatformFile(), name);
}

// Vendor and board of the hardware, when given, must match.
bool matchesVendorBoard(const HTEQPlatform* p, const std::string& vendor, const std::string& board) {
  const HTEQHardwarePlatform* hw = hardwareOf(p);
  if (hw == nullptr) return false;
  return (vendor.empty() || vendor == hw->getVendor()) && (board.empty() || board == hw->getBoardId());
}

void selectByPart(const std::string& part, const std::string& vendor, const std::string& board,
                  bool latestOnly, const std::function<bool(const HTEQPlatform*)>& keep,
                  TEQPlatformVec& out) {
  TEQPlatformVec candidates;
  HTEQPlatformUtils::getPlatformsByPart(part, candidates);
  for (HTEQPlatform* p : candidates)
    if (keep(p) && matchesVendorBoard(p, vendor, board)) out.push_back(p);
  if (latestOnly) HTEQPlatformUtils::filterOutOldPlatforms(out);
}

// Major and minor of a version text; each piece read in base ten up to the
// first character that is no digit, so "2.1b" is 2.1 and "x" is 0.0.
std::pair<long, long> versionOf(const std::string& text) {
  const std::vector<std::string> pieces = HSTStringUtils::split(text, '.');
  auto number = [](const std::string& s) { return std::strtol(s.c_str(), nullptr, 10); };
  const long major = pieces.empty() ? 0 : number(pieces[0]);
  const long minor = pieces.size() > 1 ? number(pieces[1]) : 0;
  return {major, minor};
}

bool startsWithDir(const std::string& dir, const std::string& root) {
  if (root.empty() || dir.compare(0, root.size(), root) != 0) return false;
  return dir.size() == root.size() || dir[root.size()] == '/' || root.back() == '/';
}

}  // namespace

bool HTEQPlatformUtils::isDUVPlatform(const std::string& name) {
  const HTEQPlatform* p = lookup(name);
  return p != nullptr && isDataCenterLike(p);
}

bool HTEQPlatformUtils::isWELPlatform(const std::string& name) {
  const HTEQPlatform* p = lookup(name);
  return p != nullptr && p->getDesignIntentEmbedded();
}

bool HTEQPlatformUtils::isUnifiedPlatform(const std::string& name) {
  const HTEQPlatform* p = lookup(name);
  return p != nullptr && p->isUnified();
}

bool HTEQPlatformUtils::isExpandablePlatform(const std::string& name) {
  const HTEQPlatform* p = lookup(name);
  return p != nullptr && p->isExpandable();
}

bool HTEQPlatformUtils::isFixedPlatform(const std::string& name) { return !isExpandablePlatform(name); }

bool HTEQPlatformUtils::isProcessorGroupRelevant(const std::string& name) { return isWELPlatform(name); }

bool HTEQPlatformUtils::isLinuxRootFSPathRelevant(const std::string& name) { return isWELPlatform(name); }

bool HTEQPlatformUtils::isUserPlatform(const std::string& name) {
  const HTEQPlatform* p = lookup(name);
  return p != nullptr && !isInstallPlatformDir(HUTFile::getParent(p->getPlatformFile()));
}

HTEQPlatform* HTEQPlatformUtils::getPlatform(const std::string& name) { return lookup(name); }

HTEQPlatform* HTEQPlatformUtils::getPlatformByZdfFileBaseName(const std::string& name) {
  for (HTEQPlatform* p : activePlatforms())
    if (p->getPlatformBaseName() == name) return p;
  return nullptr;
}

HTEQPlatform* HTEQPlatformUtils::getPlatformByUniqueName(const std::string& name) {
  for (HTEQPlatform* p : activePlatforms())
    if (matchesUniqueName(p, name)) return p;
  return nullptr;
}

HTEQPlatform* HTEQPlatformUtils::getPlatformByFilePath(const std::string& path) {
  const bool debug = HUTEnv::instance().isSet(kDebugVar);
  const std::string wanted = HUTFile::getCanonicalName(path);
  if (debug) HUTConsole::out("sZdfFileCanonical is: " + wanted + "\n");
  for (HTEQPlatform* p : activePlatforms()) {
    if (p->getPlatformFile().empty()) continue;
    const std::string file = HUTFile::getCanonicalName(p->getPlatformFile());
    if (debug) HUTConsole::out("sPlatFileCanonical is: " + file + "\n");
    if (file == wanted) {
      if (debug) HUTConsole::out("Found a match\n");
      return p;
    }
    if (debug) HUTConsole::out("Does not match\n");
  }
  return nullptr;
}

void HTEQPlatformUtils::getPlatformsByUniqueName(const std::string& name, TEQPlatformVec& out) {
  for (HTEQPlatform* p : activePlatforms())
    if (matchesUniqueName(p, name)) out.push_back(p);
}

void HTEQPlatformUtils::getPlatformsByVBNV(const std::string& vendor, const std::string& board,
                                           const std::string& name, const std::string& version,
                                           TEQPlatformVec& out) {
  for (HTEQPlatform* p : activePlatforms()) {
    const HTEQHardwarePlatform* hw = hardwareOf(p);
    if (hw == nullptr) continue;
    if ((vendor.empty() || vendor == hw->getVendor()) && (board.empty() || board == hw->getBoardId()) &&
        (name.empty() || name == hw->getName()) && (version.empty() || version == hw->getVersion()))
      out.push_back(p);
  }
}

void HTEQPlatformUtils::getLatestPlatformsByVBNV(const std::string& vendor, const std::string& board,
                                                 const std::string& name, const std::string& version,
                                                 TEQPlatformVec& out) {
  getPlatformsByVBNV(vendor, board, name, version, out);
  filterOutOldPlatforms(out);
}

void HTEQPlatformUtils::getPlatformsByPart(const std::string& part, TEQPlatformVec& out) {
  for (HTEQPlatform* p : activePlatforms()) {
    const HTEQHardwarePlatform* hw = hardwareOf(p);
    if (hw == nullptr) continue;
    HTEQHardwarePlatform::TEQDeviceVec devices;
    hw->getDevices(devices);
    if (std::any_of(devices.begin(), devices.end(),
                    [&](const HTEQDevice* d) { return d != nullptr && d->getPartArch() == part; }))
      out.push_back(p);
  }
}

void HTEQPlatformUtils::getPlatformsByCategoryFamilyVendorAndBoard(const std::string& category,
                                                                   const std::string& part,
                                                                   const std::string& vendor,
                                                                   const std::string& board, bool latestOnly,
                                                                   TEQPlatformVec& out) {
  selectByPart(
      part, vendor, board, latestOnly,
      [&category](const HTEQPlatform* p) {
        if (category == "fennick") return isDataCenterLike(p);
        if (category == "lorimar") return p->getDesignIntentEmbedded();
        return true;
      },
      out);
}

void HTEQPlatformUtils::getPlatformsByDesignIntent(unsigned int intent, const std::string& part,
                                                   const std::string& vendor, const std::string& board,
                                                   bool latestOnly, TEQPlatformVec& out) {
  selectByPart(
      part, vendor, board, latestOnly,
      [intent](const HTEQPlatform* p) {
        return (!(intent & 1u) || p->getDesignIntentServerManaged()) &&
               (!(intent & 2u) || p->getDesignIntentExternalHost()) &&
               (!(intent & 4u) || p->getDesignIntentEmbedded()) &&
               (!(intent & 8u) || p->getDesignIntentDataCenter());
      },
      out);
}

void HTEQPlatformUtils::getBoardsByCategoryFamilyAndVendor(const std::string& /*category*/,
                                                           const std::string& part, const std::string& vendor,
                                                           StringVector& out) {
  TEQPlatformVec platforms;
  getPlatformsByPart(part, platforms);
  for (const HTEQPlatform* p : platforms)
    if (p->getVendor() == vendor) appendOnce(out, hardwareOf(p)->getBoardId());
}

void HTEQPlatformUtils::getBoardsByPartAndVendor(const std::string& part, const std::string& vendor,
                                                 StringVector& out) {
  getBoardsByCategoryFamilyAndVendor("", part, vendor, out);
}

HTEQDevice* HTEQPlatformUtils::getDevice(const std::string& name) { return firstDevice(lookup(name)); }

std::string HTEQPlatformUtils::getFpgaPart(const std::string& name) {
  const HTEQDevice* d = getDevice(name);
  return d == nullptr ? std::string() : d->getPartName();
}

std::string HTEQPlatformUtils::getFpgaPartAsFields(const std::string& name) {
  const HTEQDevice* d = getDevice(name);
  return d == nullptr ? std::string() : d->getFpgaPart();
}

void HTEQPlatformUtils::getSupportedFpgaParts(StringVector& out) {
  for (const HTEQPlatform* p : activePlatforms()) {
    const HTEQHardwarePlatform* hw = hardwareOf(p);
    if (hw == nullptr) continue;
    HTEQHardwarePlatform::TEQDeviceVec devices;
    hw->getDevices(devices);
    for (const HTEQDevice* d : devices)
      if (d != nullptr && !d->getPartArch().empty()) appendOnce(out, d->getPartArch());
  }
}

void HTEQPlatformUtils::getRootInstallPlatformDirs(StringVector& out) {
  const std::string sep = HUTFile::getSeparator();
  for (const auto& root : HUTEnv::instance().getKELAppRootList())
    if (!root.empty()) out.push_back(HUTFile::getCanonicalName(root) + sep + "platforms");
  out.push_back(zr_repo::systemPlatformDir());
}

bool HTEQPlatformUtils::isInstallPlatformDir(const std::string& dir) {
  StringVector roots;
  getRootInstallPlatformDirs(roots);
  return std::any_of(roots.begin(), roots.end(),
                     [&dir](const std::string& root) { return startsWithDir(dir, root); });
}

void HTEQPlatformUtils::getAllFactoryPlatformDirs(StringVector& out) {
  for (const HTEQPlatform* p : activePlatforms()) {
    const std::string dir = HUTFile::getParent(p->getPlatformFile());
    if (isInstallPlatformDir(dir)) appendOnce(out, dir);
  }
}

void HTEQPlatformUtils::getAllUserPlatformDirs(StringVector& out) {
  StringVector factory;
  getAllFactoryPlatformDirs(factory);
  for (const HTEQPlatform* p : activePlatforms()) {
    const std::string dir = p->getPlatformDir();
    if (std::find(factory.begin(), factory.end(), dir) == factory.end()) appendOnce(out, dir);
  }
}

void HTEQPlatformUtils::getUnifiedPlatformDirs(StringVector& out) {
  for (const HTEQPlatform* p : activePlatforms())
    if (p->isUnified() && isInstallPlatformDir(p->getPlatformDir())) appendOnce(out, p->getPlatformDir());
}

std::string HTEQPlatformUtils::setUserPlatformDirs(const StringVector& dirs) {
  HTEQPlatformMgr* mgr = HTEQPlatformMgr::getGlobal();
  if (mgr == nullptr) return "Failed to get Platform Mgr";
  StringVector userDirs;
  getAllUserPlatformDirs(userDirs);
  mgr->removePlatformsFromDirs(userDirs);
  const unsigned int before = mgr->getNumPlatforms();
  mgr->clearParsingErrorMsgs();
  mgr->addPlatformsFromDirs(dirs);
  std::string text;
  if (mgr->getNumPlatforms() <= before) text = "No Platforms Found.\n\n";
  StringVector errors;
  mgr->getParsingErrorMsgs(errors);
  for (const auto& e : errors) text += e;
  return text;
}

StringVector HTEQPlatformUtils::splitToFullDirs(const std::string& path) {
  StringVector dirs;
  for (const auto& piece : HSTStringUtils::split(path, ':'))
    if (!piece.empty()) dirs.push_back(HUTFile::getCanonicalName(piece));
  return dirs;
}

std::string HTEQPlatformUtils::getPrettyNameForProductType(const std::string& type) {
  if (type == "fennick") return "Fennick";
  if (type == "lorimar") return "Lorimar";
  return "Teq";
}

std::string HTEQPlatformUtils::getPrettyNameForLibType(const std::string& type) {
  if (type == "c-callable") return "C-Callable Library";
  if (type == "shared") return "Shared Library";
  if (type == "static") return "Static Library";
  return std::string();
}

void HTEQPlatformUtils::getAllLibraryTypes(StringVector& out) {
  out.push_back("c-callable");
  out.push_back("shared");
  out.push_back("static");
}

void HTEQPlatformUtils::getRuntimesOf(const HTEQPlatform* p, const std::string& systemConfig, bool pretty,
                                      StringVector& out) {
  if (p == nullptr) return;
  StringVector found;
  if (const HTEQSoftwarePlatform* sw = p->getSoftwarePlatform()) {
    if (const HTEQSystemConfig* config = sw->getSystemConfigByName(systemConfig)) {
      if (pretty)
        config->getRuntimesByPrettyName(found);
      else
        config->getRuntimes(found);
    } else if (pretty) {
      sw->getSupportedRuntimesByPrettyName(found);
    } else {
      sw->getSupportedRuntimes(found);
    }
  }
  if (found.empty()) {
    if (isDataCenterLike(p))
      found.push_back(pretty ? "OpenCL" : "ocl");
    else if (p->getDesignIntentEmbedded())
      found.push_back(pretty ? "C/C++" : "cpp");
  }
  out.insert(out.end(), found.begin(), found.end());
}

void HTEQPlatformUtils::getRuntimes(const std::string& name, const std::string& systemConfig,
                                    StringVector& out) {
  getRuntimesOf(lookup(name), systemConfig, false, out);
}

void HTEQPlatformUtils::getRuntimesByPrettyName(const std::string& name, const std::string& systemConfig,
                                                StringVector& out) {
  getRuntimesOf(lookup(name), systemConfig, true, out);
}

unsigned int HTEQPlatformUtils::getNumRuntimes(const std::string& name, const std::string& systemConfig) {
  StringVector runtimes;
  getRuntimesByPrettyName(name, systemConfig, runtimes);
  return static_cast<unsigned int>(runtimes.size());
}

// Kept at "at least one", as callers have always read it.
bool HTEQPlatformUtils::supportsMultipleRuntimes(const std::string& name) {
  return getNumRuntimes(name, "") >= 1;
}

bool HTEQPlatformUtils::isLatestVersion(const HTEQPlatform* platform) {
  TEQPlatformVec all;
  if (const HTEQPlatformMgr* mgr = HTEQPlatformMgr::getGlobal()) mgr->getPlatforms(all);
  return isLatestVersion(platform, all);
}

bool HTEQPlatformUtils::isLatestVersion(const HTEQPlatform* platform, const TEQPlatformVec& list) {
  const HTEQHardwarePlatform* hw = hardwareOf(platform);
  if (hw == nullptr) return true;
  const std::string vendor = hw->getVendor(), board = hw->getBoardId(), name = hw->getName();
  const std::pair<long, long> mine = versionOf(hw->getVersion());
  for (const HTEQPlatform* other : list) {
    const HTEQHardwarePlatform* o = hardwareOf(other);
    if (o == nullptr || o->getVendor() != vendor || o->getBoardId() != board || o->getName() != name)
      continue;
    if (versionOf(o->getVersion()) > mine) return false;
  }
  return true;
}

void HTEQPlatformUtils::filterOutOldPlatforms(TEQPlatformVec& list) {
  const TEQPlatformVec all = list;
  list.erase(std::remove_if(list.begin(), list.end(),
                            [&all](const HTEQPlatform* p) { return !isLatestVersion(p, all); }),
             list.end());
}
