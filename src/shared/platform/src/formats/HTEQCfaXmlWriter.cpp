#include "platform/HTEQCfaXmlWriter.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <set>
#include <vector>

#include "formats/TEQCfaXmlLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HUTFile.h"
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
#include "platform/HTEQHardwareFeatureRom.h"

namespace {

const char kBuildFailed[] = "@74-15@%s%s%s%s";
const char kWriteFailed[] = "@74-10@%s";
// The binary format a platform has unless it says otherwise; left out.
const char kDefaultBinaryFormat[] = "rovapk2";

std::wstring w(const std::string& s) { return HI18N::convert(s); }
std::wstring flag(bool value) { return value ? L"true" : L"false"; }

// Calls the setter with the text when it is not empty.
template <class Record>
void setIfNotEmpty(Record& record, void (Record::*setter)(const std::wstring&), const std::string& value) {
  if (!value.empty()) (record.*setter)(w(value));
}

// Every element of an iterator the caller owns.
template <class T>
std::vector<T> drain(HSTFwdIter<T>* iter) {
  std::unique_ptr<HSTFwdIter<T>> owned(iter);
  std::vector<T> out;
  while (owned && owned->hasNext()) out.push_back(owned->next());
  return out;
}

std::string join(const std::set<std::string>& names) {
  std::string out;
  for (const std::string& name : names) out += (out.empty() ? "" : ",") + name;
  return out;
}

}  // namespace

HTEQCfaXmlWriter::HTEQCfaXmlWriter(HPLPlatform* platform, const std::string& file)
    : platform_(platform), file_(file) {
  if (platform_ == nullptr) throw HEXAlgException("no hardware platform was given to the CFA XML writer");
}

std::string HTEQCfaXmlWriter::toText() {
  BasePlatform::Root root;
  std::string text;
  try {
    // A fresh Root holds the current format version unset: set it explicitly.
    const BasePlatform::Root defaults;
    root.SetVersionMajor(defaults.GetVersionMajor());
    root.SetVersionMinor(defaults.GetVersionMinor());
    writeGenAppInfo_(root.GetGenAppInfo());
    writeCFA_(root.GetCFA());
    root.Marshal(&text);
  } catch (const std::exception& e) {
    ComMsg msg;
    msg.id = kBuildFailed;
    msg.args = {file_, e.what(), "HTEQCfaXmlWriter", "::writeCFA"};
    ZR_SEND_MSG(kBuildFailed, ComMsgMask::kError, file_, e.what(), "HTEQCfaXmlWriter", "::writeCFA");
    throw HXMLException(ComMsgMgr::formatText(msg), 0);
  }
  return text;
}

void HTEQCfaXmlWriter::writeCFA() {
  const std::string text = toText();
  try {
    HUTFile::writeAtomically(file_, text);
  } catch (const std::exception& e) {
    ComMsg msg;
    msg.id = kWriteFailed;
    msg.args = {file_};
    ZR_SEND_MSG(kWriteFailed, ComMsgMask::kError, file_);
    throw HXMLException(ComMsgMgr::formatText(msg) + " (" + e.what() + ")", 0);
  }
}

void HTEQCfaXmlWriter::writeGenAppInfo_(BasePlatform::GenAppInfo& info) const {
  info.SetName(w(platform_->getGeneratedName()));
  info.SetVersion(w(platform_->getGeneratedVersion()));
  info.SetCL(platform_->getGeneratedChangeList());
  info.SetTimeStamp(w(platform_->getGeneratedTimestamp()));
}

