#include "host/HUTFileUtils.h"

#include <boost/filesystem.hpp>

#include "host/HUTFile.h"

namespace fs = boost::filesystem;

std::string HUTFileUtils::uniquifyFilenameInDir(const std::string& path) {
  boost::system::error_code ec;
  if (!fs::exists(fs::symlink_status(path, ec))) return path;
  const fs::path p(path);
  const fs::path dir = p.parent_path();
  const std::string stem = p.stem().string();
  const std::string ext = p.extension().string();
  for (unsigned long i = 1;; ++i) {
    const fs::path candidate = dir / (stem + "_" + std::to_string(i) + ext);
    if (!fs::exists(fs::symlink_status(candidate, ec))) return candidate.string();
  }
}

std::string HUTFileUtils::makeAbsolutePath(const std::string& path) {
  if (path.empty()) return path;
  return fs::absolute(path).lexically_normal().string();
}
