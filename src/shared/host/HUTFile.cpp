#include "host/HUTFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <boost/filesystem.hpp>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "ZrFileAccess.h"
#include "ZrOwned.h"
#include "ZrTempFile.h"
#include "ZrZipArchive.h"
#include "host/HEXAll.h"
#include "host/HUTDirWalker.h"

namespace fs = boost::filesystem;

namespace zr_file {

namespace {
thread_local PathMemo* activeMemo = nullptr;
}  // namespace

PathMemo* PathMemo::active() { return activeMemo; }

PathMemo::Scope::Scope(PathMemo& memo) : owner_(activeMemo == nullptr) {
  if (owner_) activeMemo = &memo;
}

PathMemo::Scope::~Scope() {
  if (owner_) activeMemo = nullptr;
}

bool statPath(const std::string& path, struct stat& st) {
  PathMemo* memo = PathMemo::active();
  if (memo != nullptr) {
    if (const struct stat* known = memo->status(path)) {
      st = *known;
      return true;
    }
  }
  if (::stat(path.c_str(), &st) != 0) return false;
  if (memo != nullptr) memo->addStatus(path, st);
  return true;
}

OpenedFile openRegular(const std::string& path) {
  OpenedFile file;
  if (path.empty()) return file;
  // A path descriptor names the file without opening it: a FIFO or a device
  // is looked at through it and refused, and its driver never sees an open.
  const zr_owned::Fd named(::open(path.c_str(), O_PATH | O_CLOEXEC));
  if (!named) {
    file.error = errno;
    file.state = errno == ENOENT || errno == ENOTDIR ? OpenState::kMissing : OpenState::kUnreachable;
    return file;
  }
  if (::fstat(named.get(), &file.st) != 0) {
    file.error = errno;
    file.state = OpenState::kUnreachable;
    return file;
  }
  if (!S_ISREG(file.st.st_mode)) {
    file.state = S_ISDIR(file.st.st_mode) ? OpenState::kDirectory : OpenState::kNotRegular;
    return file;
  }
  // The regular file is opened through its path descriptor, so that what was
  // checked is what is read even if the name changes meanwhile.
  const std::string self = "/proc/self/fd/" + std::to_string(named.get());
  file.fd.reset(::open(self.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  if (!file.fd && errno == ENOENT) {
    // Without /proc: open the name without blocking and make sure it is still
    // the file that was checked.
    file.fd.reset(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat now {};
    if (file.fd &&
        (::fstat(file.fd.get(), &now) != 0 || now.st_dev != file.st.st_dev || now.st_ino != file.st.st_ino)) {
      file.fd.reset();
      errno = ESTALE;
    }
    if (file.fd) ::fcntl(file.fd.get(), F_SETFL, 0);
  }
  if (!file.fd) {
    file.error = errno;
    file.state = OpenState::kFailed;
    return file;
  }
  file.state = OpenState::kOpen;
  return file;
}

}  // namespace zr_file

bool HUTFile::exists(const std::string& path) {
  if (path.empty()) return false;
  zr_file::PathMemo* memo = zr_file::PathMemo::active();
  if (memo != nullptr && memo->exists(path)) return true;
  boost::system::error_code ec;
  const bool found = fs::exists(path, ec);
  if (found && memo != nullptr) memo->addExisting(path);
  return found;
}

bool HUTFile::isDir(const std::string& path) {
  if (path.empty()) return false;
  boost::system::error_code ec;
  return fs::is_directory(path, ec);
}

bool HUTFile::isFile(const std::string& path) {
  if (path.empty()) return false;
  boost::system::error_code ec;
  return fs::is_regular_file(path, ec);
}

bool HUTFile::isReadable(const std::string& path) {
  return !path.empty() && ::access(path.c_str(), R_OK) == 0;
}

std::string HUTFile::getSeparator() { return "/"; }

std::string HUTFile::getParent(const std::string& path) { return fs::path(path).parent_path().string(); }

std::string HUTFile::getFullPath(const std::string& path) {
  if (path.empty()) return path;
  return fs::absolute(path).lexically_normal().string();
}

std::string HUTFile::getCanonicalName(const std::string& path) {
  if (path.empty()) return path;
  // A path that exists resolves in one pass of the C library (platform loads
  // ask for the same archive's name several times; the general route below
  // looks at every component more than once).
  zr_file::PathMemo* memo = zr_file::PathMemo::active();
  if (memo != nullptr) {
    if (const std::string* known = memo->canonical(path)) return *known;
  }
  char resolved[PATH_MAX];
  if (::realpath(path.c_str(), resolved) != nullptr) {
    if (memo != nullptr) memo->addCanonical(path, resolved);
    return resolved;
  }
  boost::system::error_code ec;
  fs::path p = fs::weakly_canonical(fs::absolute(path), ec);
  if (ec) p = fs::absolute(path).lexically_normal();
  std::string s = p.string();
  // weakly_canonical keeps a trailing "." of a path that ends in a separator.
  while (s.size() > 1 && (s.back() == '/' || (s.size() > 2 && s.compare(s.size() - 2, 2, "/.") == 0)))
    s.erase(s.back() == '/' ? s.size() - 1 : s.size() - 2);
  return s;
}

void HUTFile::mkDirRecursive(const std::string& path) {
  boost::system::error_code ec;
  fs::create_directories(path, ec);
  if (ec && !isDir(path)) throw HEXUserException("cannot create directory '" + path + "': " + ec.message());
}

namespace {

// A directory descriptor closed with the object.
class DirFd {
 public:
  explicit DirFd(int fd) : fd_(fd) {}
  ~DirFd() {
    if (fd_ >= 0) ::close(fd_);
  }
  DirFd(const DirFd&) = delete;
  DirFd& operator=(const DirFd&) = delete;
  int get() const { return fd_; }
  void reset(int fd) {
    if (fd_ >= 0) ::close(fd_);
    fd_ = fd;
  }

 private:
  int fd_;
};

}  // namespace

bool HUTFile::mkDirBelow(const std::string& root, const std::string& relative) {
  DirFd dir(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (dir.get() < 0) throw HEXUserException("cannot open directory '" + root + "': " + std::strerror(errno));
  std::string done = root;
  std::size_t start = 0;
  while (start <= relative.size()) {
    std::size_t end = relative.find('/', start);
    if (end == std::string::npos) end = relative.size();
    const std::string part = relative.substr(start, end - start);
    start = end + 1;
    if (part.empty() || part == ".") continue;
    if (part == "..") return false;
    done += "/" + part;
    // Each step opens the component it just made or found without following
    // a link, so a link swapped in between cannot lead elsewhere either.
    if (::mkdirat(dir.get(), part.c_str(), 0777) != 0 && errno != EEXIST)
      throw HEXUserException("cannot create directory '" + done + "': " + std::strerror(errno));
    const int next = ::openat(dir.get(), part.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (next < 0) {
      if (errno == ELOOP || errno == ENOTDIR) return false;
      throw HEXUserException("cannot open directory '" + done + "': " + std::strerror(errno));
    }
    dir.reset(next);
  }
  return true;
}

std::string HUTFile::makeTmpDir(const std::string& prefix) {
  std::vector<char> name(prefix.begin(), prefix.end());
  for (char c : std::string("XXXXXX")) name.push_back(c);
  name.push_back('\0');
  if (::mkdtemp(name.data()) == nullptr)
    throw HEXUserException("cannot create a temporary directory '" + prefix +
                           "XXXXXX': " + std::strerror(errno));
  return name.data();
}

bool HUTFile::isReplaceable(const std::string& path) {
  struct stat st;
  if (::lstat(path.c_str(), &st) != 0) return errno == ENOENT;
  return S_ISREG(st.st_mode);
}

bool HUTFile::rmRecursive(const std::string& path) {
  boost::system::error_code ec;
  fs::remove_all(path, ec);
  return !fs::exists(fs::symlink_status(path, ec));
}

bool HUTFile::rm(const std::string& path) {
  struct stat st;
  if (::lstat(path.c_str(), &st) != 0) return errno == ENOENT;
  if (S_ISDIR(st.st_mode)) return true;
  return ::unlink(path.c_str()) == 0 || errno == ENOENT;
}

void HUTFile::mkExecutable(const std::string& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0)
    throw HEXUserException("cannot make '" + path + "' executable: " + std::strerror(errno));
  // Each read bit (0444) shifted right by two is the matching execute bit.
  const mode_t mode = st.st_mode | ((st.st_mode & 0444) >> 2);
  if (::chmod(path.c_str(), mode & 07777) != 0)
    throw HEXUserException("cannot make '" + path + "' executable: " + std::strerror(errno));
}

std::vector<std::string> HUTFile::listFilesRecursive(const std::string& dir) {
  std::vector<std::pair<std::string, std::string>> found;  // relative path, full path
  const std::string base = dir.empty() || dir.back() == '/' ? dir : dir + "/";
  std::string error;
  const bool ok = HUTDirWalker::walk(
      dir, HUTDirWalker::Options(),
      [&](const HUTDirEntry& entry) {
        if (!entry.isRegularFile || entry.isDir) return;
        const std::string relative =
            entry.path.compare(0, base.size(), base) == 0 ? entry.path.substr(base.size()) : entry.path;
        found.emplace_back(relative, entry.path);
      },
      error);
  if (!ok) throw HEXUserException("cannot list the files below '" + dir + "': " + error);
  std::sort(found.begin(), found.end());
  std::vector<std::string> paths;
  paths.reserve(found.size());
  for (const auto& item : found) paths.push_back(item.second);
  return paths;
}

void HUTFile::writeAtomically(const std::string& path, const std::string& content, unsigned mode) {
  if (path.empty()) throw HEXUserException("cannot write a file without a name");
  // A directory, link, FIFO or device at the path is never replaced.
  if (!isReplaceable(path)) throw HEXUserException("cannot write '" + path + "': it is not a regular file");
  zr_zip::TempFile file(zr_zip::directoryOf(path), ".zr-write-", path);
  file.write(content.data(), content.size());
  file.commitTo(path, zr_zip::newFileMode(mode));
}

void HUTFile::ensureWritableDirectory(const std::string& path) {
  if (!isDir(path)) throw HEXUserException("'" + path + "' is not a directory");
  if (::access(path.c_str(), W_OK | X_OK) != 0)
    throw HEXUserException("directory '" + path + "' is not writable");
}

long long HUTFile::getSize(const std::string& path) {
  boost::system::error_code ec;
  const auto size = fs::file_size(path, ec);
  return ec ? -1 : static_cast<long long>(size);
}

void HUTFile::copyFile(const std::string& from, const std::string& to) {
  boost::system::error_code ec;
  fs::copy_file(from, to, fs::copy_options::overwrite_existing, ec);
  if (ec) throw HEXUserException("cannot copy '" + from + "' to '" + to + "': " + ec.message());
}

void HUTFile::renameFile(const std::string& from, const std::string& to) {
  boost::system::error_code ec;
  fs::rename(from, to, ec);
  if (ec) throw HEXUserException("cannot rename '" + from + "' to '" + to + "': " + ec.message());
}

namespace {

// The open file, or the exception that says why the path cannot be read.
zr_file::OpenedFile openForReadingWithStat(const std::string& path) {
  zr_file::OpenedFile file = zr_file::openRegular(path);
  switch (file.state) {
    case zr_file::OpenState::kOpen:
      return file;
    case zr_file::OpenState::kMissing:
      throw HEXFileNotFoundException(path);
    case zr_file::OpenState::kDirectory:
    case zr_file::OpenState::kNotRegular:
      throw HEXUserException("cannot read '" + path + "': it is not a regular file");
    case zr_file::OpenState::kUnreachable:
    case zr_file::OpenState::kFailed:
      break;
  }
  throw HEXUserException("cannot read '" + path + "': " + std::strerror(file.error));
}

}  // namespace

int HUTFile::openForReading(const std::string& path) { return openForReadingWithStat(path).fd.release(); }

std::string HUTFile::readAll(const std::string& path, unsigned long long maxBytes,
                             const std::string& limitName) {
  zr_file::OpenedFile file = openForReadingWithStat(path);
  const zr_owned::Fd fd(file.fd.release());
  const struct stat& st = file.st;
  const auto tooLarge = [&] {
    return HEXDataException("'" + path + "' is larger than the " + limitName + " of " +
                            std::to_string(maxBytes) + " bytes");
  };
  if (static_cast<unsigned long long>(st.st_size) > maxBytes) throw tooLarge();
  // One byte more than the file holds shows its end in the same read; a file
  // that grows meanwhile is read on, up to the limit and no further.
  std::string data(static_cast<std::size_t>(st.st_size) + 1, '\0');
  std::size_t done = 0;
  for (;;) {
    if (done == data.size()) {
      if (done > maxBytes) throw tooLarge();
      data.resize(done + std::min<unsigned long long>(65536, maxBytes - done) + 1);
    }
    const ssize_t got = ::read(fd.get(), &data[done], data.size() - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw HEXUserException("cannot read '" + path + "': " + std::strerror(errno));
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  if (done > maxBytes) throw tooLarge();
  data.resize(done);
  return data;
}
