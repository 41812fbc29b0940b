#include "platform/HTEQCfaJsonReader.h"

#include <boost/property_tree/ptree.hpp>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "platform/HPLBoard.h"
#include "platform/HPLCore.h"
#include "platform/HPLDevice.h"
#include "platform/HPLFile.h"
#include "platform/HPLInterface.h"
#include "platform/HPLMemory.h"
#include "platform/HPLPCIeId.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQDesignIPInstance.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulationJsonReader.h"
#include "platform/HTEQEmulationXMLReader.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareFeatureRom.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQHpfmReader.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/HTEQReconfigPartition.h"
#include "platform/HTEQSystemClock.h"
#include "platform/HTEQTilHardware.h"
#include "platform/HTEQTilPartition.h"


using Tree = boost::property_tree::ptree;
using U = HTEQJSONUtils;

namespace {

// Numbers read the way the C library does: leading decimal digits, anything
// else 0.
long num(const Tree& t, const char* key) { return std::strtol(U::getValue(t, key).c_str(), nullptr, 10); }
long long num64(const Tree& t, const char* key) {
  return std::strtoll(U::getValue(t, key).c_str(), nullptr, 10);
}
// Hexadecimal ("0x...") or decimal text, as the model writes its addresses.
unsigned long long anyBase(const std::string& text) { return std::strtoull(text.c_str(), nullptr, 0); }

std::string text(const Tree& t, const char* key) { return U::getValue(t, key); }
bool flag(const Tree& t, const char* key) { return U::getBoolValue(t, key); }
bool has(const Tree& t, const char* key) { return U::findKey(t, key); }

// The children of an array (or object) at `key`; none when it is missing.
const Tree& items(const Tree& t, const char* key) {
  static const Tree none;
  const auto child = t.get_child_optional(key);
  return child ? *child : none;
}

// A text field of the Feature ROM: its bytes, cut to the field, zero-filled.
void nameBytes(const std::string& s, unsigned char (&out)[HTEQHardwareFeatureRom::kNameSize]) {
  std::memset(out, 0, sizeof out);
  std::memcpy(out, s.data(), std::min(s.size(), sizeof out));
}

// Reads the bus interfaces of `list` into objects made by `add`, which is the
// platform's factory or a NoC record's.
template <class Add>
void parseBusInterfaces(const Tree& list, Add add) {
  for (const auto& item : list) {
    const Tree& b = item.second;
    HTEQHardwareBusInterface* bus = add();
    bus->setName(text(b, "name"));
    bus->setMode(text(b, "mode"));
    bus->setInstRef(text(b, "instRef"));
    bus->setCompRef(text(b, "compRef"));
    bus->setBusTypeRef(text(b, "typeRef"));
    bus->setBusInterfaceRef(text(b, "interfaceRef"));
    bus->setClockRef(text(b, "clockRef"));
    bus->setMemPort(text(b, "memPort"));
    bus->setSPTag(text(b, "spTag"));
    bus->setCategory(text(b, "category"));
    if (has(b, "addressSegment")) bus->setAddressSegment(text(b, "addressSegment"));
    bus->setDataWidth(static_cast<int>(num(b, "dataWidth")));
    for (const auto& segItem : items(b, "addressSegments")) {
      const Tree& s = segItem.second;
      HTEQHardwareAddressSegment* seg = bus->addAddressSegment();
      seg->setBaseName(text(s, "baseName"));
      seg->setIndex(static_cast<unsigned int>(num(s, "index")));
      seg->setMemoryInstance(text(s, "memoryInstance"));
      seg->setAuto(text(s, "auto"));
      seg->setSpTag(text(s, "spTag"));
      seg->setSlr(text(s, "slr"));
      seg->setMaxMasters(static_cast<unsigned int>(num(s, "maxMasters")));
      seg->setName(text(s, "name"));
      seg->setInstanceRef(text(s, "instRef"));
      seg->setRegion(text(s, "region"));
      seg->setReadBwUsed(static_cast<int>(num(s, "readBwUsed")));
      seg->setWriteBwUsed(static_cast<int>(num(s, "writeBwUsed")));
      seg->setInterleave(static_cast<unsigned int>(num(s, "interleave")));
    }
  }
}

}  // namespace

