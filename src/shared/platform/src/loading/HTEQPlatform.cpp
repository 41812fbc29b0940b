#include "platform/HTEQPlatform.h"

#include <cstddef>
#include <memory>
#include <new>
#include <set>

#include "host/HUTPathUtils.h"
#include "json/JsonTextWriter.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQReconfigurablePartition.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

HTEQPlatform::HTEQPlatform() = default;

HTEQPlatform::~HTEQPlatform() {
  // A partition does not own the hardware objects attached to it; the platform
  // that holds the partition is their last holder, so they go with it. Each
  // object is freed once, however many places point at it. The partitions and
  // software platforms themselves go with their lists.
  try {
    std::set<HTEQHardwarePlatform*> owned{hardwarePlatform_, hardwareEmulationPlatform_};
    for (const auto* rp : reconfigurablePartitions_) {
      owned.insert(rp->getHardwarePlatform());
      owned.insert(rp->getHardwareEmulationPlatform());
    }
    for (auto* p : owned) delete p;
  } catch (const std::bad_alloc&) {
    // Nothing was deleted yet. Without memory for the set, each object is
    // compared with the ones before it instead: slower, but a destructor must
    // not throw.
    const std::size_t count = attachedHardwareCount_();
    for (std::size_t i = 0; i < count; ++i) {
      HTEQHardwarePlatform* p = attachedHardware_(i);
      bool seen = false;
      for (std::size_t j = 0; j < i && !seen; ++j) seen = attachedHardware_(j) == p;
      if (!seen) delete p;
    }
  }
}

std::size_t HTEQPlatform::attachedHardwareCount_() const { return 2 + 2 * reconfigurablePartitions_.size(); }

HTEQHardwarePlatform* HTEQPlatform::attachedHardware_(std::size_t i) const {
  if (i == 0) return hardwarePlatform_;
  if (i == 1) return hardwareEmulationPlatform_;
  const HTEQReconfigurablePartition* rp = reconfigurablePartitions_[(i - 2) / 2];
  return i % 2 == 0 ? rp->getHardwarePlatform() : rp->getHardwareEmulationPlatform();
}

void HTEQPlatform::addReconfigurablePartition(HTEQReconfigurablePartition* rp) {
  std::unique_ptr<HTEQReconfigurablePartition> owned(rp);
  if (owned) reconfigurablePartitions_.add(std::move(owned));
}

void HTEQPlatform::addSoftwarePlatform(HTEQSoftwarePlatform* sw) {
  std::unique_ptr<HTEQSoftwarePlatform> owned(sw);
  if (owned) softwarePlatforms_.add(std::move(owned));
}

std::string HTEQPlatform::getPlatformDir() const { return HUTPathUtils::getParent(platformFile_); }

std::string HTEQPlatform::getPlatformBaseName() const { return HUTPathUtils::getStem(platformFile_); }

std::string HTEQPlatform::getDeviceName() const {
  if (partial_ && hardwarePlatform_) return hardwarePlatform_->getDeviceName();
  return getPlatformBaseName();
}

HTEQHardwarePlatform* HTEQPlatform::getHardwarePlatform() const {
  return hardwarePlatform_ ? hardwarePlatform_ : defaultRPHardwarePlatform_;
}

HTEQHardwarePlatform* HTEQPlatform::getHardwareEmulationPlatform() const {
  return hardwareEmulationPlatform_ ? hardwareEmulationPlatform_ : defaultRPHardwareEmulationPlatform_;
}

HTEQSoftwarePlatform* HTEQPlatform::getSoftwarePlatform() const {
  return softwarePlatforms_.empty() ? nullptr : softwarePlatforms_.front();
}

HTEQReconfigurablePartition* HTEQPlatform::getReconfigurablePartition(unsigned int id) const {
  HTEQReconfigurablePartition* found = nullptr;
  for (auto* rp : reconfigurablePartitions_)
    if (rp->getID() == id) found = rp;
  return found;
}

HTEQHardwarePlatform* HTEQPlatform::getRPHardwarePlatform(unsigned int id) const {
  const auto* rp = getReconfigurablePartition(id);
  return rp ? rp->getHardwarePlatform() : nullptr;
}

HTEQHardwarePlatform* HTEQPlatform::getRPHardwareEmulationPlatform(unsigned int id) const {
  const auto* rp = getReconfigurablePartition(id);
  return rp ? rp->getHardwareEmulationPlatform() : nullptr;
}

HTEQHardwarePlatform* HTEQPlatform::getDefaultRPHardwarePlatform() const {
  return getRPHardwarePlatform(defaultRPId_);
}

HTEQHardwarePlatform* HTEQPlatform::getDefaultRPHardwareEmulationPlatform() const {
  return getRPHardwareEmulationPlatform(defaultRPId_);
}

bool HTEQPlatform::hasRPHardwareEmulationPlatform() const {
  for (const auto* rp : reconfigurablePartitions_)
    if (rp->hasHardwareEmulationPlatform()) return true;
  return false;
}

HTEQHardwarePlatform* HTEQPlatform::hardwareForQueries_() const {
  return hardwarePlatform_ ? hardwarePlatform_ : getDefaultRPHardwarePlatform();
}

bool HTEQPlatform::supportsHardware() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->supportsHardware();
}

