#ifndef FUZZ_FUZZSUPPORT_H
#define FUZZ_FUZZSUPPORT_H

// What every fuzz target shares: the library's messages and its plain-text
// reports on standard output are dropped, so that a run prints only findings,
// and targets that need a file get a private scratch directory.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "host/ComMsgMgr.h"

namespace zr_fuzz {

// Drops every message of the library; call at the start of each input.
inline void silenceMessages() {
  struct Silent : ComMsgSink {
    void receive(const ComMsg&) override {}
  };
  static Silent silent;
  ComMsgMgrInstance().setSink(&silent);
}

// Drops what readers print on standard output; false when that fails.
inline bool silenceStdout() { return std::freopen("/dev/null", "w", stdout) != nullptr; }

// A fresh directory under TMPDIR (or /tmp) named after `tag`, with `file` in
// it: the path of the file (not made). The directory goes at exit, so that
// replaying a corpus in every test run leaves nothing behind.
inline std::string scratchFile(const std::string& tag, const std::string& file) {
  struct Scratch {
    std::vector<std::string> dirs;
    ~Scratch() {
      std::error_code ignored;
      for (const std::string& dir : dirs) std::filesystem::remove_all(dir, ignored);
    }
  };
  static Scratch scratch;
  const char* base = std::getenv("TMPDIR");
  std::string dir =
      std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/zr-fuzz-" + tag + "-XXXXXX";
  if (mkdtemp(&dir[0]) == nullptr) std::abort();
  scratch.dirs.push_back(dir);
  return dir + "/" + file;
}

}  // namespace zr_fuzz

#endif