HTEQCfaJsonReader::HTEQCfaJsonReader(HPLPlatform* platform) : platform_(platform) {}

bool HTEQCfaJsonReader::canParse(const std::string& archive, Mode mode, std::string& member) {
  if (archive.empty() || !HUTFile::exists(archive)) {
    ZR_SEND_MSG("@74-66@%s", ComMsgMask::kCriticalWarning, archive);
    return false;
  }
  archive_ = archive;
  platform_->setPlatformFile(HUTFile::getCanonicalName(archive));
  if (mode == teq_platform::PlatformLoader::XmlOnly) return false;
  const std::string primary = platform_->getJsonFileName();
  const std::string alternative = platform_->getAltJsonFileName();
  const bool hasPrimary = HUTZip::containsFile(archive, primary);
  if (mode == teq_platform::PlatformLoader::PrimaryJsonOnly) {
    member = primary;
    return hasPrimary;
  }
  const bool hasAlternative = HUTZip::containsFile(archive, alternative);
  member = hasAlternative ? alternative : primary;
  return hasAlternative || hasPrimary;
}

bool HTEQCfaJsonReader::canParseHwEmu(const std::string& archive, Mode mode, std::string& member) {
  std::string mainMember;
  if (!canParse(archive, mode, mainMember)) return false;
  const std::string emu = platform_->getHwEmuJsonFileName();
  if (HUTZip::containsFile(archive, emu)) {
    member = emu;
    return true;
  }
  if (mode != teq_platform::PlatformLoader::PrimaryJsonOnly) {
    const std::string altEmu = platform_->getAltHwEmuJsonFileName();
    if (HUTZip::containsFile(archive, altEmu)) {
      member = altEmu;
      return true;
    }
  }
  return false;
}

bool HTEQCfaJsonReader::parseCFA(const std::string& archive, Mode mode) {
  std::string member;
  if (!canParse(archive, mode, member)) return false;
  return parseMember_(archive, member, false);
}

bool HTEQCfaJsonReader::parseHwEmuLFA(const std::string& archive, Mode mode) {
  std::string member;
  if (!canParseHwEmu(archive, mode, member)) return false;
  return parseMember_(archive, member, true);
}

bool HTEQCfaJsonReader::parseMember_(const std::string& archive, const std::string& member, bool child) {
  try {
    std::string content;
    if (child) {
      isl::iostreams::zip_istream in(member, archive);
      if (!in.is_open()) {
        ZR_SEND_MSG("@74-67@%s%s", ComMsgMask::kCriticalWarning, member, archive);
        return false;
      }
      content.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
      if (in.bad()) throw HEXDataException(in.error().empty() ? "the member cannot be read" : in.error());
    } else {
      HUTZip::readMember(archive, member, content);
    }
    // An empty member is no metadata, and no error either.
    if (content.empty()) return false;
    if (!parseJsonString(content)) return false;
    if (child) platform_->setIsChildHardwareEmuPlatform(true);
    return true;
  } catch (const std::exception& e) {
    ZR_SEND_MSG("@74-64@%s%s%s", ComMsgMask::kCriticalWarning, member, archive, e.what());
  } catch (...) {
    ZR_SEND_MSG("@74-63@%s%s", ComMsgMask::kCriticalWarning, member, archive);
  }
  return false;
}

bool HTEQCfaJsonReader::parseFile(const std::string& file) {
  if (!HUTFile::isFile(file)) return false;
  Tree root;
  std::ifstream in(file, std::ios::binary);
  HTEQJSONUtils::readJSON(in, root, file);
  parseRoot_(root);
  return true;
}

