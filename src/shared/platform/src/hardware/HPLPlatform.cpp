#include "platform/HPLPlatform.h"

#include <algorithm>
#include <boost/property_tree/ptree.hpp>
#include <cstdlib>
#include <memory>

#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"
#include "json/JsonText.h"
#include "json/JsonTextWriter.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLInterface.h"
#include "platform/HPLMemory.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

namespace {

// The host architectures and interfaces, each value with its text.
const std::pair<HPLPlatform::HostArchType, const char*> HPLHostArchMap[] = {
    {HPLPlatform::HOST_ARCH_X86_64, "x86_64"},   {HPLPlatform::HOST_ARCH_ARMV7L, "armv7l"},
    {HPLPlatform::HOST_ARCH_PPC64LE, "ppc64le"}, {HPLPlatform::HOST_ARCH_AARCH64, "aarch64"},
    {HPLPlatform::HOST_ARCH_UNKNOWN, "unknown"},
};
const std::pair<HPLPlatform::HostInterfaceType, const char*> HPLHostInterfaceMap[] = {
    {HPLPlatform::HOST_INTERFACE_PCIE, "pcie"},
    {HPLPlatform::HOST_INTERFACE_AXI, "axi"},
    {HPLPlatform::HOST_INTERFACE_UNKNOWN, "unknown"},
};

std::string join(const std::vector<std::string>& values, const char* separator) {
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) text += separator;
    text += values[i];
  }
  return text;
}

void addUnique(std::vector<std::string>& values, const std::string& value) {
  if (std::find(values.begin(), values.end(), value) == values.end()) values.push_back(value);
}

std::string jsonTextOf(const HPLPlatform& platform) {
  teq_platform::JSONObjectWriter writer;
  platform.toJSON(writer);
  std::string text;
  zr_json::appendText(writer.getTree(), text);
  return text;
}

}  // namespace

HPLPlatform::HPLPlatform() = default;

HPLPlatform::~HPLPlatform() = default;

// ---- Host tables ----

HPLPlatform::HostArchType HPLPlatform::getHostArchType(const std::string& text) {
  for (const auto& entry : HPLHostArchMap) {
    if (entry.first != HOST_ARCH_UNKNOWN && HSTStringUtils::iequals(text, entry.second)) return entry.first;
  }
  return HOST_ARCH_UNKNOWN;
}

std::string HPLPlatform::getHostArchAsStr(HostArchType value) {
  for (const auto& entry : HPLHostArchMap) {
    if (entry.first == value) return entry.second;
  }
  return "unknown";
}

HPLPlatform::StringVector HPLPlatform::getHostArchTypesAsStr() {
  StringVector out;
  for (const auto& entry : HPLHostArchMap) {
    if (entry.first != HOST_ARCH_UNKNOWN) out.push_back(entry.second);
  }
  return out;
}

HPLPlatform::HostInterfaceType HPLPlatform::getHostInterfaceType(const std::string& text) {
  for (const auto& entry : HPLHostInterfaceMap) {
    if (entry.first != HOST_INTERFACE_UNKNOWN && HSTStringUtils::iequals(text, entry.second))
      return entry.first;
  }
  return HOST_INTERFACE_UNKNOWN;
}

std::string HPLPlatform::getHostInterfaceAsStr(HostInterfaceType value) {
  for (const auto& entry : HPLHostInterfaceMap) {
    if (entry.first == value) return entry.second;
  }
  return "unknown";
}

// ---- Identity ----

std::string HPLPlatform::getVersion() const {
  return std::to_string(versionMajor_) + "." + std::to_string(versionMinor_);
}

std::string HPLPlatform::getVBNVAsStr(const std::string& vendor, const std::string& board,
                                      const std::string& name, const std::string& version) {
  return vendor + ":" + board + ":" + name + ":" + version;
}

std::string HPLPlatform::getVBNV() const {
  return getVBNVAsStr(getVendor(), getBoardId(), getName(), getVersion());
}

