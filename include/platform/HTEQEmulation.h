#ifndef PLATFORM_HTEQEMULATION_H
#define PLATFORM_HTEQEMULATION_H

#include <string>

#include "platform/HSTOwningVector.h"
#include "platform/HSTVector.h"
#include "platform/ZrPlatformExport.h"

class HTEQEmulationFile;

// One named emulation target and the files it needs, in the order they were
// added. The emulation owns its files.
class ZR_PLATFORM_API HTEQEmulation {
 public:
  HTEQEmulation();
  explicit HTEQEmulation(const std::string& name);
  ~HTEQEmulation();
  HTEQEmulation(const HTEQEmulation&) = delete;
  HTEQEmulation& operator=(const HTEQEmulation&) = delete;

  const std::string& getName() const { return name_; }
  void setName(const std::string& name) { name_ = name; }

  // Appends a new file, empty or with type and name, and returns it.
  HTEQEmulationFile* createFile();
  HTEQEmulationFile* createFile(const std::string& type, const std::string& name);
  const HSTVector<HTEQEmulationFile*>& getFiles() const { return files_.view(); }

 private:
  std::string name_;
  HSTOwningVector<HTEQEmulationFile> files_;
};

#endif
