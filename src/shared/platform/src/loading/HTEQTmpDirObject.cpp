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
  // A new private directory (mode 0700) with six unique characters after the
  // name, made in one step by the system: a directory or link that someone
  // else put at a predictable name in the shared temporary directory is never
  // taken over.
  const std::string prefix =
      HUTFileUtils::makeAbsolutePath(HUTEnv::instance().getJUNTmpDir() + "/" + name) + "-";
  HUTFile::mkDirRecursive(prefix.substr(0, prefix.rfind('/')));
  const std::string path = HUTFile::makeTmpDir(prefix);
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
