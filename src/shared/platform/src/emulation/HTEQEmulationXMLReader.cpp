#include "platform/HTEQEmulationXMLReader.h"

#include "emulation/HTEQEmulationCfaMember.h"
#include "emulation/TEQEmulationLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "host/HUTPathUtils.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulations.h"

namespace {

const char kXmlReadFailed[] = "@74-58@%s%d";

HTEQEmulations* checkedModel(HTEQEmulations* emulations) {
  if (emulations == nullptr)
    throw HEXAlgException("no emulation model was given to the emulation XML reader");
  return emulations;
}

}  // namespace

HTEQEmulationXMLReader::HTEQEmulationXMLReader(const std::string& file, HTEQEmulations* emulations)
    : file_(file), emulations_(checkedModel(emulations)) {
  if (!HUTPathUtils::exists(file_)) throw HEXFileNotFoundException(file_);
}

HTEQEmulationXMLReader::HTEQEmulationXMLReader(HTEQEmulations* emulations)
    : emulations_(checkedModel(emulations)) {}

void HTEQEmulationXMLReader::parseXml() {
  TEQEmulation::Root root;
  try {
    root.Unmarshal(file_);
  } catch (const HXMLException& e) {
    ZR_SEND_MSG(kXmlReadFailed, ComMsgMask::kError, e.getText(), e.getLineNumber());
    throw;
  }
  parseRoot_(root);
}

void HTEQEmulationXMLReader::parseFromCfa(const std::string& archive, const std::string& member,
                                          HTEQEmulations* emulations) {
  HTEQEmulationXMLReader reader(emulations);
  const std::string content = HTEQEmulationCfaMember::read(archive, member);
  TEQEmulation::Root root;
  root.Unmarshal(content.data(), content.size(),
                 archive + "/" + HTEQEmulationCfaMember::reduceMemberName(member));
  reader.parseRoot_(root);
}

void HTEQEmulationXMLReader::parseRoot_(const TEQEmulation::Root& root) {
  // VersionMajor and VersionMinor identify the format; the model keeps its own.
  parseEmulations_(root.GetEmulations());
}

void HTEQEmulationXMLReader::parseEmulations_(const TEQEmulation::Emulations& emulations) {
  for (std::size_t i = 0; i < emulations.SizeEmulation(); ++i) parseEmulation_(emulations.GetEmulation(i));
}

void HTEQEmulationXMLReader::parseEmulation_(const TEQEmulation::Emulation& record) {
  HTEQEmulation* emulation = emulations_->createEmulation();
  emulation->setName(HI18N::convert(record.GetName()));
  parseFiles_(emulation, record.GetFiles());
}

void HTEQEmulationXMLReader::parseFiles_(HTEQEmulation* emulation, const TEQEmulation::Files& files) {
  for (std::size_t i = 0; i < files.SizeFile(); ++i) parseFile_(emulation, files.GetFile(i));
}

void HTEQEmulationXMLReader::parseFile_(HTEQEmulation* emulation, const TEQEmulation::File& record) {
  HTEQEmulationFile* file = emulation->createFile();
  file->setType(HI18N::convert(record.GetType()));
  file->setName(HI18N::convert(record.GetName()));
}
