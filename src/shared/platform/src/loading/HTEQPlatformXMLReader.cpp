#include "platform/HTEQPlatformXMLReader.h"

#include <sstream>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTConsole.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "loading/TEQPlatformLMX.h"
#include "platform/HTEQPlatform.h"
#include "platform/HTEQReconfigurablePartition.h"

namespace {

// The directory of the descriptor, separator, the element's path, separator,
// its name. Hardware and emulation files are made canonical, which resolves
// the relative parts; the software file keeps them.
std::string filePath(const std::string& zdf, const TEQPlatform::FileRef& ref, bool canonical) {
  std::string dir = HUTPathUtils::getParent(zdf);
  // A descriptor named without a directory lies in the current one.
  if (dir.empty()) dir = ".";
  const std::string sep = HUTFile::getSeparator();
  const std::string path = dir + sep + ref.path + sep + ref.name;
  return canonical ? HUTFile::getCanonicalName(path) : path;
}

}  // namespace

HTEQPlatformXMLReader::HTEQPlatformXMLReader(const std::string& file, HTEQPlatform* platform)
    : file_(file), platform_(platform) {
  if (file.empty() || !HUTPathUtils::exists(file)) throw HEXFileNotFoundException(file);
}

bool HTEQPlatformXMLReader::parseFile() {
  try {
    const TEQPlatform::Platform p = TEQPlatform::unmarshalFile(file_);
    platform_->setVendor(p.vendor);
    platform_->setLibrary(p.library);
    platform_->setName(p.name);
    platform_->setDescription(p.description);
    platform_->setVersion(p.version);
    if (!p.hardwarePlatforms) throw HXMLException("missing element teq:hardwarePlatforms", 0);

    const TEQPlatform::HardwarePlatforms& hw = *p.hardwarePlatforms;
    switch (hw.choice) {
      case 0:
        platform_->setHardwarePlatformFile(filePath(file_, hw.anon.hardwarePlatform, true));
        if (hw.anon.hwEmuPlatform)
          platform_->setHardwareEmuPlatformFile(filePath(file_, *hw.anon.hwEmuPlatform, true));
        break;
      case 1: {
        // One file serves as both the hardware and the emulation platform.
        const std::string emu = filePath(file_, hw.hwEmuPlatform, true);
        platform_->setHardwareEmuPlatformFile(emu);
        platform_->setHardwarePlatformFile(emu);
        break;
      }
      default:
        for (const auto& rpRecord : hw.reconfigurablePartitions) {
          auto* rp = new HTEQReconfigurablePartition(static_cast<unsigned int>(rpRecord.id));
          platform_->addReconfigurablePartition(rp);
          if (rpRecord.choice == 0) {
            rp->setHardwarePlatformFile(filePath(file_, rpRecord.anon.hardwarePlatform, true));
            if (rpRecord.anon.hwEmuPlatform)
              rp->setHardwareEmuPlatformFile(filePath(file_, *rpRecord.anon.hwEmuPlatform, true));
          } else {
            // Unlike the top level, an emulation-only partition has no hardware file.
            rp->setHardwareEmuPlatformFile(filePath(file_, rpRecord.hwEmuPlatform, true));
          }
        }
        if (hw.hasDefaultRP) platform_->setDefaultRPId(static_cast<unsigned int>(hw.defaultRP));
        break;
    }
    if (p.softwarePlatforms)
      platform_->setSoftwarePlatformFile(filePath(file_, p.softwarePlatforms->softwarePlatform, false));

    platform_->setPlatformFile(file_);
    errorMsg_.clear();
    return true;
  } catch (const HXMLException& e) {
    const int line = e.getLineNumber();
    std::ostringstream msg;
    msg << "Error parsing platform file: " << file_ << "\n"
        << "Line number:" << line << ". " << e.what() << "\n";
    errorMsg_ = msg.str();
    HUTConsole::out(errorMsg_);
    ZR_SEND_MSG("@74-9@%s", ComMsgMask::kError, file_, line);
    return false;
  }
}
