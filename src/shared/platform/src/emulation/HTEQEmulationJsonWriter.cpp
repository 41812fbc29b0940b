#include "platform/HTEQEmulationJsonWriter.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <boost/property_tree/ptree.hpp>

#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "json/JsonText.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulations.h"

using boost::property_tree::ptree;

HTEQEmulationJsonWriter::HTEQEmulationJsonWriter(HTEQEmulations* emulations, const std::string& file)
    : emulations_(emulations), file_(file) {
  if (emulations_ == nullptr)
    throw HEXAlgException("no emulation model was given to the emulation JSON writer");
}

void HTEQEmulationJsonWriter::writeJson() {
  // A plain tree, so that an empty version and empty lists keep their keys.
  ptree root;
  root.put_value(std::string());
  root.push_back(ptree::value_type("pfm_metadata_version", ptree(emulations_->getPfmMetadataVersion())));
  ptree list;
  for (const HTEQEmulation* emulation : emulations_->getEmulations()) {
    ptree item;
    writeEmulation_(emulation, item);
    list.push_back(ptree::value_type("", item));
  }
  root.push_back(ptree::value_type("emulations", list));

  std::string text;
  zr_json::appendText(root, text);
  try {
    HUTFile::writeAtomically(file_, text);
  } catch (const HEXAll& e) {
    throw boost::property_tree::json_parser::json_parser_error(e.getText(), file_, 0);
  }
}

void HTEQEmulationJsonWriter::writeEmulation_(const HTEQEmulation* emulation, ptree& tree) const {
  tree.push_back(ptree::value_type("name", ptree(emulation->getName())));
  ptree files;
  for (const HTEQEmulationFile* file : emulation->getFiles()) {
    ptree item;
    item.push_back(ptree::value_type("type", ptree(file->getType())));
    item.push_back(ptree::value_type("name", ptree(file->getName())));
    if (!file->getInstPath().empty())
      item.push_back(ptree::value_type("inst_path", ptree(file->getInstPath())));
    files.push_back(ptree::value_type("", item));
  }
  tree.push_back(ptree::value_type("files", files));
}
