#ifndef PLATFORM_HTEQBOOTIMG_H
#define PLATFORM_HTEQBOOTIMG_H

#include <string>

#include "platform/JSONSerializable.h"

// One boot image of a system configuration: how a target boots and, where it
// can, how it runs under QEMU. Every field is the text of the file.
class ZR_PLATFORM_API HTEQBootImg : public teq_platform::JSONSerializable {
 public:
  HTEQBootImg();
  ~HTEQBootImg() override;
  HTEQBootImg(const HTEQBootImg&) = delete;
  HTEQBootImg& operator=(const HTEQBootImg&) = delete;

  // "name", "type", "bif", "data", "rootFileSystem", "bootMode", "mountPath",
  // "readMe", "qemuArgs", "qemuBoot", "qemuDevTree", "hwBootBin".
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  const std::string& getType() const { return type_; }
  const std::string& getBif() const { return bif_; }
  const std::string& getImgData() const { return imgData_; }
  const std::string& getBootMode() const { return bootMode_; }
  const std::string& getRootFS() const { return rootFS_; }
  const std::string& getMountPath() const { return mountPath_; }
  const std::string& getReadMe() const { return readMe_; }
  const std::string& getQemuArgs() const { return qemuArgs_; }
  const std::string& getQemuBoot() const { return qemuBoot_; }
  const std::string& getQemuDevTree() const { return qemuDevTree_; }
  const std::string& getHwBootBin() const { return hwBootBin_; }

  void setName(const std::string& v) { name_ = v; }
  void setType(const std::string& v) { type_ = v; }
  void setBif(const std::string& v) { bif_ = v; }
  void setImgData(const std::string& v) { imgData_ = v; }
  void setBootMode(const std::string& v) { bootMode_ = v; }
  void setRootFS(const std::string& v) { rootFS_ = v; }
  void setMountPath(const std::string& v) { mountPath_ = v; }
  void setReadMe(const std::string& v) { readMe_ = v; }
  void setQemuArgs(const std::string& v) { qemuArgs_ = v; }
  void setQemuBoot(const std::string& v) { qemuBoot_ = v; }
  void setQemuDevTree(const std::string& v) { qemuDevTree_ = v; }
  void setHwBootBin(const std::string& v) { hwBootBin_ = v; }

 private:
  std::string name_;
  std::string type_;
  std::string bif_;
  std::string imgData_;
  std::string bootMode_;
  std::string rootFS_;
  std::string mountPath_;
  std::string readMe_;
  std::string qemuArgs_;
  std::string qemuBoot_;
  std::string qemuDevTree_;
  std::string hwBootBin_;
};

#endif
