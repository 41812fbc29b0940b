#include "platform/HDFToCFAConverter.h"

#include "archives/StagingArchive.h"
#include "hardware/VendorDomain.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HHSMHwManager.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTFileUtils.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaXmlWriter.h"

HDFToCFAConverter::HDFToCFAConverter(const std::string& hdfFile, const std::string& outputDir,
                                     const std::string& outputName)
    : platform_(std::make_unique<HPLPlatform>()), hwPfmDir_(outputDir), hwPfmFileName_(outputName) {
  if (!HUTFile::isFile(hdfFile))
    throw HEXAlgException("Could not find specified file: '" + hdfFile + "'on disk.");
  if (!HUTFile::isDir(outputDir))
    throw HEXAlgException("Could not find specified dir: '" + outputDir + "'on disk.");
  hwPfmFile_ = hwPfmDir_ + HUTFile::getSeparator() + hwPfmFileName_;
  stagingDir_ = HUTEnv::instance().getJUNTmpDir() + HUTFile::getSeparator() + hwPfmFileName_;
  hdf_ = HHDFHwDefUtils::getHDF(hdfFile);
}

HDFToCFAConverter::~HDFToCFAConverter() { removeStagingDir_(); }

std::string HDFToCFAConverter::hwpfKeyword_(const std::string& name) {
  static const std::string lfa = ".lfa";
  const bool isLfa =
      name.size() >= lfa.size() && name.compare(name.size() - lfa.size(), lfa.size(), lfa) == 0;
  return isLfa ? "lfa" : "cfa";
}

void HDFToCFAConverter::removeStagingDir_() {
  if (stagingMade_) HUTFile::rmRecursive(stagingDir_);
  stagingMade_ = false;
}

void HDFToCFAConverter::createStagingDir() {
  // With the output in the temporary directory, the staging directory would
  // take the archive's own path.
  if (HUTFileUtils::makeAbsolutePath(stagingDir_) == HUTFileUtils::makeAbsolutePath(hwPfmFile_))
    stagingDir_ += "_staging";
  stagingDir_ = HUTFileUtils::makeAbsolutePath(HUTFileUtils::uniquifyFilenameInDir(stagingDir_));
  HUTFile::mkDirRecursive(stagingDir_);
  stagingMade_ = true;
  HUTFile::ensureWritableDirectory(stagingDir_);
}

bool HDFToCFAConverter::writeHDF() { return hdf_ && stagingMade_ && hdf_->write(stagingDir_); }

bool HDFToCFAConverter::writeCfaXml() {
  const std::string name = hdf_ ? hdf_->getHierTopModuleName() : std::string("hdf");
  platform_->setVendor(zr_platform::kVendorDomain);
  platform_->setName(name);
  platform_->setVersionMajor(1);
  platform_->setVersionMinor(0);
  platform_->setUnifiedPlatform(true);
  platform_->setExpandable(false);
  platform_->setUsesPR(false);
  platform_->setPlatformState("pre_synth");
  // The platform has one device; a second call finds it there.
  if (platform_->getOCLRegionCount() == 0) platform_->addDevice();

  const std::string stem = stagingDir_ + HUTFile::getSeparator() + hwpfKeyword_(hwPfmFileName_);
  try {
    HTEQCfaXmlWriter(platform_.get(), stem + ".xml").writeCFA();
    zr_staging::writePlatformJson(*platform_, stem + ".json");
  } catch (const HEXAll&) {
    // The writers have reported what failed; the caller reports the step.
    return false;
  }
  return HUTFile::isFile(stem + ".xml") && HUTFile::isFile(stem + ".json");
}

void HDFToCFAConverter::writeCfaArchive() {
  zr_staging::packDirectory(stagingDir_, hwPfmFile_, true);
  removeStagingDir_();
}

bool HDFToCFAConverter::writeCFA() {
  createStagingDir();
  if (!writeHDF()) {
    ZR_SEND_MSG("@74-46@", ComMsgMask::kCriticalWarning);
    removeStagingDir_();
    return false;
  }
  if (!writeCfaXml()) {
    ZR_SEND_MSG("@74-47@", ComMsgMask::kCriticalWarning);
    removeStagingDir_();
    return false;
  }
  writeCfaArchive();
  return true;
}
