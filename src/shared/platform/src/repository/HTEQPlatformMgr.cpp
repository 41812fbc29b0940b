#include "platform/HTEQPlatformMgr.h"

#include <algorithm>
#include <utility>

#include "host/ComMsgMgr.h"
#include "host/HBOBoardCDataManager.h"
#include "host/HSTStringUtils.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHardwarePlatformMgr.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformXMLReader.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSoftwarePlatformXMLReader.h"
#include "repository/RepoWalk.h"

HTEQPlatformMgr* HTEQPlatformMgr::mp_theGlobal = nullptr;

HTEQPlatformMgr::HTEQPlatformMgr()
    : activeList_(&teqPlatforms_), boardDataManager_(HBOBoardCDataManager::create()) {}

HTEQPlatformMgr::~HTEQPlatformMgr() { clearAllPlatforms(); }

HTEQPlatformMgr* HTEQPlatformMgr::getGlobal() {
  if (mp_theGlobal == nullptr) {
    mp_theGlobal = new HTEQPlatformMgr();
    mp_theGlobal->init_();
  }
  return mp_theGlobal;
}

HTEQPlatformMgr* HTEQPlatformMgr::getGlobalNoInit() {
  if (mp_theGlobal == nullptr) mp_theGlobal = new HTEQPlatformMgr();
  return mp_theGlobal;
}

void HTEQPlatformMgr::init_() {
  StringVector dirs;
  getDefaultTeqPlatformDirs(dirs);
  if (!dirs.empty()) addPlatformsFromDirs(dirs);
}

void HTEQPlatformMgr::getDefaultTeqPlatformDirs(StringVector& out) const {
  // The application roots come first here, the system-wide repository last.
  for (const auto& root : HUTEnv::instance().getKELAppRootList()) {
    const std::string dir = zr_repo::appRootPlatformDir(root);
    if (HUTFile::exists(dir)) out.push_back(dir);
  }
  if (HUTFile::exists(zr_repo::systemPlatformDir())) out.push_back(zr_repo::systemPlatformDir());
}

// ---- Scans ----

void HTEQPlatformMgr::addPlatformsFromDirs(const StringVector& dirs) {
  addPlatformsFromDirs(std::string(), dirs);
}

void HTEQPlatformMgr::addPlatformsFromDirs(const std::string& name, const StringVector& dirs) {
  addPlatformsFromDirs_(name, dirs);
  addHardwarePlatformsFromDirs_(dirs);
}

void HTEQPlatformMgr::addPlatformsFromDirs_(const std::string& name, const StringVector& dirs) {
  for (const auto& dir : dirs) {
    if (!HUTFile::isDir(dir) || !HUTFile::exists(dir)) continue;
    std::string error;
    const bool complete = zr_repo::walkZdfFiles(
        dir,
        [&](const std::string& path) {
          if (isExistingPlatform_(path)) return;
          if (!name.empty() && !HSTStringUtils::iequals(name, HUTPathUtils::getStem(path))) return;
          addPlatformFile_(path);
        },
        error);
    if (!complete) ZR_SEND_MSG("@74-5@%s", ComMsgMask::kWarning, dir);
  }
}

void HTEQPlatformMgr::addPlatformFile_(const std::string& path) {
  std::string readerError;
  try {
    auto platform = std::make_unique<HTEQPlatform>();
    platform->setZdf(true);
    HTEQPlatformXMLReader reader(path, platform.get());
    const bool parsed = reader.parseFile();
    readerError = reader.getErrorMsg();
    if (parsed) {
      // A platform that fails to attach is dropped; the attach step has
      // recorded why.
      if (attachHardwarePlatforms_(platform.get()) && attachSoftwarePlatforms_(platform.get())) {
        // The latest found stands first.
        teqPlatforms_.insert(teqPlatforms_.begin(), platform.get());
        platform.release();
      }
      return;
    }
  } catch (const std::exception& e) {
    // Whatever a descriptor makes the readers throw, it is one platform that
    // failed to parse.
    readerError = e.what();
  }
  if (!readerError.empty()) parsingErrorMsgs_.push_back(readerError);
  ZR_SEND_MSG("@74-3@%s", ComMsgMask::kCriticalWarning, path);
  parsingErrorMsgs_.push_back("Encountered Errors while parsing platform: " + path +
                              ". Unable to load platform.\n");
}

