// Feeds arbitrary bytes to the emulation metadata XML records and reads them
// into a model as the XML reader does. Any exception other than the XML
// layer's own is a finding, and so is every crash, leak or hang.
#include <cstddef>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "emulation/TEQEmulationLMX.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HI18N.h"
#include "platform/HTEQEmulation.h"
#include "platform/HTEQEmulationFile.h"
#include "platform/HTEQEmulations.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zr_fuzz::silenceMessages();
  try {
    TEQEmulation::Root root;
    root.Unmarshal(reinterpret_cast<const char*>(data), size, "fuzz.xml");
    HTEQEmulations model;
    const TEQEmulation::Emulations& emulations = root.GetEmulations();
    for (std::size_t i = 0; i < emulations.SizeEmulation(); ++i) {
      const TEQEmulation::Emulation& record = emulations.GetEmulation(i);
      HTEQEmulation* emulation = model.createEmulation(HI18N::convert(record.GetName()));
      for (std::size_t j = 0; j < record.GetFiles().SizeFile(); ++j) {
        const TEQEmulation::File& file = record.GetFiles().GetFile(j);
        emulation->createFile(HI18N::convert(file.GetType()), HI18N::convert(file.GetName()));
      }
    }
    // What was read can always be written again.
    std::string text;
    root.Marshal(&text);
  } catch (const HXMLException&) {
  }
  return 0;
}
