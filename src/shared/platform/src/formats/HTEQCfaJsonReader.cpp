#include "platform/HTEQCfaJsonReader.h"

#include <boost/property_tree/ptree.hpp>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "archives/ArchiveMemberCache.h"
#include "emulation/HTEQEmulationCfaMember.h"
#include "formats/TEQHpfmLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "host/HUTFile.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "json/JsonDocument.h"
#include "loading/ReportOnlyLoad.h"
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
using Node = zr_json::JsonNode;

namespace {

// Lookups over the parsed document with the meaning HTEQJSONUtils gives them
// on a property tree: the first child with the key counts, a missing key reads
// as empty.
std::string text(const Node& t, const char* key) {
  const Node* c = t.child(key);
  return c ? std::string(c->data) : std::string();
}
bool flag(const Node& t, const char* key) { return HSTStringUtils::iequals(text(t, key), "true"); }
bool has(const Node& t, const char* key) { return t.child(key) != nullptr; }

// A value's text for the C library's number parsers ("" when missing); the
// document ends every value with a NUL.
const char* cText(const Node& t, const char* key) {
  const Node* c = t.child(key);
  return c && !c->data.empty() ? c->data.data() : "";
}

// Numbers read the way the C library does: leading decimal digits, anything
// else 0.
long num(const Node& t, const char* key) { return std::strtol(cText(t, key), nullptr, 10); }
long long num64(const Node& t, const char* key) { return std::strtoll(cText(t, key), nullptr, 10); }
// A non-empty value's leading decimal digits; the fallback otherwise.
long numOr(const Node& t, const char* key, long fallback) {
  const char* s = cText(t, key);
  return *s != '\0' ? std::strtol(s, nullptr, 10) : fallback;
}
int intOr(const Node& t, const char* key, int fallback) { return static_cast<int>(numOr(t, key, fallback)); }
unsigned int uintOr(const Node& t, const char* key, unsigned int fallback) {
  return static_cast<unsigned int>(numOr(t, key, fallback));
}
// Hexadecimal ("0x...") or decimal text, as the model writes its addresses.
unsigned long long anyBase(const std::string& text) { return std::strtoull(text.c_str(), nullptr, 0); }

// The children of an array (or object) at `key`; none when it is missing.
const Node& items(const Node& t, const char* key) {
  static const Node none;
  const Node* child = t.child(key);
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
void parseBusInterfaces(const Node& list, Add add) {
  for (const Node& b : list.children()) {
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
    for (const Node& s : items(b, "addressSegments").children()) {
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

// The hpfm member of an archive as the JSON route reads it: absent or empty
// (no document), a document, or a text that does not parse (no document
// either, reported once).
struct HpfmMember {
  std::string text;
  std::unique_ptr<WELHardwarePlatform::Repository> document;
};
const char kHpfmKind[] = "json route hpfm";

}  // namespace

HTEQCfaJsonReader::HTEQCfaJsonReader(HPLPlatform* platform)
    : platform_(platform), ownCache_(std::make_shared<ArchiveMemberCache>()), cache_(ownCache_.get()) {}

void HTEQCfaJsonReader::setMemberCache(ArchiveMemberCache* cache) {
  cache_ = cache != nullptr ? cache : ownCache_.get();
}

bool HTEQCfaJsonReader::canParse(const std::string& archive, Mode mode, std::string& member) {
  return locateMembers_(archive, mode, member, nullptr);
}

bool HTEQCfaJsonReader::canParseHwEmu(const std::string& archive, Mode mode, std::string& member) {
  std::string mainMember;
  bool emuFound[2] = {false, false};
  if (!locateMembers_(archive, mode, mainMember, emuFound)) return false;
  if (emuFound[0]) {
    member = platform_->getHwEmuJsonFileName();
    return true;
  }
  if (mode != teq_platform::PlatformLoader::PrimaryJsonOnly && emuFound[1]) {
    member = platform_->getAltHwEmuJsonFileName();
    return true;
  }
  return false;
}

bool HTEQCfaJsonReader::locateMembers_(const std::string& archive, Mode mode, std::string& member,
                                       bool* emuFound) {
  if (archive.empty() || !HUTFile::exists(archive)) {
    ZR_SEND_MSG("@74-66@%s", ComMsgMask::kCriticalWarning, archive);
    return false;
  }
  archive_ = archive;
  platform_->setPlatformFile(HUTFile::getCanonicalName(archive));
  if (mode == teq_platform::PlatformLoader::XmlOnly) return false;
  const std::string primary = platform_->getJsonFileName();
  const std::string alternative = platform_->getAltJsonFileName();
  // One look into the archive answers for every name a load asks about.
  std::vector<std::string> names = {primary, alternative};
  if (emuFound != nullptr) {
    names.push_back(platform_->getHwEmuJsonFileName());
    names.push_back(platform_->getAltHwEmuJsonFileName());
  }
  const std::vector<bool> found = HUTZip::containsFiles(archive, names);
  if (emuFound != nullptr) {
    emuFound[0] = found[2];
    emuFound[1] = found[3];
  }
  if (mode == teq_platform::PlatformLoader::PrimaryJsonOnly) {
    member = primary;
    return found[0];
  }
  member = found[1] ? alternative : primary;
  return found[1] || found[0];
}

bool HTEQCfaJsonReader::parseCFA(const std::string& archive, Mode mode) {
  std::string member;
  if (!canParse(archive, mode, member)) return false;
  return parseMember_(archive, member, false);
}

bool HTEQCfaJsonReader::parseMember(const std::string& archive, const std::string& member) {
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
      content = isl::iostreams::read_metadata(in, member);
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
  std::ifstream in(file, std::ios::binary);
  const std::string text = zr_json::readText(in, file);
  zr_json::Document doc;
  zr_json::readDocument(text, doc, file, HTEQJSONUtils::kMaxDepth);
  parseRoot_(doc.root());
  return true;
}

bool HTEQCfaJsonReader::parseJsonString(const std::string& textIn) {
  if (textIn.empty()) return false;
  zr_json::Document doc;
  const std::string name = archive_.empty() ? std::string("JSON metadata") : archive_;
  if (teq_platform::ReportOnlyLoad::active())
    zr_json::readDocument(textIn, doc, name, HTEQJSONUtils::kMaxDepth,
                          teq_platform::ReportOnlyLoad::skippedMembers());
  else
    zr_json::readDocument(textIn, doc, name, HTEQJSONUtils::kMaxDepth);
  parseRoot_(doc.root());
  return true;
}

void HTEQCfaJsonReader::parseRoot_(const Node& root) {
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
  for (const Node& item : items(root, "zuncCompileXPSwitches").children())
    p.addZuncCompileXpSwitch(std::string(item.data));
  for (const Node& item : items(root, "zuncLinkXPSwitches").children())
    p.addZuncLinkXpSwitch(std::string(item.data));
  for (const Node& item : items(root, "designIpInstances").children()) {
    HTEQDesignIPInstance* ip = p.addDesignIPInstance();
    ip->setVLNV(text(item, "vlnv"));
    ip->setInstanceName(text(item, "instance"));
    for (const Node& param : items(item, "configuration").children())
      ip->addConfigParam(std::string(param.key), std::string(param.data));
  }
  if (has(root, "flash")) {
    const Node& flash = items(root, "flash");
    p.setFlashInterfaceType(text(flash, "interfaceType"));
    p.setFlashOffsetAddress(text(flash, "offsetAddress"));
    p.setFlashSize(text(flash, "size"));
  }
  if (has(root, "designIDs")) {
    const Node& ids = items(root, "designIDs");
    p.setDesignID(static_cast<uint32_t>(intOr(ids, "designID", 0)));
    p.setParentID(static_cast<uint32_t>(intOr(ids, "parentID", 0)));
    p.setNodeID(static_cast<uint32_t>(intOr(ids, "nodeID", 0)));
    p.setFunctionID(static_cast<uint32_t>(intOr(ids, "functionID", 0)));
    // "plInterfaceID" is reserved here and not read.
    if (has(ids, "tilngineIDs")) {
      const Node& til = items(ids, "tilngineIDs");
      p.setTILNodeID(static_cast<uint32_t>(intOr(til, "nodeID", 0)));
      p.setTILUniqueID(static_cast<uint32_t>(intOr(til, "uniqueID", 0)));
      p.setTILPuID(static_cast<uint32_t>(intOr(til, "puID", 0)));
    }
  }
  for (const Node& item : items(root, "reconfigPartitionIDs").children()) {
    HTEQReconfigPartition* rp = p.addReconfigPartition();
    rp->setDesignID(static_cast<uint32_t>(intOr(item, "designID", 0)));
    rp->setParentID(static_cast<uint32_t>(intOr(item, "parentID", 0)));
    rp->setNodeID(static_cast<uint32_t>(intOr(item, "nodeID", 0)));
    rp->setFunctionID(static_cast<uint32_t>(intOr(item, "functionID", 0)));
  }
  if (has(root, "tilHardware")) {
    const Node& til = items(root, "tilHardware");
    HTEQTilHardware& hw = p.getTilHardware();
    hw.setArch(text(til, "arch"));
    hw.setNpiBaseAddress(uintOr(til, "npiBaseAddress", 0));
    if (has(til, "shimRows")) {
      hw.setStartShimRow(intOr(items(til, "shimRows"), "start", 0));
      hw.setNumShimRows(intOr(items(til, "shimRows"), "num", 0));
    }
    if (has(til, "coreRows")) {
      hw.setStartCoreRow(intOr(items(til, "coreRows"), "start", 0));
      hw.setNumCoreRows(intOr(items(til, "coreRows"), "num", 0));
    }
    if (has(til, "memRows")) {
      hw.setStartMemRow(intOr(items(til, "memRows"), "start", 0));
      hw.setNumMemRows(intOr(items(til, "memRows"), "num", 0));
    }
  }
  for (const Node& item : items(root, "tilPartitions").children()) {
    // The partition reads itself from a property tree.
    Tree partition;
    zr_json::Document::toTree(item, partition);
    p.addTilPartition().fromJSON(partition);
  }
  if (has(root, "static")) p.setStatic(flag(root, "static"));
  if (has(root, "drBdInstName")) p.setDrBdInstName(text(root, "drBdInstName"));
  if (has(root, "rm")) p.setRM(flag(root, "rm"));
  for (const Node& item : items(root, "resources").children()) {
    const std::string type = text(item, "type");
    const int count = static_cast<int>(num(item, "count"));
    if (HSTStringUtils::iequals(type, "BRAM"))
      p.setBRAMCount(count);
    else if (HSTStringUtils::iequals(type, "DSP"))
      p.setDSPCount(count);
    else if (HSTStringUtils::iequals(type, "LUT"))
      p.setLUTCount(count);
    else if (HSTStringUtils::iequals(type, "FF"))
      p.setFFCount(count);
  }
  if (has(root, "board")) parseBoard_(items(root, "board"));
  parseDevices_(items(root, "devices"));
  for (const Node& item : items(root, "interfaces").children()) {
    HPLInterface* i = p.addInterface();
    i->setId(text(item, "id"));
    i->setName(text(item, "name"));
    i->setType(text(item, "type"));
  }
  parseMemories_(items(root, "memories"));
  parseFiles_(items(root, "files"));
  parseFeatureRoms_(items(root, "featureRoms"));
  parseSystemClocks_(items(root, "systemClocks"));

  // An archive with an hpfm member takes its bus interfaces and NoC records
  // from it; the document's own lists count only without one.
  // The member is parsed once for both lists, and once per load however many
  // platforms of the load name it.
  const std::string hpfmName = getHpfmFile();
  std::shared_ptr<const HpfmMember> hpfm;
  if (!hpfmName.empty()) {
    hpfm = cache_->get<HpfmMember>(kHpfmKind, archive_, hpfmName, [this] {
      auto member = std::make_unique<HpfmMember>();
      member->text = getHpfmStr();
      if (member->text.empty()) return member;
      auto document = std::make_unique<WELHardwarePlatform::Repository>();
      if (HTEQHpfmReader(member->text, nullptr).parseDocument(*document))
        member->document = std::move(document);
      return member;
    });
  }
  if (hpfm && hpfm->document) {
    HTEQHpfmReader reader(hpfm->text, platform_);
    reader.addBusInterfaces(*hpfm->document);
    reader.addNocConnectivity(*hpfm->document);
  } else {
    parseBusInterfaces(items(root, "busInterfaces"), [&p] { return p.addBusInterface(); });
    for (const Node& item : items(root, "nocConnectivity").children()) {
      HTEQHardwareNocConnectivity* noc = p.addNocConnectivity();
      noc->setInstanceRef(text(item, "instRef"));
      parseBusInterfaces(items(item, "busInterfaces"), [noc] { return noc->addBusInterface(); });
    }
  }
  for (const Node& item : items(root, "ipParameters").children()) {
    HTEQHardwareIPParam* param = p.addHardwareIPParam();
    param->setName(text(item, "name"));
    param->setValue(text(item, "value"));
    param->setIsValid(text(item, "valid"));
    param->setCompRef(text(item, "compRef"));
    param->setInstRef(text(item, "instRef"));
  }
}

void HTEQCfaJsonReader::parseDesignIntent_(const Node& intent, const Node& root) {
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
    const Node* child = intent.child(intentKey.name);
    if (child && has(*child, "value") && has(*child, "explicit") && flag(*child, "explicit"))
      platform_->setExplicitDesignIntent(intentKey.key, flag(*child, "value"));
    else
      platform_->setComputedDesignIntent(intentKey.key, byDefault);
  }
}

void HTEQCfaJsonReader::parseBoard_(const Node& b) {
  HPLBoard& board = platform_->getBoard();
  board.setName(text(b, "name"));
  board.setVendor(text(b, "vendor"));
  board.setPart(text(b, "part"));
  board.setBoardPart(text(b, "boardPart"));
  board.setImgFileHdpi(text(b, "imageFileHdpi"));
  board.setImgFileMdpi(text(b, "imageFileMdpi"));
  board.setImgFileLdpi(text(b, "imageFileLdpi"));
  if (has(b, "pcie")) {
    const Node& pcie = items(b, "pcie");
    HPLPCIeId& id = board.getWriteablePCIeId();
    id.setVendor(text(pcie, "vendor"));
    id.setDevice(text(pcie, "device"));
    id.setSubsystem(text(pcie, "subsystem"));
    id.setFeatureId(text(pcie, "featureId"));
  }
}

void HTEQCfaJsonReader::parseDevices_(const Node& devices) {
  for (const Node& item : devices.children()) {
    const Node& d = item;
    HPLDevice* device = platform_->addDevice();
    device->setName(text(d, "name"));
    device->setType(text(d, "type"));
    device->setFpgaPart(text(d, "fpgaPart"));
    device->setNumSLRs(static_cast<unsigned int>(num(d, "numSLRs")));
    for (const Node& clock : items(d, "scalableSystemClocks").children())
      device->addSystemClock(text(clock, "name"), text(clock, "frequency"));
    // Every device has a core; a document without one is malformed.
    const Node* coreNode = d.child("core");
    if (coreNode == nullptr)
      throw boost::property_tree::ptree_bad_path("No such node",
                                                 boost::property_tree::ptree::path_type("core"));
    const Node& c = *coreNode;
    HPLCore& core = device->getCore();
    core.setName(text(c, "name"));
    core.setType(text(c, "type"));
    core.setInstPath(text(c, "instPath"));
    core.setSourceViewInstPath(text(c, "sourceViewInstPath"));
    core.setReconfigModuleName(text(c, "reconfigModuleName"));
    core.setDRBDName(text(c, "drBDName"));
    core.setNumComputeUnits(static_cast<uint16_t>(num(c, "numComputeUnits")));
    if (has(c, "availableResources")) {
      const Node& r = items(c, "availableResources");
      core.setBRAMCount(text(r, "bramCount"));
      core.setDSPCount(text(r, "dspCount"));
      core.setLUTCount(text(r, "lutCount"));
      core.setRegisterCount(text(r, "registerCount"));
      for (const Node& pb : items(r, "pBlocks").children()) {
        const std::string pblock = text(pb, "name");
        if (has(pb, "validSlrs")) {
          std::vector<std::string> slrs;
          for (const Node& slr : items(pb, "validSlrs").children()) slrs.push_back(std::string(slr.data));
          core.addSLRInfo(pblock, slrs);
        }
        for (const Node& res : items(pb, "resources").children())
          core.addResourceInfo(pblock, text(res, "name"), text(res, "value"));
      }
    }
  }
}

void HTEQCfaJsonReader::parseMemories_(const Node& memories) {
  for (const Node& item : memories.children()) {
    const Node& m = item;
    HPLMemory* memory = platform_->addMemory();
    memory->setName(text(m, "name"));
    memory->setType(text(m, "type"));
    memory->setSize(text(m, "size"));
    if (has(m, "lowAddress")) memory->setLowestAddress(static_cast<uint64_t>(num64(m, "lowAddress")));
    if (has(m, "highAddress")) memory->setHighestAddress(static_cast<uint64_t>(num64(m, "highAddress")));
    for (const Node& param : items(m, "configParams").children())
      memory->addConfigParam(text(param, "name"), text(param, "value"));
  }
}

void HTEQCfaJsonReader::parseFiles_(const Node& files) {
  for (const Node& item : files.children()) {
    const Node& f = item;
    const std::string type = text(f, "type");
    const std::string name = text(f, "name");
    HPLFile* file = platform_->addFile(type, name);
    file->setUsedIn(text(f, "usedIn"));
    file->setProcessingOrder(text(f, "processingOrder"));
    if (type == "EMU_XML" || type == "EMU_JSON") parseEmulationFile_(type, name);
  }
}

void HTEQCfaJsonReader::parseFeatureRoms_(const Node& roms) {
  for (const Node& item : roms.children()) {
    const Node& r = item;
    HTEQHardwareFeatureRom* rom = platform_->addFeatureRom();
    rom->setMajorVersion(static_cast<uint8_t>(intOr(r, "majorVersion", 0)));
    rom->setMinorVersion(static_cast<uint8_t>(intOr(r, "minorVersion", 0)));
    rom->setMorwenBuildID(static_cast<uint32_t>(intOr(r, "morwenBuildID", 0)));
    rom->setIPBuildID(static_cast<uint32_t>(intOr(r, "ipBuildID", 0)));
    rom->setTimeSinceEpoch(static_cast<uint64_t>(numOr(r, "timeSinceEpoch", 0)));
    rom->setDRBaseAddress(static_cast<uint64_t>(numOr(r, "drBaseAddress", 0)));
    unsigned char bytes[HTEQHardwareFeatureRom::kNameSize];
    // A longer part name is cut to its first 63 bytes, as the XML route cuts
    // it, so that it keeps the ROM's terminating zero.
    nameBytes(text(r, "fpgaPartName").substr(0, HTEQHardwareFeatureRom::kNameSize - 1), bytes);
    rom->setFPGAPartName(bytes);
    nameBytes(text(r, "vbnvName"), bytes);
    rom->setVBNVName(bytes);
    rom->setDDRChannelCount(static_cast<uint8_t>(intOr(r, "ddrChannelCount", 0)));
    rom->setDDRChannelSize(static_cast<uint8_t>(intOr(r, "ddrChannelSize", 0)));
    rom->setFeatureBitMap(anyBase(text(items(r, "featureBitMap"), "value")));
    rom->setUUID(text(r, "uuid"));
    static const char* const kCdma[] = {"cdmaBaseAddress0", "cdmaBaseAddress1", "cdmaBaseAddress2",
                                        "cdmaBaseAddress3"};
    for (unsigned i = 0; i < 4; ++i)
      rom->setCDMABaseAddress(i, static_cast<uint32_t>(anyBase(text(r, kCdma[i]))));
    if (has(r, "maxTempLimit")) rom->setMaxTempLimit(static_cast<uint8_t>(intOr(r, "maxTempLimit", 0)));
    if (has(r, "maxPowerLimit")) rom->setMaxPowerLimit(static_cast<uint8_t>(intOr(r, "maxPowerLimit", 0)));
  }
}

void HTEQCfaJsonReader::parseSystemClocks_(const Node& clocks) {
  for (const Node& item : clocks.children()) {
    const Node& c = item;
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
// A member named by several entries is parsed once.
void HTEQCfaJsonReader::parseEmulationFile_(const std::string& type, const std::string& member) {
  const bool xml = type == "EMU_XML";
  const auto emulations = cache_->get<HTEQEmulations>(
      xml ? "EMU_XML" : "EMU_JSON", archive_, HTEQEmulationCfaMember::reduceMemberName(member), [&] {
        auto parsed = std::make_unique<HTEQEmulations>();
        if (xml)
          HTEQEmulationXMLReader::parseFromCfa(archive_, member, parsed.get());
        else
          HTEQEmulationJsonReader::parseFromCfa(archive_, member, parsed.get());
        return parsed;
      });
  for (const HTEQEmulation* emulation : emulations->getEmulations()) {
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
