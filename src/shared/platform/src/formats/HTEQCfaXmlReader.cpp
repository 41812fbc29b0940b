#include "platform/HTEQCfaXmlReader.h"

#include <algorithm>
#include <boost/iostreams/filtering_stream.hpp>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <ios>
#include <memory>
#include <vector>

#include "archives/ArchiveMemberCache.h"
#include "emulation/HTEQEmulationCfaMember.h"
#include "formats/TEQCfaXmlLMX.h"
#include "formats/TEQHpfmLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HSTStringUtils.h"
#include "host/HUTConsole.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "platform/HPLAddressSegment.h"
#include "platform/HPLBoard.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLInterface.h"
#include "platform/HPLMemory.h"
#include "platform/HPLPCIeId.h"
#include "platform/HPLPlatform.h"
#include "platform/HPLPort.h"
#include "platform/HTEQDesignIPInstance.h"
#include "platform/HTEQDesignIntentStorage.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationXMLReader.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQHpfmReader.h"

namespace {

std::string text(const std::wstring& s) { return HI18N::convert(s); }

// A yes/no attribute counts as yes only when present and "true" in any case.
bool isTrue(bool isSet, const std::wstring& value) {
  return isSet && HSTStringUtils::iequals(text(value), "true");
}

// Calls the setter with the attribute's text when the document carries it.
template <class Target, class Owner>
void setIfSet(Target& target, void (Owner::*setter)(const std::string&), bool isSet,
              const std::wstring& value) {
  if (isSet) (target.*setter)(text(value));
}

// The feature ROM keeps names in 64 bytes with a terminating zero: the text is
// cut to its first 63 bytes.
void toRomName(const std::string& name, unsigned char (&bytes)[HTEQHardwareFeatureRom::kNameSize]) {
  std::memset(bytes, 0, sizeof bytes);
  std::memcpy(bytes, name.data(), std::min<std::size_t>(name.size(), sizeof bytes - 1));
}

// A resource count handed to the platform as a number, read as strtol reads it.
int countOf(const std::string& value) { return static_cast<int>(std::strtol(value.c_str(), nullptr, 10)); }

// An hpfm member as this reader reads it: whether it could be read, its text,
// and its document when the text parses.
struct HpfmMember {
  bool read = false;
  std::string text;
  std::unique_ptr<WELHardwarePlatform::Repository> document;
};
const char kHpfmKind[] = "xml route hpfm";

}  // namespace

HTEQCfaXmlReader::HTEQCfaXmlReader(const std::string& file, HPLPlatform* platform)
    : file_(file),
      platform_(platform),
      ownCache_(std::make_shared<ArchiveMemberCache>()),
      cache_(ownCache_.get()) {
  if (file_.empty() || !HUTPathUtils::exists(file_)) throw HEXFileNotFoundException(file_);
}

void HTEQCfaXmlReader::setMemberCache(ArchiveMemberCache* cache) {
  cache_ = cache != nullptr ? cache : ownCache_.get();
}

bool HTEQCfaXmlReader::readMember_(const std::string& member, std::string& content, std::string* why) const {
  content.clear();
  isl::iostreams::device::file_source source(member, file_, std::ios_base::in | std::ios_base::binary);
  if (!source.is_open()) {
    if (why != nullptr) *why = source.error();
    return false;
  }
  boost::iostreams::filtering_istream in;
  in.push(source);
  // A damaged member stops the read with badbit; what was read so far is dropped.
  try {
    content = isl::iostreams::read_metadata(in, member);
  } catch (const HEXAll& e) {
    if (why != nullptr) *why = e.getText();
    return false;
  }
  if (in.bad()) {
    content.clear();
    if (why != nullptr) *why = source.error().empty() ? "the member could not be read" : source.error();
    return false;
  }
  return true;
}

