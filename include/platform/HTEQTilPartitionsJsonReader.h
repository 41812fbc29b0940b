#ifndef PLATFORM_HTEQTILPARTITIONSJSONREADER_H
#define PLATFORM_HTEQTILPARTITIONSJSONREADER_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQHardwarePlatform;
class HTEQTilPartition;

// Reads a tile-array partitions file into a platform. The file is an object
// "TIL" whose members are root partitions, keyed by instance name; each root
// may hold a "partitions" container of children, read one level deep. Nodes
// without "numColumns" are ignored.
class ZR_PLATFORM_API HTEQTilPartitionsJsonReader {
 public:
  explicit HTEQTilPartitionsJsonReader(HTEQHardwarePlatform* platform) : platform_(platform) {}

  // A path that is no file is ignored. A file that is no valid JSON raises
  // HEXAlgException naming the path.
  void parse(const std::string& path);

 private:
  void parseTil_(const boost::property_tree::ptree& root);
  HTEQTilPartition* addRootPartition_(const boost::property_tree::ptree& node);
  void addSubPartitions_(const boost::property_tree::ptree& node, HTEQTilPartition& root);
  void populatePartition_(const boost::property_tree::ptree& node, bool isRoot, HTEQTilPartition& partition);
  static bool hasColumns_(const boost::property_tree::ptree& node);

  HTEQHardwarePlatform* platform_;
  std::string currentInstance_;
};

#endif