bool HTEQCfaJsonReader::parseJsonString(const std::string& textIn) {
  if (textIn.empty()) return false;
  Tree root;
  HTEQJSONUtils::readJSON(textIn, root, archive_.empty() ? std::string("JSON metadata") : archive_);
  parseRoot_(root);
  return true;
}

void HTEQCfaJsonReader::parseRoot_(const Tree& root) {
  HPLPlatform& p = *platform_;
  p.setGeneratedChangeList(static_cast<unsigned int>(num(root, "generatedChangeList")));
  p.setGeneratedName(text(root, "generatedName"));
  p.setGeneratedVersion(text(root, "generatedVersion"));
  p.setGeneratedTimestamp(text(root, "generatedTimestamp"));
  if (has(root, "hasExternalSources")) p.setHasExternalSources(flag(root, "hasExternalSources"));
  if (has(root, "hasRQAContent")) p.setHasRQAContent(flag(root, "hasRQAContent"));
  if (has(root, "genLink")) p.setGeneratedByLink(flag(root, "genLink"));
  if (has(root, "genSwEmuLink")) p.setGeneratedBySwEmuLink(flag(root, "genSwEmuLink"));
  if (has(root, "idCode")) p.setIdCode(text(root, "idCode"));
  if (has(root, "extendedIdCode")) p.setExtendedIdCode(text(root, "extendedIdCode"));
  p.setVendor(text(root, "vendor"));
  p.setBoardId(text(root, "boardId"));
  p.setName(text(root, "name"));
  p.setVersionMajor(static_cast<unsigned int>(num(root, "versionMajor")));
  p.setVersionMinor(static_cast<unsigned int>(num(root, "versionMinor")));
  p.setHostArch(text(root, "hostArchitecture"));
  p.setHostInterface(text(root, "hostInterface"));
  p.setPlatformState(text(root, "platformState"));
  p.setAcceleratorBinaryContent(text(root, "acceleratorBinaryContent"));
  p.setAcceleratorBinaryFormat(text(root, "acceleratorBinaryFormat"));
  p.setUnifiedPlatform(flag(root, "unifiedPlatform"));
  p.setDcpFuncStripped(flag(root, "dcpFunctionStripped"));
  p.setDcpEncrypt(flag(root, "dcpEncrypted"));
  p.setTopModuleName(text(root, "topModuleName"));
  p.setUsesNIFD(flag(root, "usesNIFD"));
  if (has(root, "hardware")) p.setSupportsHardware(flag(root, "hardware"));
  if (has(root, "softwareEmulation")) p.setSupportsSWEmulation(flag(root, "softwareEmulation"));
  p.setSupportsHWEmulation(flag(root, "hardwareEmulation"));
  p.setIsHWEmuPlatform(flag(root, "hardwareEmuPlatform"));
  if (has(root, "defaultOutputType")) p.setDefaultOutputType(text(root, "defaultOutputType"));
  const std::string validContent = text(root, "validAcceleratorBinaryContentValues");
  if (!validContent.empty())
    for (const auto& token : HSTStringUtils::split(validContent, ',')) p.addValidBinaryContentValue(token);
  p.setUsesPR(flag(root, "usesPR"));
  p.setExpandable(has(root, "expandablePlatform") ? flag(root, "expandablePlatform") : true);
  parseDesignIntent_(items(root, "designIntent"), root);
  for (const auto& item : items(root, "zuncCompileXPSwitches")) p.addZuncCompileXpSwitch(item.second.data());
  for (const auto& item : items(root, "zuncLinkXPSwitches")) p.addZuncLinkXpSwitch(item.second.data());
  for (const auto& item : items(root, "designIpInstances")) {
    HTEQDesignIPInstance* ip = p.addDesignIPInstance();
    ip->setVLNV(text(item.second, "vlnv"));
    ip->setInstanceName(text(item.second, "instance"));
    for (const auto& param : items(item.second, "configuration")) ip->addConfigParam(param.first, param.second.data());
  }
  if (has(root, "flash")) {
    const Tree& flash = items(root, "flash");
    p.setFlashInterfaceType(text(flash, "interfaceType"));
    p.setFlashOffsetAddress(text(flash, "offsetAddress"));
    p.setFlashSize(text(flash, "size"));
  }
  if (has(root, "designIDs")) {
    const Tree& ids = items(root, "designIDs");
    p.setDesignID(static_cast<uint32_t>(U::getIntValue(ids, "designID", 0)));
    p.setParentID(static_cast<uint32_t>(U::getIntValue(ids, "parentID", 0)));
    p.setNodeID(static_cast<uint32_t>(U::getIntValue(ids, "nodeID", 0)));
    p.setFunctionID(static_cast<uint32_t>(U::getIntValue(ids, "functionID", 0)));
    // "plInterfaceID" is reserved here and not read.
    if (has(ids, "tilngineIDs")) {
      const Tree& til = items(ids, "tilngineIDs");
      p.setTILNodeID(static_cast<uint32_t>(U::getIntValue(til, "nodeID", 0)));
      p.setTILUniqueID(static_cast<uint32_t>(U::getIntValue(til, "uniqueID", 0)));
      p.setTILPuID(static_cast<uint32_t>(U::getIntValue(til, "puID", 0)));
    }
  }
  for (const auto& item : items(root, "reconfigPartitionIDs")) {
    HTEQReconfigPartition* rp = p.addReconfigPartition();
    rp->setDesignID(static_cast<uint32_t>(U::getIntValue(item.second, "designID", 0)));
    rp->setParentID(static_cast<uint32_t>(U::getIntValue(item.second, "parentID", 0)));
    rp->setNodeID(static_cast<uint32_t>(U::getIntValue(item.second, "nodeID", 0)));
    rp->setFunctionID(static_cast<uint32_t>(U::getIntValue(item.second, "functionID", 0)));
  }
  if (has(root, "tilHardware")) {
    const Tree& til = items(root, "tilHardware");
    HTEQTilHardware& hw = p.getTilHardware();
    hw.setArch(text(til, "arch"));
    hw.setNpiBaseAddress(U::getUnsignedIntValue(til, "npiBaseAddress", 0));
    if (has(til, "shimRows")) {
      hw.setStartShimRow(U::getIntValue(items(til, "shimRows"), "start", 0));
      hw.setNumShimRows(U::getIntValue(items(til, "shimRows"), "num", 0));
    }
    if (has(til, "coreRows")) {
      hw.setStartCoreRow(U::getIntValue(items(til, "coreRows"), "start", 0));
      hw.setNumCoreRows(U::getIntValue(items(til, "coreRows"), "num", 0));
    }
    if (has(til, "memRows")) {
      hw.setStartMemRow(U::getIntValue(items(til, "memRows"), "start", 0));
      hw.setNumMemRows(U::getIntValue(items(til, "memRows"), "num", 0));
    }
  }
  for (const auto& item : items(root, "tilPartitions")) p.addTilPartition().fromJSON(item.second);
  if (has(root, "static")) p.setIsStatic(flag(root, "static"));
  if (has(root, "drBdInstName")) p.setDrBdInstName(text(root, "drBdInstName"));
  if (has(root, "rm")) p.setIsRM(flag(root, "rm"));
  for (const auto& item : items(root, "resources")) {
    const std::string type = text(item.second, "type");
    const int count = static_cast<int>(num(item.second, "count"));
    if (HSTStringUtils::iequals(type, "BRAM")) p.setBRAMCount(count);
    else if (HSTStringUtils::iequals(type, "DSP")) p.setDSPCount(count);
    else if (HSTStringUtils::iequals(type, "LUT")) p.setLUTCount(count);
    else if (HSTStringUtils::iequals(type, "FF")) p.setFFCount(count);
  }
  if (has(root, "board")) parseBoard_(items(root, "board"));
  parseDevices_(items(root, "devices"));
  for (const auto& item : items(root, "interfaces")) {
    HPLInterface* i = p.addInterface();
    i->setId(text(item.second, "id"));
    i->setName(text(item.second, "name"));
    i->setType(text(item.second, "type"));
  }
  parseMemories_(items(root, "memories"));
  parseFiles_(items(root, "files"));
  parseFeatureRoms_(items(root, "featureRoms"));
  parseSystemClocks_(items(root, "systemClocks"));

  // An archive with an hpfm member takes its bus interfaces and NoC records
  // from it; the document's own lists count only without one.
  const std::string hpfm = getHpfmStr();
  if (!readHpfmBusInterfaces(hpfm))
    parseBusInterfaces(items(root, "busInterfaces"), [&p] { return p.addBusInterface(); });
  if (!readHpfmNocConnectivity(hpfm)) {
    for (const auto& item : items(root, "nocConnectivity")) {
      HTEQHardwareNocConnectivity* noc = p.addNocConnectivity();
      noc->setInstanceRef(text(item.second, "instRef"));
      parseBusInterfaces(items(item.second, "busInterfaces"), [noc] { return noc->addBusInterface(); });
    }
  }
  for (const auto& item : items(root, "ipParameters")) {
    HTEQHardwareIPParam* param = p.addHardwareIPParam();
    param->setName(text(item.second, "name"));
    param->setValue(text(item.second, "value"));
    param->setIsValid(text(item.second, "valid"));
    param->setCompRef(text(item.second, "compRef"));
    param->setInstRef(text(item.second, "instRef"));
  }
}

