// Feeds arbitrary bytes to the support exception list reader: the first byte
// picks whether the rest is stored packed (the library's format) or as it is.
// The verdict must be one of the four colours; every exception, crash, leak
// or hang is a finding.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "FuzzSupport.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "host/IslXp.h"
#include "platform/NativeCatalogService.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  static const std::string root = zr_fuzz::scratchFile("achromatic", "app");
  static const bool ready = [] {
    HUTFile::mkDirRecursive(root + "/platforms");
    HUTEnv::instance().setAppRoots({root});
    return zr_fuzz::silenceStdout();
  }();
  if (!ready || size == 0) return 0;
  const std::string body(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string list = root + "/platforms/achromatic";
  if (data[0] & 1) {
    isl::iostreams::xp::write_file(list, body);
  } else {
    HUTFile::writeAtomically(list, body);
  }
  std::string reason;
  const int color = teq::platform::NativeCatalogService::getColor(nullptr, reason);
  if (color < 2 || color > 3) std::abort();  // without a platform no entry can match
  return 0;
}
