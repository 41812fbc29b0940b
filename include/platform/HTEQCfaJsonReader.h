#ifndef PLATFORM_HTEQCFAJSONREADER_H
#define PLATFORM_HTEQCFAJSONREADER_H

#include <memory>
#include <string>

#include "platform/PlatformLoader.h"

class ArchiveMemberCache;
class HPLPlatform;
namespace zr_json {
struct JsonNode;
}

// Fills one HPLPlatform from the JSON member of a hardware archive: the
// newer of the two routes into the model. Keys sit at the top level of the
// document and are read in a fixed order; unknown keys are ignored, missing
// ones give empty or zero values (only a device without its "core" fails).
//
// Failures answer false and send a message: "@74-66@%s" for a missing
// archive, "@74-64@%s%s%s" for malformed JSON, "@74-63@%s%s" for any other
// failure, "@74-67@%s%s" for an emulation member that cannot be opened.
class ZR_PLATFORM_API HTEQCfaJsonReader {
 public:
  using Mode = teq_platform::PlatformLoader::HwMetadataMode;

  explicit HTEQCfaJsonReader(HPLPlatform* platform);

  // Where what is made of the archive's other members (emulation metadata,
  // the hpfm) is kept, so that the readers of one load read and parse each
  // member once; the cache must outlive the reader. Without one (or with
  // null) the reader keeps its own.
  void setMemberCache(ArchiveMemberCache* cache);

  // Whether the archive holds a JSON member the mode allows, and which.
  // Without PrimaryJsonOnly the "alt_" member wins when both are there.
  bool canParse(const std::string& archive, Mode mode, std::string& member);
  // canParse, then the emulation member inside "hw_emu".
  bool canParseHwEmu(const std::string& archive, Mode mode, std::string& member);
  bool parseCFA(const std::string& archive, Mode mode);
  // Fills the platform from the member canParse named, without looking for
  // it again.
  bool parseMember(const std::string& archive, const std::string& member);
  // Fills the platform as the hardware emulation child of the archive.
  bool parseHwEmuLFA(const std::string& archive, Mode mode);
  // A stand-alone JSON file; false when it is not a file. Exceptions pass.
  bool parseFile(const std::string& file);
  // False for an empty text; exceptions pass.
  bool parseJsonString(const std::string& text);

  // The first file of type "HPFM" when the archive holds it, and its text.
  std::string getHpfmFile() const;
  std::string getHpfmStr() const;
  bool readHpfmBusInterfaces(const std::string& hpfm);
  bool readHpfmNocConnectivity(const std::string& hpfm);

 private:
  // canParse's work; with `emuFound`, also whether the two emulation members
  // are there.
  bool locateMembers_(const std::string& archive, Mode mode, std::string& member, bool* emuFound);
  bool parseMember_(const std::string& archive, const std::string& member, bool child);
  void parseRoot_(const zr_json::JsonNode& root);
  void parseDesignIntent_(const zr_json::JsonNode& intent, const zr_json::JsonNode& root);
  void parseBoard_(const zr_json::JsonNode& board);
  void parseDevices_(const zr_json::JsonNode& devices);
  void parseMemories_(const zr_json::JsonNode& memories);
  void parseFiles_(const zr_json::JsonNode& files);
  void parseFeatureRoms_(const zr_json::JsonNode& roms);
  void parseSystemClocks_(const zr_json::JsonNode& clocks);
  void parseEmulationFile_(const std::string& type, const std::string& member);

  HPLPlatform* platform_;
  std::string archive_;
  std::shared_ptr<ArchiveMemberCache> ownCache_;
  ArchiveMemberCache* cache_;
};

#endif
