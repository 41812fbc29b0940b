#ifndef PLATFORM_HTEQEMULATIONXMLREADER_H
#define PLATFORM_HTEQEMULATIONXMLREADER_H

#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQEmulation;
class HTEQEmulations;

namespace TEQEmulation {
class Root;
class Emulations;
class Emulation;
class Files;
class File;
}  // namespace TEQEmulation

// Reads the XML form of emulation metadata ("hw_emu.xml", "emu.xml") into an
// HTEQEmulations that the caller owns: one emulation per Emulation element,
// one file per File element, in document order. The version attributes of the
// document are checked by the format but not copied into the model.
//
// Failures pass to the caller as exceptions; what the model holds then is
// unspecified, and the caller discards it.
class ZR_PLATFORM_API HTEQEmulationXMLReader {
 public:
  // Throws HEXFileNotFoundException when the file does not exist and
  // HEXAlgException when no model is given.
  HTEQEmulationXMLReader(const std::string& file, HTEQEmulations* emulations);
  HTEQEmulationXMLReader(const HTEQEmulationXMLReader&) = delete;
  HTEQEmulationXMLReader& operator=(const HTEQEmulationXMLReader&) = delete;

  // Reads the file into the model. A document that is not well-formed or does
  // not follow the format sends "@74-58@%s%d" (the error text and the line
  // number, 0 when there is none) and raises HXMLException.
  void parseXml();

  // Reads the member of a hardware archive into the model. A leading "./"
  // (with any further slashes) is cut from the member name first. A member
  // that cannot be opened raises HEXError from "@74-34@%s%s" (archive,
  // member); damaged member data HEXDataException; a document that does not
  // follow the format HXMLException (no message is sent); a null model
  // HEXAlgException.
  static void parseFromCfa(const std::string& archive, const std::string& member, HTEQEmulations* emulations);

 private:
  explicit HTEQEmulationXMLReader(HTEQEmulations* emulations);

  void parseRoot_(const TEQEmulation::Root& root);
  void parseEmulations_(const TEQEmulation::Emulations& emulations);
  void parseEmulation_(const TEQEmulation::Emulation& emulation);
  void parseFiles_(HTEQEmulation* emulation, const TEQEmulation::Files& files);
  void parseFile_(HTEQEmulation* emulation, const TEQEmulation::File& file);

  std::string file_;
  HTEQEmulations* emulations_;
};

#endif