void HTEQCfaXmlWriter::writeCFA_(BasePlatform::CFA& cfa) const {
  cfa.SetVendor(w(platform_->getVendor()));
  cfa.SetBoardId(w(platform_->getBoardId()));
  cfa.SetName(w(platform_->getName()));
  cfa.SetVersionMajor(platform_->getVersionMajor());
  cfa.SetVersionMinor(platform_->getVersionMinor());
  cfa.SetDescription(w(platform_->getDescription()));
  cfa.SetFeatureRomTimestamp(platform_->getOldFeatureRomTime());
  cfa.SetDcpLogicFunctionStripped(flag(platform_->isDcpFuncStripped()));
  cfa.SetDcpEncrypt(flag(platform_->isDcpEncrypt()));
  cfa.SetUnified(flag(platform_->isUnifiedPlatform()));
  cfa.SetFixed(flag(!platform_->isExpandable()));
  setIfNotEmpty(cfa, &BasePlatform::CFA::SetDefaultOutputType, platform_->getDefaultOutputType());

  writeHostArchitecture_(cfa);
  writeBuildFlow_(cfa);
  writeBoard_(cfa);
  writeDesignIPs_(cfa);
  writeDevices_(cfa);
  writeFiles_(cfa);
  writeFeatureRom_(cfa);
}

void HTEQCfaXmlWriter::writeHostArchitecture_(BasePlatform::CFA& cfa) const {
  if (!platform_->usesPR()) return;
  BasePlatform::Host& host = cfa.GetHost();
  host.SetArchitecture(w(platform_->getHostArch()));
  host.SetInterface(w(platform_->getHostInterface()));
}

void HTEQCfaXmlWriter::writeBuildFlow_(BasePlatform::CFA& cfa) const {
  BasePlatform::Build& build = cfa.GetBuild();
  setIfNotEmpty(build, &BasePlatform::Build::SetPlatformState, platform_->getPlatformState());
  build.SetUsesPR(flag(platform_->usesPR()));
  setIfNotEmpty(build, &BasePlatform::Build::SetTopModuleName, platform_->getTopModuleName());
  const std::string& format = platform_->getAcceleratorBinaryFormat();
  if (format != kDefaultBinaryFormat)
    setIfNotEmpty(build, &BasePlatform::Build::SetAcceleratorBinaryFormat, format);
  build.SetAcceleratorBinaryContent(w(platform_->getAcceleratorBinaryContent()));
  // An empty list has no text to write; the reader then gives its defaults.
  if (!platform_->getValidBinaryContentValues().empty())
    build.SetValidBinaryContentValues(w(platform_->getValidBinaryContentValuesAsStr()));

  // The reader keeps only the values; every switch is written under one name.
  for (const std::string& value : platform_->getZuncCompileXpSwitches()) {
    BasePlatform::ZuncCompileSwitch& s = build.GetZuncCompileSwitches().AppendZuncCompileSwitch();
    s.SetName(L"xp");
    s.SetValue(w(value));
  }
  for (const std::string& value : platform_->getZuncLinkXpSwitches()) {
    BasePlatform::ZuncLinkSwitch& s = build.GetZuncLinkSwitches().AppendZuncLinkSwitch();
    s.SetName(L"xp");
    s.SetValue(w(value));
  }
}

void HTEQCfaXmlWriter::writeBoard_(BasePlatform::CFA& cfa) const {
  const HPLBoard& board = platform_->getReadOnlyBoard();
  BasePlatform::Board& record = cfa.GetBoard();
  record.SetName(w(board.getName()));
  record.SetVendor(w(board.getVendor()));
  record.SetPart(w(board.getPart()));
  setIfNotEmpty(record, &BasePlatform::Board::SetBoardPart, board.getBoardPart());
  writeInterfaces_(record);
  writeMemories_(record);
  writeConnectors_(record);
  writeImages_(record);
  writePCIeId_(record);
}

void HTEQCfaXmlWriter::writeInterfaces_(BasePlatform::Board& board) const {
  // The board holds one interface: with several, the last one wins.
  for (const HPLInterface* interface : drain(platform_->createInterfaceIter())) {
    BasePlatform::Interface& record = board.GetInterfaces().GetInterface();
    record.SetId(w(interface->getId()));
    record.SetName(w(interface->getName()));
    record.SetType(w(interface->getType()));
  }
}

