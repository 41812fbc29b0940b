#ifndef PLATFORM_HTEQEMULATIONJSONREADER_H
#define PLATFORM_HTEQEMULATIONJSONREADER_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQEmulations;

// Reads the JSON form of emulation metadata ("hw_emu.json") into an
// HTEQEmulations that the caller owns:
//
//   { "pfm_metadata_version": "...",            optional
//     "emulations": [                            required
//       { "name": "...",                         optional, empty when absent
//         "files": [                             required
//           { "type": "...", "name": "...",      both required
//             "inst_path": "..." } ] } ] }       optional
//
// Failures pass to the caller as exceptions: text that is not JSON (or is
// nested too deeply) raises HEXDataException, a missing required key the
// property tree's ptree_bad_path. The model then holds what was read before
// the failure; the caller discards it.
class ZR_PLATFORM_API HTEQEmulationJsonReader {
 public:
  // Throws HEXFileNotFoundException when the file does not exist and
  // HEXAlgException when no model is given.
  HTEQEmulationJsonReader(const std::string& file, HTEQEmulations* emulations);
  // A reader without a file, for a tree that the caller has already read:
  // use parseJson(tree).
  explicit HTEQEmulationJsonReader(HTEQEmulations* emulations);
  HTEQEmulationJsonReader(const HTEQEmulationJsonReader&) = delete;
  HTEQEmulationJsonReader& operator=(const HTEQEmulationJsonReader&) = delete;

  // Parses the file and tells whether its top level has "emulations". Touches
  // no model.
  bool isJsonValid() const;
  // Reads the file, or a ready tree, into the model.
  void parseJson();
  void parseJson(const boost::property_tree::ptree& root);

  // Reads the member of a hardware archive into the model; the member name is
  // reduced and opened as HTEQEmulationXMLReader::parseFromCfa does, with the
  // same HEXError "@74-34@%s%s" when it cannot be opened.
  static void parseFromCfa(const std::string& archive, const std::string& member, HTEQEmulations* emulations);

 private:
  void readFile_(boost::property_tree::ptree& root) const;
  void parseRoot_(const boost::property_tree::ptree& root);

  std::string file_;
  HTEQEmulations* emulations_;
};

#endif
