// Feeds arbitrary bytes to the parser of the hardware archive's XML member.
// A document that parses is then stored as the XML member of a small archive
// and read into a platform by the XML reader, which reports its failures and
// throws nothing. HXMLException from the parser is the expected refusal; any
// other exception is a finding, and so is every crash, leak or hang.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "FuzzSupport.h"
#include "formats/TEQCfaXmlLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTZip.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaXmlReader.h"

namespace {
std::string archivePath;
}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Members the reader cannot parse are reported on standard output.
  if (!zr_fuzz::silenceStdout()) return 1;
  archivePath = zr_fuzz::scratchFile("cfa", "plat.lfa");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  try {
    BasePlatform::Root root;
    root.Unmarshal(reinterpret_cast<const char*>(data), size);
  } catch (const HXMLException&) {
    return 0;
  }
  // Only documents that parse go through an archive: writing one costs more
  // than parsing, and the rest fail the reader at the same step.
  HUTZip::writeMember(archivePath, "lfa.xml", std::string(reinterpret_cast<const char*>(data), size));
  HPLPlatform platform;
  HTEQCfaXmlReader reader(archivePath, &platform);
  int major = 0;
  int minor = 0;
  (void)reader.getRootVersion(major, minor);
  (void)reader.parseCFA();
  return 0;
}
