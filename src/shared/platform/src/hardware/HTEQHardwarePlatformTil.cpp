// The tile-array part of the hardware platform: partitions read lazily from
// the tile-array project of a fixed platform, and the project's metadata.

#include <boost/property_tree/ptree.hpp>
#include <fstream>

#include "archives/PlatformTilprjFileExtractor.h"
#include "host/HEXAll.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/HTEQTilPartitionsJsonReader.h"
#include "platform/HTEQTmpDirObject.h"
#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

namespace {
const char* const kTilPartitionsMember = "tilarchive/arch/til_partition.json";
const char* const kTilMetaDataMember = "tilarchive/morwen/tilprj_meta_data.json";
}  // namespace

// ---------------------------------------------------------------------------
// Tile array

HTEQTilPartition& HTEQHardwarePlatform::addTilPartition() {
  tilPartitions_.emplace_back();
  return tilPartitions_.back();
}

HTEQTilPartition& HTEQHardwarePlatform::addTilPartition(int startColumn, int numColumns) {
  tilPartitions_.emplace_back(startColumn, numColumns);
  return tilPartitions_.back();
}

namespace {
// Copies a file out of the tile-array project nested in the platform archive.
bool extractFromTilProject(const HTEQHardwarePlatform& platform, const std::string& pathInProject,
                           const std::string& dest) {
  PlatformTilprjFileExtractor extractor(platform);
  return extractor.extractFile(pathInProject, dest);
}

// A private directory for one file copied out of the project; no file name is
// given when the directory cannot be made.
class TilStaging {
 public:
  TilStaging() {
    try {
      dir_.create("zr-til");
    } catch (const HEXUserException&) {
    }
  }
  std::string file(const std::string& name) const {
    return dir_.empty() ? std::string() : dir_.get() + "/" + name;
  }

 private:
  HTEQTmpDirObject dir_;
};
}  // namespace

// Partitions come from the tile-array project of a fixed platform, read once.
void HTEQHardwarePlatform::initTilPartitions() const {
  if (expandable_ || tilPartitionsRead_) return;
  tilPartitionsRead_ = true;
  // The copy lives in a private directory of its own, removed with it in any
  // case, also when the file cannot be parsed.
  const TilStaging staging;
  const std::string target = staging.file("til_partitions.json");
  if (target.empty() || !extractFromTilProject(*this, kTilPartitionsMember, target)) return;
  // The reader fills the vector through the non-const factories.
  const_cast<HTEQHardwarePlatform*>(this)->parseTILPartitions(target);
}

void HTEQHardwarePlatform::parseTILPartitions(const std::string& file) {
  HTEQTilPartitionsJsonReader reader(this);
  reader.parse(file);
}

bool HTEQHardwarePlatform::hasTilPartitions() const {
  initTilPartitions();
  return !tilPartitions_.empty();
}

const std::vector<HTEQTilPartition>& HTEQHardwarePlatform::getTilPartitions() const {
  initTilPartitions();
  return tilPartitions_;
}

std::vector<HTEQTilPartition>& HTEQHardwarePlatform::getTilPartitions() {
  initTilPartitions();
  return tilPartitions_;
}

const HTEQTilPartition& HTEQHardwarePlatform::findTilPartition(const std::string& name) const {
  initTilPartitions();
  for (const HTEQTilPartition& p : tilPartitions_) {
    if (p.tilInst() == name) return p;
  }
  return HTEQTilPartition::emptyPartition();
}

bool HTEQHardwarePlatform::hasTilPartition(const std::string& name) const {
  for (const HTEQTilPartition& p : getTilPartitions()) {
    if (p.hasPartition(name)) return true;
  }
  return false;
}

void HTEQHardwarePlatform::parseMetaData(const std::string& file, std::map<std::string, std::string>& out) {
  std::ifstream in(file, std::ios::in | std::ios::binary);
  if (!in) return;
  boost::property_tree::ptree tree;
  HTEQJSONUtils::readJSON(in, tree, file);
  const auto metaData = tree.get_child_optional("MetaData");
  if (!metaData) return;
  for (const auto& item : *metaData) {
    out[HTEQJSONUtils::getStringValue(item.second, "name")] =
        HTEQJSONUtils::getStringValue(item.second, "value");
  }
}

std::string HTEQHardwarePlatform::getTILPlInterfaceIDAsString() const {
  const TilStaging staging;
  const std::string target = staging.file("tilprj_meta_data.json");
  if (target.empty() || !extractFromTilProject(*this, kTilMetaDataMember, target)) return std::string();
  std::map<std::string, std::string> metaData;
  parseMetaData(target, metaData);
  const auto it = metaData.find("TIL_PL_INTF_ID_STR");
  return it == metaData.end() ? std::string() : it->second;
}
