// Feeds arbitrary bytes as "hw_emu.json" and as extended metadata JSON to the
// emulation readers. Malformed JSON (HEXDataException) and a missing required
// key (the property tree's bad path) are the expected refusals; any other
// exception is a finding, and so is every crash, leak or hang.
#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/HEXAll.h"
#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulationExtMetaJsonReader.h"
#include "platform/HTEQEmulationJsonReader.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQJSONUtils.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  boost::property_tree::ptree root;
  try {
    HTEQJSONUtils::readJSON(std::string(reinterpret_cast<const char*>(data), size), root, "fuzz.json");
  } catch (const HEXDataException&) {
    return 0;
  }
  HTEQEmulations model;
  try {
    HTEQEmulationJsonReader(&model).parseJson(root);
  } catch (const boost::property_tree::ptree_bad_path&) {
  }
  try {
    HTEQEmulationExtMetaJsonReader(&model).parseJson(root);
  } catch (const boost::property_tree::ptree_bad_path&) {
  }
  for (HTEQEmuFeatureRom* rom : model.getFeatureRoms()) (void)rom->getFeatureBitMap();
  return 0;
}
