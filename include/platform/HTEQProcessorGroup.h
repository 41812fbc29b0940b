#ifndef PLATFORM_HTEQPROCESSORGROUP_H
#define PLATFORM_HTEQPROCESSORGROUP_H

#include <string>

#include "platform/JSONSerializable.h"

// A processor with its operating system and the settings a build for it uses.
// Paths and options are kept as the file wrote them; nothing splits them.
class ZR_PLATFORM_API HTEQProcessorGroup : public teq_platform::JSONSerializable {
 public:
  HTEQProcessorGroup();
  ~HTEQProcessorGroup() override;
  HTEQProcessorGroup(const HTEQProcessorGroup&) = delete;
  HTEQProcessorGroup& operator=(const HTEQProcessorGroup&) = delete;

  // "name", "prettyName", "cpuType", "cpuInstance", "osPrettyName", "osName",
  // "osIncludePaths", "osLibraryPaths", "osCompilerOptions", "osLinkerOptions",
  // "osHypervisorGuest", "osBSPIncludePaths", "osBSPLibraryPaths", "osSysRoot".
  // The architecture is not part of the JSON form.
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  virtual std::string getName() const;
  virtual std::string getPrettyName() const;
  virtual std::string getCpuType() const;
  virtual std::string getArch() const;
  virtual std::string getCpuInstance() const;
  virtual std::string getOSName() const;
  virtual bool IsHypervisorGuest() const;
  virtual std::string getOSPrettyName() const;
  virtual std::string getIncludePaths() const;
  virtual std::string getLibraryPaths() const;
  virtual std::string getBSPIncludePaths() const;
  virtual std::string getBSPLibraryPaths() const;
  virtual std::string getCompilerOptions() const;
  virtual std::string getLinkerOptions() const;
  virtual std::string getSysRoot() const;

  virtual void setName(const std::string& v);
  virtual void setPrettyName(const std::string& v);
  virtual void setCpuType(const std::string& v);
  virtual void setArch(const std::string& v);
  virtual void setCpuInstance(const std::string& v);
  virtual void setOSName(const std::string& v);
  virtual void setOSPrettyName(const std::string& v);
  virtual void setIncludePaths(const std::string& v);
  virtual void setLibraryPaths(const std::string& v);
  virtual void setBSPIncludePaths(const std::string& v);
  virtual void setBSPLibraryPaths(const std::string& v);
  virtual void setCompilerOptions(const std::string& v);
  virtual void setLinkerOptions(const std::string& v);
  virtual void setSysRoot(const std::string& v);
  virtual void setHypervisorGuest(bool v);

 private:
  std::string name_;
  std::string prettyName_;
  std::string cpuType_;
  std::string arch_;
  std::string cpuInstance_;
  std::string osName_;
  bool hypervisorGuest_ = false;
  std::string osPrettyName_;
  std::string includePaths_;
  std::string libraryPaths_;
  std::string bspIncludePaths_;
  std::string bspLibraryPaths_;
  std::string compilerOptions_;
  std::string linkerOptions_;
  std::string sysRoot_;
};

#endif
