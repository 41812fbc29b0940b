#ifndef PLATFORM_HTEQEMULATIONXMLWRITER_H
#define PLATFORM_HTEQEMULATIONXMLWRITER_H

#include <string>

#include "platform/ZrPlatformExport.h"

class HTEQEmulation;
class HTEQEmulations;

namespace TEQEmulation {
class Root;
class Emulation;
}  // namespace TEQEmulation

// Writes emulation metadata in the XML form: the version numbers of the model
// on Root, one Emulation (Name) per emulation and one File (Type, Name) per
// file, in model order. Install paths have no place in this form and are left
// out. The model is not owned.
class ZR_PLATFORM_API HTEQEmulationXMLWriter {
 public:
  // Throws HEXAlgException when no model is given.
  HTEQEmulationXMLWriter(HTEQEmulations* emulations, const std::string& file);
  HTEQEmulationXMLWriter(const HTEQEmulationXMLWriter&) = delete;
  HTEQEmulationXMLWriter& operator=(const HTEQEmulationXMLWriter&) = delete;

  // Writes the file: newline "\n", two blanks of indentation, one blank
  // between attributes. When the document cannot be made (a text that XML
  // cannot carry) or the file cannot be written, raises HEXAll built from
  // "@74-10@%s" with the file name, and the file is not written.
  void writeXml();

 private:
  void writeXml_(TEQEmulation::Root& root) const;
  void writeEmulation_(const HTEQEmulation* emulation, TEQEmulation::Emulation& record) const;

  HTEQEmulations* emulations_;
  std::string file_;
};

#endif
