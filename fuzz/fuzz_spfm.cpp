// Feeds arbitrary bytes to the software platform file parser and writes what
// it read back out. A document that does not parse raises HXMLException; any
// other exception, a record set that cannot be written again, a crash, leak
// or hang is a finding.
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "software/TEQSoftwarePlatformLMX.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  TEQSoftwarePlatform::Platform platform;
  try {
    platform = TEQSoftwarePlatform::unmarshalString(std::string(reinterpret_cast<const char*>(data), size),
                                                    "fuzz.spfm");
  } catch (const HXMLException&) {
    return 0;
  }
  // What was read can always be written again.
  (void)TEQSoftwarePlatform::marshal(platform);
  return 0;
}