void HTEQCfaJsonReader::parseDesignIntent_(const Tree& intent, const Tree& root) {
  // Without explicit values the intents follow the use of partial
  // reconfiguration: a platform that uses it is an accelerator card.
  const bool usesPR = flag(root, "usesPR");
  static const struct {
    const char* name;
    HTEQDesignIntentStorage::Key key;
  } kIntents[] = {{"dataCenter", HTEQDesignIntentStorage::dataCenter},
                  {"embedded", HTEQDesignIntentStorage::embedded},
                  {"externalHost", HTEQDesignIntentStorage::externalHost},
                  {"serverManaged", HTEQDesignIntentStorage::serverManaged}};
  for (const auto& intentKey : kIntents) {
    const bool byDefault = intentKey.key == HTEQDesignIntentStorage::embedded ? !usesPR : usesPR;
    const auto child = intent.get_child_optional(intentKey.name);
    if (child && has(*child, "value") && has(*child, "explicit") && flag(*child, "explicit"))
      platform_->setExplicitDesignIntent(intentKey.key, flag(*child, "value"));
    else
      platform_->setComputedDesignIntent(intentKey.key, byDefault);
  }
}

void HTEQCfaJsonReader::parseBoard_(const Tree& b) {
  HPLBoard& board = platform_->getBoard();
  board.setName(text(b, "name"));
  board.setVendor(text(b, "vendor"));
  board.setPart(text(b, "part"));
  board.setBoardPart(text(b, "boardPart"));
  board.setImgFileHdpi(text(b, "imageFileHdpi"));
  board.setImgFileMdpi(text(b, "imageFileMdpi"));
  board.setImgFileLdpi(text(b, "imageFileLdpi"));
  if (has(b, "pcie")) {
    const Tree& pcie = items(b, "pcie");
    HPLPCIeId& id = board.getWriteablePCIeId();
    id.setVendor(text(pcie, "vendor"));
    id.setDevice(text(pcie, "device"));
    id.setSubsystem(text(pcie, "subsystem"));
    id.setFeatureId(text(pcie, "featureId"));
  }
}

