#ifndef HOST_ZRFILEACCESS_H
#define HOST_ZRFILEACCESS_H

// How the library opens the files it reads, and what one load may remember of
// the file system while it runs.

#include <sys/stat.h>

#include <string>
#include <unordered_map>
#include <unordered_set>

#include "ZrOwned.h"

namespace zr_file {

// How opening a path for reading ended.
enum class OpenState {
  kOpen,         // a regular file, open: `fd` and `st` describe it
  kMissing,      // nothing at the path (or a component is no directory)
  kUnreachable,  // the path cannot be looked at: `error` says why
  kDirectory,    // a directory: nothing is open
  kNotRegular,   // a FIFO, socket or device: nothing is open
  kFailed,       // a regular file that cannot be opened: `error` says why
};

struct OpenedFile {
  zr_owned::Fd fd;
  struct stat st {};
  OpenState state = OpenState::kMissing;
  int error = 0;
};

// Opens the path for reading when it is a regular file. The path is first
// opened as a name only (O_PATH) and looked at with fstat: a FIFO, socket or
// device is refused without ever being opened, so neither a FIFO without a
// writer nor a driver that acts on open sees the library. A regular file is
// then opened through that same descriptor, so that what is checked is what
// is read. The file is returned in blocking mode.
OpenedFile openRegular(const std::string& path);

// What the file queries of one thread learn while an object of this class is
// active there: the canonical names they resolved, the paths they found to
// exist and the status of the archives they looked at. A platform load asks the same questions about the same
// few paths several times (the descriptor's reader, the loader and the hardware reader each resolve the
// archive's name); within one load the answers are taken to stay the same. Only positive answers are kept;
// the opens that read a file always look again. Activations nest: the outermost memo is the one used.
class PathMemo {
 public:
  PathMemo() = default;
  PathMemo(const PathMemo&) = delete;
  PathMemo& operator=(const PathMemo&) = delete;

  // The memo active on this thread, or null.
  static PathMemo* active();

  // Makes `memo` the active one for the object's lifetime, unless one is active already.
  class Scope {
   public:
    explicit Scope(PathMemo& memo);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    bool owner_;
  };

  const std::string* canonical(const std::string& path) const {
    const auto found = canonical_.find(path);
    return found == canonical_.end() ? nullptr : &found->second;
  }
  // `resolved` is the canonical name of `path`, which exists.
  void addCanonical(const std::string& path, const std::string& resolved) {
    canonical_.emplace(path, resolved);
    canonical_.emplace(resolved, resolved);
    existing_.insert(path);
    existing_.insert(resolved);
  }
  bool exists(const std::string& path) const { return existing_.count(path) != 0; }
  void addExisting(const std::string& path) { existing_.insert(path); }
  const struct stat* status(const std::string& path) const {
    const auto found = stats_.find(path);
    return found == stats_.end() ? nullptr : &found->second;
  }
  void addStatus(const std::string& path, const struct stat& st) {
    stats_.emplace(path, st);
    existing_.insert(path);
  }

 private:
  std::unordered_map<std::string, std::string> canonical_;
  std::unordered_set<std::string> existing_;
  std::unordered_map<std::string, struct stat> stats_;
};

// stat(2) of the path, answered from the active memo when it has looked
// before; false when the path cannot be looked at.
bool statPath(const std::string& path, struct stat& st);

}  // namespace zr_file

#endif
