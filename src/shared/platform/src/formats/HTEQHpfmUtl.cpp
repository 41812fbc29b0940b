#include "platform/HTEQHpfmUtl.h"

#include <fstream>

#include "formats/TEQHpfmLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HUTPathUtils.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHpfmReader.h"

namespace {

// The value of kp:auto that marks a bank as a default one, and the value that
// takes a bank out of automatic assignment.
const std::wstring kPreferred = L"preferred";
const std::wstring kNotAuto = L"false";

// The reason of an XML failure without the "name:line: " the XML layer puts first.
std::string reasonOf(const HXMLException& e) {
  const std::string& full = e.getText();
  const std::string marker = ":" + std::to_string(e.getLineNumber()) + ": ";
  const std::size_t at = full.find(marker);
  return at == std::string::npos ? full : full.substr(at + marker.size());
}

}  // namespace

bool HTEQHpfmUtl::iterateOverAddressSegments_(WELHardwarePlatform::BusInterface& busInterface, bool mark) {
  std::size_t autoCount = 0;
  std::size_t preferredCount = 0;
  for (std::size_t i = 0; i < busInterface.SizeBusInterfaceAddressSegment(); ++i) {
    WELHardwarePlatform::BusInterfaceAddressSegment& segment = busInterface.GetBusInterfaceAddressSegment(i);
    if (!segment.IssetAuto() || segment.GetAuto() == kNotAuto) continue;
    ++autoCount;
    if (segment.GetAuto() == kPreferred)
      ++preferredCount;
    else if (mark)
      segment.SetAuto(kPreferred);
  }
  return preferredCount != 0 && preferredCount != autoCount;
}

bool HTEQHpfmUtl::areSomeButNotAllAddressSegmentsPreferred(WELHardwarePlatform::BusInterface& busInterface) {
  return iterateOverAddressSegments_(busInterface, false);
}

bool HTEQHpfmUtl::markAllTrueAddressSegmentsPreferred(WELHardwarePlatform::BusInterface& busInterface) {
  return iterateOverAddressSegments_(busInterface, true);
}

void HTEQHpfmUtl::ChangeAndWriteHpfmIfNeeded(const std::string& file) {
  // The file is read into a scratch platform the way the loader reads it, so
  // that it passes the same checks; the platform itself is dropped.
  HPLPlatform scratch;
  HTEQHpfmReader reader("NormalizeMemoryBanks", &scratch);
  reader.setPlatformFile(file);
  if (file.empty() || !HUTPathUtils::exists(file)) {
    ZR_SEND_MSG("@74-12@", ComMsgMask::kError, "File: " + file + " doesn't exist.\n");
    return;
  }

  WELHardwarePlatform::Repository repository;
  try {
    repository.Unmarshal(file);
    reader.parseRepository(repository);
  } catch (const HXMLException& e) {
    ZR_SEND_MSG("@74-260@%s%s%s", ComMsgMask::kError, file, e.getLineNumber(), reasonOf(e));
    return;
  }

  // Only one HBM instance is repaired: a second one after a repair leaves the
  // whole file as it is.
  bool changed = false;
  WELHardwarePlatform::Component& component = repository.GetComponent();
  for (std::size_t i = 0; i < component.SizeBusInterface(); ++i) {
    WELHardwarePlatform::BusInterface& busInterface = component.GetBusInterface(i);
    if (HI18N::convert(busInterface.GetComponentRef()) != HBM_MEMORY_SUBSYSTEM) continue;
    if (changed) {
      ZR_SEND_MSG("@74-261@", ComMsgMask::kError);
      return;
    }
    if (areSomeButNotAllAddressSegmentsPreferred(busInterface)) {
      markAllTrueAddressSegmentsPreferred(busInterface);
      changed = true;
    }
  }
  if (!changed) return;

  std::string text;
  try {
    repository.Marshal(&text);
  } catch (const HXMLException& e) {
    ZR_SEND_MSG("@74-15@%s%s%s%s", ComMsgMask::kError, file, e.getText(), "platform");
    throw HXMLException("cannot write the hardware platform file '" + file + "': " + e.getText(), 0);
  }
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (out) out << text;
  if (out) out.close();
  if (!out) {
    ZR_SEND_MSG("@74-10@%s", ComMsgMask::kError, file);
    throw HXMLException("cannot write the hardware platform file '" + file + "'", 0);
  }
}
