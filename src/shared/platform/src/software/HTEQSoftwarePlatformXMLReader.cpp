#include "platform/HTEQSoftwarePlatformXMLReader.h"

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HSTStringUtils.h"
#include "host/HUTConsole.h"
#include "host/HUTPathUtils.h"
#include "platform/HTEQBootImg.h"
#include "platform/HTEQProcessorGroup.h"
#include "platform/HTEQSoftwarePlatform.h"
#include "platform/HTEQSystemConfig.h"
#include "software/TEQSoftwarePlatformLMX.h"

namespace {

std::string text(const std::wstring& s) { return HI18N::convert(s); }

// Calls the setter with the attribute's text when the document set it.
template <class Target>
void setIfSet(Target* target, void (Target::*setter)(const std::string&), bool isSet,
              const std::wstring& value) {
  if (isSet) (target->*setter)(text(value));
}

// The XML layer puts "file:line: " in front of its reason; the reader's text
// names both itself, so the reason is kept alone.
std::string reasonOf(const HXMLException& e, const std::string& file) {
  const std::string prefix = file + ":" + std::to_string(e.getLineNumber()) + ": ";
  const std::string& full = e.getText();
  return HSTStringUtils::startsWith(full, prefix) ? full.substr(prefix.size()) : full;
}

}  // namespace

HTEQSoftwarePlatformXMLReader::HTEQSoftwarePlatformXMLReader(const std::string& file,
                                                             HTEQSoftwarePlatform* platform)
    : file_(file), platform_(platform) {
  if (!HUTPathUtils::exists(file_)) throw HEXFileNotFoundException(file_);
}

bool HTEQSoftwarePlatformXMLReader::parseFile() {
  errorMsg_.clear();
  try {
    const TEQSoftwarePlatform::Platform records = TEQSoftwarePlatform::unmarshalFile(file_);
    parsePlatform_(records);
  } catch (const HXMLException& e) {
    const std::string line = std::to_string(e.getLineNumber());
    const std::string reason = reasonOf(e, file_);
    HUTConsole::out("Error parsing software platform file: " + file_ + "\nLine number:" + line + ". " +
                    reason + "\n");
    errorMsg_ = "Error parsing software platform file: " + file_ + "\nLine number:" + line + ". " + reason;
    ZR_SEND_MSG("@74-51@%s%d", ComMsgMask::kError, file_, e.getLineNumber());
    return false;
  }
  return true;
}

void HTEQSoftwarePlatformXMLReader::parsePlatform_(const TEQSoftwarePlatform::Platform& platform) {
  // Vendor, library, name, version and description of the root identify the
  // file; the model takes nothing from them, only from the configurations.
  parseSystemConfigurations_(platform.GetSystemConfigurations());
}

void HTEQSoftwarePlatformXMLReader::parseSystemConfigurations_(
    const TEQSoftwarePlatform::SystemConfigurations& configs) {
  if (platform_ == nullptr) return;
  platform_->setDefaultConfigName(text(configs.GetDefaultConfiguration()));
  for (std::size_t i = 0; i < configs.SizeConfiguration(); ++i)
    parseConfiguration_(configs.GetConfiguration(i));
}

