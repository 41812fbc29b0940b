#ifndef PLATFORM_HTEQSYSTEMCLOCK_H
#define PLATFORM_HTEQSYSTEMCLOCK_H

#include <string>

#include "platform/JSONSerializable.h"

// A named clock of the platform. Frequency and period keep the text of the
// source file. A clock read without an id has -1, so it never matches the
// platform's default clock id of 0.
class ZR_PLATFORM_API HTEQSystemClock : public teq_platform::JSONSerializable {
 public:
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

  const std::string& getName() const { return name_; }
  void setName(std::string v) { name_ = std::move(v); }
  const std::string& getOrigName() const { return origName_; }
  void setOrigName(std::string v) { origName_ = std::move(v); }
  const std::string& getFrequency() const { return frequency_; }
  void setFrequency(std::string v) { frequency_ = std::move(v); }
  const std::string& getCompRef() const { return compRef_; }
  void setCompRef(std::string v) { compRef_ = std::move(v); }
  const std::string& getInstRef() const { return instRef_; }
  void setInstRef(std::string v) { instRef_ = std::move(v); }
  const std::string& getStatus() const { return status_; }
  void setStatus(std::string v) { status_ = std::move(v); }
  const std::string& getPeriod() const { return period_; }
  void setPeriod(std::string v) { period_ = std::move(v); }
  const std::string& getNormalizedPeriod() const { return normalizedPeriod_; }
  void setNormalizedPeriod(std::string v) { normalizedPeriod_ = std::move(v); }
  int getId() const { return id_; }
  void setId(int v) { id_ = v; }

  // Status "scalable" or "changeable", in any case.
  bool isScalable() const;
  // Status "fixed", in any case.
  bool isFixed() const;
  // Status "reserved", in any case.
  bool isReserved() const;

 private:
  std::string name_;
  std::string origName_;
  std::string frequency_;
  std::string compRef_;
  std::string instRef_;
  std::string status_;
  std::string period_;
  std::string normalizedPeriod_;
  int id_ = -1;
};

#endif
