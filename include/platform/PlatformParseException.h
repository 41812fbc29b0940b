#ifndef PLATFORM_PLATFORMPARSEEXCEPTION_H
#define PLATFORM_PLATFORMPARSEEXCEPTION_H

#include <stdexcept>

#include "platform/ZrPlatformExport.h"

namespace teq_platform {

// A parse failure inside the loader; load() turns it into a message and a null result.
class ZR_PLATFORM_API PlatformParseException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  ~PlatformParseException() override;
};

}  // namespace teq_platform

#endif
