#ifndef PLATFORM_HTEQSOFTWAREPLATFORM_H
#define PLATFORM_HTEQSOFTWAREPLATFORM_H

#include <string>
#include <vector>

#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HTEQSystemConfig;

// The software half of a platform: its system configurations, which it owns,
// in file order. Queries never fail for missing data; they answer null, false,
// 0 or the empty string. Out vectors are appended to.
class ZR_PLATFORM_API HTEQSoftwarePlatform : public teq_platform::JSONSerializable {
 public:
  using StringVector = std::vector<std::string>;
  using TEQSystemConfigVec = std::vector<HTEQSystemConfig*>;

  HTEQSoftwarePlatform();
  ~HTEQSoftwarePlatform() override;
  HTEQSoftwarePlatform(const HTEQSoftwarePlatform&) = delete;
  HTEQSoftwarePlatform& operator=(const HTEQSoftwarePlatform&) = delete;

  // "linuxRootFileSystemPath", "defaultConfig", "systemConfigurations".
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  HTEQSystemConfig* addSystemConfig();
  // The first configuration, or null.
  HTEQSystemConfig* getSystemConfig() const;
  void getSystemConfigs(TEQSystemConfigVec& out) const;

  // A configuration whose name or pretty name equals the key exactly. Every
  // configuration is looked at and the last match wins.
  HTEQSystemConfig* getSystemConfigByName(const std::string& name) const;
  // The same lookup: a plain name matches here too.
  HTEQSystemConfig* getSystemConfigByPrettyName(const std::string& name) const;

  // The configuration the default name finds, else the first one, else null.
  // A default name that matches nothing is no error.
  HTEQSystemConfig* getDefaultSystemConfig() const;
  // The stored default name, else the name of getDefaultSystemConfig(), else "".
  std::string getDefaultConfigName() const;
  void setDefaultConfigName(const std::string& name);

  // Not carried by the file; whoever knows the path sets it.
  const std::string& getLinuxRootFileSystemPath() const { return linuxRootFileSystemPath_; }
  void setLinuxRootFileSystemPath(const std::string& path) { linuxRootFileSystemPath_ = path; }

  // True for "ocl", "OpenCL", "cpp" and "C/C++", in any case.
  bool isRuntimeSupported(const std::string& runtime) const;
  // The runtimes of all configurations in first-seen order, without
  // duplicates (compared exactly, also against what `out` already holds).
  void getSupportedRuntimes(StringVector& out) const;
  void getSupportedRuntimesByPrettyName(StringVector& out) const;
  int getNumRuntimes() const;

  // A configuration is supported when it exists and either names no runtime or
  // names at least one supported runtime.
  bool isSystemConfigSupported(const std::string& name) const;

  // Appends the names of the configurations that can build a library of the
  // type ("static", "shared" or "c-callable", any case) and returns the size
  // of `out` afterwards, counting what it held before.
  int getSystemConfigNames(StringVector& out, const std::string& libraryType) const;

 private:
  HSTOwningVector<HTEQSystemConfig> systemConfigs_;
  std::string defaultConfigName_;
  std::string linuxRootFileSystemPath_;
};

#endif
