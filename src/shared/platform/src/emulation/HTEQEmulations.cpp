#include "platform/HTEQEmulations.h"

#include "platform/HTEQEmuFeatureRom.h"
#include "platform/HTEQEmulation.h"

HTEQEmulations::HTEQEmulations() = default;
HTEQEmulations::~HTEQEmulations() = default;

std::string HTEQEmulations::getEmulationXmlFilename() { return "hw_emu.xml"; }
std::string HTEQEmulations::getEmulationJsonFilename() { return "hw_emu.json"; }
std::string HTEQEmulations::getEmuDirName() { return "hw_emu"; }
std::string HTEQEmulations::getEmulationPropJsonFilename() { return "prop.json"; }

HTEQEmulation* HTEQEmulations::createEmulation() { return emulations_.emplace(); }

HTEQEmulation* HTEQEmulations::createEmulation(const std::string& name) { return emulations_.emplace(name); }

HTEQEmuFeatureRom* HTEQEmulations::createFeatureRom() { return featureRoms_.emplace(); }
