#ifndef PLATFORM_HTEQEMULATIONFILE_H
#define PLATFORM_HTEQEMULATIONFILE_H

#include <string>

#include "platform/ZrPlatformExport.h"

// One file that an emulation target needs: its kind (a file type name such as
// "EMU_HPFM"), its name inside the archive and, in the JSON form only, the
// path it is installed to. A null C string sets the empty text.
class ZR_PLATFORM_API HTEQEmulationFile {
 public:
  HTEQEmulationFile() = default;
  HTEQEmulationFile(const std::string& type, const std::string& name);
  HTEQEmulationFile(const HTEQEmulationFile&) = delete;
  HTEQEmulationFile& operator=(const HTEQEmulationFile&) = delete;

  const std::string& getType() const { return type_; }
  const std::string& getName() const { return name_; }
  const std::string& getInstPath() const { return instPath_; }

  void setType(const char* type);
  void setName(const char* name);
  void setInstPath(const char* path);
  void setType(const std::string& type) { type_ = type; }
  void setName(const std::string& name) { name_ = name; }
  void setInstPath(const std::string& path) { instPath_ = path; }

 private:
  std::string type_;
  std::string name_;
  std::string instPath_;
};

#endif