bool HTEQPlatform::supportsSWEmulation() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->supportsSWEmulation();
}

bool HTEQPlatform::supportsHWEmulation() const {
  if (hasHWEmulationPlatform()) return true;
  if (hasReconfigurablePartitions()) return hasRPHardwareEmulationPlatform();
  return hardwarePlatform_ && hardwarePlatform_->supportsHWEmulation();
}

bool HTEQPlatform::supportsTwoHwEmuBd() const {
  return hardwarePlatform_ && hardwarePlatform_->supportsTwoHwEmuBd();
}

bool HTEQPlatform::hasDimmConnectors() const {
  return hardwarePlatform_ && hardwarePlatform_->hasDimmConnectors();
}

void HTEQPlatform::getDimmConnectors(std::vector<std::string>& out) const {
  if (hardwarePlatform_) hardwarePlatform_->getDimmConnectors(out);
}

bool HTEQPlatform::isHWEmuPlatform() const {
  return hardwarePlatform_ && hardwarePlatform_->isHWEmuPlatform();
}

bool HTEQPlatform::hasSimContent() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->hasSimContent();
}

bool HTEQPlatform::isExpandable() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->isExpandable();
}

bool HTEQPlatform::isUnified() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->isUnifiedPlatform();
}

bool HTEQPlatform::getDesignIntentDataCenter() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->getDesignIntent().getDataCenter();
}

bool HTEQPlatform::getDesignIntentEmbedded() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->getDesignIntent().getEmbedded();
}

bool HTEQPlatform::getDesignIntentExternalHost() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->getDesignIntent().getExternalHost();
}

bool HTEQPlatform::getDesignIntentServerManaged() const {
  const auto* hw = hardwareForQueries_();
  return hw && hw->getDesignIntent().getServerManaged();
}

void HTEQPlatform::getTargetCategories(std::vector<std::string>& out) const {
  if (hardwarePlatform_) hardwarePlatform_->getTargetCategories(out);
  if (defaultRPHardwarePlatform_) defaultRPHardwarePlatform_->getTargetCategories(out);
}

bool HTEQPlatform::isHidden() const { return getUniqueName() == "torvane:rq118:linux-uart:1.0"; }

std::string HTEQPlatform::getTypeString() const {
  const auto* hpl = dynamic_cast<const HPLPlatform*>(hardwareForQueries_());
  if (hpl == nullptr) return std::string();
  const auto& intent = hpl->getDesignIntent();
  if (intent.getDataCenter() || intent.getExternalHost() || intent.getServerManaged())
    return intent.getEmbedded() ? "acceleration" : "fennick";
  if (intent.getEmbedded()) return "lorimar";
  return "undefined";
}

std::string HTEQPlatform::getTypePrettyString() const {
  const std::string type = getTypeString();
  if (type == "fennick") return "Fennick";
  if (type == "lorimar") return "Lorimar";
  if (type == "acceleration") return "Acceleration";
  return "Undefined";
}

void HTEQPlatform::toJSON(teq_platform::JSONObjectWriter& writer) const { writeJSON_(writer); }

template <class Writer>
void HTEQPlatform::writeJSON_(Writer& writer) const {
  writer.addKey("vendor", getVendor());
  writer.addKey("name", getName());
  writer.addKey("description", getDescription());
  writer.addKey("uniqueName", getUniqueName());
  writer.addKey("version", getVersion());
  writer.addKey("type", getTypePrettyString());
  writer.addKey("unified", isUnified());
  writer.addKey("zdf", isZdf());
  writer.addKey("hardware", supportsHardware());
  writer.addKey("softwareEmulation", supportsSWEmulation());
  writer.addKey("hardwareEmulation", supportsHWEmulation());
  writer.addKey("hardwareEmuPlatform", isHWEmuPlatform());
  writer.addKey("hidden", isHidden());
  writer.addKey("file", getPlatformFile());
  writer.addKey("hwFile", getHardwarePlatformFile());
  writer.addKey("hwEmuFile", getHardwareEmuPlatformFile());
  writer.addKey("swFile", getSoftwarePlatformFile());
  writer.addKey("directory", getPlatformDir());
  std::vector<std::string> categories;
  getTargetCategories(categories);
  writer.addKey("targetCategories", categories);
  if (hasReconfigurablePartitions()) writer.addKey("defaultRPId", defaultRPId_);
  auto hardware = teq_platform::objectFor(writer);
  if (hardwarePlatform_) hardware.addKey("hardwarePlatform", hardwarePlatform_);
  if (hardwareEmulationPlatform_ && hasDistinctHardwareEmulationPlatform())
    hardware.addKey("hwEmuPlatform", hardwareEmulationPlatform_);
  if (hasReconfigurablePartitions()) {
    auto partitions = teq_platform::listFor(hardware);
    for (const auto* rp : reconfigurablePartitions_) partitions.addItem(rp);
    hardware.addKey("reconfigurablePartitions", std::move(partitions));
  }
  writer.addKey("hardwarePlatforms", std::move(hardware));
  if (const auto* sw = getSoftwarePlatform()) writer.addKey("softwarePlatform", sw);
}

template void HTEQPlatform::writeJSON_(teq_platform::TextObjectWriter&) const;
