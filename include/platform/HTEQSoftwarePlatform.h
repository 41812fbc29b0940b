#ifndef PLATFORM_HTEQSOFTWAREPLATFORM_H
#define PLATFORM_HTEQSOFTWAREPLATFORM_H

// PLACEHOLDER: the software platform. The software platform work replaces this
// file as a whole.

#include "platform/JSONSerializable.h"

class ZR_PLATFORM_API HTEQSoftwarePlatform : public teq_platform::JSONSerializable {
 public:
  HTEQSoftwarePlatform();
  ~HTEQSoftwarePlatform() override;
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;
};

#endif
