// Feeds arbitrary bytes as the text of a hardware platform file (hpfm) to the
// reader, as an archive member would. The reader reports every failure in its
// answer and throws nothing, so any exception is a finding, and so is every
// crash, leak or hang.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "FuzzSupport.h"
#include "host/ComMsgMgr.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHpfmReader.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The reader prints its failures on standard output; libFuzzer reports on
  // standard error.
  if (!zr_fuzz::silenceStdout()) return 1;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  const std::string text(reinterpret_cast<const char*>(data), size);
  HPLPlatform platform;
  HTEQHpfmReader reader(text, &platform);
  if (reader.parseStream()) {
    // The narrower passes read the same text into the same platform again, as
    // the JSON route does after its own member.
    HTEQHpfmReader(text, &platform).parseBusInterfaces();
    HTEQHpfmReader(text, &platform).parseNocConnectivity();
  }
  return 0;
}