void HTEQCfaXmlWriter::writeMemories_(BasePlatform::Board& board) const {
  for (const HPLMemory* memory : drain(platform_->createMemoryIter())) {
    BasePlatform::Memory& record = board.GetMemories().AppendMemory();
    record.SetName(w(memory->getName()));
    record.SetType(w(memory->getType()));
    record.SetSize(w(memory->getSize()));
    // The document holds signed addresses: the bits are kept as they are.
    record.SetHighestAddress(static_cast<std::int64_t>(memory->getHighestAddress()));
    record.SetLowestAddress(static_cast<std::int64_t>(memory->getLowestAddress()));
    for (const auto& param : memory->getReadOnlyConfigParamMap()) {
      BasePlatform::Param& p = record.GetConfig().AppendParam();
      p.SetName(w(param.first));
      p.SetValue(w(param.second));
    }
  }
}

void HTEQCfaXmlWriter::writeConnectors_(BasePlatform::Board& board) const {
  std::vector<HPLBoard::DimmConnector*> connectors;
  platform_->getReadOnlyBoard().getConnectorsVec(connectors);
  for (const HPLBoard::DimmConnector* c : connectors) {
    BasePlatform::Connector& record = board.GetConnectors().AppendConnector();
    record.SetName(w(c->getName()));
    record.SetDisplayName(w(c->getDisplayName()));
    record.SetType(w(c->getType()));
    record.SetConnectedConnector(w(c->getConnectedName()));
    record.SetConnectedConnectorDisplayName(w(c->getConnectedDisplayName()));
    record.SetIsLocked(flag(c->isLocked()));
  }
}

void HTEQCfaXmlWriter::writeImages_(BasePlatform::Board& board) const {
  const HPLBoard& model = platform_->getReadOnlyBoard();
  const std::pair<const wchar_t*, const std::string*> images[] = {{L"HDPI", &model.getImgFileHdpi()},
                                                                  {L"MDPI", &model.getImgFileMdpi()},
                                                                  {L"LDPI", &model.getImgFileLdpi()}};
  BasePlatform::Images& record = board.GetImages();
  for (const auto& image : images) {
    BasePlatform::Img& img = record.AppendImg();
    img.SetType(image.first);
    img.SetFile(w(*image.second));
  }
}

void HTEQCfaXmlWriter::writePCIeId_(BasePlatform::Board& board) const {
  if (!platform_->usesPR() && !platform_->isFlatShell()) return;
  const HPLPCIeId& ids = platform_->getReadOnlyBoard().getPCIeId();
  BasePlatform::PCIeId& record = board.GetPCIeId();
  record.SetDevice(w(ids.getDevice()));
  record.SetVendor(w(ids.getVendor()));
  record.SetSubsystem(w(ids.getSubsystem()));
  setIfNotEmpty(record, &BasePlatform::PCIeId::SetFeatureId, ids.getFeatureId());
}

void HTEQCfaXmlWriter::writeDesignIPs_(BasePlatform::CFA& cfa) const {
  for (const HTEQDesignIPInstance* ip : drain(platform_->createDesignIPInstanceIter())) {
    BasePlatform::IP& record = cfa.GetDesignIPs().AppendIP();
    record.SetVLNV(w(ip->getVLNV()));
    record.SetInstanceName(w(ip->getInstanceName()));
    HTEQDesignIPInstance::ConfigMap config;
    ip->getConfigParamMap(config);
    for (const auto& param : config) {
      BasePlatform::Parameter& p = record.GetConfiguration().AppendParameter();
      p.SetName(w(param.first));
      p.SetValue(w(param.second));
    }
  }
}