void HTEQPlatformMgr::addHardwarePlatformsFromDirs_(const StringVector& dirs) {
  TEQHardwarePlatformVec found;
  getHardwarePlatformsFromDirs(dirs, found, false);
  // Each one found is adopted or deleted, also when adopting one fails.
  std::vector<std::unique_ptr<HTEQHardwarePlatform>> owned(found.begin(), found.end());
  for (auto& hardware : owned) {
    if (isExistingPlatform_(hardware->getPlatformFile())) continue;
    std::unique_ptr<HTEQPlatform> platform(createPlatform_(hardware.get()));
    hardware.release();
    cfaPlatforms_.push_back(platform.get());
    platform.release();
  }
}

void HTEQPlatformMgr::getHardwarePlatformsFromDirs(const StringVector& dirs, TEQHardwarePlatformVec& out,
                                                   bool flag) {
  HTEQHardwarePlatformMgr::addPlatformsFromDirs(dirs, out, flag);
}

HTEQPlatform* HTEQPlatformMgr::createPlatform_(HTEQHardwarePlatform* hardware) {
  auto* platform = new HTEQPlatform();
  platform->setPartial(true);
  platform->setHardwarePlatform(hardware);
  platform->setPlatformFile(hardware->getPlatformFile());
  return platform;
}

bool HTEQPlatformMgr::isExistingPlatform_(const std::string& file) const {
  const auto has = [&](const TEQPlatformVec& list) {
    return std::any_of(list.begin(), list.end(),
                       [&](const HTEQPlatform* p) { return p->getPlatformFile() == file; });
  };
  return has(teqPlatforms_) || has(cfaPlatforms_);
}

// ---- Attaching the parts of a descriptor ----

bool HTEQPlatformMgr::attachHardwarePlatforms_(HTEQPlatform* platform) {
  if (platform == nullptr) return false;
  if (!platform->hasReconfigurablePartitions()) return attachSingleHardwarePlatform_(platform);
  bool all = true;
  for (auto* partition : platform->getReconfigurablePartitions())
    all = attachReconfigurablePartition_(platform, partition) && all;
  return all;
}

HTEQHardwarePlatform* HTEQPlatformMgr::readHardwareFile_(const std::string& file,
                                                         const HTEQPlatform* platform) {
  if (!HUTFile::exists(file)) {
    handleInvalidPath_(file, platform->getPlatformFile());
    return nullptr;
  }
  if (!HTEQHardwarePlatform::isValidPlatformExt(HUTPathUtils::getExtension(file))) {
    handleInvalidExtension_(file, platform->getPlatformFile());
    return nullptr;
  }
  HTEQHardwarePlatform* hardware = HTEQHardwarePlatformMgr::addPlatform(file);
  // The reader has sent its own message; the user also learns which
  // platform it cost.
  if (hardware == nullptr)
    parsingErrorMsgs_.push_back("Failed to read hardware platform file " + file + " for platform " +
                                platform->getPlatformFile() + ". Unable to load platform.\n");
  return hardware;
}

bool HTEQPlatformMgr::attachSingleHardwarePlatform_(HTEQPlatform* platform) {
  HTEQHardwarePlatform* hardware = readHardwareFile_(platform->getHardwarePlatformFile(), platform);
  if (hardware == nullptr) return false;
  platform->setHardwarePlatform(hardware);
  return true;
}

bool HTEQPlatformMgr::attachReconfigurablePartition_(HTEQPlatform* platform,
                                                     HTEQReconfigurablePartition* partition) {
  HTEQHardwarePlatform* hardware = readHardwareFile_(partition->getHardwarePlatformFile(), platform);
  if (hardware == nullptr) return false;
  partition->setHardwarePlatform(hardware);
  if (partition->getID() == platform->getDefaultRPId()) platform->setDefaultRPHardwarePlatform(hardware);
  return true;
}

void HTEQPlatformMgr::handleInvalidPath_(const std::string& file, const std::string& platform) {
  ZR_SEND_MSG("@74-14@%s%s", ComMsgMask::kCriticalWarning, file, platform);
  parsingErrorMsgs_.push_back("Hardware platform file " + file + " for platform " + platform +
                              " does not exist on disk. Unable to load platform.\n");
}

void HTEQPlatformMgr::handleInvalidExtension_(const std::string& file, const std::string& platform) {
  std::string valid;
  for (const auto& ext : HTEQHardwarePlatform::getValidPlatformExts()) valid += " " + ext;
  ZR_SEND_MSG("@74-55@%s%s%s", ComMsgMask::kCriticalWarning, file, platform, valid);
  parsingErrorMsgs_.push_back("Found bad hardware platform file " + file + " for platform " + platform +
                              ". Supported extensions are" + valid + ". Unable to load platform.\n");
}