std::string HPLPlatform::getUniqueName() const { return getVBNV(); }

std::string HPLPlatform::getPrettyName() const {
  if (getDesignIntent().getEmbedded()) return getName();
  return HSTStringUtils::toUpper(getBoardId()) + " (" + getName() + ")";
}

std::string HPLPlatform::getDeviceName() const {
  return getVendor() + "_" + getBoardId() + "_" + getName() + "_" + std::to_string(versionMajor_) + "_" +
         std::to_string(versionMinor_);
}

std::string HPLPlatform::getInterfaceDesc() const {
  const HTEQDesignIntentStorage& intent = getDesignIntent();
  if (!intent.getServerManaged() && !intent.getExternalHost()) return std::string();
  std::string desc = HSTStringUtils::iequals(getFpgaDevice(), "tzq9kp") ? "PCIe gen3x16" : "PCIe gen3x8";
  if (!interfaces_.empty()) {
    const HPLInterface* first = interfaces_.front();
    if (!first->getName().empty() && !first->getType().empty())
      desc = first->getName() + " " + first->getType();
  }
  return desc;
}

void HPLPlatform::getTargetCategories(StringVector& out) const { out.push_back("Acceleration"); }

void HPLPlatform::setComputedDesignIntent(HTEQDesignIntentStorage::Key key, bool value) {
  getDesignIntent().setComputedValue(key, value);
}

void HPLPlatform::setExplicitDesignIntent(HTEQDesignIntentStorage::Key key, bool value) {
  getDesignIntent().setExplicitValue(key, value);
}

// ---- Devices and cores ----

HPLDevice* HPLPlatform::addDevice() { return devices_.emplace(); }

HPLMemory* HPLPlatform::addMemory() { return memories_.emplace(); }

HPLInterface* HPLPlatform::addInterface() { return interfaces_.emplace(); }

HSTFwdIter<HPLDevice*>* HPLPlatform::createDeviceIter() const { return HSTCreateFwdIter(devices_.view()); }
HSTFwdIter<HPLMemory*>* HPLPlatform::createMemoryIter() const { return HSTCreateFwdIter(memories_.view()); }
HSTFwdIter<HPLInterface*>* HPLPlatform::createInterfaceIter() const {
  return HSTCreateFwdIter(interfaces_.view());
}
HSTFwdIter<HPLFile*>* HPLPlatform::createFileVecIter() const { return HSTCreateFwdIter(files_.view()); }

void HPLPlatform::getDevices(TEQDeviceVec& out) const {
  for (HPLDevice* d : devices_) out.push_back(d);
}

HPLDevice* HPLPlatform::getDevice(const std::string& name) const {
  for (HPLDevice* d : devices_) {
    if (d->getName() == name) return d;
  }
  return nullptr;
}

const HPLCore* HPLPlatform::firstCore_() const {
  // The first core of a platform is that of its device "fpga0".
  const HPLDevice* device = getDevice("fpga0");
  return device != nullptr ? &device->getReadOnlyCore() : nullptr;
}

unsigned int HPLPlatform::getNumComputeUnits() const {
  if (devices_.empty()) return 10;
  return devices_.back()->getReadOnlyCore().getNumComputeUnits();
}

int HPLPlatform::getRegisterCount() const {
  const HPLCore* core = firstCore_();
  if (core == nullptr) return 0;
  return static_cast<int>(std::strtol(core->getRegisterCount().c_str(), nullptr, 10));
}

void HPLPlatform::getValidSLRNames(StringVector& out) const {
  if (const HPLCore* core = firstCore_()) core->getValidSLRNames(out);
}

bool HPLPlatform::usesExpandedPR() const {
  const HPLCore* core = firstCore_();
  return core != nullptr && !core->getParentRMInstPath().empty();
}

std::string HPLPlatform::getOclInstPath() const {
  const HPLCore* core = firstCore_();
  return core != nullptr ? core->getInstPath() : std::string();
}

// ---- Memories ----

