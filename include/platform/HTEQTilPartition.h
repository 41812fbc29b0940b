#ifndef PLATFORM_HTEQTILPARTITION_H
#define PLATFORM_HTEQTILPARTITION_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <string>
#include <vector>

#include "platform/JSONSerializable.h"

// One node of a tile-array partition tree: a run of columns of the array,
// named by its tile-array instance. Roots hold their child partitions by value.
class ZR_PLATFORM_API HTEQTilPartition : public teq_platform::JSONSerializable {
 public:
  HTEQTilPartition() = default;
  HTEQTilPartition(int startColumn, int numColumns) : startColumn_(startColumn), numColumns_(numColumns) {}

  // "tilInst", "startColumn", "numColumns", "uuid", "til_pl_intf_id"; the
  // children are not part of this form.
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;
  // Reads one flat node of that form and marks it a root; missing keys give
  // 0 and empty strings.
  void fromJSON(const boost::property_tree::ptree& node);

  bool isRoot() const { return isRoot_; }
  void isRoot(bool v) { isRoot_ = v; }
  int startColumn() const { return startColumn_; }
  void startColumn(int v) { startColumn_ = v; }
  int numColumns() const { return numColumns_; }
  void numColumns(int v) { numColumns_ = v; }
  const std::string& tilInst() const { return tilInst_; }
  void tilInst(const std::string& v) { tilInst_ = v; }
  const std::string& uuid() const { return uuid_; }
  void uuid(const std::string& v) { uuid_ = v; }
  const std::string& plIntefaceID() const { return plIntefaceID_; }
  void plIntefaceID(const std::string& v) { plIntefaceID_ = v; }

  // A node counts as a partition only when it spans at least one column.
  bool isPartition() const { return numColumns_ > 0; }

  const std::vector<HTEQTilPartition>& partitions() const { return partitions_; }
  std::vector<HTEQTilPartition>& partitions() { return partitions_; }
  bool hasPartitions() const { return !partitions_.empty(); }
  HTEQTilPartition& addPartition();
  // First child with these two numbers; otherwise the shared empty partition.
  const HTEQTilPartition& findPartition(int startColumn, int numColumns) const;
  // True when a child has exactly this instance name.
  bool hasPartition(const std::string& name) const;
  void clear();

  bool operator==(const HTEQTilPartition& other) const;
  bool operator!=(const HTEQTilPartition& other) const { return !(*this == other); }

  // The one empty partition handed out when a lookup finds nothing; it lives
  // for the life of the program.
  static const HTEQTilPartition& emptyPartition();

 private:
  bool isRoot_ = false;
  int startColumn_ = 0;
  int numColumns_ = 0;
  std::string tilInst_;
  std::string uuid_;
  std::string plIntefaceID_;
  std::vector<HTEQTilPartition> partitions_;
};

#endif
