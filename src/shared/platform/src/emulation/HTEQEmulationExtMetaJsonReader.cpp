#include "platform/HTEQEmulationExtMetaJsonReader.h"

#include <boost/property_tree/ptree.hpp>
#include <fstream>

#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQJSONUtils.h"

using boost::property_tree::ptree;

namespace {

HTEQEmulations* checkedModel(HTEQEmulations* emulations) {
  if (emulations == nullptr)
    throw HEXAlgException("no emulation model was given to the extended metadata JSON reader");
  return emulations;
}

// Calls the setter with the key's text when the tree has the key.
void setIfPresent(const ptree& tree, const char* key, HTEQEmuFeatureRom* rom,
                  void (HTEQEmuFeatureRom::*setter)(const std::string&)) {
  if (const auto value = tree.get_optional<std::string>(key)) (rom->*setter)(*value);
}

}  // namespace

HTEQEmulationExtMetaJsonReader::HTEQEmulationExtMetaJsonReader(const std::string& file,
                                                               HTEQEmulations* emulations)
    : file_(file), emulations_(checkedModel(emulations)) {
  if (!HUTPathUtils::exists(file_)) throw HEXFileNotFoundException(file_);
}

HTEQEmulationExtMetaJsonReader::HTEQEmulationExtMetaJsonReader(HTEQEmulations* emulations)
    : emulations_(checkedModel(emulations)) {}

void HTEQEmulationExtMetaJsonReader::readFile_(ptree& root) const {
  if (file_.empty())
    throw HEXAlgException("the extended metadata JSON reader was made without a file to read");
  if (!HUTFile::isFile(file_))
    throw HEXUserException("the extended metadata JSON file '" + file_ + "' is not a regular file");
  std::ifstream in(file_, std::ios::in | std::ios::binary);
  if (!in) throw HEXUserException("cannot open the extended metadata JSON file '" + file_ + "' for reading");
  try {
    HTEQJSONUtils::readJSON(in, root, file_);
  } catch (const std::ios_base::failure& e) {
    throw HEXUserException("cannot read the extended metadata JSON file '" + file_ + "': " + e.what());
  }
}

bool HTEQEmulationExtMetaJsonReader::isJsonValid() const {
  ptree root;
  readFile_(root);
  return true;
}

void HTEQEmulationExtMetaJsonReader::parseJson() {
  ptree root;
  readFile_(root);
  parseExtMetaRoot_(root);
}

void HTEQEmulationExtMetaJsonReader::parseJson(const ptree& root) { parseExtMetaRoot_(root); }

void HTEQEmulationExtMetaJsonReader::parseExtMetaRoot_(const ptree& root) {
  // One feature ROM takes every element, so a later element overrides the
  // keys an earlier one gave.
  HTEQEmuFeatureRom* rom = emulations_->createFeatureRom();
  const auto featureRoms = root.get_child_optional("featureRoms");
  if (!featureRoms) return;
  for (const auto& item : *featureRoms) {
    const ptree& element = item.second;
    setIfPresent(element, "vbnvName", rom, &HTEQEmuFeatureRom::setVBNV);
    setIfPresent(element, "cdmaBaseAddress0", rom, &HTEQEmuFeatureRom::setCdmaBaseAddress0);
    setIfPresent(element, "cdmaBaseAddress1", rom, &HTEQEmuFeatureRom::setCdmaBaseAddress1);
    setIfPresent(element, "cdmaBaseAddress2", rom, &HTEQEmuFeatureRom::setCdmaBaseAddress2);
    setIfPresent(element, "cdmaBaseAddress3", rom, &HTEQEmuFeatureRom::setCdmaBaseAddress3);
    for (const auto& bitmapItem : element.get_child("featureBitMap")) {
      const ptree& bitmap = bitmapItem.second;
      setIfPresent(bitmap, "value", rom, &HTEQEmuFeatureRom::setBitMapValue);
      setIfPresent(bitmap, "boardScheduler", rom, &HTEQEmuFeatureRom::setBitMapBoardSchedular);
      setIfPresent(bitmap, "peerToPeer", rom, &HTEQEmuFeatureRom::setBitMapPeerToPeer);
    }
  }
}