void HTEQCfaJsonReader::parseDevices_(const Tree& devices) {
  for (const auto& item : devices) {
    const Tree& d = item.second;
    HPLDevice* device = platform_->addDevice();
    device->setName(text(d, "name"));
    device->setType(text(d, "type"));
    device->setFpgaPart(text(d, "fpgaPart"));
    device->setNumSLRs(static_cast<unsigned int>(num(d, "numSLRs")));
    for (const auto& clock : items(d, "scalableSystemClocks"))
      device->addSystemClock(text(clock.second, "name"), text(clock.second, "frequency"));
    // Every device has a core; a document without one is malformed.
    const Tree& c = d.get_child("core");
    HPLCore& core = device->getCore();
    core.setName(text(c, "name"));
    core.setType(text(c, "type"));
    core.setInstPath(text(c, "instPath"));
    core.setSourceViewInstPath(text(c, "sourceViewInstPath"));
    core.setReconfigModuleName(text(c, "reconfigModuleName"));
    core.setDRBDName(text(c, "drBDName"));
    core.setNumComputeUnits(static_cast<uint16_t>(num(c, "numComputeUnits")));
    if (has(c, "availableResources")) {
      const Tree& r = items(c, "availableResources");
      core.setBRAMCount(text(r, "bramCount"));
      core.setDSPCount(text(r, "dspCount"));
      core.setLUTCount(text(r, "lutCount"));
      core.setRegisterCount(text(r, "registerCount"));
      for (const auto& pb : items(r, "pBlocks")) {
        const std::string pblock = text(pb.second, "name");
        if (has(pb.second, "validSlrs")) {
          std::vector<std::string> slrs;
          for (const auto& slr : items(pb.second, "validSlrs")) slrs.push_back(slr.second.data());
          core.addSLRInfo(pblock, slrs);
        }
        for (const auto& res : items(pb.second, "resources"))
          core.addResourceInfo(pblock, text(res.second, "name"), text(res.second, "value"));
      }
    }
  }
}

