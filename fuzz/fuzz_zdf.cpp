// Feeds arbitrary bytes to the descriptor parser. Any exception other than the
// XML layer's own is a finding, and so is every crash, leak or hang.
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "loading/TEQPlatformLMX.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  try {
    const auto p =
        TEQPlatform::unmarshalMemory(std::string(reinterpret_cast<const char*>(data), size), "fuzz.zdf");
    (void)p;
  } catch (const HXMLException&) {
  }
  return 0;
}
