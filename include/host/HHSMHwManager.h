#ifndef HOST_HHSMHWMANAGER_H
#define HOST_HHSMHWMANAGER_H

#include <map>
#include <memory>
#include <string>

#include "platform/ZrPlatformExport.h"

class HHDFHwDef;

// One hardware database. The library needs nothing of it but its name.
class ZR_PLATFORM_API HHSMHardwareDb {
 public:
  HHSMHardwareDb(std::string name, std::string sourceFile, std::map<std::string, std::string> rmFiles);
  virtual ~HHSMHardwareDb();
  const std::string& getName() const { return name_; }
  // The platform or definition file the database was made from.
  const std::string& getSourceFile() const { return sourceFile_; }
  // Reconfigurable module files by the instance path they fill.
  const std::map<std::string, std::string>& getRmFiles() const { return rmFiles_; }

 private:
  std::string name_;
  std::string sourceFile_;
  std::map<std::string, std::string> rmFiles_;
};

// The registry of hardware databases of the process. A host tool with a real
// hardware database installs its own manager with setHsmHwManager; the default
// keeps named databases made from definition files and owns them for the life
// of the process.
class ZR_PLATFORM_API HHSMHwManager {
 public:
  using RmFileMap = std::map<std::string, std::string>;

  HHSMHwManager();
  virtual ~HHSMHwManager();
  HHSMHwManager(const HHSMHwManager&) = delete;
  HHSMHwManager& operator=(const HHSMHwManager&) = delete;

  // Opens the hardware definition held in a platform file; false when the
  // file cannot be read.
  virtual bool openDefFile(const std::string& file);
  // A new database from the definition in file, with the reconfigurable module
  // files by instance path; null when the file cannot be read. Each database
  // gets a name of its own, made from the file name.
  virtual HHSMHardwareDb* createHardwareDb(const std::string& file, const RmFileMap& rmFiles = RmFileMap());
  virtual HHSMHardwareDb* createHardwareDbFromHDF(const HHDFHwDef* hdf);
  // The database of that name, or null.
  virtual HHSMHardwareDb* getHardwareDb(const std::string& name) const;

  // The process-wide manager. setHsmHwManager does not take ownership; null
  // restores the default.
  static HHSMHwManager* getHsmHwManager();
  static void setHsmHwManager(HHSMHwManager* manager);

 private:
  std::string uniqueName_(const std::string& file) const;
  std::map<std::string, std::unique_ptr<HHSMHardwareDb>> dbs_;
};

// A hardware definition file (a hardware handoff).
class ZR_PLATFORM_API HHDFHwDef {
 public:
  explicit HHDFHwDef(std::string file);
  virtual ~HHDFHwDef();
  const std::string& getFile() const { return file_; }
  // The name of the top module of the design: the file name without its
  // extension.
  virtual std::string getHierTopModuleName() const;
  // Copies the definition into the directory; false on failure.
  virtual bool write(const std::string& dir) const;

 private:
  std::string file_;
};

class ZR_PLATFORM_API HHDFHwDefUtils {
 public:
  // The definition held in file; null when it is not a readable file.
  static std::shared_ptr<HHDFHwDef> getHDF(const std::string& file);
};

#endif