bool HTEQPlatformMgr::attachSoftwarePlatforms_(HTEQPlatform* platform) {
  const std::string& file = platform->getSoftwarePlatformFile();
  if (!HUTFile::exists(file)) {
    parsingErrorMsgs_.push_back("Software platform file " + file + " for platform " +
                                platform->getPlatformFile() +
                                " does not exist on disk. Unable to load platform.\n");
    return false;
  }
  auto* software = new HTEQSoftwarePlatform();
  platform->addSoftwarePlatform(software);
  HTEQSoftwarePlatformXMLReader reader(file, software);
  if (reader.parseFile()) return true;
  ZR_SEND_MSG("@74-4@%s", ComMsgMask::kCriticalWarning, platform->getPlatformFile());
  parsingErrorMsgs_.push_back(reader.getErrorMsg());
  parsingErrorMsgs_.push_back("Encountered Errors while parsing software platform for: " +
                              platform->getPlatformFile() + ". Unable to load platform.\n");
  return false;
}

// ---- Lookups ----

HTEQPlatform* HTEQPlatformMgr::getPlatform(const std::string& name) const {
  const std::string canonical = HUTFile::getCanonicalName(name);
  for (HTEQPlatform* platform : *activeList_) {
    if (platform->getUniqueName() == name) return platform;
    if (HSTStringUtils::iequals(platform->getPlatformBaseName(), name)) return platform;
    if (!name.empty() && canonical == HUTFile::getCanonicalName(platform->getPlatformFile())) return platform;
  }
  return nullptr;
}

void HTEQPlatformMgr::getPlatforms(TEQPlatformVec& out) const {
  out.insert(out.end(), activeList_->begin(), activeList_->end());
}

void HTEQPlatformMgr::getCFAPlatforms(TEQPlatformVec& out) const { out = cfaPlatforms_; }

void HTEQPlatformMgr::getUnifiedPlatforms(TEQPlatformVec& out) const {
  for (HTEQPlatform* platform : *activeList_)
    if (platform->isUnified()) out.push_back(platform);
}

void HTEQPlatformMgr::getTEQPlatforms(TEQPlatformVec& out) const { getUnifiedPlatforms(out); }

unsigned int HTEQPlatformMgr::getNumPlatforms() const {
  return static_cast<unsigned int>(activeList_->size());
}

HSTFwdIter<HTEQPlatform*>* HTEQPlatformMgr::createPlatformIter() const {
  return HSTCreateFwdIter(*activeList_);
}

// ---- Removal ----

void HTEQPlatformMgr::removePlatformsFromDirs(const StringVector& dirs) {
  removePlatformsFromDirs_(dirs, teqPlatforms_);
  removePlatformsFromDirs_(dirs, cfaPlatforms_);
}

void HTEQPlatformMgr::removePlatformsFromDirs_(const StringVector& dirs, TEQPlatformVec& list) {
  TEQPlatformVec kept;
  kept.reserve(list.size());
  for (HTEQPlatform* platform : list) {
    const std::string parent = HUTFile::getParent(platform->getPlatformFile());
    if (std::find(dirs.begin(), dirs.end(), parent) != dirs.end())
      delete platform;
    else
      kept.push_back(platform);
  }
  list.swap(kept);
}

void HTEQPlatformMgr::deleteAll_(TEQPlatformVec& list) {
  for (HTEQPlatform* platform : list) delete platform;
  list.clear();
}

void HTEQPlatformMgr::clearAllPlatforms() {
  deleteAll_(teqPlatforms_);
  deleteAll_(cfaPlatforms_);
}

// ---- Errors, project type, board repositories ----

void HTEQPlatformMgr::getParsingErrorMsgs(StringVector& out) const { out = parsingErrorMsgs_; }

void HTEQPlatformMgr::clearParsingErrorMsgs() { parsingErrorMsgs_.clear(); }

void HTEQPlatformMgr::setProjectType(TEQProjectType type) {
  projectType_ = type;
  if (type == TEQ_PROJECT) activeList_ = &teqPlatforms_;
  if (type == PLATFORM_PROJECT) activeList_ = &cfaPlatforms_;
}

std::string HTEQPlatformMgr::getProjectTypeAsStr() const {
  if (projectType_ == TEQ_PROJECT) return "teq";
  if (projectType_ == PLATFORM_PROJECT) return "platform";
  return "";
}

void HTEQPlatformMgr::setBoardRepoPaths(const StringVector& paths) {
  boardRepoPaths_ = paths;
  if (boardDataManager_) boardDataManager_->setBoardPartRepoPaths(paths);
}

void HTEQPlatformMgr::getBoardRepoPaths(StringVector& out) const { out = boardRepoPaths_; }
