#include "host/HHSMHwManager.h"

#include <boost/filesystem.hpp>

#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"

HHSMHardwareDb::HHSMHardwareDb(std::string name, std::string sourceFile,
                               std::map<std::string, std::string> rmFiles)
    : name_(std::move(name)), sourceFile_(std::move(sourceFile)), rmFiles_(std::move(rmFiles)) {}

HHSMHardwareDb::~HHSMHardwareDb() = default;

HHSMHwManager::HHSMHwManager() = default;
HHSMHwManager::~HHSMHwManager() = default;

bool HHSMHwManager::openDefFile(const std::string& file) {
  return HUTFile::isFile(file) && HUTFile::isReadable(file);
}

// The file name without its extension; a later database of the same file gets
// "_1", "_2", ... behind it.
std::string HHSMHwManager::uniqueName_(const std::string& file) const {
  std::string base = HUTPathUtils::getStem(file);
  if (base.empty()) base = "hwdb";
  std::string name = base;
  for (unsigned n = 1; dbs_.count(name) != 0; ++n) name = base + "_" + std::to_string(n);
  return name;
}

HHSMHardwareDb* HHSMHwManager::createHardwareDb(const std::string& file, const RmFileMap& rmFiles) {
  if (!openDefFile(file)) return nullptr;
  const std::string name = uniqueName_(file);
  auto db = std::make_unique<HHSMHardwareDb>(name, file, rmFiles);
  HHSMHardwareDb* result = db.get();
  dbs_[name] = std::move(db);
  return result;
}

HHSMHardwareDb* HHSMHwManager::createHardwareDbFromHDF(const HHDFHwDef* hdf) {
  return hdf != nullptr ? createHardwareDb(hdf->getFile()) : nullptr;
}

HHSMHardwareDb* HHSMHwManager::getHardwareDb(const std::string& name) const {
  const auto it = dbs_.find(name);
  return it == dbs_.end() ? nullptr : it->second.get();
}

namespace {
HHSMHwManager* installedManager = nullptr;
}

HHSMHwManager* HHSMHwManager::getHsmHwManager() {
  static HHSMHwManager defaultManager;
  return installedManager != nullptr ? installedManager : &defaultManager;
}

void HHSMHwManager::setHsmHwManager(HHSMHwManager* manager) { installedManager = manager; }

HHDFHwDef::HHDFHwDef(std::string file) : file_(std::move(file)) {}
HHDFHwDef::~HHDFHwDef() = default;

std::string HHDFHwDef::getHierTopModuleName() const { return HUTPathUtils::getStem(file_); }

bool HHDFHwDef::write(const std::string& dir) const {
  boost::system::error_code ec;
  const boost::filesystem::path target =
      boost::filesystem::path(dir) / boost::filesystem::path(file_).filename();
  boost::filesystem::copy_file(file_, target, boost::filesystem::copy_option::overwrite_if_exists, ec);
  return !ec;
}

std::shared_ptr<HHDFHwDef> HHDFHwDefUtils::getHDF(const std::string& file) {
  if (!HUTFile::isFile(file) || !HUTFile::isReadable(file)) return nullptr;
  return std::make_shared<HHDFHwDef>(file);
}
