// Feeds arbitrary bytes as the JSON member of a hardware archive to the JSON
// reader. The expected refusals are malformed JSON (HEXDataException), a device
// without its core (the property tree's bad path) and, since no archive stands
// behind the text, the emulation members its files name: HEXError for one that
// cannot be opened. HEXAlgException, a HEXError, is the model's refusal of a
// malformed FPGA part. Any other exception is a finding, and so is every
// crash, leak or hang.
//
// A platform that reads is also printed twice, through the property tree and
// through the text writer of the C entry point: the bytes (or the refusal)
// must be the same.
#include <boost/property_tree/exceptions.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

#include "FuzzSupport.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "json/JsonTextWriter.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQCfaJsonReader.h"
#include "platform/HTEQPlatform.h"
#include "platform/JSONObjectWriter.h"

namespace {

// The printed text, or the refusal's text.
std::string treeText(const HTEQPlatform& platform) {
  try {
    teq_platform::JSONObjectWriter writer;
    writer.writeObject(platform);
    std::ostringstream out;
    writer.write(out);
    return out.str();
  } catch (const std::exception& e) {
    return std::string("refused: ") + e.what();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  HTEQPlatform platform;
  auto* hw = new HPLPlatform;
  platform.setHardwarePlatform(hw);
  try {
    if (!HTEQCfaJsonReader(hw).parseJsonString(std::string(reinterpret_cast<const char*>(data), size)))
      return 0;
  } catch (const HEXError&) {
    return 0;
  } catch (const HEXDataException&) {
    return 0;
  } catch (const boost::property_tree::ptree_bad_path&) {
    return 0;
  }
  const std::string expected = treeText(platform);
  std::string text;
  try {
    std::unique_ptr<char[]> printed(teq_platform::platformText(platform));
    text = printed.get();
  } catch (const teq_platform::TextNeedsTree&) {
    return 0;
  } catch (const std::exception& e) {
    text = std::string("refused: ") + e.what();
  }
  if (text != expected) std::abort();
  return 0;
}
