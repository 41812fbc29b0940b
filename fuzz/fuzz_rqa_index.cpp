// Feeds arbitrary bytes as the index of a metadata archive ("rqa.json") and
// writes the index read back as JSON. Malformed JSON (HEXDataException) is the
// expected refusal; any other exception is a finding, and so is every crash,
// leak or hang.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "FuzzSupport.h"
#include "host/HEXAll.h"
#include "platform/HRQAArchive.h"
#include "platform/JSONObjectWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  HRQAArchive rqa;
  try {
    rqa.parseJsonString(std::string(reinterpret_cast<const char*>(data), size));
  } catch (const HEXDataException&) {
    return 0;
  }
  teq_platform::JSONObjectWriter writer;
  rqa.toJSON(writer);
  std::ostringstream out;
  writer.write(out);
  return 0;
}
