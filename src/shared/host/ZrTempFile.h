#ifndef HOST_ZRTEMPFILE_H
#define HOST_ZRTEMPFILE_H

#include <cstddef>
#include <string>

#include "ZrOwned.h"

namespace zr_zip {

// A new empty file with a unique name in a directory, for writing a file
// whole before it replaces its target by a rename. The file is removed when
// the object goes, unless it was renamed into place or released.
class TempFile {
 public:
  // Makes dir/prefix + six unique characters (dir "" is the current
  // directory). `target` names the file being written, for the messages.
  // Throws HEXUserException when the file cannot be made.
  TempFile(const std::string& dir, const std::string& prefix, const std::string& target);
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const std::string& path() const { return path_; }
  // Writes all the bytes or throws HEXUserException.
  void write(const char* data, std::size_t size);
  // Closes the descriptor, so that others may open the file by its path.
  void close();
  // Gives the file the permission bits, closes it and renames it to target.
  void commitTo(const std::string& target, unsigned mode);
  // Keeps the file: its removal becomes the caller's. Returns its path.
  std::string release();

 private:
  [[noreturn]] void fail_(const std::string& reason) const;

  std::string target_;
  std::string path_;
  zr_owned::Fd fd_;
};

// The directory part of a path, "" when it has none.
std::string directoryOf(const std::string& path);

}  // namespace zr_zip

#endif
