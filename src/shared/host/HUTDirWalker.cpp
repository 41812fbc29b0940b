#include "host/HUTDirWalker.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <exception>
#include <utility>
#include <vector>

#include "host/HEXAll.h"

namespace {

// A directory stream closed with the object.
class DirStream {
 public:
  explicit DirStream(const std::string& path) : dir_(::opendir(path.c_str())) {}
  ~DirStream() {
    if (dir_ != nullptr) ::closedir(dir_);
  }
  DirStream(const DirStream&) = delete;
  DirStream& operator=(const DirStream&) = delete;
  DIR* get() const { return dir_; }

 private:
  DIR* dir_;
};

class Walk {
 public:
  Walk(const HUTDirWalker::Options& options, const HUTDirWalker::Visitor& visit)
      : options_(options), visit_(visit) {}

  void directory(const std::string& dir, int depth) {
    // The names are read first and the stream closed before descending, so
    // that a deep tree holds one open directory at a time. The kinds the
    // listing gives save a look at every plain file and directory.
    struct Listed {
      std::string name;
      unsigned char type;
    };
    std::vector<Listed> names;
    {
      DirStream stream(dir);
      if (stream.get() == nullptr) throwFor(dir);
      struct stat own {};
      if (::fstat(::dirfd(stream.get()), &own) != 0) throwFor(dir);
      const std::pair<dev_t, ino_t> id(own.st_dev, own.st_ino);
      for (const auto& open : open_)
        if (open == id) return;  // a link back to a directory being walked
      errno = 0;
      while (const dirent* ent = ::readdir(stream.get())) {
        const char* name = ent->d_name;
        if (std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0) names.push_back({name, ent->d_type});
        errno = 0;
      }
      if (errno != 0) throwFor(dir);
      open_.push_back(id);
    }
    for (const auto& listed : names) {
      HUTDirEntry entry;
      entry.path = dir == "/" ? "/" + listed.name : dir + "/" + listed.name;
      entry.depth = depth;
      struct stat st {};
      if (listed.type == DT_REG || listed.type == DT_DIR) {
        st.st_mode = listed.type == DT_REG ? S_IFREG : S_IFDIR;
      } else if (::lstat(entry.path.c_str(), &st) != 0) {
        continue;  // gone since it was listed
      }
      if (S_ISLNK(st.st_mode)) {
        entry.isSymlink = true;
        if (::stat(entry.path.c_str(), &st) != 0) entry.isBrokenLink = true;
      }
      if (!entry.isBrokenLink) {
        entry.isDir = S_ISDIR(st.st_mode);
        entry.isRegularFile = S_ISREG(st.st_mode);
      }
      visit_(entry);
      const bool deeper = options_.maxDepth < 0 || depth < options_.maxDepth;
      if (entry.isDir && deeper && (!entry.isSymlink || options_.followDirLinks))
        directory(entry.path, depth + 1);
    }
    open_.pop_back();
  }

 private:
  [[noreturn]] static void throwFor(const std::string& dir) {
    throw HEXUserException("cannot read directory '" + dir + "': " + std::strerror(errno));
  }

  const HUTDirWalker::Options& options_;
  const HUTDirWalker::Visitor& visit_;
  // The directories from the root down to the one being listed.
  std::vector<std::pair<dev_t, ino_t>> open_;
};

}  // namespace

bool HUTDirWalker::walk(const std::string& root, const Options& options, const Visitor& visit,
                        std::string& error) {
  error.clear();
  try {
    std::string start = root;
    while (start.size() > 1 && start.back() == '/') start.pop_back();
    Walk(options, visit).directory(start, 0);
    return true;
  } catch (const std::exception& e) {
    error = e.what();
  } catch (...) {
    error = "unknown failure";
  }
  if (error.empty()) error = "unknown failure";
  return false;
}
