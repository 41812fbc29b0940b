#ifndef TESTS_SUPPORT_TESTSUPPORT_H
#define TESTS_SUPPORT_TESTSUPPORT_H

#include <atomic>
#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "host/HUTEnv.h"
#include "platform/HSTFwdIter.h"
#include "platform/JSONObjectWriter.h"
#include "platform/JSONSerializable.h"

namespace zr_test {

// A fresh directory under the system temporary directory, removed with the object.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // path() + "/" + relative
  std::string file(const std::string& relative) const;
  // Writes a file below the directory (parents made as needed) and returns its path.
  std::string write(const std::string& relative, const std::string& content) const;

 private:
  std::string path_;
};

void writeFile(const std::string& path, const std::string& content);
std::string readFile(const std::string& path);

// Sets an environment variable for the life of the object, restoring it after.
class ScopedEnvVar {
 public:
  ScopedEnvVar(const std::string& name, const char* value);
  ~ScopedEnvVar();
  ScopedEnvVar(const ScopedEnvVar&) = delete;
  ScopedEnvVar& operator=(const ScopedEnvVar&) = delete;

 private:
  std::string name_;
  bool had_;
  std::string old_;
};

}  // namespace zr_test

namespace zr_test {

// A descriptor with the given teq:hardwarePlatforms content (and attributes of
// that element, such as "teq:defaultRP=\"1\""), and a software file sw/a.spfm.
std::string zdfText(const std::string& hardwareContent, const std::string& hardwareAttrs = "",
                    const std::string& description = "A test platform");

// teq:hardwarePlatform / teq:hwEmuPlatform elements.
std::string zdfHw(const std::string& path, const std::string& name);
std::string zdfEmu(const std::string& path, const std::string& name);

}  // namespace zr_test

namespace zr_test {
// A small valid software platform with one configuration and one processor group.
std::string spfmText(const std::string& name = "board_sw");

// A small but complete JSON metadata member of a hardware archive: one device
// with its core, a memory, two clocks (the second the default), a bus
// interface with a segment and one NoC record; `extra` adds keys at the end.
std::string lfaJson(const std::string& extra = "", const std::string& name = "base");
}  // namespace zr_test

namespace zr_test {

// Points the tool's temporary directory at `dir` for the life of the object.
class ScopedTmpDir {
 public:
  explicit ScopedTmpDir(const std::string& dir) : old_(HUTEnv::instance().getJUNTmpDir()) {
    HUTEnv::instance().setTmpDir(dir);
  }
  ~ScopedTmpDir() { HUTEnv::instance().setTmpDir(old_); }
  ScopedTmpDir(const ScopedTmpDir&) = delete;
  ScopedTmpDir& operator=(const ScopedTmpDir&) = delete;

 private:
  std::string old_;
};

// Sets the environment's metadata size and compression-ratio limits for the
// life of the object.
class ScopedReadLimits {
 public:
  ScopedReadLimits(unsigned long long metadataBytes, unsigned ratio)
      : bytes_(HUTEnv::instance().getMaxMetadataSize()), ratio_(HUTEnv::instance().getMaxCompressionRatio()) {
    HUTEnv::instance().setMaxMetadataSize(metadataBytes);
    HUTEnv::instance().setMaxCompressionRatio(ratio);
  }
  ~ScopedReadLimits() {
    HUTEnv::instance().setMaxMetadataSize(bytes_);
    HUTEnv::instance().setMaxCompressionRatio(ratio_);
  }
  ScopedReadLimits(const ScopedReadLimits&) = delete;
  ScopedReadLimits& operator=(const ScopedReadLimits&) = delete;

 private:
  unsigned long long bytes_;
  unsigned ratio_;
};

// A FIFO made at `path`. Should a reader still be blocked in it after
// `seconds`, a guard opens it for writing and closes it again, so that the
// reader sees an empty stream: code that wrongly reads the FIFO then fails
// late instead of hanging the test.
class GuardedFifo {
 public:
  explicit GuardedFifo(const std::string& path, int seconds = 5);
  ~GuardedFifo();
  GuardedFifo(const GuardedFifo&) = delete;
  GuardedFifo& operator=(const GuardedFifo&) = delete;

 private:
  std::atomic<bool> stop_{false};
  std::thread guard_;
};

// How often `what` occurs in `text`, overlaps included.
inline std::size_t countOf(const std::string& text, const std::string& what) {
  std::size_t n = 0;
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

// Every element of a model iterator, which the caller hands over.
template <class T>
std::vector<T> drain(HSTFwdIter<T>* iter) {
  std::unique_ptr<HSTFwdIter<T>> owned(iter);
  std::vector<T> out;
  while (owned->hasNext()) out.push_back(owned->next());
  return out;
}

// The pretty JSON text of one object, as the entry points write it, and its tree.
inline std::string jsonText(const teq_platform::JSONSerializable& object) {
  teq_platform::JSONObjectWriter writer;
  object.toJSON(writer);
  std::ostringstream out;
  writer.write(out);
  return out.str();
}
// The JSON text without the blanks and line breaks outside its strings: the
// keys, their order and the values, for tests whose contract is those rather
// than the printer's layout (which the json suite holds to the reference).
inline std::string flat(const std::string& text) {
  std::string out;
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (inString) {
      out += c;
      if (c == '\\' && i + 1 < text.size())
        out += text[++i];
      else if (c == '"')
        inString = false;
    } else if (c == '"') {
      inString = true;
      out += c;
    } else if (c != ' ' && c != '\n') {
      out += c;
    }
  }
  return out;
}
inline std::string flatJson(const teq_platform::JSONSerializable& object) { return flat(jsonText(object)); }
inline boost::property_tree::ptree jsonTree(const teq_platform::JSONSerializable& object) {
  teq_platform::JSONObjectWriter writer;
  object.toJSON(writer);
  return writer.getTree();
}

}  // namespace zr_test

#endif
