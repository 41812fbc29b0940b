#include "platform/HTEQSystemClock.h"

#include "host/HSTStringUtils.h"
#include "platform/JSONObjectWriter.h"

bool HTEQSystemClock::isScalable() const {
  return HSTStringUtils::iequals(status_, "scalable") || HSTStringUtils::iequals(status_, "changeable");
}

bool HTEQSystemClock::isFixed() const { return HSTStringUtils::iequals(status_, "fixed"); }

bool HTEQSystemClock::isReserved() const { return HSTStringUtils::iequals(status_, "reserved"); }

void HTEQSystemClock::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("name", name_);
  writer.addKey("origName", origName_);
  writer.addKey("id", id_);
  writer.addKey("frequency", frequency_);
  writer.addKey("instRef", instRef_);
  writer.addKey("compRef", compRef_);
  writer.addKey("period", period_);
  writer.addKey("normalizedPeriod", normalizedPeriod_);
  writer.addKey("status", status_);
}
