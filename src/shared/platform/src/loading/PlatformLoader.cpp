#include "platform/PlatformLoader.h"

#include "ZrFileAccess.h"
#include "archives/ArchiveMemberCache.h"
#include "host/ComMsgMgr.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "loading/ReportOnlyLoad.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQCfaXmlReader.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQPlatformXMLReader.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSoftwarePlatformXMLReader.h"

namespace teq_platform {

PlatformParseException::~PlatformParseException() = default;

namespace {
thread_local bool reportOnly = false;
}

ReportOnlyLoad::ReportOnlyLoad() : previous_(reportOnly) { reportOnly = true; }
ReportOnlyLoad::~ReportOnlyLoad() { reportOnly = previous_; }
bool ReportOnlyLoad::active() { return reportOnly; }

const std::vector<std::string_view>& ReportOnlyLoad::skippedMembers() {
  static const std::vector<std::string_view> kSkipped{"busInterfaces", "nocConnectivity", "ipParameters"};
  return kSkipped;
}

PlatformLoader::PlatformLoader(const std::string& file, HwMetadataMode mode)
    : platform_ptr_(std::make_shared<HTEQPlatform>()), file_(file), mode_(mode) {
  if (file.empty()) return;
  const std::string ext = HUTPathUtils::getExtension(file);
  if (HTEQHardwarePlatform::isValidPlatformExt(ext)) {
    fileKind_ = HardwareFile;
  } else if (ext == ".spfm") {
    fileKind_ = SoftwareFile;
  } else {
    // Anything else, no extension included, is taken for a descriptor.
    platform_ptr_->setZdf(true);
    zr_file::PathMemo paths;
    const zr_file::PathMemo::Scope pathScope(paths);
    HTEQPlatformXMLReader reader(file, platform_ptr_.get());
    if (!reader.parseFile()) throw PlatformParseException("failed to parse the ZDF file");
    return;
  }
  platform_ptr_->setZdf(false);
  platform_ptr_->setPartial(true);
}

PlatformLoader::~PlatformLoader() = default;

// What one load made of archive members and partition files; released when
// the load ends, however it ends.
class PlatformLoader::LoadScope {
 public:
  explicit LoadScope(PlatformLoader& loader) : loader_(loader) {}
  ~LoadScope() {
    loader_.members_.reset();
    loader_.partitionPlatforms_.clear();
  }
  LoadScope(const LoadScope&) = delete;
  LoadScope& operator=(const LoadScope&) = delete;

