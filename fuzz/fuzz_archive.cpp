// Writes arbitrary bytes as a hardware archive (.lfa) and loads it. The loader
// turns every parse failure into a null result and a message, so any exception
// is a finding, and so is every crash, leak or hang.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "FuzzSupport.h"
#include "host/ComMsgMgr.h"
#include "platform/HTEQPlatform.h"
#include "platform/PlatformLoader.h"

namespace {
std::string archivePath;
}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Readers print some failures on standard output.
  if (!zr_fuzz::silenceStdout()) return 1;
  archivePath = zr_fuzz::scratchFile("lfa", "plat.lfa");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  {
    std::ofstream out(archivePath, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    if (!out) std::abort();
  }
  teq_platform::PlatformLoader loader(archivePath, teq_platform::PlatformLoader::Default);
  const auto platform = loader.load();
  (void)platform;
  return 0;
}
