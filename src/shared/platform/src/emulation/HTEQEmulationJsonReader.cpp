#include "platform/HTEQEmulationJsonReader.h"

#include <boost/property_tree/ptree.hpp>
#include <fstream>

#include "emulation/HTEQEmulationCfaMember.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTPathUtils.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulations.h"
#include "platform/HTEQJSONUtils.h"

using boost::property_tree::ptree;

namespace {

HTEQEmulations* checkedModel(HTEQEmulations* emulations) {
  if (emulations == nullptr)
    throw HEXAlgException("no emulation model was given to the emulation JSON reader");
  return emulations;
}

}  // namespace

HTEQEmulationJsonReader::HTEQEmulationJsonReader(const std::string& file, HTEQEmulations* emulations)
    : file_(file), emulations_(checkedModel(emulations)) {
  if (!HUTPathUtils::exists(file_)) throw HEXFileNotFoundException(file_);
}

HTEQEmulationJsonReader::HTEQEmulationJsonReader(HTEQEmulations* emulations)
    : emulations_(checkedModel(emulations)) {}

void HTEQEmulationJsonReader::readFile_(ptree& root) const {
  if (file_.empty()) throw HEXAlgException("the emulation JSON reader was made without a file to read");
  if (!HUTFile::isFile(file_))
    throw HEXUserException("the emulation JSON file '" + file_ + "' is not a regular file");
  std::ifstream in(file_, std::ios::in | std::ios::binary);
  if (!in) throw HEXUserException("cannot open the emulation JSON file '" + file_ + "' for reading");
  try {
    HTEQJSONUtils::readJSON(in, root, file_);
  } catch (const std::ios_base::failure& e) {
    throw HEXUserException("cannot read the emulation JSON file '" + file_ + "': " + e.what());
  }
}

bool HTEQEmulationJsonReader::isJsonValid() const {
  ptree root;
  readFile_(root);
  return root.find("emulations") != root.not_found();
}

void HTEQEmulationJsonReader::parseJson() {
  ptree root;
  readFile_(root);
  parseRoot_(root);
}

void HTEQEmulationJsonReader::parseJson(const ptree& root) { parseRoot_(root); }

void HTEQEmulationJsonReader::parseFromCfa(const std::string& archive, const std::string& member,
                                           HTEQEmulations* emulations) {
  HTEQEmulationJsonReader reader(emulations);
  const std::string content = HTEQEmulationCfaMember::read(archive, member);
  ptree root;
  HTEQJSONUtils::readJSON(content, root, archive + "/" + HTEQEmulationCfaMember::reduceMemberName(member));
  reader.parseRoot_(root);
}

void HTEQEmulationJsonReader::parseRoot_(const ptree& root) {
  if (const auto version = root.get_optional<std::string>("pfm_metadata_version"))
    emulations_->setPfmMetadataVersion(*version);
  // An array is a node whose children have empty keys; an empty array may
  // stand as an empty text, which has no children and so no elements.
  for (const auto& emulationItem : root.get_child("emulations")) {
    const ptree& emulationTree = emulationItem.second;
    std::string name;
    if (const auto given = emulationTree.get_optional<std::string>("name")) name = *given;
    HTEQEmulation* emulation = emulations_->createEmulation();
    emulation->setName(name);
    for (const auto& fileItem : emulationTree.get_child("files")) {
      const ptree& fileTree = fileItem.second;
      const std::string type = fileTree.get<std::string>("type");
      const std::string fileName = fileTree.get<std::string>("name");
      HTEQEmulationFile* file = emulation->createFile();
      file->setType(type);
      file->setName(fileName);
      if (const auto instPath = fileTree.get_optional<std::string>("inst_path")) file->setInstPath(*instPath);
    }
  }
}