bool HTEQCfaXmlReader::unmarshal_(const std::string& member, BasePlatform::Root& root) {
  std::string content;
  std::string why;
  // A member that cannot be read (missing, damaged, past a size or ratio limit)
  // is reported with the archive layer's reason rather than as an empty document.
  if (!readMember_(member, content, &why)) {
    errorMsg_ = why;
    ZR_SEND_MSG("@74-62@%s%s%d", ComMsgMask::kCriticalWarning, why, file_ + HUTFile::getSeparator() + member,
                0);
    return false;
  }
  try {
    root.Unmarshal(content.data(), content.size());
  } catch (const HXMLException& e) {
    errorMsg_ = e.getText();
    ZR_SEND_MSG("@74-62@%s%s%d", ComMsgMask::kCriticalWarning, e.getText(),
                file_ + HUTFile::getSeparator() + member, e.getLineNumber());
    return false;
  }
  return true;
}

std::string HTEQCfaXmlReader::xmlMemberName_() {
  if (platform_ == nullptr) throw HEXAlgException("no hardware platform was given to fill");
  platform_->setPlatformFile(HUTFile::getCanonicalName(file_));
  return platform_->getXmlFileName();
}

bool HTEQCfaXmlReader::parseCFA() {
  errorMsg_.clear();
  std::string member;
  try {
    member = xmlMemberName_();
    BasePlatform::Root root;
    if (!unmarshal_(member, root)) return false;

    std::string refusal;
    if (!canCfaBeOpened_(root, refusal)) {
      errorMsg_ = refusal;
      ZR_SEND_MSG("@74-52@%s", ComMsgMask::kError, refusal);
      return false;
    }
    parseRoot_(root);
  } catch (const std::exception& e) {
    errorMsg_ = e.what();
    ZR_SEND_MSG("@74-65@%s%s%s", ComMsgMask::kCriticalWarning, member, file_, errorMsg_);
    return false;
  }
  return true;
}

bool HTEQCfaXmlReader::getRootVersion(int& major, int& minor) {
  errorMsg_.clear();
  std::string member;
  try {
    member = xmlMemberName_();
    BasePlatform::Root root;
    if (!unmarshal_(member, root)) return false;
    major = static_cast<int>(root.GetVersionMajor());
    minor = static_cast<int>(root.GetVersionMinor());
  } catch (const std::exception& e) {
    errorMsg_ = e.what();
    ZR_SEND_MSG("@74-62@%s%s%d", ComMsgMask::kCriticalWarning, errorMsg_,
                file_ + HUTFile::getSeparator() + member, 0);
    return false;
  }
  return true;
}

bool HTEQCfaXmlReader::canCfaBeOpened_(const BasePlatform::Root& root, std::string& error) const {
  const BasePlatform::Build& build = root.GetCFA().GetBuild();
  // A platform before synthesis is opened whatever format version it claims.
  if (build.IssetPlatformState() && HSTStringUtils::iequals(text(build.GetPlatformState()), "pre_synth"))
    return true;
  // Only the major number counts; both are compared as signed 32-bit numbers.
  const int current = static_cast<int>(BasePlatform::Root().GetVersionMajor());
  const int found = static_cast<int>(static_cast<std::int32_t>(root.GetVersionMajor()));
  if (found <= current) return true;
  error = "Hardware Platform '" + file_ + "' (version " + std::to_string(found) +
          ") is newer than the current version " + std::to_string(current) + " (" +
          HUTEnv::instance().getFullBuildStr() + ")";
  return false;
}

void HTEQCfaXmlReader::parseRoot_(const BasePlatform::Root& root) {
  // Without GenAppInfo the generator fields stay empty and the change list 0:
  // the const getter hands out an empty record.
  parseGenAppData_(root.GetGenAppInfo());
  parseCFA_(root.GetCFA());
}

void HTEQCfaXmlReader::parseGenAppData_(const BasePlatform::GenAppInfo& info) {
  platform_->setGeneratedName(text(info.GetName()));
  platform_->setGeneratedVersion(text(info.GetVersion()));
  // The model keeps 32 bits of the change list; the file's value is cut to them.
  platform_->setGeneratedChangeList(static_cast<unsigned int>(info.GetCL() & 0xffffffffu));
  platform_->setGeneratedTimestamp(text(info.GetTimeStamp()));
}

