#include "platform/HTEQEmulations.h"

#include <memory>

#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulation.h"

HTEQEmulations::~HTEQEmulations() {
  for (HTEQEmulation* emulation : emulations_) delete emulation;
  for (HTEQEmuFeatureRom* rom : featureRoms_) delete rom;
}

std::string HTEQEmulations::getEmulationXmlFilename() { return "hw_emu.xml"; }
std::string HTEQEmulations::getEmulationJsonFilename() { return "hw_emu.json"; }
std::string HTEQEmulations::getEmuDirName() { return "hw_emu"; }
std::string HTEQEmulations::getEmulationPropJsonFilename() { return "prop.json"; }

HTEQEmulation* HTEQEmulations::createEmulation() {
  auto emulation = std::make_unique<HTEQEmulation>();
  emulations_.push_back(emulation.get());
  return emulation.release();
}

HTEQEmulation* HTEQEmulations::createEmulation(const std::string& name) {
  auto emulation = std::make_unique<HTEQEmulation>(name);
  emulations_.push_back(emulation.get());
  return emulation.release();
}

HTEQEmuFeatureRom* HTEQEmulations::createFeatureRom() {
  auto rom = std::make_unique<HTEQEmuFeatureRom>();
  featureRoms_.push_back(rom.get());
  return rom.release();
}
