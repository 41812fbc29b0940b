#include "platform/HTEQTmpDirObject.h"

#include "host/ComMsgMgr.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTFileUtils.h"

HTEQTmpDirObject::HTEQTmpDirObject() = default;

HTEQTmpDirObject::HTEQTmpDirObject(const std::string& name) { create(name); }

HTEQTmpDirObject::~HTEQTmpDirObject() { deleteTmpDir(); }

void HTEQTmpDirObject::create(const std::string& name) {
  deleteTmpDir();
  std::string path = HUTEnv::instance().getJUNTmpDir() + "/" + name;
  path = HUTFileUtils::uniquifyFilenameInDir(path);
  path = HUTFileUtils::makeAbsolutePath(path);
  HUTFile::mkDirRecursive(path);
  HUTFile::ensureWritableDirectory(path);
  path_ = path;
}

bool HTEQTmpDirObject::exists() const { return !path_.empty() && HUTFile::isDir(path_); }

void HTEQTmpDirObject::deleteTmpDir() {
  if (path_.empty()) return;
  if (HUTFile::isDir(path_)) {
    HUTFile::rmRecursive(path_);
    if (HUTFile::isDir(path_)) ZR_SEND_MSG("@1-1874@%s", ComMsgMask::kWarning, path_);
  }
  path_.clear();
}