void HTEQCfaJsonReader::parseMemories_(const Tree& memories) {
  for (const auto& item : memories) {
    const Tree& m = item.second;
    HPLMemory* memory = platform_->addMemory();
    memory->setName(text(m, "name"));
    memory->setType(text(m, "type"));
    memory->setSize(text(m, "size"));
    if (has(m, "lowAddress")) memory->setLowestAddress(static_cast<uint64_t>(num64(m, "lowAddress")));
    if (has(m, "highAddress")) memory->setHighestAddress(static_cast<uint64_t>(num64(m, "highAddress")));
    for (const auto& param : items(m, "configParams"))
      memory->addConfigParam(text(param.second, "name"), text(param.second, "value"));
  }
}

void HTEQCfaJsonReader::parseFiles_(const Tree& files) {
  for (const auto& item : files) {
    const Tree& f = item.second;
    const std::string type = text(f, "type");
    const std::string name = text(f, "name");
    HPLFile* file = platform_->addFile(type, name);
    file->setUsedIn(text(f, "usedIn"));
    file->setProcessingOrder(text(f, "processingOrder"));
    if (type == "EMU_XML" || type == "EMU_JSON") parseEmulationFile_(type, name);
  }
}

void HTEQCfaJsonReader::parseFeatureRoms_(const Tree& roms) {
  for (const auto& item : roms) {
    const Tree& r = item.second;
    HTEQHardwareFeatureRom* rom = platform_->addFeatureRom();
    rom->setMajorVersion(static_cast<uint8_t>(U::getIntValue(r, "majorVersion", 0)));
    rom->setMinorVersion(static_cast<uint8_t>(U::getIntValue(r, "minorVersion", 0)));
    rom->setMorwenBuildID(static_cast<uint32_t>(U::getIntValue(r, "morwenBuildID", 0)));
    rom->setIPBuildID(static_cast<uint32_t>(U::getIntValue(r, "ipBuildID", 0)));
    rom->setTimeSinceEpoch(static_cast<uint64_t>(U::getLongValue(r, "timeSinceEpoch", 0)));
    rom->setDRBaseAddress(static_cast<uint64_t>(U::getLongValue(r, "drBaseAddress", 0)));
    unsigned char bytes[HTEQHardwareFeatureRom::kNameSize];
    nameBytes(text(r, "fpgaPartName"), bytes);
    rom->setFPGAPartName(bytes);
    nameBytes(text(r, "vbnvName"), bytes);
    rom->setVBNVName(bytes);
    rom->setDDRChannelCount(static_cast<uint8_t>(U::getIntValue(r, "ddrChannelCount", 0)));
    rom->setDDRChannelSize(static_cast<uint8_t>(U::getIntValue(r, "ddrChannelSize", 0)));
    rom->setFeatureBitMap(anyBase(U::getValue(items(r, "featureBitMap"), "value")));
    rom->setUUID(text(r, "uuid"));
    static const char* const kCdma[] = {"cdmaBaseAddress0", "cdmaBaseAddress1", "cdmaBaseAddress2",
                                        "cdmaBaseAddress3"};
    for (unsigned i = 0; i < 4; ++i) rom->setCDMABaseAddress(i, static_cast<uint32_t>(anyBase(text(r, kCdma[i]))));
    if (has(r, "maxTempLimit")) rom->setMaxTempLimit(static_cast<uint8_t>(U::getIntValue(r, "maxTempLimit", 0)));
    if (has(r, "maxPowerLimit"))
      rom->setMaxPowerLimit(static_cast<uint8_t>(U::getIntValue(r, "maxPowerLimit", 0)));
  }
}

