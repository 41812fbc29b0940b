#include "host/HUTPathUtils.h"

#include <boost/filesystem/path.hpp>

#include "host/HUTFile.h"

namespace fs = boost::filesystem;

bool HUTPathUtils::exists(const std::string& path) { return HUTFile::exists(path); }

std::string HUTPathUtils::getParent(const std::string& path) { return fs::path(path).parent_path().string(); }

std::string HUTPathUtils::getExtension(const std::string& path) {
  return fs::path(path).extension().string();
}

std::string HUTPathUtils::getStem(const std::string& path) { return fs::path(path).stem().string(); }

std::string HUTPathUtils::getFileName(const std::string& path) { return fs::path(path).filename().string(); }

std::string HUTPathUtils::join(const std::string& a, const std::string& b) {
  if (a.empty()) return b;
  if (b.empty()) return a;
  if (a.back() == '/') return b.front() == '/' ? a + b.substr(1) : a + b;
  return b.front() == '/' ? a + b : a + "/" + b;
}