void HTEQCfaXmlReader::parseCFA_(const BasePlatform::CFA& cfa) {
  platform_->setVendor(text(cfa.GetVendor()));
  platform_->setBoardId(text(cfa.GetBoardId()));
  platform_->setName(text(cfa.GetName()));
  platform_->setVersionMajor(cfa.GetVersionMajor());
  platform_->setVersionMinor(cfa.GetVersionMinor());
  platform_->setDescription(text(cfa.GetDescription()));
  // An unset timestamp reads 0.
  platform_->setOldFeatureRomTime(cfa.GetFeatureRomTimestamp());

  if (cfa.IssetDcpLogicFunctionStripped())
    platform_->setDcpFuncStripped(isTrue(true, cfa.GetDcpLogicFunctionStripped()));
  if (cfa.IssetDcpEncrypt()) platform_->setDcpEncrypt(isTrue(true, cfa.GetDcpEncrypt()));
  if (cfa.IssetUnified()) platform_->setUnifiedPlatform(isTrue(true, cfa.GetUnified()));

  if (cfa.IssetFixed()) {
    platform_->setExpandable(!isTrue(true, cfa.GetFixed()));
  } else {
    // Without the flag, a platform that brings its own hardware definition is fixed.
    const bool hasDefinition =
        HUTZip::containsFile(file_, "hwdef.xml") || HUTZip::containsFile(file_, "sysdef.xml");
    platform_->setExpandable(!hasDefinition);
  }
  setIfSet(*platform_, &HPLPlatform::setDefaultOutputType, cfa.IssetDefaultOutputType(),
           cfa.GetDefaultOutputType());

  if (cfa.IssetHost()) parseHost_(cfa.GetHost());
  parseBuild_(cfa.GetBuild());
  parseBoard_(platform_->getBoard(), cfa.GetBoard());
  parseDevices_(cfa.GetDevices());
  parseFiles_(cfa.GetFiles());
  if (cfa.IssetFeatureRom()) parseFeatureRom_(cfa.GetFeatureRom());
  if (cfa.IssetDesignIPs()) parseDesignIPs_(cfa.GetDesignIPs());
}

void HTEQCfaXmlReader::parseHost_(const BasePlatform::Host& host) {
  platform_->setHostArch(text(host.GetArchitecture()));
  if (host.IssetInterface()) platform_->setHostInterface(text(host.GetInterface()));
}

void HTEQCfaXmlReader::parseBuild_(const BasePlatform::Build& build) {
  setIfSet(*platform_, &HTEQHardwarePlatform::setPlatformState, build.IssetPlatformState(),
           build.GetPlatformState());

  // A platform built for partial reconfiguration is a data-center card driven
  // by a host; any other is taken for an embedded design.
  const bool usesPR = isTrue(build.IssetUsesPR(), build.GetUsesPR());
  platform_->setComputedDesignIntent(HTEQDesignIntentStorage::dataCenter, usesPR);
  platform_->setComputedDesignIntent(HTEQDesignIntentStorage::embedded, !usesPR);
  platform_->setComputedDesignIntent(HTEQDesignIntentStorage::externalHost, usesPR);
  platform_->setComputedDesignIntent(HTEQDesignIntentStorage::serverManaged, usesPR);
  if (build.IssetUsesPR()) platform_->setUsesPR(usesPR);

  setIfSet(*platform_, &HPLPlatform::setTopModuleName, build.IssetTopModuleName(), build.GetTopModuleName());
  // A static synthesis checkpoint means the shell is synthesized, whatever the
  // value and whatever state was given above.
  if (build.IssetStaticSynthCheckpoint()) platform_->setPlatformState("synth");
  setIfSet(*platform_, &HPLPlatform::setAcceleratorBinaryFormat, build.IssetAcceleratorBinaryFormat(),
           build.GetAcceleratorBinaryFormat());
  setIfSet(*platform_, &HPLPlatform::setAcceleratorBinaryContent, build.IssetAcceleratorBinaryContent(),
           build.GetAcceleratorBinaryContent());

  if (build.IssetValidBinaryContentValues()) {
    // Every piece counts, an empty one between two commas included.
    for (const std::string& value : HSTStringUtils::split(text(build.GetValidBinaryContentValues()), ','))
      platform_->addValidBinaryContentValue(value);
  } else {
    platform_->addValidBinaryContentValue("dcp");
    platform_->addValidBinaryContentValue("bitstream");
  }

  // Only the switch values reach the tools; their names are labels.
  if (build.IssetZuncCompileSwitches()) {
    const BasePlatform::ZuncCompileSwitches& switches = build.GetZuncCompileSwitches();
    for (std::size_t i = 0; i < switches.SizeZuncCompileSwitch(); ++i)
      platform_->addZuncCompileXpSwitch(text(switches.GetZuncCompileSwitch(i).GetValue()));
  }
  if (build.IssetZuncLinkSwitches()) {
    const BasePlatform::ZuncLinkSwitches& switches = build.GetZuncLinkSwitches();
    for (std::size_t i = 0; i < switches.SizeZuncLinkSwitch(); ++i)
      platform_->addZuncLinkXpSwitch(text(switches.GetZuncLinkSwitch(i).GetValue()));
  }
}

