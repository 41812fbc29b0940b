#include "platform/HTEQTilPartitionsJsonReader.h"

#include <boost/property_tree/ptree.hpp>
#include <fstream>

#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/HTEQTilPartition.h"

using boost::property_tree::ptree;

void HTEQTilPartitionsJsonReader::parse(const std::string& path) {
  if (!HUTFile::isFile(path)) return;
  ptree root;
  try {
    std::ifstream in(path, std::ios::in | std::ios::binary);
    HTEQJSONUtils::readJSON(in, root, path);
  } catch (const std::exception&) {
    throw HEXAlgException("An error occurred while parsing the til partitions json file: " + path);
  }
  parseTil_(root);
}

void HTEQTilPartitionsJsonReader::parseTil_(const ptree& root) {
  const auto til = root.get_child_optional("TIL");
  if (!til) return;
  for (const auto& member : *til) {
    currentInstance_ = member.first;
    HTEQTilPartition* added = addRootPartition_(member.second);
    if (added == nullptr || !added->isPartition() || !member.second.get_child_optional("partitions"))
      continue;
    addSubPartitions_(member.second, *added);
  }
}

bool HTEQTilPartitionsJsonReader::hasColumns_(const ptree& node) {
  return HTEQJSONUtils::hasKey(node, "numColumns");
}

// The new root, or null for a node without columns (the shared empty partition
// stands for it). The pointer is used before the next root is added.
HTEQTilPartition* HTEQTilPartitionsJsonReader::addRootPartition_(const ptree& node) {
  if (!hasColumns_(node)) return nullptr;
  HTEQTilPartition& partition = platform_->addTilPartition();
  populatePartition_(node, true, partition);
  return &partition;
}

void HTEQTilPartitionsJsonReader::addSubPartitions_(const ptree& node, HTEQTilPartition& root) {
  for (const auto& child : node.get_child("partitions")) {
    if (!hasColumns_(child.second)) continue;
    populatePartition_(child.second, false, root.addPartition());
  }
}

void HTEQTilPartitionsJsonReader::populatePartition_(const ptree& node, bool isRoot,
                                                     HTEQTilPartition& partition) {
  partition.isRoot(isRoot);
  partition.tilInst(currentInstance_);
  partition.startColumn(HTEQJSONUtils::getIntValue(node, "startColumn", 0));
  partition.numColumns(HTEQJSONUtils::getIntValue(node, "numColumns", 0));
  partition.uuid(HTEQJSONUtils::getStringValue(node, "uuid"));
  partition.plIntefaceID(HTEQJSONUtils::getStringValue(node, "til_pl_intf_id"));
}