int HPLPlatform::getMemSizeInGb(unsigned int index) const {
  return HPLMemory::getMemSizeInGb(memories_.view(), index);
}

int HPLPlatform::getTotalMemSizeInGb() const {
  int total = 0;
  for (unsigned int i = 0; i < memories_.size(); ++i) total += getMemSizeInGb(i);
  return total;
}

std::string HPLPlatform::getMemSize() const {
  return HPLMemory::totalGbToText(memories_.empty() ? 0 : getTotalMemSizeInGb());
}

std::string HPLPlatform::getMemType() const {
  return memories_.empty() ? "ddr4" : memories_.front()->getType();
}

unsigned int HPLPlatform::getNumDDRs() const { return static_cast<unsigned int>(memories_.size()); }

// ---- Board ----

void HPLPlatform::getBoardImgZipEntries(StringVector& out) const {
  out.push_back(board_.getImgFileLdpi());
  out.push_back(board_.getImgFileMdpi());
  out.push_back(board_.getImgFileHdpi());
}

// ---- Files ----

HPLFile* HPLPlatform::addFile(const std::string& type, const std::string& name) {
  auto file = std::make_unique<HPLFile>();
  file->setType(type);
  file->setName(name);
  return files_.add(std::move(file));
}

std::string HPLPlatform::getFile(const std::string& name) const {
  // The last file of the type wins, so a later entry overrides an earlier one.
  std::string found;
  for (const HPLFile* f : files_) {
    if (HSTStringUtils::iequals(f->getType(), name)) found = f->getName();
  }
  return found;
}

std::string HPLPlatform::getFile(HTEQPfmFileTypes::FileType type) const {
  return getFile(HTEQPfmFileTypes::toString(type));
}

HPLFile* HPLPlatform::findFile(const std::string& type) const {
  for (HPLFile* f : files_) {
    if (f->getType() == type) return f;
  }
  return nullptr;
}

void HPLPlatform::removeFile(HPLFile* file) { files_.erase(file); }

void HPLPlatform::removeFileType(const std::string& type) {
  while (HPLFile* f = findFile(type)) removeFile(f);
}

void HPLPlatform::restoreFiles_(const std::vector<HPLFile>& files) {
  // The copies are made first, so a failed copy leaves the current list alone.
  HSTOwningVector<HPLFile> copies;
  for (const HPLFile& f : files) copies.emplace(f);
  files_.swap(copies);
}

std::string HPLPlatform::getXmlFile() const {
  return xmlFile_.empty() ? std::string() : HUTFile::getCanonicalName(xmlFile_);
}

std::string HPLPlatform::getDirectory() const {
  return xmlFile_.empty() ? std::string() : HUTPathUtils::getParent(xmlFile_);
}

void HPLPlatform::addValidBinaryContentValue(const std::string& value) {
  addUnique(validBinaryContentValues_, value);
}

void HPLPlatform::addValidOutputTypeValue(const std::string& value) {
  addUnique(validOutputTypeValues_, value);
}

std::string HPLPlatform::getValidBinaryContentValuesAsStr() const {
  return join(validBinaryContentValues_, ",");
}

std::string HPLPlatform::getValidOutputTypeValuesAsStr() const { return join(validOutputTypeValues_, ","); }

std::string HPLPlatform::getBoardRepo() const {
  const std::string& archive = getPlatformFile();
  if (archive.empty() || !HUTFile::exists(archive)) return std::string();
  const std::string repoPath = getFile("BOARD_REPO_PATH");
  if (repoPath.empty()) return std::string();
  try {
    const std::string tmpDir = HUTEnv::instance().getJUNTmpDir();
    HUTFile::ensureWritableDirectory(tmpDir);
    HUTZip::uncompressDir(archive, repoPath, tmpDir, true);
    const std::string unpacked = tmpDir + HUTFile::getSeparator() + repoPath;
    return HUTFile::exists(unpacked) ? unpacked : std::string();
  } catch (const HEXAll&) {
    // A damaged archive or an unwritable directory: the query has no answer.
    return std::string();
  }
}

