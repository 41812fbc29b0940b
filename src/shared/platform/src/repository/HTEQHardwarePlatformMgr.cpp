#include "platform/HTEQHardwarePlatformMgr.h"

#include <set>
#include <utility>

#include "host/ComMsgMgr.h"
#include "host/HUTDirWalker.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQCfaXmlReader.h"

HPLPlatform* HTEQHardwarePlatformMgr::addPlatform(const std::string& file) {
  return parseCFAFile_(file).release();
}

std::unique_ptr<HPLPlatform> HTEQHardwarePlatformMgr::parseCFAFile_(const std::string& file) {
  // A reader that throws counts as one that failed: one bad archive must not
  // end a scan.
  try {
    auto platform = std::make_unique<HPLPlatform>();
    HTEQCfaJsonReader json(platform.get());
    if (json.parseCFA(file, HTEQCfaJsonReader::Mode::Default)) return platform;
    platform = std::make_unique<HPLPlatform>();
    HTEQCfaXmlReader xml(file, platform.get());
    if (!xml.parseCFA()) return nullptr;
    platform->setPlatformFile(HUTFile::getCanonicalName(file));
    return platform;
  } catch (const std::exception&) {
    return nullptr;
  }
}

void HTEQHardwarePlatformMgr::addPlatformsFromDirs(const StringVector& dirs, TEQHardwarePlatformVec& out,
                                                   bool flag) {
  OwnedVec parsed;
  for (const auto& dir : dirs)
    if (HUTFile::exists(dir)) parseCFAFiles_(dir, parsed);
  OwnedVec validated;
  validateParsedPlatforms_(parsed, validated, flag);
  addPlatforms_(validated, out);
}

void HTEQHardwarePlatformMgr::parseCFAFiles_(const std::string& dir, OwnedVec& parsed) {
  if (!HUTFile::exists(dir)) {
    ZR_SEND_MSG("@74-1@%s", ComMsgMask::kWarning,
                "HTEQHardwarePlatformMgr::parseCFAFiles_: '" + dir + "' doesn't exist");
    return;
  }
  const std::string sep = HUTFile::getSeparator();
  std::string error;
  const bool complete = HUTDirWalker::walk(
      dir, HUTDirWalker::Options(),
      [&](const HUTDirEntry& entry) {
        if (!entry.isRegularFile) return;
        if (!HTEQHardwarePlatform::isValidPlatformExt(HUTPathUtils::getExtension(entry.path))) return;
        // An archive two levels below a descriptor of its stem is that
        // descriptor's hardware, not a platform of its own.
        const std::string grandparent = HUTFile::getParent(HUTFile::getParent(entry.path));
        if (HUTFile::exists(grandparent + sep + HUTPathUtils::getStem(entry.path) + ".zdf")) return;
        if (auto platform = parseCFAFile_(entry.path)) parsed.push_back(std::move(platform));
      },
      error);
  if (!complete) ZR_SEND_MSG("@74-5@%s", ComMsgMask::kWarning, dir);
}

void HTEQHardwarePlatformMgr::validateParsedPlatforms_(OwnedVec& parsed, OwnedVec& validated, bool flag) {
  for (auto& platform : parsed) {
    const std::string vbnv = platform->getVBNV();
    const HPLPlatform* kept = nullptr;
    for (const auto& earlier : validated)
      if (earlier->getVBNV() == vbnv) {
        kept = earlier.get();
        break;
      }
    if (kept == nullptr) {
      validated.push_back(std::move(platform));
    } else if (flag) {
      ZR_SEND_MSG("@74-23@%s", ComMsgMask::kWarning, platform->getPlatformFile());
    } else {
      ZR_SEND_MSG("@74-17@%s%s%s", ComMsgMask::kWarning, vbnv, kept->getPlatformFile(),
                  platform->getPlatformFile());
    }
  }
  parsed.clear();
}

void HTEQHardwarePlatformMgr::addPlatforms_(OwnedVec& validated, TEQHardwarePlatformVec& out) {
  std::set<std::string> names;
  for (const auto& platform : validated) names.insert(platform->getUniqueName());
  // What an earlier scan found under a name read again is replaced.
  TEQHardwarePlatformVec kept;
  kept.reserve(out.size() + validated.size());
  for (HTEQHardwarePlatform* old : out) {
    if (old != nullptr && names.count(old->getUniqueName()) != 0)
      delete old;
    else
      kept.push_back(old);
  }
  out.swap(kept);
  for (auto& platform : validated) out.push_back(platform.release());
  validated.clear();
}
