#include "platform/HTEQTilPartition.h"

#include "platform/HTEQJSONUtils.h"
#include "platform/JSONObjectWriter.h"

void HTEQTilPartition::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("tilInst", tilInst_);
  writer.addKey("startColumn", startColumn_);
  writer.addKey("numColumns", numColumns_);
  writer.addKey("uuid", uuid_);
  writer.addKey("til_pl_intf_id", plIntefaceID_);
}

void HTEQTilPartition::fromJSON(const boost::property_tree::ptree& node) {
  isRoot_ = true;
  tilInst_ = HTEQJSONUtils::getStringValue(node, "tilInst");
  startColumn_ = HTEQJSONUtils::getIntValue(node, "startColumn", 0);
  numColumns_ = HTEQJSONUtils::getIntValue(node, "numColumns", 0);
  uuid_ = HTEQJSONUtils::getStringValue(node, "uuid");
  plIntefaceID_ = HTEQJSONUtils::getStringValue(node, "til_pl_intf_id");
}

HTEQTilPartition& HTEQTilPartition::addPartition() {
  partitions_.emplace_back();
  return partitions_.back();
}

const HTEQTilPartition& HTEQTilPartition::findPartition(int startColumn, int numColumns) const {
  for (const HTEQTilPartition& p : partitions_) {
    if (p.startColumn_ == startColumn && p.numColumns_ == numColumns) return p;
  }
  return emptyPartition();
}

bool HTEQTilPartition::hasPartition(const std::string& name) const {
  for (const HTEQTilPartition& p : partitions_) {
    if (p.tilInst_ == name) return true;
  }
  return false;
}

void HTEQTilPartition::clear() { *this = HTEQTilPartition(); }

bool HTEQTilPartition::operator==(const HTEQTilPartition& other) const {
  return isRoot_ == other.isRoot_ && startColumn_ == other.startColumn_ && numColumns_ == other.numColumns_ &&
         tilInst_ == other.tilInst_ && uuid_ == other.uuid_ && plIntefaceID_ == other.plIntefaceID_ &&
         partitions_ == other.partitions_;
}

const HTEQTilPartition& HTEQTilPartition::emptyPartition() {
  static const HTEQTilPartition empty;
  return empty;
}
