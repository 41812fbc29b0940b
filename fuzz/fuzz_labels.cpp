// Feeds arbitrary bytes as a labels file's text to the label reader and
// derives both documents from what it read. Malformed JSON (HEXDataException)
// is the expected refusal; bad records only send messages. Any other
// exception is a finding, and so is every crash, leak or hang.
#include <boost/property_tree/ptree.hpp>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "FuzzSupport.h"
#include "host/HEXAll.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/HTEQSemanticLabelReader.h"
#include "platform/JSONObjectWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  boost::property_tree::ptree root;
  try {
    HTEQJSONUtils::readJSON(std::string(reinterpret_cast<const char*>(data), size), root, "labels.json");
  } catch (const HEXDataException&) {
    return 0;
  }
  HTEQSemanticLabelReader reader;
  reader.parseRoot(root);
  std::ostringstream out;
  reader.generatePartitionMetadata(out);
  for (const auto& ep : reader.getPcieEndpoints()) reader.generateExtMetadata(ep.getPartitionPath(), out);
  reader.generateExtMetadata("/", out);
  teq_platform::JSONObjectWriter writer;
  reader.toJSON(writer);
  return 0;
}