void HTEQCfaJsonReader::parseSystemClocks_(const Tree& clocks) {
  for (const auto& item : clocks) {
    const Tree& c = item.second;
    HTEQSystemClock* clock = platform_->addSystemClock();
    clock->setName(text(c, "name"));
    clock->setOrigName(text(c, "origName"));
    clock->setFrequency(text(c, "frequency"));
    clock->setInstRef(text(c, "instRef"));
    clock->setCompRef(text(c, "compRef"));
    clock->setPeriod(text(c, "period"));
    clock->setNormalizedPeriod(text(c, "normalizedPeriod"));
    clock->setStatus(text(c, "status"));
    const int id = static_cast<int>(num(c, "id"));
    clock->setId(id);
    if (flag(c, "default")) platform_->setDefaultClkId(id);
  }
}

// The emulation metadata named by a file of the platform says whether the
// platform can be emulated, and with two block designs.
void HTEQCfaJsonReader::parseEmulationFile_(const std::string& type, const std::string& member) {
  HTEQEmulations emulations;
  if (type == "EMU_XML")
    HTEQEmulationXMLReader::parseFromCfa(archive_, member, &emulations);
  else
    HTEQEmulationJsonReader::parseFromCfa(archive_, member, &emulations);
  for (const HTEQEmulation* emulation : emulations.getEmulations()) {
    for (const HTEQEmulationFile* file : emulation->getFiles()) {
      if (file->getType() == "EMU_HPFM") platform_->setSupportsHWEmulation(true);
      if (file->getType() == "TOP_BD") platform_->setSupportsTwoHwEmuBd(true);
    }
  }
}

std::string HTEQCfaJsonReader::getHpfmFile() const {
  const HPLFile* file = platform_->findFile("HPFM");
  if (file == nullptr || archive_.empty()) return std::string();
  return isl::iostreams::zip::is_file(archive_, file->getName()) ? file->getName() : std::string();
}

std::string HTEQCfaJsonReader::getHpfmStr() const {
  const std::string member = getHpfmFile();
  std::string content;
  if (!member.empty()) HUTZip::readMember(archive_, member, content);
  return content;
}

bool HTEQCfaJsonReader::readHpfmBusInterfaces(const std::string& hpfm) {
  if (hpfm.empty()) return false;
  return HTEQHpfmReader(hpfm, platform_).parseBusInterfaces();
}

bool HTEQCfaJsonReader::readHpfmNocConnectivity(const std::string& hpfm) {
  if (hpfm.empty()) return false;
  return HTEQHpfmReader(hpfm, platform_).parseNocConnectivity();
}
