#include "ZrTempFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "host/HEXAll.h"
#include "host/HUTPathUtils.h"

namespace zr_zip {

TempFile::TempFile(const std::string& dir, const std::string& prefix, const std::string& target)
    : target_(target) {
  const std::string pattern = (dir.empty() ? std::string(".") : dir) + "/" + prefix + "XXXXXX";
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  fd_.reset(::mkstemp(name.data()));
  if (!fd_) fail_(std::string("cannot create a temporary file: ") + std::strerror(errno));
  path_ = name.data();
}

TempFile::~TempFile() {
  fd_.reset();
  if (!path_.empty()) ::unlink(path_.c_str());
}

void TempFile::fail_(const std::string& reason) const {
  throw HEXUserException("cannot write '" + target_ + "': " + reason);
}

void TempFile::write(const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t put = ::write(fd_.get(), data, size);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) fail_(put < 0 ? std::strerror(errno) : "nothing could be written");
    data += put;
    size -= static_cast<std::size_t>(put);
  }
}

void TempFile::close() {
  if (!fd_) return;
  if (::close(fd_.release()) != 0) fail_(std::strerror(errno));
}

void TempFile::commitTo(const std::string& target, unsigned mode) {
  if (fd_) ::fchmod(fd_.get(), static_cast<mode_t>(mode));
  close();
  if (::rename(path_.c_str(), target.c_str()) != 0) fail_(std::strerror(errno));
  path_.clear();
}

std::string TempFile::release() {
  close();
  std::string path = path_;
  path_.clear();
  return path;
}

std::string directoryOf(const std::string& path) { return HUTPathUtils::getParent(path); }

}  // namespace zr_zip
