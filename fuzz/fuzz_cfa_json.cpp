// Feeds arbitrary bytes as the JSON member of a hardware archive to the JSON
// reader. The expected refusals are malformed JSON (HEXDataException), a device
// without its core (the property tree's bad path) and, since no archive stands
// behind the text, the emulation members its files name: HEXError for one that
// cannot be opened. HEXAlgException, a HEXError, is the model's refusal of a
// malformed FPGA part. Any other exception is a finding, and so is every
// crash, leak or hang.
#include <boost/property_tree/exceptions.hpp>
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  HPLPlatform platform;
  try {
    HTEQCfaJsonReader(&platform).parseJsonString(std::string(reinterpret_cast<const char*>(data), size));
  } catch (const HEXError&) {
  } catch (const HEXDataException&) {
  } catch (const boost::property_tree::ptree_bad_path&) {
  }
  return 0;
}
