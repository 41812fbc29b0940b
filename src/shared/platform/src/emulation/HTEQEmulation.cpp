#include "platform/HTEQEmulation.h"

#include <memory>

#include "platform/HTEQEmulationFile.h"

HTEQEmulation::HTEQEmulation(const std::string& name) : name_(name) {}

HTEQEmulation::~HTEQEmulation() {
  for (HTEQEmulationFile* file : files_) delete file;
}

HTEQEmulationFile* HTEQEmulation::createFile() {
  auto file = std::make_unique<HTEQEmulationFile>();
  files_.push_back(file.get());
  return file.release();
}

HTEQEmulationFile* HTEQEmulation::createFile(const std::string& type, const std::string& name) {
  auto file = std::make_unique<HTEQEmulationFile>(type, name);
  files_.push_back(file.get());
  return file.release();
}
