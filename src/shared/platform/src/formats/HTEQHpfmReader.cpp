#include "platform/HTEQHpfmReader.h"

#include <utility>

#include "formats/TEQHpfmLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HUTConsole.h"
#include "host/HUTPathUtils.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwareIPParam.h"
#include "platform/HTEQHardwareNocConnectivity.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQHpfmUtl.h"
#include "platform/HTEQSystemClock.h"

namespace {

using WELHardwarePlatform::BusInterface;
using WELHardwarePlatform::BusInterfaceAddressSegment;
using WELHardwarePlatform::Clock;
using WELHardwarePlatform::Component;
using WELHardwarePlatform::DeviceInfo;
using WELHardwarePlatform::NocConnectivity;
using WELHardwarePlatform::Parameter;
using WELHardwarePlatform::PlatformInfo;
using WELHardwarePlatform::Repository;
using WELHardwarePlatform::SystemClocks;

std::string text(const std::wstring& s) { return HI18N::convert(s); }

const char kStreamFailure[] = "Error parsing hardware platform stream from CFA";

// The XML layer puts "name:line: " in front of its reason; the reader's own
// text names the document and the line itself, so the reason is kept alone.
std::string reasonOf(const HXMLException& e) {
  const std::string& full = e.getText();
  const std::string marker = ":" + std::to_string(e.getLineNumber()) + ": ";
  const std::size_t at = full.find(marker);
  return at == std::string::npos ? full : full.substr(at + marker.size());
}

std::string lineText(const HXMLException& e) {
  return "Line number:" + std::to_string(e.getLineNumber()) + ". " + reasonOf(e);
}

}  // namespace

HTEQHpfmReader::HTEQHpfmReader(std::string hpfm, HTEQHardwarePlatform* platform)
    : platform_(platform), hpfm_(std::move(hpfm)) {
  if (hpfm_.empty()) HUTConsole::out("CRITICAL WARNING: Empty hpfm string passed in\n");
}

void HTEQHpfmReader::setPlatformFile(const std::string& file) { platformFile_ = file; }

bool HTEQHpfmReader::parseFile() {
  const std::string header = "Error parsing hardware platform file: " + platformFile_ + "\n";
  if (platformFile_.empty() || !HUTPathUtils::exists(platformFile_)) {
    errorMsg_ += header;
    errorMsg_ += "Specified hardware platform file doens't exists\n";
    return false;
  }
  try {
    Repository repository;
    repository.Unmarshal(platformFile_);
    parseRepository(repository);
  } catch (const HXMLException& e) {
    const std::string report = header + lineText(e) + "\n";
    HUTConsole::out(report);
    errorMsg_ += report;
    ZR_SEND_MSG("@74-12@", ComMsgMask::kError, report, e.getLineNumber());
    return false;
  }
  if (platform_ != nullptr) platform_->setPlatformFile(platformFile_);
  return true;
}

bool HTEQHpfmReader::parseStream() { return parseText_(Scope::kAll); }

bool HTEQHpfmReader::parseBusInterfaces() { return parseText_(Scope::kBusInterfaces); }

bool HTEQHpfmReader::parseNocConnectivity() { return parseText_(Scope::kNocConnectivity); }

bool HTEQHpfmReader::parseDocument(Repository& repository) {
  try {
    repository.Unmarshal(hpfm_.data(), hpfm_.size());
  } catch (const HXMLException& e) {
    reportStreamFailure_(e);
    return false;
  }
  return true;
}

void HTEQHpfmReader::reportStreamFailure_(const HXMLException& e) {
  HUTConsole::out(std::string(kStreamFailure) + "\n" + lineText(e) + "\n");
  errorMsg_ = std::string(kStreamFailure) + "\n" + lineText(e);
  ZR_SEND_MSG("@74-31@", ComMsgMask::kError);
}

void HTEQHpfmReader::addBusInterfaces(const Repository& repository) {
  if (platform_ == nullptr) return;
  const Component& component = repository.GetComponent();
  for (std::size_t i = 0; i < component.SizeBusInterface(); ++i)
    parseBusInterface_(component.GetBusInterface(i), platform_->addBusInterface());
}

void HTEQHpfmReader::addNocConnectivity(const Repository& repository) {
  if (platform_ == nullptr) return;
  const Component& component = repository.GetComponent();
  for (std::size_t i = 0; i < component.SizeNocConnectivity(); ++i)
    parseNocConnectivity_(component.GetNocConnectivity(i));
}

