#include "platform/SimpleFixedLFACreator.h"

#include "archives/StagingArchive.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQTmpDirObject.h"

namespace {

const char kJsonMember[] = "lfa.json";

}  // namespace

SimpleFixedLFACreator::SimpleFixedLFACreator(const std::string& outputPath)
    : platform_(std::make_unique<HPLPlatform>()),
      staging_(std::make_unique<HTEQTmpDirObject>("lfa_staging")),
      outputPath_(outputPath) {
  if (HUTFile::isDir(outputPath_))
    throw HEXUserException("cannot write the archive '" + outputPath_ + "': it is a directory");
  if (!HUTFile::rm(outputPath_))
    throw HEXUserException("cannot remove the existing file '" + outputPath_ + "'");
}

SimpleFixedLFACreator::~SimpleFixedLFACreator() = default;

std::string SimpleFixedLFACreator::getStagingDir() const { return staging_->get(); }

bool SimpleFixedLFACreator::writeLFA() {
  setPlatformAttributes_();
  writeJSON_();
  createArchive_();
  return true;
}

void SimpleFixedLFACreator::setPlatformAttributes_() {
  platform_->setUnifiedPlatform(true);
  platform_->setExpandable(false);
  platform_->setGeneratedByLink(true);
  platform_->setGeneratedBySwEmuLink(true);
}

void SimpleFixedLFACreator::writeJSON_() {
  zr_staging::writePlatformJson(*platform_, getStagingDir() + HUTFile::getSeparator() + kJsonMember);
}

void SimpleFixedLFACreator::createArchive_() {
  zr_staging::packDirectory(getStagingDir(), outputPath_, false);
}