void HTEQCfaXmlReader::parseBoard_(HPLBoard& board, const BasePlatform::Board& record) {
  board.setName(text(record.GetName()));
  board.setVendor(text(record.GetVendor()));
  board.setPart(text(record.GetPart()));
  setIfSet(board, &HPLBoard::setBoardPart, record.IssetBoardPart(), record.GetBoardPart());

  // Interfaces, memories and connectors are read only when the board lists
  // them, so that a board without interfaces gets no empty one.
  if (record.IssetInterfaces()) parseInterfaces_(record.GetInterfaces());
  if (record.IssetMemories()) parseMemories_(record.GetMemories());
  if (record.IssetConnectors()) parseConnectors_(board, record.GetConnectors());
  parseImages_(board, record.GetImages());

  if (record.IssetPCIeId()) {
    const BasePlatform::PCIeId& ids = record.GetPCIeId();
    HPLPCIeId& pcie = board.getWriteablePCIeId();
    pcie.setDevice(text(ids.GetDevice()));
    pcie.setVendor(text(ids.GetVendor()));
    pcie.setSubsystem(text(ids.GetSubsystem()));
    setIfSet(pcie, &HPLPCIeId::setFeatureId, ids.IssetFeatureId(), ids.GetFeatureId());
  }
  // The host drivers are not part of this model's reading of the board.
}

void HTEQCfaXmlReader::parseInterfaces_(const BasePlatform::Interfaces& interfaces) {
  const BasePlatform::Interface& record = interfaces.GetInterface();
  HPLInterface* interface = platform_->addInterface();
  interface->setId(text(record.GetId()));
  interface->setType(text(record.GetType()));
  interface->setName(text(record.GetName()));
}

void HTEQCfaXmlReader::parseMemories_(const BasePlatform::Memories& memories) {
  for (std::size_t i = 0; i < memories.SizeMemory(); ++i) {
    const BasePlatform::Memory& record = memories.GetMemory(i);
    HPLMemory* memory = platform_->addMemory();
    memory->setName(text(record.GetName()));
    // The type comes before the parameters: it decides which names a memory keeps.
    memory->setType(text(record.GetType()));
    memory->setSize(text(record.GetSize()));
    memory->setHighestAddress(static_cast<std::uint64_t>(record.GetHighestAddress()));
    memory->setLowestAddress(static_cast<std::uint64_t>(record.GetLowestAddress()));
    if (!record.IssetConfig()) continue;
    const BasePlatform::Config& config = record.GetConfig();
    for (std::size_t p = 0; p < config.SizeParam(); ++p)
      memory->addConfigParam(text(config.GetParam(p).GetName()), text(config.GetParam(p).GetValue()));
  }
}

void HTEQCfaXmlReader::parseConnectors_(HPLBoard& board, const BasePlatform::Connectors& connectors) {
  for (std::size_t i = 0; i < connectors.SizeConnector(); ++i) {
    const BasePlatform::Connector& c = connectors.GetConnector(i);
    const std::string connectedName = text(c.GetConnectedConnector());
    const bool connected = c.IssetConnectedConnector() && !connectedName.empty();
    board.addDimmConnector(text(c.GetName()), text(c.GetDisplayName()), text(c.GetType()), connectedName,
                           text(c.GetConnectedConnectorDisplayName()), connected,
                           isTrue(c.IssetIsLocked(), c.GetIsLocked()));
  }
}