bool HTEQHpfmReader::parseText_(Scope scope) {
  Repository repository;
  if (!parseDocument(repository)) return false;
  try {
    if (scope == Scope::kAll)
      parseRepository(repository);
    else if (scope == Scope::kBusInterfaces)
      addBusInterfaces(repository);
    else
      addNocConnectivity(repository);
  } catch (const HXMLException& e) {
    reportStreamFailure_(e);
    return false;
  }
  return true;
}

void HTEQHpfmReader::parseRepository(const Repository& repository) {
  if (platform_ == nullptr) return;
  parseComponent_(repository.GetComponent());
}

void HTEQHpfmReader::parseComponent_(const Component& component) {
  const std::string name = text(component.GetName());
  const std::string vendor = text(component.GetVendor());
  const PlatformInfo& info = component.GetPlatformInfo();

  // Identity from the file only fills gaps that an archive document left;
  // the board id of an hpfm is its component name.
  if (platform_->getVendor().empty()) platform_->setVendor(vendor);
  if (platform_->getBoardId().empty()) platform_->setBoardId(name);
  if (platform_->getName().empty()) platform_->setName(name);
  // The description of the hardware file replaces whatever came before it.
  platform_->setDescription(text(info.GetDescription()));

  // Resource figures of the component; ResourceEstimates are not the platform's.
  platform_->setBRAMCount(static_cast<int>(component.GetBRAM()));
  platform_->setDSPCount(static_cast<int>(component.GetDSP()));
  platform_->setLUTCount(static_cast<int>(component.GetLUT()));
  platform_->setFFCount(static_cast<int>(component.GetFF()));

  parseDeviceInfo_(info.GetDeviceInfo());
  parseSystemClocks_(info.GetSystemClocks());
  for (std::size_t i = 0; i < component.SizeParameter(); ++i) parseParam_(component.GetParameter(i));
  for (std::size_t i = 0; i < component.SizeBusInterface(); ++i)
    parseBusInterface_(component.GetBusInterface(i), platform_->addBusInterface());
  for (std::size_t i = 0; i < component.SizeNocConnectivity(); ++i)
    parseNocConnectivity_(component.GetNocConnectivity(i));
}

void HTEQHpfmReader::parseDeviceInfo_(const DeviceInfo&) {
  // The model takes its device and part from the archive; the device of the
  // file is checked by the format and otherwise left alone.
}

void HTEQHpfmReader::parseSystemClocks_(const SystemClocks& clocks) {
  platform_->setDefaultClkId(clocks.GetDefaultClock());
  for (std::size_t i = 0; i < clocks.SizeClock(); ++i) {
    const Clock& record = clocks.GetClock(i);
    HTEQSystemClock* clock = platform_->addSystemClock();
    clock->setName(text(record.GetName()));
    clock->setOrigName(text(record.GetName()));
    clock->setCompRef(text(record.GetComponentRef()));
    clock->setInstRef(text(record.GetInstanceRef()));
    clock->setStatus(text(record.GetStatus()));
    clock->setFrequency(record.GetFrequency().get_as_string());
    clock->setPeriod(record.GetPeriod().get_as_string());
    // A clock with an id is known by it: "PL 3"; the file's name stays as
    // the original name.
    if (record.IssetId()) {
      clock->setId(record.GetId());
      clock->setName("PL " + std::to_string(record.GetId()));
    }
    if (record.IssetNormalizedPeriod())
      clock->setNormalizedPeriod(record.GetNormalizedPeriod().get_as_string());
  }
}

void HTEQHpfmReader::parseParam_(const Parameter& record) {
  HTEQHardwareIPParam* param = platform_->addHardwareIPParam();
  param->setName(text(record.GetName()));
  param->setValue(text(record.GetValue()));
  param->setIsValid(text(record.GetIsValid()));
  param->setCompRef(text(record.GetComponentRef()));
  param->setInstRef(text(record.GetInstanceRef()));
}