void HTEQCfaXmlWriter::writeDevices_(BasePlatform::CFA& cfa) const {
  BasePlatform::Devices& devices = cfa.GetDevices();
  for (HPLDevice* device : drain(platform_->createDeviceIter())) {
    BasePlatform::Device& record = devices.AppendDevice();
    record.SetName(w(device->getName()));
    record.SetType(w(device->getType()));
    setIfNotEmpty(record, &BasePlatform::Device::SetFpgaDevice, device->getFpgaPart());
    for (const auto& clock : static_cast<const HPLDevice*>(device)->getSystemClockMap()) {
      BasePlatform::SystemClock& c = record.GetSystemClocks().AppendSystemClock();
      c.SetName(w(clock.first));
      c.SetFrequency(w(clock.second));
    }
    writeCore_(device->getReadOnlyCore(), record.GetCore());
  }
}

void HTEQCfaXmlWriter::writeCore_(const HPLCore& core, BasePlatform::Core& record) const {
  record.SetName(w(core.getName()));
  record.SetType(w(core.getType()));
  // The document holds one byte: a larger count fails rather than wrap.
  if (core.getNumComputeUnits() > 255)
    throw HXMLException("the core '" + core.getName() + "' has " + std::to_string(core.getNumComputeUnits()) +
                            " compute units, more than the 255 the document can hold",
                        0);
  record.SetComputeUnits(static_cast<std::uint8_t>(core.getNumComputeUnits()));
  setIfNotEmpty(record, &BasePlatform::Core::SetClockFreq, core.getClockFreq());
  setIfNotEmpty(record, &BasePlatform::Core::SetVLNV, core.getVlnv());
  setIfNotEmpty(record, &BasePlatform::Core::SetInstancePath, core.getInstPath());
  setIfNotEmpty(record, &BasePlatform::Core::SetParentRMInstancePath, core.getParentRMInstPath());
  setIfNotEmpty(record, &BasePlatform::Core::SetDRBaseAddress, core.getDRBaseAddress());
  setIfNotEmpty(record, &BasePlatform::Core::SetDRBDName, core.getDRBDName());

  const HPLCore::PBlockResourceMap& pblocks = core.getReadOnlyPBlockToResourceMap();
  const std::string counts[] = {core.getLUTCount(), core.getRegisterCount(), core.getBRAMCount(),
                                core.getDSPCount()};
  bool anyCount = false;
  for (const std::string& count : counts) anyCount = anyCount || !count.empty();
  if (anyCount || !pblocks.empty()) {
    BasePlatform::AvailableResources& resources = record.GetCore().GetAvailableResources();
    resources.SetLUT(w(counts[0]));
    resources.SetREG(w(counts[1]));
    resources.SetBRAM(w(counts[2]));
    resources.SetDSP(w(counts[3]));
    for (const auto& pblock : pblocks) {
      BasePlatform::PBlock& p = resources.AppendPBlock();
      p.SetName(w(pblock.first));
      std::set<std::string> slrs;
      core.getSLRNames(pblock.first, slrs);
      setIfNotEmpty(p, &BasePlatform::PBlock::SetValidSLRs, join(slrs));
      for (const auto& resource : pblock.second) {
        BasePlatform::Resource& r = p.AppendResource();
        r.SetName(w(resource.first));
        r.SetVal(w(resource.second));
      }
    }
  }
  for (const auto& param : core.getReadOnlyConfigParamMap()) {
    BasePlatform::InnerCoreConfigParam& p = record.GetCore().GetConfig().AppendParam();
    p.SetName(w(param.first));
    p.SetValue(w(param.second));
  }
  for (const HPLPort* port : drain(core.createPortIter())) {
    BasePlatform::Port& p = record.GetCore().AppendPort();
    p.SetName(w(port->getName()));
    p.SetType(w(port->getType()));
    setIfNotEmpty(p, &BasePlatform::Port::SetMode, port->getMode());
    setIfNotEmpty(p, &BasePlatform::Port::SetProtocol, port->getProtocol());
    setIfNotEmpty(p, &BasePlatform::Port::SetBase, port->getBase());
    setIfNotEmpty(p, &BasePlatform::Port::SetRange, port->getRange());
    setIfNotEmpty(p, &BasePlatform::Port::SetDataWidth, port->getDataWidth());
    setIfNotEmpty(p, &BasePlatform::Port::SetIdWidth, port->getIdWidth());
    setIfNotEmpty(p, &BasePlatform::Port::SetUserWidth, port->getUserWidth());
    setIfNotEmpty(p, &BasePlatform::Port::SetAddressWidth, port->getAddrWidth());
    setIfNotEmpty(p, &BasePlatform::Port::SetAddressOffset, port->getAddrOffset());
    setIfNotEmpty(p, &BasePlatform::Port::SetAddressRange, port->getAddrRange());
    setIfNotEmpty(p, &BasePlatform::Port::SetMaxBurstLength, port->getMaxBurstLength());
    setIfNotEmpty(p, &BasePlatform::Port::SetFrequency, port->getFrequency());
    setIfNotEmpty(p, &BasePlatform::Port::SetDirection, port->getDirection());
    setIfNotEmpty(p, &BasePlatform::Port::SetPolarity, port->getPolarity());
    for (const HPLAddressSegment* segment : drain(port->createAddressSegmentIter())) {
      BasePlatform::AddressSegment& s = p.GetAddressSegments().AppendAddressSegment();
      s.SetName(w(segment->getName()));
      s.SetBase(w(segment->getBase()));
      s.SetRange(w(segment->getRange()));
      s.SetSlave(w(segment->getSlaveName()));
    }
  }
}

