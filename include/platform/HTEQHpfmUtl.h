#ifndef PLATFORM_HTEQHPFMUTL_H
#define PLATFORM_HTEQHPFMUTL_H

#include <string>

#include "platform/ZrPlatformExport.h"

namespace WELHardwarePlatform {
class BusInterface;
}  // namespace WELHardwarePlatform

// Repairs a hardware platform file whose memory banks of high-bandwidth
// memory are tagged inconsistently. Of the auto-assignable banks (address
// segments whose kp:auto is set and not "false") either none or all should be
// "preferred"; a file where only some are gets all of them marked.
class ZR_PLATFORM_API HTEQHpfmUtl {
 public:
  // The component reference of bus interfaces of high-bandwidth memory.
  static constexpr char HBM_MEMORY_SUBSYSTEM[] = "hbm_memory_subsystem";

  // Rewrites the file in place when its one HBM bus interface has some but
  // not all auto-assignable segments "preferred"; leaves it untouched
  // otherwise. A missing file sends "@74-12@", an unreadable one
  // "@74-260@%s%s%s", a second HBM interface after one that needed the repair
  // "@74-261@"; none of these writes. A failed write sends "@74-10@%s" or
  // "@74-15@%s%s%s%s" and raises HXMLException.
  static void ChangeAndWriteHpfmIfNeeded(const std::string& file);

  // True when at least one, but not every, auto-assignable segment of the
  // interface is "preferred".
  static bool areSomeButNotAllAddressSegmentsPreferred(WELHardwarePlatform::BusInterface& busInterface);
  // Marks every auto-assignable segment "preferred"; the result is that of
  // areSomeButNotAllAddressSegmentsPreferred before the change.
  static bool markAllTrueAddressSegmentsPreferred(WELHardwarePlatform::BusInterface& busInterface);

 private:
  static bool iterateOverAddressSegments_(WELHardwarePlatform::BusInterface& busInterface, bool mark);
};

#endif