 private:
  PlatformLoader& loader_;
};

ArchiveMemberCache* PlatformLoader::memberCache_() {
  if (!members_) members_ = std::make_unique<ArchiveMemberCache>();
  return members_.get();
}

std::shared_ptr<HTEQPlatform> PlatformLoader::load() {
  if (loaded_) return platform_ptr_;
  if (!platform_ptr_) return nullptr;
  LoadScope scope(*this);
  // The loaders and readers below resolve and look for the same files more
  // than once: each is looked at once per load.
  zr_file::PathMemo paths;
  const zr_file::PathMemo::Scope pathScope(paths);
  try {
    if (platform_ptr_->hasReconfigurablePartitions()) {
      for (auto* rp : platform_ptr_->getReconfigurablePartitions()) {
        attachRPHardwarePlatform_(rp);
        attachRPHardwareEmulationPlatform_(rp);
      }
      attachSoftwarePlatform();
    } else {
      attachHardwarePlatform();
      attachHardwareEmulationPlatform();
      attachSoftwarePlatform();
    }
  } catch (const PlatformParseException& e) {
    ZR_SEND_MSG("@74-60@%s", ComMsgMask::kCriticalWarning, e.what());
    platform_ptr_.reset();
    return nullptr;
  }
  loaded_ = true;
  return platform_ptr_;
}

void PlatformLoader::attachHardwarePlatform() {
  HTEQPlatform& platform = *platform_ptr_;
  if (platform.getHardwarePlatform()) return;
  std::string file;
  if (platform.isPartial()) {
    if (fileKind_ == SoftwareFile) return;
    file = file_;
  } else {
    file = platform.getHardwarePlatformFile();
  }
  if (!HUTFile::exists(file))
    throw PlatformParseException("hardware platform file '" + file + "' does not exist");
  if (!HTEQHardwarePlatform::isValidPlatformExt(HUTPathUtils::getExtension(file)))
    throw PlatformParseException("incorrect file extension - only CFA and LFA files are supported");

  auto hw = std::make_unique<HPLPlatform>();
  HTEQCfaJsonReader jsonReader(hw.get());
  jsonReader.setMemberCache(memberCache_());
  std::string jsonFile;
  bool ok;
  if (jsonReader.canParse(file, mode_, jsonFile)) {
    ok = jsonReader.parseMember(file, jsonFile);
  } else {
    HTEQCfaXmlReader xmlReader(file, hw.get());
    xmlReader.setMemberCache(memberCache_());
    ok = xmlReader.parseCFA();
  }
  if (!ok) throw PlatformParseException("Failed to parse Hardware Platform metadata file");
  HPLPlatform* attached = hw.release();
  platform.setHardwarePlatform(attached);
  if (platform.isPartial()) platform.setPlatformFile(attached->getPlatformFile());
}

void PlatformLoader::attachHardwareEmulationPlatform() {
  HTEQPlatform& platform = *platform_ptr_;
  if (platform.getHardwareEmulationPlatform()) return;
  const std::string emuFile = platform.getHardwareEmuPlatformFile();
  if (!emuFile.empty()) {
    // A separate emulation file that cannot be read is ignored: the platform
    // loads without emulation.
    auto emu = std::make_unique<HPLPlatform>();
    HTEQCfaJsonReader reader(emu.get());
    reader.setMemberCache(memberCache_());
    if (reader.parseCFA(emuFile, mode_)) platform.setHardwareEmulationPlatform(emu.release());
    return;
  }
  // Without a file of its own, emulation metadata may sit inside the hardware archive.
  const HTEQHardwarePlatform* hw = platform.getHardwarePlatform();
  if (hw == nullptr || hw->getPlatformFile().empty()) return;
  auto emu = std::make_unique<HPLPlatform>();
  HTEQCfaJsonReader reader(emu.get());
  reader.setMemberCache(memberCache_());
  if (reader.parseHwEmuLFA(hw->getPlatformFile(), mode_)) {
    emu->setIsChildHardwareEmuPlatform(true);
    platform.setHardwareEmulationPlatform(emu.release());
  }
}

// Partitions that name one file share the one object read from it, for their
// hardware and their emulation alike: both are read the same way, so each
// file is read once per load however many partitions name it. The platform
// frees each shared object once.
HTEQHardwarePlatform* PlatformLoader::partitionPlatform_(const std::string& file, const char* failure) {
  const auto known = partitionPlatforms_.find(file);
  if (known != partitionPlatforms_.end()) return known->second;
  auto hw = std::make_unique<HPLPlatform>();
  HTEQCfaJsonReader reader(hw.get());
  reader.setMemberCache(memberCache_());
  if (!reader.parseCFA(file, mode_)) throw PlatformParseException(failure);
  partitionPlatforms_.emplace(file, hw.get());
  return hw.release();
}

void PlatformLoader::attachRPHardwarePlatform_(HTEQReconfigurablePartition* rp) {
  if (rp->getHardwarePlatform()) return;
  HTEQHardwarePlatform* attached =
      partitionPlatform_(rp->getHardwarePlatformFile(), "Failed to parse Hardware Platform metadata file");
  rp->setHardwarePlatform(attached);
  if (rp->getID() == platform_ptr_->getDefaultRPId()) platform_ptr_->setDefaultRPHardwarePlatform(attached);
}

void PlatformLoader::attachRPHardwareEmulationPlatform_(HTEQReconfigurablePartition* rp) {
  if (rp->getHardwareEmulationPlatform() || rp->getHardwareEmulationPlatformFile().empty()) return;
  HTEQHardwarePlatform* attached = partitionPlatform_(
      rp->getHardwareEmulationPlatformFile(), "Failed to parse Hardware Emulation Platform metadata file");
  rp->setHardwareEmulationPlatform(attached);
  if (rp->getID() == platform_ptr_->getDefaultRPId())
    platform_ptr_->setDefaultRPHardwareEmulationPlatform(attached);
}

void PlatformLoader::attachSoftwarePlatform() {
  HTEQPlatform& platform = *platform_ptr_;
  if (platform.getSoftwarePlatform()) return;
  std::string file;
  if (platform.isPartial()) {
    if (fileKind_ == HardwareFile) return;
    file = file_;
  } else {
    file = platform.getSoftwarePlatformFile();
  }
  if (file.empty()) return;
  if (!HUTFile::exists(file)) throw PlatformParseException("the software platform file does not exist");
  auto sw = std::make_unique<HTEQSoftwarePlatform>();
  HTEQSoftwarePlatformXMLReader reader(file, sw.get());
  // The file exists here, yet the words are those of a missing file: callers
  // match on both texts as they stand.
  if (!reader.parseFile()) throw PlatformParseException("software platform file does not exist");
  platform.addSoftwarePlatform(sw.release());
}

namespace {
const std::string kNoPlatform;
}

#define ZR_FORWARD(getter) \
  std::string PlatformLoader::getter() const { return platform_ptr_ ? platform_ptr_->getter() : kNoPlatform; }

std::string PlatformLoader::getFilePath() const {
  return platform_ptr_ ? platform_ptr_->getPlatformFile() : kNoPlatform;
}
std::string PlatformLoader::getBaseName() const {
  return platform_ptr_ ? platform_ptr_->getPlatformBaseName() : kNoPlatform;
}
ZR_FORWARD(getVersion)
ZR_FORWARD(getName)
ZR_FORWARD(getVendor)
ZR_FORWARD(getDescription)
ZR_FORWARD(getHardwarePlatformFile)
ZR_FORWARD(getHardwareEmuPlatformFile)
ZR_FORWARD(getSoftwarePlatformFile)
#undef ZR_FORWARD

}  // namespace teq_platform