void HTEQCfaXmlWriter::writeFiles_(BasePlatform::CFA& cfa) const {
  BasePlatform::Files& files = cfa.GetFiles();
  const HPLPlatform::FileVecRange range = platform_->getFileVecRange();
  for (auto it = range.first; it != range.second; ++it) {
    const HPLFile* file = *it;
    BasePlatform::File& record = files.AppendFile();
    record.SetName(w(file->getName()));
    record.SetType(w(file->getType()));
    setIfNotEmpty(record, &BasePlatform::File::SetProcessingOrder, file->getProcessingOrder());
    setIfNotEmpty(record, &BasePlatform::File::SetUsedIn, file->getUsedIn());
  }
}

void HTEQCfaXmlWriter::writeFeatureRom_(BasePlatform::CFA& cfa) const {
  const HTEQHardwarePlatform::FeatureRomVecRange roms = platform_->getFeatureRomVecRange();
  if (roms.first == roms.second) return;
  const HTEQHardwareFeatureRom& rom = **roms.first;
  BasePlatform::FeatureRom& record = cfa.GetFeatureRom();
  record.SetMajorVersion(rom.getMajorVersion());
  record.SetMinorVersion(rom.getMinorVersion());
  record.SetMorwenBuildID(rom.getMorwenBuildID());
  record.SetIPBuildID(rom.getIPBuildID());
  record.SetTimeSinceEpoch(rom.getTimeSinceEpoch());
  record.SetFPGAPartName(w(rom.getFPGAPartName()));
  record.SetVBNVName(w(rom.getVBNVName()));
  record.SetDDRChannelCount(rom.getDDRChannelCount());
  record.SetDDRChannelSize(rom.getDDRChannelSize());
  record.SetDRBaseAddress(rom.getDRBaseAddress());
  record.SetFeatureBitMap(rom.getFeatureBitMap());
  setIfNotEmpty(record, &BasePlatform::FeatureRom::SetUUID, rom.getUUIDAsString());
  record.SetCDMABaseAddress0(rom.getCDMABaseAddress(0));
  record.SetCDMABaseAddress1(rom.getCDMABaseAddress(1));
  record.SetCDMABaseAddress2(rom.getCDMABaseAddress(2));
  record.SetCDMABaseAddress3(rom.getCDMABaseAddress(3));
  if (rom.getMaxTempLimit() != 0) record.SetMaxTempLimit(rom.getMaxTempLimit());
  if (rom.getMaxPowerLimit() != 0) record.SetMaxPowerLimit(rom.getMaxPowerLimit());
}
