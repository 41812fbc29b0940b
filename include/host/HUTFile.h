#ifndef HOST_HUTFILE_H
#define HOST_HUTFILE_H

#include <string>
#include <vector>

#include "platform/ZrPlatformExport.h"

// File-system operations on path strings. Queries never throw; they answer
// false or an empty string when the file system cannot tell. Operations that
// change the file system throw HEXUserException with the reason.
class ZR_PLATFORM_API HUTFile {
 public:
  static bool exists(const std::string& path);
  static bool isDir(const std::string& path);
  static bool isFile(const std::string& path);
  static bool isReadable(const std::string& path);
  // "/" on every system this library runs on.
  static std::string getSeparator();
  static std::string getDirSeparator() { return getSeparator(); }
  // The directory part of the path, lexically: "a/b/c.zdf" gives "a/b".
  static std::string getParent(const std::string& path);
  // The path made absolute against the current directory, lexically
  // normalised; links are not resolved.
  static std::string getFullPath(const std::string& path);
  // The absolute path with "." and ".." resolved and symbolic links followed as
  // far as the path exists; the file itself need not exist.
  static std::string getCanonicalName(const std::string& path);
  static void mkDirRecursive(const std::string& path);
  // Makes the directories of `relative` below the existing directory `root`,
  // one component at a time, never following a symbolic link: answers false
  // when a component exists as a link or as anything but a directory (or is
  // ".."), so that nothing is made outside `root`. Other failures throw.
  static bool mkDirBelow(const std::string& root, const std::string& relative);
  // Makes a new directory `prefix` + six unique characters, readable only by
  // this user, and returns its path. `prefix` is a path; its directory must
  // exist. Never reuses something already there.
  static std::string makeTmpDir(const std::string& prefix);
  // True when nothing lies at the path or a regular file does (a symbolic
  // link counts as what it is, not as what it points to): what a write that
  // replaces the path may replace.
  static bool isReplaceable(const std::string& path);
  // Removes a file or a directory tree. Answers false when something is left.
  static bool rmRecursive(const std::string& path);
  // Removes one file (a symbolic link itself, not its target); a directory is
  // left alone. Answers whether nothing but a directory is left at the path:
  // true when there was nothing to remove.
  static bool rm(const std::string& path);
  // Adds the execute bits wherever the file has the read bits (owner, group,
  // others). Throws HEXUserException when the file is missing or the mode
  // cannot be changed.
  static void mkExecutable(const std::string& path);
  // The regular files below a directory, at any depth, as full paths sorted
  // by their path relative to the directory (bytewise), so that whatever is
  // built from the listing comes out the same on every file system.
  // Directories, links to directories, FIFOs, sockets and devices are not
  // listed. Throws HEXUserException when the directory cannot be walked.
  static std::vector<std::string> listFilesRecursive(const std::string& dir);
  // Writes the whole content to a temporary file beside the path and renames
  // it over the path, so that the path holds either its old content or the
  // new one, never a part. The new file gets the mode less the umask. Throws
  // HEXUserException (nothing changed at the path) when it cannot, or when
  // something other than a regular file is there (see isReplaceable).
  static void writeAtomically(const std::string& path, const std::string& content, unsigned mode = 0666);
  // Throws HEXUserException unless the path is a directory this process may
  // write into.
  static void ensureWritableDirectory(const std::string& path);
  // The file's size in bytes, or -1.
  static long long getSize(const std::string& path);
  // Copies a file, replacing `to`.
  static void copyFile(const std::string& from, const std::string& to);
  // Renames a file over `to` in one step (both in one file system).
  static void renameFile(const std::string& from, const std::string& to);

  // Every file the library reads goes through these two. The path must name a
  // regular file once links are followed. It is opened without blocking and
  // the open file is checked, so that what is checked is what is read: a FIFO,
  // socket or device (/dev/stdin included) is closed again without a byte read,
  // as reading one could block or never end.
  // openForReading returns a descriptor the caller closes. Both throw
  // HEXFileNotFoundException when nothing is at the path, HEXUserException
  // when it is "not a regular file" or cannot be opened or read.
  static int openForReading(const std::string& path);
  // The whole content of the file. A file longer than maxBytes is refused with
  // HEXDataException, in a sentence naming `limitName` and the limit.
  static std::string readAll(const std::string& path, unsigned long long maxBytes,
                             const std::string& limitName = "size limit");
};

#endif
