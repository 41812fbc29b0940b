#include "platform/HTEQEmulationXMLWriter.h"

#include "emulation/TEQEmulationLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulations.h"

namespace {

const char kWriteFailed[] = "@74-10@%s";

}  // namespace

HTEQEmulationXMLWriter::HTEQEmulationXMLWriter(HTEQEmulations* emulations, const std::string& file)
    : emulations_(emulations), file_(file) {
  if (emulations_ == nullptr)
    throw HEXAlgException("no emulation model was given to the emulation XML writer");
}

void HTEQEmulationXMLWriter::writeXml() {
  TEQEmulation::Root root;
  root.SetVersionMajor(emulations_->getVersionMajor());
  root.SetVersionMinor(emulations_->getVersionMinor());
  writeXml_(root);
  try {
    root.Marshal(file_);
  } catch (const HXMLException& e) {
    ComMsg msg;
    msg.id = kWriteFailed;
    msg.args = {file_};
    throw HEXAll(ComMsgMgr::formatText(msg) + " (" + e.getText() + ")");
  }
}

void HTEQEmulationXMLWriter::writeXml_(TEQEmulation::Root& root) const {
  // Emulations is required even when there is no emulation to list.
  TEQEmulation::Emulations& records = root.GetEmulations();
  for (const HTEQEmulation* emulation : emulations_->getEmulations())
    writeEmulation_(emulation, records.AppendEmulation());
}

void HTEQEmulationXMLWriter::writeEmulation_(const HTEQEmulation* emulation,
                                             TEQEmulation::Emulation& record) const {
  record.SetName(HI18N::convert(emulation->getName()));
  TEQEmulation::Files& files = record.GetFiles();
  for (const HTEQEmulationFile* file : emulation->getFiles()) {
    TEQEmulation::File& fileRecord = files.AppendFile();
    fileRecord.SetType(HI18N::convert(file->getType()));
    fileRecord.SetName(HI18N::convert(file->getName()));
  }
}
