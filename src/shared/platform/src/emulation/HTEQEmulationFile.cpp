#include "platform/HTEQEmulationFile.h"

HTEQEmulationFile::HTEQEmulationFile(const std::string& type, const std::string& name)
    : type_(type), name_(name) {}

void HTEQEmulationFile::setType(const char* type) { type_ = type ? type : ""; }
void HTEQEmulationFile::setName(const char* name) { name_ = name ? name : ""; }
void HTEQEmulationFile::setInstPath(const char* path) { instPath_ = path ? path : ""; }