void HTEQCfaXmlReader::parseImages_(HPLBoard& board, const BasePlatform::Images& images) {
  // Image types are matched exactly; any other type is not a board image.
  for (std::size_t i = 0; i < images.SizeImg(); ++i) {
    const std::string type = text(images.GetImg(i).GetType());
    const std::string file = text(images.GetImg(i).GetFile());
    if (type == "HDPI")
      board.setImgFileHdpi(file);
    else if (type == "MDPI")
      board.setImgFileMdpi(file);
    else if (type == "LDPI")
      board.setImgFileLdpi(file);
  }
}

void HTEQCfaXmlReader::parseDevices_(const BasePlatform::Devices& devices) {
  for (std::size_t i = 0; i < devices.SizeDevice(); ++i)
    parseDevice_(*platform_->addDevice(), devices.GetDevice(i));
}

void HTEQCfaXmlReader::parseDevice_(HPLDevice& device, const BasePlatform::Device& record) {
  device.setName(text(record.GetName()));
  device.setType(text(record.GetType()));
  if (record.IssetFpgaDevice()) device.setFpgaPart(text(record.GetFpgaDevice()));
  if (record.IssetSystemClocks()) {
    const BasePlatform::SystemClocks& clocks = record.GetSystemClocks();
    for (std::size_t i = 0; i < clocks.SizeSystemClock(); ++i)
      device.addSystemClock(text(clocks.GetSystemClock(i).GetName()),
                            text(clocks.GetSystemClock(i).GetFrequency()));
  }
  parseCore_(device.getCore(), record.GetCore());
}

void HTEQCfaXmlReader::parseCore_(HPLCore& core, const BasePlatform::Core& record) {
  core.setName(text(record.GetName()));
  core.setType(text(record.GetType()));
  core.setNumComputeUnits(record.GetComputeUnits());
  setIfSet(core, &HPLCore::setClockFreq, record.IssetClockFreq(), record.GetClockFreq());
  setIfSet(core, &HPLCore::setInstPath, record.IssetInstancePath(), record.GetInstancePath());
  setIfSet(core, &HPLCore::setParentRMInstPath, record.IssetParentRMInstancePath(),
           record.GetParentRMInstancePath());
  setIfSet(core, &HPLCore::setVlnv, record.IssetVLNV(), record.GetVLNV());
  setIfSet(core, &HPLCore::setDRBDName, record.IssetDRBDName(), record.GetDRBDName());
  if (!record.IssetCore()) return;

  const BasePlatform::InnerCore& inner = record.GetCore();
  if (inner.IssetConfig()) {
    const BasePlatform::InnerCoreConfig& config = inner.GetConfig();
    for (std::size_t i = 0; i < config.SizeParam(); ++i)
      core.addConfigParam(text(config.GetParam(i).GetName()), text(config.GetParam(i).GetValue()));
  }
  for (std::size_t i = 0; i < inner.SizePort(); ++i) parsePort_(*core.addPort(), inner.GetPort(i));
  if (!inner.IssetAvailableResources()) return;

  const BasePlatform::AvailableResources& resources = inner.GetAvailableResources();
  const std::string bram = text(resources.GetBRAM());
  const std::string dsp = text(resources.GetDSP());
  const std::string lut = text(resources.GetLUT());
  core.setBRAMCount(bram);
  core.setDSPCount(dsp);
  core.setLUTCount(lut);
  // An empty count leaves the platform's own as it was.
  if (!bram.empty()) platform_->setBRAMCount(countOf(bram));
  if (!dsp.empty()) platform_->setDSPCount(countOf(dsp));
  if (!lut.empty()) platform_->setLUTCount(countOf(lut));
  core.setRegisterCount(text(resources.GetREG()));

  for (std::size_t i = 0; i < resources.SizePBlock(); ++i) {
    const BasePlatform::PBlock& pblock = resources.GetPBlock(i);
    const std::string name = text(pblock.GetName());
    if (pblock.IssetValidSLRs()) core.addSLRInfo(name, text(pblock.GetValidSLRs()));
    for (std::size_t r = 0; r < pblock.SizeResource(); ++r)
      core.addResourceInfo(name, text(pblock.GetResource(r).GetName()), text(pblock.GetResource(r).GetVal()));
  }
}

