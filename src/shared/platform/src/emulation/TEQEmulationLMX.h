#ifndef PLATFORM_TEQEMULATIONLMX_H
#define PLATFORM_TEQEMULATIONLMX_H

// The records of the emulation metadata XML ("hw_emu.xml", "emu.xml"): one
// record per element, named after it, with the attributes and children of the
// element in document order. Strings are wide (HI18N::convert gives UTF-8).
// The accessors each field gets are listed in XmlRecordSupport.h.

#include <cstddef>
#include <iosfwd>
#include <string>

#include "xml/XmlRecordSupport.h"

namespace TEQEmulation {

#define TEQEMU_FIELDS_File(A, C, ...) \
  A(Type, "Type", String, Required)   \
  A(Name, "Name", String, Required)
ZR_XML_RECORD(File, TEQEMU_FIELDS_File)

#define TEQEMU_FIELDS_Files(A, C, ...) C(File, "File", File, Many)
ZR_XML_RECORD(Files, TEQEMU_FIELDS_Files)

#define TEQEMU_FIELDS_Emulation(A, C, ...) \
  A(Name, "Name", String, Required)        \
  C(Files, "Files", Files, One)
ZR_XML_RECORD(Emulation, TEQEMU_FIELDS_Emulation)

#define TEQEMU_FIELDS_Emulations(A, C, ...) C(Emulation, "Emulation", Emulation, Many)
ZR_XML_RECORD(Emulations, TEQEMU_FIELDS_Emulations)

#define TEQEMU_FIELDS_Root(A, C, ...)            \
  A(VersionMajor, "VersionMajor", U32, Required) \
  A(VersionMinor, "VersionMinor", U32, Required) \
  C(Emulations, "Emulations", Emulations, One)

class Root {
  ZR_XML_RECORD_BODY(Root, TEQEMU_FIELDS_Root)

 public:
  // Parses and validates a whole document, then replaces this record's content
  // with it. On failure throws HXMLException (with the document's line number,
  // 0 when there is none) and leaves the record as it was. `name` stands for
  // an in-memory document in error texts.
  void Unmarshal(const char* buffer, std::size_t length, const std::string& name = "emulation XML document");
  void Unmarshal(const std::string& path);

  // Writes the document, top element "Root": newline "\n", two blanks of
  // indentation, one blank between attributes. The occurrence rules are
  // checked and the built document validated first: a violation throws
  // HXMLException and nothing is written. A file that cannot be written
  // throws HXMLException as well.
  void Marshal(const std::string& path) const;
  void Marshal(std::string* out) const;
};

}  // namespace TEQEmulation

#endif
