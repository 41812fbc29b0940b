#ifndef PLATFORM_HTEQEMULATIONEXTMETAJSONREADER_H
#define PLATFORM_HTEQEMULATIONEXTMETAJSONREADER_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQEmulations;

// Reads the feature ROM values of an extended metadata JSON file into an
// HTEQEmulations that the caller owns:
//
//   { "featureRoms": [
//       { "vbnvName": "...", "cdmaBaseAddress0": "...", ... "cdmaBaseAddress3": "...",
//         "featureBitMap": [                     required in each element
//           { "value": "...", "boardScheduler": "...", "peerToPeer": "..." } ] } ] }
//
// Every key but "featureBitMap" is optional. The reader makes exactly one
// feature ROM, before it walks the elements, and every element writes into
// it: of several elements, the last value of each key stands. A file without
// "featureRoms" gives that one empty feature ROM.
//
// Failures pass to the caller as exceptions: text that is not JSON raises
// HEXDataException, a missing "featureBitMap" the property tree's
// ptree_bad_path.
class ZR_PLATFORM_API HTEQEmulationExtMetaJsonReader {
 public:
  // Throws HEXFileNotFoundException when the file does not exist and
  // HEXAlgException when no model is given.
  HTEQEmulationExtMetaJsonReader(const std::string& file, HTEQEmulations* emulations);
  // A reader without a file, for a tree that the caller has already read:
  // use parseJson(tree).
  explicit HTEQEmulationExtMetaJsonReader(HTEQEmulations* emulations);
  HTEQEmulationExtMetaJsonReader(const HTEQEmulationExtMetaJsonReader&) = delete;
  HTEQEmulationExtMetaJsonReader& operator=(const HTEQEmulationExtMetaJsonReader&) = delete;

  // Parses the file and answers true whatever keys it has; text that is not
  // JSON raises as above. Touches no model.
  bool isJsonValid() const;
  // Reads the file, or a ready tree, into the model.
  void parseJson();
  void parseJson(const boost::property_tree::ptree& root);

 private:
  void readFile_(boost::property_tree::ptree& root) const;
  void parseExtMetaRoot_(const boost::property_tree::ptree& root);

  std::string file_;
  HTEQEmulations* emulations_;
};

#endif