void HTEQSoftwarePlatformXMLReader::parseConfiguration_(const TEQSoftwarePlatform::Configuration& config) {
  HTEQSystemConfig* sc = platform_->addSystemConfig();
  sc->setName(text(config.GetName()));
  sc->setPrettyName(text(config.GetDisplayName()));
  sc->setDesc(text(config.GetDescription()));
  if (config.IssetPrebuilt()) sc->setPrebuiltData(text(config.GetPrebuilt().GetData()));
  if (config.IssetDefaultProcessorGroup()) sc->setDefaultProcGrpName(text(config.GetDefaultProcessorGroup()));
  if (config.IssetRuntimes()) {
    // Every piece counts, an empty one between two commas included.
    for (const std::string& runtime : HSTStringUtils::split(text(config.GetRuntimes()), ','))
      sc->addRuntime(runtime);
  }

  for (std::size_t i = 0; i < config.SizeProcessorGroup(); ++i) {
    const TEQSoftwarePlatform::ProcessorGroup& group = config.GetProcessorGroup(i);
    HTEQProcessorGroup* pg = sc->addProcessorGroup();
    pg->setName(text(group.GetName()));
    pg->setPrettyName(text(group.GetDisplayName()));
    pg->setCpuType(text(group.GetCpuType()));
    setIfSet(pg, &HTEQProcessorGroup::setArch, group.IssetArchitecture(), group.GetArchitecture());
    setIfSet(pg, &HTEQProcessorGroup::setCpuInstance, group.IssetCpuInstance(), group.GetCpuInstance());
    const TEQSoftwarePlatform::Os& os = group.GetOs();
    pg->setOSName(text(os.GetName()));
    pg->setOSPrettyName(text(os.GetDisplayName()));
    setIfSet(pg, &HTEQProcessorGroup::setIncludePaths, os.IssetIncludePaths(), os.GetIncludePaths());
    setIfSet(pg, &HTEQProcessorGroup::setLibraryPaths, os.IssetLibraryPaths(), os.GetLibraryPaths());
    setIfSet(pg, &HTEQProcessorGroup::setSysRoot, os.IssetSysRoot(), os.GetSysRoot());
    setIfSet(pg, &HTEQProcessorGroup::setBSPLibraryPaths, os.IssetBspLibraryPaths(), os.GetBspLibraryPaths());
    setIfSet(pg, &HTEQProcessorGroup::setBSPIncludePaths, os.IssetBspIncludePaths(), os.GetBspIncludePaths());
    setIfSet(pg, &HTEQProcessorGroup::setCompilerOptions, os.IssetCompilerOptions(), os.GetCompilerOptions());
    setIfSet(pg, &HTEQProcessorGroup::setLinkerOptions, os.IssetLinkerOptions(), os.GetLinkerOptions());
    if (os.IssetHypervisorGuest() && HSTStringUtils::iequals(text(os.GetHypervisorGuest()), "yes"))
      pg->setHypervisorGuest(true);
  }

  if (config.IssetBootImages()) {
    const TEQSoftwarePlatform::Image& image = config.GetBootImages().GetImage();
    sc->setDefaultBootImgName(text(config.GetBootImages().GetDefault()));
    HTEQBootImg* img = sc->addBootImg();
    img->setName(text(image.GetName()));
    img->setBif(text(image.GetBif()));
    img->setReadMe(text(image.GetReadme()));
    setIfSet(img, &HTEQBootImg::setType, image.IssetType(), image.GetType());
    setIfSet(img, &HTEQBootImg::setImgData, image.IssetImageData(), image.GetImageData());
    setIfSet(img, &HTEQBootImg::setRootFS, image.IssetRootfs(), image.GetRootfs());
    setIfSet(img, &HTEQBootImg::setBootMode, image.IssetBootmode(), image.GetBootmode());
    setIfSet(img, &HTEQBootImg::setMountPath, image.IssetMountPath(), image.GetMountPath());
    setIfSet(img, &HTEQBootImg::setQemuArgs, image.IssetQemuArguments(), image.GetQemuArguments());
    setIfSet(img, &HTEQBootImg::setQemuBoot, image.IssetQemuBoot(), image.GetQemuBoot());
    setIfSet(img, &HTEQBootImg::setQemuDevTree, image.IssetQemuDevicetree(), image.GetQemuDevicetree());
    // QEMU support is no attribute of its own: an image that says how to run
    // under QEMU makes its configuration QEMU-capable.
    if (image.IssetQemuArguments() || image.IssetQemuBoot() || image.IssetQemuDevicetree())
      sc->setSupportsQemu(true);
    setIfSet(img, &HTEQBootImg::setHwBootBin, image.IssetHwBootBin(), image.GetHwBootBin());
  }
}