std::string HPLPlatform::extMetaJsonMember_() const {
  const std::string member = getFile("META_JSON");
  return member.empty() ? getFile("EXT_META_JSON") : member;
}

std::string HPLPlatform::getExtMetaJsonAsString() const {
  const std::string member = extMetaJsonMember_();
  if (member.empty()) return std::string();
  std::string content;
  try {
    if (!HUTZip::readMember(getPlatformFile(), member, content)) return std::string();
  } catch (const HEXAll&) {
    return std::string();
  }
  return content;
}

void HPLPlatform::getExtMetaJsonAsPtree(boost::property_tree::ptree& tree) const {
  const std::string text = getExtMetaJsonAsString();
  if (text.empty()) return;
  HTEQJSONUtils::readJSON(text, tree, extMetaJsonMember_());
}

bool HPLPlatform::isEquals(const HPLPlatform& other) const {
  return HSTStringUtils::iequals(jsonTextOf(*this), jsonTextOf(other));
}

// ---- JSON ----

void HPLPlatform::toJSON(teq_platform::JSONObjectWriter& writer) const { writeJSON_(writer); }

template <class Writer>
void HPLPlatform::writeJSON_(Writer& writer) const {
  // Everything that can fail is settled before the first key is written, so a
  // refused platform leaves the caller's writer as it was.
  std::unique_ptr<HSTFwdIter<HPLDriver*>> drivers(board_.createDriverIter());
  if (drivers->hasNext()) {
    throw HEXAlgException("The hardware platform '" + getVBNV() +
                          "' cannot be written as JSON: its board has drivers, which have no JSON form, and "
                          "writing them would recurse without end.");
  }
  boost::property_tree::ptree extensions;
  getExtMetaJsonAsPtree(extensions);

  writer.addKey("versionMajor", std::to_string(versionMajor_));
  writer.addKey("versionMinor", std::to_string(versionMinor_));
  if (usesPR()) {
    writer.addKey("hostArchitecture", getHostArch());
    writer.addKey("hostInterface", getHostInterface());
  }
  writer.addKey("usesPR", usesPR());
  writer.addKey("platformState", getPlatformState());
  writer.addKey("topModuleName", topModuleName_);
  writer.addKey("acceleratorBinaryFormat", acceleratorBinaryFormat_);
  writer.addKey("acceleratorBinaryContent", acceleratorBinaryContent_);
  writer.addKey("validAcceleratorBinaryContentValues", getValidBinaryContentValuesAsStr());
  writer.addKey("zuncCompileXPSwitches", compileSwitches_);
  writer.addKey("zuncLinkXPSwitches", linkSwitches_);
  writer.addKey("dcpFunctionStripped", dcpFuncStripped_);
  writer.addKey("dcpEncrypted", dcpEncrypt_);
  writer.addKey("defaultOutputType", defaultOutputType_);
  // The intent storage writes its own "designIntent" key.
  writer.writeObject(getDesignIntent());
  writer.addKey("board", &board_);

  auto devices = teq_platform::listFor(writer);
  for (const HPLDevice* d : devices_) devices.addItem(d);
  writer.addKey("devices", std::move(devices));
  auto interfaces = teq_platform::listFor(writer);
  for (const HPLInterface* i : interfaces_) interfaces.addItem(i);
  writer.addKey("interfaces", std::move(interfaces));
  auto memories = teq_platform::listFor(writer);
  for (const HPLMemory* m : memories_) memories.addItem(m);
  writer.addKey("memories", std::move(memories));
  auto files = teq_platform::listFor(writer);
  for (const HPLFile* f : files_) files.addItem(f);
  writer.addKey("files", std::move(files));
  if (!extensions.empty()) writer.addKey("extensions", extensions);

  HTEQHardwarePlatform::writeJSON_(writer);
}

template void HPLPlatform::writeJSON_(teq_platform::TextObjectWriter&) const;
