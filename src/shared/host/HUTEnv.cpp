#include "host/HUTEnv.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <cstdlib>

#ifndef ZR_VERSION_MAJOR
#define ZR_VERSION_MAJOR 0
#define ZR_VERSION_MINOR 0
#define ZR_VERSION_PATCH 0
#endif

namespace {
HUTEnv* g_instance = nullptr;
}

HUTEnv::HUTEnv() : major_(ZR_VERSION_MAJOR), minor_(ZR_VERSION_MINOR) {}
HUTEnv::~HUTEnv() = default;

std::string HUTEnv::get(const std::string& name) const {
  const char* v = std::getenv(name.c_str());
  return v ? std::string(v) : std::string();
}

bool HUTEnv::isSet(const std::string& name) const { return std::getenv(name.c_str()) != nullptr; }

std::vector<std::string> HUTEnv::getKELAppRootList() const {
  if (rootsSet_) return roots_;
  std::vector<std::string> roots;
  const std::string list = get("ZR_PLATFORM_APP_ROOTS");
  if (list.empty()) return roots;
  boost::split(roots, list, boost::is_any_of(":"));
  std::vector<std::string> nonEmpty;
  for (auto& r : roots)
    if (!r.empty()) nonEmpty.push_back(r);
  return nonEmpty;
}

std::string HUTEnv::getJUNAppRoot() const {
  const auto roots = getKELAppRootList();
  return roots.empty() ? std::string() : roots.front();
}

std::string HUTEnv::getJUNTmpDir() const {
  if (!tmpDir_.empty()) return tmpDir_;
  const std::string t = get("TMPDIR");
  return t.empty() ? std::string("/tmp") : t;
}

int HUTEnv::getMajor() const { return major_; }
int HUTEnv::getMinor() const { return minor_; }

std::string HUTEnv::getFullBuildStr() const {
  if (!fullBuild_.empty()) return fullBuild_;
  return std::to_string(major_) + "." + std::to_string(minor_);
}

std::string HUTEnv::getProductName() const { return productName_; }
void HUTEnv::setProductName(const std::string& name) { productName_ = name; }

void HUTEnv::setAppRoots(const std::vector<std::string>& roots) {
  roots_ = roots;
  rootsSet_ = true;
}

void HUTEnv::setTmpDir(const std::string& dir) { tmpDir_ = dir; }

void HUTEnv::setVersion(int major, int minor, const std::string& fullBuild) {
  major_ = major;
  minor_ = minor;
  fullBuild_ = fullBuild;
}

unsigned long long HUTEnv::getMaxMetadataSize() const { return maxMetadataSize_; }
void HUTEnv::setMaxMetadataSize(unsigned long long bytes) { maxMetadataSize_ = bytes; }
unsigned HUTEnv::getMaxCompressionRatio() const { return maxCompressionRatio_; }
void HUTEnv::setMaxCompressionRatio(unsigned ratio) { maxCompressionRatio_ = ratio; }

unsigned HUTEnv::getCatalogWorkers() const {
  if (catalogWorkersSet_) return catalogWorkers_;
  // Digits only, and a small number: anything else means automatic.
  const std::string text = get("ZR_PLATFORM_CATALOG_WORKERS");
  if (text.empty() || text.size() > 4 || text.find_first_not_of("0123456789") != std::string::npos) return 0;
  return static_cast<unsigned>(std::stoul(text));
}

void HUTEnv::setCatalogWorkers(unsigned workers) {
  catalogWorkers_ = workers;
  catalogWorkersSet_ = true;
}

HUTEnv& HUTEnv::instance() {
  static HUTEnv defaultEnv;
  return g_instance ? *g_instance : defaultEnv;
}

void HUTEnv::setInstance(HUTEnv* env) { g_instance = env; }