void HTEQHpfmReader::parseBusInterface_(const BusInterface& record, HTEQHardwareBusInterface* bi) {
  bi->setName(text(record.GetName()));
  if (record.IssetBusTypeRef()) bi->setBusTypeRef(text(record.GetBusTypeRef()));
  if (record.IssetInstanceRef()) bi->setInstRef(text(record.GetInstanceRef()));
  if (record.IssetComponentRef()) bi->setCompRef(text(record.GetComponentRef()));
  if (record.IssetBusInterfaceRef()) bi->setBusInterfaceRef(text(record.GetBusInterfaceRef()));
  if (record.IssetClockRef()) bi->setClockRef(text(record.GetClockRef()));
  if (record.IssetDataWidth()) bi->setDataWidth(record.GetDataWidth());
  if (record.IssetDirection()) bi->setDirection(text(record.GetDirection()));
  if (record.IssetMemport()) bi->setMemPort(text(record.GetMemport()));
  if (record.IssetSptag()) bi->setSPTag(text(record.GetSptag()));
  if (record.IssetMode()) bi->setMode(text(record.GetMode()));
  if (record.IssetAddressSegment()) bi->setAddressSegment(text(record.GetAddressSegment()));
  if (record.IssetMemoryInstance()) bi->setMemoryInstance(text(record.GetMemoryInstance()));
  if (record.IssetSlr()) bi->setSLR(text(record.GetSlr()));
  if (record.IssetSize()) bi->setSize(text(record.GetSize()));
  if (record.IssetPeakMemoryBandwidth()) bi->setPeakMemoryBandwidth(text(record.GetPeakMemoryBandwidth()));
  if (record.IssetMaxMasters()) bi->setMaxMasters(record.GetMaxMasters());
  // The id width is a 32-bit count in the file; the model keeps an int and
  // no real interface comes near its limit, so larger values are held there.
  if (record.IssetIdBits())
    bi->setNumIdBits(record.GetIdBits() > 0x7fffffffu ? 0x7fffffff : static_cast<int>(record.GetIdBits()));
  if (record.IssetIsrId()) bi->setISRId(record.GetIsrId());
  if (record.IssetCategory()) bi->setCategory(text(record.GetCategory()));
  for (std::size_t i = 0; i < record.SizeBusInterfaceAddressSegment(); ++i)
    parseAddressSegment_(record.GetBusInterfaceAddressSegment(i), bi);
}

void HTEQHpfmReader::parseAddressSegment_(const BusInterfaceAddressSegment& record,
                                          HTEQHardwareBusInterface* bi) {
  HTEQHardwareAddressSegment* segment = bi->addAddressSegment();
  if (record.IssetBaseName()) segment->setBaseName(text(record.GetBaseName()));
  if (record.IssetName()) segment->setName(text(record.GetName()));
  if (record.IssetIndex()) segment->setIndex(record.GetIndex());
  if (record.IssetMemoryInstance()) segment->setMemoryInstance(text(record.GetMemoryInstance()));
  if (record.IssetAuto()) segment->setAuto(text(record.GetAuto()));
  if (record.IssetSptag()) segment->setSpTag(text(record.GetSptag()));
  if (record.IssetSlr()) segment->setSlr(text(record.GetSlr()));
  if (record.IssetMaxMasters()) segment->setMaxMasters(record.GetMaxMasters());
  if (record.IssetInstanceRef()) segment->setInstanceRef(text(record.GetInstanceRef()));
  if (record.IssetRegion()) segment->setRegion(text(record.GetRegion()));
  if (record.IssetReadBwUsed()) segment->setReadBwUsed(record.GetReadBwUsed().toIntSaturated());
  if (record.IssetWriteBwUsed()) segment->setWriteBwUsed(record.GetWriteBwUsed().toIntSaturated());
  if (record.IssetInterleave()) segment->setInterleave(record.GetInterleave());

  // Banks of high-bandwidth memory: the interface's instance is the HBM
  // instance, and each segment that may be assigned automatically is one of
  // its banks, a default one when it is "preferred".
  if (record.IssetAuto() && bi->getCompRef() == HTEQHpfmUtl::HBM_MEMORY_SUBSYSTEM) {
    platform_->setHBMPresent();
    const std::string autoValue = text(record.GetAuto());
    if (autoValue != "false") platform_->updateHBMBankInfo(bi->getInstRef(), autoValue == "preferred");
  }
}

void HTEQHpfmReader::parseNocConnectivity_(const NocConnectivity& record) {
  HTEQHardwareNocConnectivity* noc = platform_->addNocConnectivity();
  noc->setInstanceRef(text(record.GetInstanceRef()));
  for (std::size_t i = 0; i < record.SizeBusInterface(); ++i)
    parseBusInterface_(record.GetBusInterface(i), noc->addBusInterface());
}
