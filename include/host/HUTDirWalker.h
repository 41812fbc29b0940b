#ifndef HOST_HUTDIRWALKER_H
#define HOST_HUTDIRWALKER_H

#include <functional>
#include <string>

#include "platform/ZrPlatformExport.h"

// One entry met during a walk. The kinds are those of what the entry names
// once links are followed; a link whose target cannot be reached is neither a
// directory nor a regular file and has isBrokenLink set.
struct ZR_PLATFORM_API HUTDirEntry {
  std::string path;
  // 0 for an entry directly in the walked directory, 1 one level below, ...
  int depth = 0;
  bool isSymlink = false;
  bool isBrokenLink = false;
  bool isDir = false;
  // A regular file (after following a link): never a FIFO, socket or device.
  bool isRegularFile = false;
};

// A recursive walk over a directory, in the order the file system lists each
// directory. Every entry is passed to the visitor, directories before their
// contents. A directory reached through a link is entered only when links are
// followed; a directory that is already being walked further up (a link loop)
// is never entered again, so a walk always ends.
class ZR_PLATFORM_API HUTDirWalker {
 public:
  struct Options {
    bool followDirLinks = false;
    // The deepest level whose entries are listed: 2 lists the directory and
    // two levels of subdirectories below it. Negative: no limit.
    int maxDepth = -1;
  };
  using Visitor = std::function<void(const HUTDirEntry&)>;

  // Walks `root`. The first failure (the root or a directory below it cannot
  // be listed, or the visitor throws) ends the walk: the answer is then false
  // with the reason in `error`. Never throws.
  static bool walk(const std::string& root, const Options& options, const Visitor& visit, std::string& error);
};

#endif