void HTEQCfaXmlReader::parsePort_(HPLPort& port, const BasePlatform::Port& record) {
  port.setName(text(record.GetName()));
  port.setType(text(record.GetType()));
  setIfSet(port, &HPLPort::setMode, record.IssetMode(), record.GetMode());
  setIfSet(port, &HPLPort::setProtocol, record.IssetProtocol(), record.GetProtocol());
  setIfSet(port, &HPLPort::setBase, record.IssetBase(), record.GetBase());
  setIfSet(port, &HPLPort::setRange, record.IssetRange(), record.GetRange());
  setIfSet(port, &HPLPort::setDataWidth, record.IssetDataWidth(), record.GetDataWidth());
  setIfSet(port, &HPLPort::setIdWidth, record.IssetIdWidth(), record.GetIdWidth());
  setIfSet(port, &HPLPort::setUserWidth, record.IssetUserWidth(), record.GetUserWidth());
  setIfSet(port, &HPLPort::setAddrWidth, record.IssetAddressWidth(), record.GetAddressWidth());
  setIfSet(port, &HPLPort::setAddrOffset, record.IssetAddressOffset(), record.GetAddressOffset());
  setIfSet(port, &HPLPort::setAddrRange, record.IssetAddressRange(), record.GetAddressRange());
  setIfSet(port, &HPLPort::setMaxBurstLength, record.IssetMaxBurstLength(), record.GetMaxBurstLength());
  setIfSet(port, &HPLPort::setFrequency, record.IssetFrequency(), record.GetFrequency());
  setIfSet(port, &HPLPort::setDirection, record.IssetDirection(), record.GetDirection());
  setIfSet(port, &HPLPort::setPolarity, record.IssetPolarity(), record.GetPolarity());
  if (!record.IssetAddressSegments()) return;

  const BasePlatform::AddressSegments& segments = record.GetAddressSegments();
  for (std::size_t i = 0; i < segments.SizeAddressSegment(); ++i) {
    const BasePlatform::AddressSegment& s = segments.GetAddressSegment(i);
    auto segment = std::make_unique<HPLAddressSegment>();
    segment->setBase(text(s.GetBase()));
    segment->setName(text(s.GetName()));
    segment->setRange(text(s.GetRange()));
    segment->setSlaveName(text(s.GetSlave()));
    port.addAddressSegment(segment.release());
  }
}

void HTEQCfaXmlReader::parseFiles_(const BasePlatform::Files& files) {
  for (std::size_t i = 0; i < files.SizeFile(); ++i) {
    const BasePlatform::File& record = files.GetFile(i);
    const std::string type = text(record.GetType());
    const std::string name = text(record.GetName());
    HPLFile* file = platform_->addFile(type, name);
    setIfSet(*file, &HPLFile::setProcessingOrder, record.IssetProcessingOrder(), record.GetProcessingOrder());
    setIfSet(*file, &HPLFile::setUsedIn, record.IssetUsedIn(), record.GetUsedIn());
    if (HSTStringUtils::iequals(type, "HPFM"))
      parseHpfmMember_(name);
    else if (HSTStringUtils::iequals(type, "EMU_XML"))
      parseEmuXmlMember_(name);
  }
}

// Every entry that names the member fills the platform from it again, but the
// member is read and parsed once: a parse failure is reported once.
void HTEQCfaXmlReader::parseHpfmMember_(const std::string& member) {
  const auto hpfm = cache_->get<HpfmMember>(kHpfmKind, file_, member, [&] {
    auto read = std::make_unique<HpfmMember>();
    read->read = readMember_(member, read->text);
    if (!read->read) return read;
    auto document = std::make_unique<WELHardwarePlatform::Repository>();
    if (HTEQHpfmReader(read->text, nullptr).parseDocument(*document)) read->document = std::move(document);
    return read;
  });
  if (!hpfm->read) return;
  platform_->setHpfmString(hpfm->text);
  bool parsed = false;
  if (hpfm->document) {
    try {
      HTEQHpfmReader(hpfm->text, platform_).parseRepository(*hpfm->document);
      parsed = true;
    } catch (const std::exception&) {
      // A model that refuses what the hpfm says counts as an hpfm that does not parse.
      parsed = false;
    }
  }
  if (parsed) {
    // A platform described by an hpfm is unified and expandable, whatever the
    // XML document said.
    platform_->setUnifiedPlatform(true);
    platform_->setExpandable(true);
  } else {
    // The hpfm only adds to what the XML document gave: the load goes on.
    HUTConsole::out("Failed to parse hpfm stream from '" + member + "' in " + file_ + "\n");
  }
}

