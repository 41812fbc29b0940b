#include "platform/HTEQEmulation.h"

#include "platform/HTEQEmulationFile.h"

HTEQEmulation::HTEQEmulation() = default;
HTEQEmulation::HTEQEmulation(const std::string& name) : name_(name) {}

HTEQEmulation::~HTEQEmulation() = default;

HTEQEmulationFile* HTEQEmulation::createFile() { return files_.emplace(); }

HTEQEmulationFile* HTEQEmulation::createFile(const std::string& type, const std::string& name) {
  return files_.emplace(type, name);
}
