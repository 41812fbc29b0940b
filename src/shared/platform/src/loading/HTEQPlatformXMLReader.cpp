#include "platform/HTEQPlatformXMLReader.h"

#include <sstream>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
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
template <class FileRef>
std::string filePath(const std::string& zdf, const FileRef& ref, bool canonical) {
  std::string dir = HUTPathUtils::getParent(zdf);
  // A descriptor named without a directory lies in the current one.
  if (dir.empty()) dir = ".";
  const std::string sep = HUTFile::getSeparator();
  const std::string path = dir + sep + HI18N::convert(ref.GetPath()) + sep + HI18N::convert(ref.GetName());
  return canonical ? HUTFile::getCanonicalName(path) : path;
}

// Sets the hardware file and, when the alternative has one, the emulation file.
template <class Target, class Anon>
void setHardwareFiles(Target* target, const std::string& zdf, const Anon& anon) {
  target->setHardwarePlatformFile(filePath(zdf, anon.GetHardwarePlatform(), true));
  if (anon.IssetHwEmuPlatform())
    target->setHardwareEmuPlatformFile(filePath(zdf, anon.GetHwEmuPlatform(), true));
}

}  // namespace

HTEQPlatformXMLReader::HTEQPlatformXMLReader(const std::string& file, HTEQPlatform* platform)
    : file_(file), platform_(platform) {
  if (file.empty() || !HUTPathUtils::exists(file)) throw HEXFileNotFoundException(file);
}

bool HTEQPlatformXMLReader::parseFile() {
  try {
    const TEQPlatform::Platform p = TEQPlatform::unmarshalFile(file_);
    platform_->setVendor(HI18N::convert(p.GetVendor()));
    platform_->setLibrary(HI18N::convert(p.GetLibrary()));
    platform_->setName(HI18N::convert(p.GetName()));
    platform_->setDescription(HI18N::convert(p.GetDescription()));
    platform_->setVersion(p.GetVersion().get_as_string());
    if (!p.IssetHardwarePlatforms()) throw HXMLException("missing element teq:hardwarePlatforms", 0);

    const TEQPlatform::HardwarePlatforms& hw = p.GetHardwarePlatforms();
    if (hw.IssetAnonHardwarePlatform()) {
      setHardwareFiles(platform_, file_, hw.GetAnonHardwarePlatform());
    } else if (hw.IssetHwEmuPlatformAlone()) {
      // One file serves as both the hardware and the emulation platform.
      const std::string emu = filePath(file_, hw.GetHwEmuPlatformAlone().GetHwEmuPlatform(), true);
      platform_->setHardwareEmuPlatformFile(emu);
      platform_->setHardwarePlatformFile(emu);
    } else {
      const TEQPlatform::ReconfigurablePartitions& rps = hw.GetReconfigurablePartitions();
      for (std::size_t i = 0; i < rps.SizeReconfigurablePartition(); ++i) {
        const TEQPlatform::ReconfigurablePartition& rpRecord = rps.GetReconfigurablePartition(i);
        auto* rp = new HTEQReconfigurablePartition(static_cast<unsigned int>(rpRecord.GetId()));
        platform_->addReconfigurablePartition(rp);
        if (rpRecord.IssetAnonHardwarePlatform()) {
          setHardwareFiles(rp, file_, rpRecord.GetAnonHardwarePlatform());
        } else {
          // Unlike the top level, an emulation-only partition has no hardware file.
          rp->setHardwareEmuPlatformFile(
              filePath(file_, rpRecord.GetHwEmuPlatformAlone().GetHwEmuPlatform(), true));
        }
      }
      if (hw.IssetDefaultRP()) platform_->setDefaultRPId(static_cast<unsigned int>(hw.GetDefaultRP()));
    }
    if (p.IssetSoftwarePlatforms())
      platform_->setSoftwarePlatformFile(
          filePath(file_, p.GetSoftwarePlatforms().GetSoftwarePlatform(), false));

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