void HTEQCfaXmlReader::parseEmuXmlMember_(const std::string& member) {
  // The emulation metadata is read only to learn whether it brings an
  // emulation hpfm; the platform supports hardware emulation then.
  // A member named by several entries is parsed once.
  const auto emulations =
      cache_->get<HTEQEmulations>("EMU_XML", file_, HTEQEmulationCfaMember::reduceMemberName(member), [&] {
        auto parsed = std::make_unique<HTEQEmulations>();
        HTEQEmulationXMLReader::parseFromCfa(file_, member, parsed.get());
        return parsed;
      });
  for (const HTEQEmulation* emulation : emulations->getEmulations()) {
    for (const HTEQEmulationFile* file : emulation->getFiles()) {
      if (HSTStringUtils::iequals(file->getType(), "EMU_HPFM")) platform_->setSupportsHWEmulation(true);
    }
  }
}

void HTEQCfaXmlReader::parseFeatureRom_(const BasePlatform::FeatureRom& record) {
  HTEQHardwareFeatureRom* rom = platform_->addFeatureRom();
  rom->setMajorVersion(record.GetMajorVersion());
  rom->setMinorVersion(record.GetMinorVersion());
  rom->setMorwenBuildID(record.GetMorwenBuildID());
  rom->setIPBuildID(record.GetIPBuildID());
  rom->setTimeSinceEpoch(record.GetTimeSinceEpoch());
  unsigned char name[HTEQHardwareFeatureRom::kNameSize];
  toRomName(text(record.GetFPGAPartName()), name);
  rom->setFPGAPartName(name);
  toRomName(text(record.GetVBNVName()), name);
  rom->setVBNVName(name);
  rom->setDDRChannelCount(record.GetDDRChannelCount());
  rom->setDDRChannelSize(record.GetDDRChannelSize());
  rom->setDRBaseAddress(record.GetDRBaseAddress());
  rom->setFeatureBitMap(record.GetFeatureBitMap());
  // An absent UUID is empty, which leaves the ROM's bytes alone.
  rom->setUUID(text(record.GetUUID()));
  // An unset CDMA base address reads 0.
  rom->setCDMABaseAddress(0, record.GetCDMABaseAddress0());
  rom->setCDMABaseAddress(1, record.GetCDMABaseAddress1());
  rom->setCDMABaseAddress(2, record.GetCDMABaseAddress2());
  rom->setCDMABaseAddress(3, record.GetCDMABaseAddress3());
  // The ROM holds one byte for each limit.
  if (record.IssetMaxTempLimit()) rom->setMaxTempLimit(static_cast<std::uint8_t>(record.GetMaxTempLimit()));
  if (record.IssetMaxPowerLimit())
    rom->setMaxPowerLimit(static_cast<std::uint8_t>(record.GetMaxPowerLimit()));
}

void HTEQCfaXmlReader::parseDesignIPs_(const BasePlatform::DesignIPs& designIPs) {
  for (std::size_t i = 0; i < designIPs.SizeIP(); ++i) {
    const BasePlatform::IP& record = designIPs.GetIP(i);
    HTEQDesignIPInstance* ip = platform_->addDesignIPInstance();
    ip->setVLNV(text(record.GetVLNV()));
    ip->setInstanceName(text(record.GetInstanceName()));
    if (!record.IssetConfiguration()) continue;
    const BasePlatform::Configuration& config = record.GetConfiguration();
    for (std::size_t p = 0; p < config.SizeParameter(); ++p)
      ip->addConfigParam(text(config.GetParameter(p).GetName()), text(config.GetParameter(p).GetValue()));
  }
}
