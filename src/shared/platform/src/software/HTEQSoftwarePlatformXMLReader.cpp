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

using TEQSoftwarePlatform::Attribute;

std::string text(const Attribute& a) { return HI18N::convert(a.get()); }
std::string text(const std::wstring& s) { return HI18N::convert(s); }

// Calls the setter with the attribute's text when the document set it.
template <class Target>
void setIfSet(Target* target, void (Target::*setter)(const std::string&), const Attribute& a) {
  if (a.isSet()) (target->*setter)(text(a));
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
  parseSystemConfigurations_(platform.systemConfigurations);
}

void HTEQSoftwarePlatformXMLReader::parseSystemConfigurations_(
    const TEQSoftwarePlatform::SystemConfigurations& configs) {
  if (platform_ == nullptr) return;
  platform_->setDefaultConfigName(text(configs.defaultConfiguration));
  for (const auto& config : configs.configurations) parseConfiguration_(config);
}

void HTEQSoftwarePlatformXMLReader::parseConfiguration_(const TEQSoftwarePlatform::Configuration& config) {
  HTEQSystemConfig* sc = platform_->addSystemConfig();
  sc->setName(text(config.name));
  sc->setPrettyName(text(config.displayName));
  sc->setDesc(text(config.description));
  if (config.prebuilt) sc->setPrebuiltData(text(config.prebuilt->data));
  if (config.defaultProcessorGroup.isSet()) sc->setDefaultProcGrpName(text(config.defaultProcessorGroup));
  if (config.runtimes.isSet()) {
    // Every piece counts, an empty one between two commas included.
    for (const std::string& runtime : HSTStringUtils::split(text(config.runtimes), ','))
      sc->addRuntime(runtime);
  }

  for (const auto& group : config.processorGroups) {
    HTEQProcessorGroup* pg = sc->addProcessorGroup();
    pg->setName(text(group.name));
    pg->setPrettyName(text(group.displayName));
    pg->setCpuType(text(group.cpuType));
    setIfSet(pg, &HTEQProcessorGroup::setArch, group.architecture);
    setIfSet(pg, &HTEQProcessorGroup::setCpuInstance, group.cpuInstance);
    const auto& os = group.os;
    pg->setOSName(text(os.name));
    pg->setOSPrettyName(text(os.displayName));
    setIfSet(pg, &HTEQProcessorGroup::setIncludePaths, os.includePaths);
    setIfSet(pg, &HTEQProcessorGroup::setLibraryPaths, os.libraryPaths);
    setIfSet(pg, &HTEQProcessorGroup::setSysRoot, os.sysRoot);
    setIfSet(pg, &HTEQProcessorGroup::setBSPLibraryPaths, os.bspLibraryPaths);
    setIfSet(pg, &HTEQProcessorGroup::setBSPIncludePaths, os.bspIncludePaths);
    setIfSet(pg, &HTEQProcessorGroup::setCompilerOptions, os.compilerOptions);
    setIfSet(pg, &HTEQProcessorGroup::setLinkerOptions, os.linkerOptions);
    if (os.hypervisorGuest.isSet() && HSTStringUtils::iequals(text(os.hypervisorGuest), "yes"))
      pg->setHypervisorGuest(true);
  }

  if (config.bootImages) {
    const auto& image = config.bootImages->image;
    sc->setDefaultBootImgName(text(config.bootImages->defaultImage));
    HTEQBootImg* img = sc->addBootImg();
    img->setName(text(image.name));
    img->setBif(text(image.bif));
    img->setReadMe(text(image.readme));
    setIfSet(img, &HTEQBootImg::setType, image.type);
    setIfSet(img, &HTEQBootImg::setImgData, image.imageData);
    setIfSet(img, &HTEQBootImg::setRootFS, image.rootfs);
    setIfSet(img, &HTEQBootImg::setBootMode, image.bootmode);
    setIfSet(img, &HTEQBootImg::setMountPath, image.mountPath);
    setIfSet(img, &HTEQBootImg::setQemuArgs, image.qemuArguments);
    setIfSet(img, &HTEQBootImg::setQemuBoot, image.qemuBoot);
    setIfSet(img, &HTEQBootImg::setQemuDevTree, image.qemuDevicetree);
    // QEMU support is no attribute of its own: an image that says how to run
    // under QEMU makes its configuration QEMU-capable.
    if (image.qemuArguments.isSet() || image.qemuBoot.isSet() || image.qemuDevicetree.isSet())
      sc->setSupportsQemu(true);
    setIfSet(img, &HTEQBootImg::setHwBootBin, image.hwBootBin);
  }
}
