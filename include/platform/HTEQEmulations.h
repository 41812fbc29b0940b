#ifndef PLATFORM_HTEQEMULATIONS_H
#define PLATFORM_HTEQEMULATIONS_H

#include <cstdint>
#include <string>

#include "platform/HSTOwningVector.h"
#include "platform/HSTVector.h"
#include "platform/ZrPlatformExport.h"

class HTEQEmulation;
class HTEQEmuFeatureRom;

// The emulation metadata of a hardware platform: its emulation targets, the
// feature ROM values of the extended metadata, and the version numbers of the
// XML form. The object owns its emulations and feature ROMs.
class ZR_PLATFORM_API HTEQEmulations {
 public:
  HTEQEmulations();
  ~HTEQEmulations();
  HTEQEmulations(const HTEQEmulations&) = delete;
  HTEQEmulations& operator=(const HTEQEmulations&) = delete;

  // Names of the emulation files and directory inside a hardware archive.
  static std::string getEmulationXmlFilename();       // "hw_emu.xml"
  static std::string getEmulationJsonFilename();      // "hw_emu.json"
  static std::string getEmuDirName();                 // "hw_emu"
  static std::string getEmulationPropJsonFilename();  // "prop.json"

  const std::string& getPfmMetadataVersion() const { return pfmMetadataVersion_; }
  void setPfmMetadataVersion(const std::string& version) { pfmMetadataVersion_ = version; }

  std::uint32_t getVersionMajor() const { return versionMajor_; }
  void setVersionMajor(std::uint32_t v) { versionMajor_ = v; }
  std::uint32_t getVersionMinor() const { return versionMinor_; }
  void setVersionMinor(std::uint32_t v) { versionMinor_ = v; }

  // Appends a new emulation, unnamed or named, and returns it.
  HTEQEmulation* createEmulation();
  HTEQEmulation* createEmulation(const std::string& name);
  const HSTVector<HTEQEmulation*>& getEmulations() const { return emulations_.view(); }

  // Appends a new, empty feature ROM and returns it.
  HTEQEmuFeatureRom* createFeatureRom();
  const HSTVector<HTEQEmuFeatureRom*>& getFeatureRoms() const { return featureRoms_.view(); }

 private:
  std::string pfmMetadataVersion_;
  std::uint32_t versionMajor_ = 0;
  std::uint32_t versionMinor_ = 0;
  HSTOwningVector<HTEQEmulation> emulations_;
  HSTOwningVector<HTEQEmuFeatureRom> featureRoms_;
};

#endif
