#ifndef PLATFORM_HTEQTMPDIROBJECT_H
#define PLATFORM_HTEQTMPDIROBJECT_H

#include <string>

#include "platform/ZrPlatformExport.h"

// Owns a temporary directory under the tool's temporary directory for exactly
// as long as the object lives. The directory is private to the user and new:
// its name is the given name, "-" and six unique characters. Two objects
// made with one name own two directories.
class ZR_PLATFORM_API HTEQTmpDirObject {
 public:
  HTEQTmpDirObject();
  explicit HTEQTmpDirObject(const std::string& name);
  ~HTEQTmpDirObject();
  HTEQTmpDirObject(const HTEQTmpDirObject&) = delete;
  HTEQTmpDirObject& operator=(const HTEQTmpDirObject&) = delete;

  // Removes the present directory, if any, then creates a new one. A failed
  // creation throws and leaves the object empty.
  void create(const std::string& name);
  std::string get() const { return path_; }
  bool empty() const { return path_.empty(); }
  bool exists() const;
  // Removes the directory; a removal that fails is reported as message
  // "@1-1874@%s". The object is empty afterwards either way.
  void deleteTmpDir();

 private:
  std::string path_;
};

#endif
