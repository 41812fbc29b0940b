#ifndef PLATFORM_HTEQEMULATIONJSONWRITER_H
#define PLATFORM_HTEQEMULATIONJSONWRITER_H

#include <boost/property_tree/ptree_fwd.hpp>
#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQEmulation;
class HTEQEmulations;

// Writes emulation metadata in its JSON form ("hw_emu.json"), the form
// HTEQEmulationJsonReader reads:
//
//   { "pfm_metadata_version": "...",      always present, also when empty
//     "emulations": [ { "name": "...",
//                       "files": [ { "type": "...", "name": "...",
//                                    "inst_path": "..." } ] } ] }
//
// "inst_path" is written only when the file has one. An empty list is written
// as the empty string, which the reader takes for a list of no elements. The
// model is not owned.
class ZR_PLATFORM_API HTEQEmulationJsonWriter {
 public:
  // Throws HEXAlgException when no model is given.
  HTEQEmulationJsonWriter(HTEQEmulations* emulations, const std::string& file);
  HTEQEmulationJsonWriter(const HTEQEmulationJsonWriter&) = delete;
  HTEQEmulationJsonWriter& operator=(const HTEQEmulationJsonWriter&) = delete;

  // Writes the file whole through a temporary that is renamed over it, so an
  // existing file is never left half-written. A file that cannot be written
  // raises the property tree's json_parser_error naming the file.
  void writeJson();

 private:
  void writeEmulation_(const HTEQEmulation* emulation, boost::property_tree::ptree& tree) const;

  HTEQEmulations* emulations_;
  std::string file_;
};

#endif
