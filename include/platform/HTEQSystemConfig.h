#ifndef PLATFORM_HTEQSYSTEMCONFIG_H
#define PLATFORM_HTEQSYSTEMCONFIG_H

#include <string>
#include <vector>

#include "platform/HSTOwningVector.h"
#include "platform/JSONSerializable.h"

class HTEQBootImg;
class HTEQProcessorGroup;

// One system configuration of a software platform: the runtimes it offers, its
// processor groups and its boot images, which it owns. The out-vector getters
// append to what the vector already holds.
class ZR_PLATFORM_API HTEQSystemConfig : public teq_platform::JSONSerializable {
 public:
  using StringVector = std::vector<std::string>;
  using TEQProcessorGroupVec = std::vector<HTEQProcessorGroup*>;
  using TEQBootImgVec = std::vector<HTEQBootImg*>;

  HTEQSystemConfig();
  HTEQSystemConfig(const HTEQSystemConfig&) = delete;
  HTEQSystemConfig& operator=(const HTEQSystemConfig&) = delete;

  // "name", "prettyName", "description", "defaultProcessorGroup",
  // "defaultBootImage", "prebuiltData", "qemu", "processorGroups",
  // "bootImages", "runtimes".
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;
  // Deletes the processor groups, then the boot images.
  ~HTEQSystemConfig() override;

  virtual std::string getName() const;
  virtual std::string getDesc() const;
  virtual std::string getPrettyName() const;
  // The stored name when there is one, else the first group's name, else "".
  // The name is not checked against the groups.
  virtual std::string getDefaultProcGrpName() const;
  virtual std::string getPrebuiltData() const;
  virtual void getProcessorGroups(TEQProcessorGroupVec& out) const;
  // The names recorded by addProcessorGroup(name).
  virtual void getProcessorGroups(StringVector& out) const;
  // The runtimes as the file names them, in file order, duplicates kept.
  virtual void getRuntimes(StringVector& out) const;
  // The same with "ocl" shown as "OpenCL" and "cpp" as "C/C++" (any case).
  virtual void getRuntimesByPrettyName(StringVector& out) const;
  // Exact, case-sensitive; of several groups of one name the last wins.
  virtual HTEQProcessorGroup* getProcGrpByName(const std::string& name) const;
  // As getDefaultProcGrpName, with the boot images.
  virtual std::string getDefaultBootImgName() const;
  virtual void getBootImgs(TEQBootImgVec& out) const;
  // Exact, case-sensitive; of several images of one name the last wins.
  virtual HTEQBootImg* getBootImgByName(const std::string& name) const;
  virtual void setName(const std::string& name);
  virtual void setDesc(const std::string& desc);
  virtual void setPrettyName(const std::string& name);
  virtual void setDefaultProcGrpName(const std::string& name);
  virtual void setDefaultBootImgName(const std::string& name);
  virtual HTEQBootImg* addBootImg();
  // Records a processor group name; it makes no group.
  virtual void addProcessorGroup(const std::string& name);
  virtual HTEQProcessorGroup* addProcessorGroup();
  virtual void setSupportsQemu(bool supports);
  virtual void addRuntime(const std::string& runtime);

  void setPrebuiltData(const std::string& data) { prebuiltData_ = data; }
  bool isQemuSupported() const { return supportsQemu_; }

 private:
  std::string name_;
  std::string prettyName_;
  std::string desc_;
  std::string defaultProcGrpName_;
  std::string defaultBootImgName_;
  std::string prebuiltData_;
  StringVector procGrpNames_;
  StringVector runtimes_;
  // Members are destroyed in reverse order: the processor groups go before the
  // boot images.
  HSTOwningVector<HTEQBootImg> bootImgs_;
  HSTOwningVector<HTEQProcessorGroup> procGrps_;
  bool supportsQemu_ = false;
};

#endif
