#ifndef TESTS_EMU_EMUTESTSUPPORT_H
#define TESTS_EMU_EMUTESTSUPPORT_H

// Builders of emulation metadata documents for the emulation tests.

#include <string>
#include <utility>
#include <vector>

#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulations.h"

namespace emu_test {

// The metadata version, then "|name=type:name@instPath;..." for every emulation.
inline std::string describe(const HTEQEmulations& model) {
  std::string out = model.getPfmMetadataVersion();
  for (const HTEQEmulation* e : model.getEmulations()) {
    out += "|" + e->getName() + "=";
    for (const HTEQEmulationFile* f : e->getFiles())
      out += f->getType() + ":" + f->getName() + "@" + f->getInstPath() + ";";
  }
  return out;
}

using FileList = std::vector<std::pair<std::string, std::string>>;  // (type, name)

// <File Type=".." Name=".."/> for each pair, inside <Files>.
inline std::string xmlEmulation(const std::string& name, const FileList& files) {
  std::string text = "    <Emulation Name=\"" + name + "\">\n      <Files>\n";
  for (const auto& f : files) text += "        <File Type=\"" + f.first + "\" Name=\"" + f.second + "\"/>\n";
  return text + "      </Files>\n    </Emulation>\n";
}

inline std::string xmlDocument(const std::string& emulations,
                               const std::string& rootAttrs = "VersionMajor=\"1\" VersionMinor=\"0\"") {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Root " + rootAttrs + ">\n  <Emulations>\n" +
         emulations + "  </Emulations>\n</Root>\n";
}

// The document every reader test starts from: two emulations, the first with
// two files, the second with none.
inline std::string standardXml() {
  return xmlDocument(xmlEmulation("hw_emu", {{"EMU_HPFM", "emu/emu.hpfm"}, {"TOP_BD", "emu/emu.bd"}}) +
                     xmlEmulation("second", {}));
}

inline std::string standardJson() {
  return R"({
  "pfm_metadata_version": "2.1",
  "emulations": [
    { "name": "hw_emu",
      "files": [
        { "type": "EMU_HPFM", "name": "emu/emu.hpfm", "inst_path": "/opt/emu" },
        { "type": "TOP_BD", "name": "emu/emu.bd" } ] },
    { "name": "second", "files": [] }
  ]
})";
}

}  // namespace emu_test

#endif
