#include "platform/HTEQProcessorGroup.h"

#include "platform/JSONObjectWriter.h"

HTEQProcessorGroup::HTEQProcessorGroup() = default;
HTEQProcessorGroup::~HTEQProcessorGroup() = default;

void HTEQProcessorGroup::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("prettyName", prettyName_);
  writer.addKey("cpuType", cpuType_);
  writer.addKey("cpuInstance", cpuInstance_);
  writer.addKey("osPrettyName", osPrettyName_);
  writer.addKey("osName", osName_);
  writer.addKey("osIncludePaths", includePaths_);
  writer.addKey("osLibraryPaths", libraryPaths_);
  writer.addKey("osCompilerOptions", compilerOptions_);
  writer.addKey("osLinkerOptions", linkerOptions_);
  writer.addKey("osHypervisorGuest", hypervisorGuest_);
  writer.addKey("osBSPIncludePaths", bspIncludePaths_);
  writer.addKey("osBSPLibraryPaths", bspLibraryPaths_);
  writer.addKey("osSysRoot", sysRoot_);
}

std::string HTEQProcessorGroup::getName() const { return name_; }
std::string HTEQProcessorGroup::getPrettyName() const { return prettyName_; }
std::string HTEQProcessorGroup::getCpuType() const { return cpuType_; }
std::string HTEQProcessorGroup::getArch() const { return arch_; }
std::string HTEQProcessorGroup::getCpuInstance() const { return cpuInstance_; }
std::string HTEQProcessorGroup::getOSName() const { return osName_; }
bool HTEQProcessorGroup::IsHypervisorGuest() const { return hypervisorGuest_; }
std::string HTEQProcessorGroup::getOSPrettyName() const { return osPrettyName_; }
std::string HTEQProcessorGroup::getIncludePaths() const { return includePaths_; }
std::string HTEQProcessorGroup::getLibraryPaths() const { return libraryPaths_; }
std::string HTEQProcessorGroup::getBSPIncludePaths() const { return bspIncludePaths_; }
std::string HTEQProcessorGroup::getBSPLibraryPaths() const { return bspLibraryPaths_; }
std::string HTEQProcessorGroup::getCompilerOptions() const { return compilerOptions_; }
std::string HTEQProcessorGroup::getLinkerOptions() const { return linkerOptions_; }
std::string HTEQProcessorGroup::getSysRoot() const { return sysRoot_; }

void HTEQProcessorGroup::setName(const std::string& v) { name_ = v; }
void HTEQProcessorGroup::setPrettyName(const std::string& v) { prettyName_ = v; }
void HTEQProcessorGroup::setCpuType(const std::string& v) { cpuType_ = v; }
void HTEQProcessorGroup::setArch(const std::string& v) { arch_ = v; }
void HTEQProcessorGroup::setCpuInstance(const std::string& v) { cpuInstance_ = v; }
void HTEQProcessorGroup::setOSName(const std::string& v) { osName_ = v; }
void HTEQProcessorGroup::setOSPrettyName(const std::string& v) { osPrettyName_ = v; }
void HTEQProcessorGroup::setIncludePaths(const std::string& v) { includePaths_ = v; }
void HTEQProcessorGroup::setLibraryPaths(const std::string& v) { libraryPaths_ = v; }
void HTEQProcessorGroup::setBSPIncludePaths(const std::string& v) { bspIncludePaths_ = v; }
void HTEQProcessorGroup::setBSPLibraryPaths(const std::string& v) { bspLibraryPaths_ = v; }
void HTEQProcessorGroup::setCompilerOptions(const std::string& v) { compilerOptions_ = v; }
void HTEQProcessorGroup::setLinkerOptions(const std::string& v) { linkerOptions_ = v; }
void HTEQProcessorGroup::setSysRoot(const std::string& v) { sysRoot_ = v; }
void HTEQProcessorGroup::setHypervisorGuest(bool v) { hypervisorGuest_ = v; }
