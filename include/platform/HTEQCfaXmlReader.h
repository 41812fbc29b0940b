#ifndef PLATFORM_HTEQCFAXMLREADER_H
#define PLATFORM_HTEQCFAXMLREADER_H

#include <memory>
#include <string>

#include "platform/ZrPlatformExport.h"

class ArchiveMemberCache;
class HPLBoard;
class HPLCore;
class HPLDevice;
class HPLPlatform;
class HPLPort;

// The records of the archive's XML member; only the reader's source knows them.
namespace BasePlatform {
class Root;
class GenAppInfo;
class CFA;
class Host;
class Build;
class Board;
class Interfaces;
class Memories;
class Connectors;
class Images;
class Devices;
class Device;
class Core;
class Port;
class Files;
class FeatureRom;
class DesignIPs;
}  // namespace BasePlatform

// Fills one archive-backed hardware platform from the XML member of its
// archive (the platform's extension plus ".xml"). This is the older route into
// the model: the loader takes it when the archive has no JSON member it may use.
//
// A reader is used once: built, parseCFA called, dropped. The platform keeps
// what was filled even when the parse fails half way; the caller drops it then.
//
// Failures are reported, not thrown: parseCFA answers false, keeps a text in
// getErrorMsg() and sends a message:
//   "@74-62@%s%s%d" (critical warning) the document is malformed or breaks the
//                   format: reason, archive path + "/" + member, line number
//   "@74-52@%s"     (error) the document's format version is newer than the
//                   reader's: the refusal sentence
//   "@74-65@%s%s%s" (critical warning) anything else went wrong while filling
//                   the model: member, archive path, reason
class ZR_PLATFORM_API HTEQCfaXmlReader {
 public:
  // Throws HEXFileNotFoundException when the path is empty or does not exist.
  HTEQCfaXmlReader(const std::string& file, HPLPlatform* platform);
  HTEQCfaXmlReader(const HTEQCfaXmlReader&) = delete;
  HTEQCfaXmlReader& operator=(const HTEQCfaXmlReader&) = delete;

  // Where what is made of the archive's other members (hpfm, emulation
  // metadata) is kept, so that the readers of one load read and parse each
  // member once; the cache must outlive the reader. Without one (or with
  // null) the reader keeps its own.
  void setMemberCache(ArchiveMemberCache* cache);

  // Reads the whole member into the platform; true on success.
  bool parseCFA();
  // Reads the same member only to learn the version of its format; like
  // parseCFA it names the archive in the platform first. Failures as for
  // parseCFA, with "@74-62@" and false.
  bool getRootVersion(int& major, int& minor);
  // The reason of the last failure; empty after a success.
  const std::string& getErrorMsg() const { return errorMsg_; }

 private:
  // The whole text of an archive member; false (and an empty text) when it
  // cannot be opened or read, with the archive layer's reason in `why` when given.
  bool readMember_(const std::string& member, std::string& text, std::string* why = nullptr) const;
  // The XML member of the archive; names the archive in the platform first.
  std::string xmlMemberName_();
  // Parses the member into `root`; on failure reports "@74-62@" and answers false.
  bool unmarshal_(const std::string& member, BasePlatform::Root& root);
  // False, with the refusal sentence in `error`, for a document of a newer format.
  bool canCfaBeOpened_(const BasePlatform::Root& root, std::string& error) const;

  void parseRoot_(const BasePlatform::Root& root);
  void parseGenAppData_(const BasePlatform::GenAppInfo& info);
  void parseCFA_(const BasePlatform::CFA& cfa);
  void parseHost_(const BasePlatform::Host& host);
  void parseBuild_(const BasePlatform::Build& build);
  void parseBoard_(HPLBoard& board, const BasePlatform::Board& record);
  void parseInterfaces_(const BasePlatform::Interfaces& interfaces);
  void parseMemories_(const BasePlatform::Memories& memories);
  void parseConnectors_(HPLBoard& board, const BasePlatform::Connectors& connectors);
  void parseImages_(HPLBoard& board, const BasePlatform::Images& images);
  void parseDevices_(const BasePlatform::Devices& devices);
  void parseDevice_(HPLDevice& device, const BasePlatform::Device& record);
  void parseCore_(HPLCore& core, const BasePlatform::Core& record);
  void parsePort_(HPLPort& port, const BasePlatform::Port& record);
  void parseFiles_(const BasePlatform::Files& files);
  // A member of type HPFM: its text fills the platform through the hpfm reader.
  // A member that does not parse is reported on standard output and skipped.
  void parseHpfmMember_(const std::string& member);
  // A member of type EMU_XML: turns hardware emulation on when it lists an
  // emulation hpfm. A member that cannot be read fails the parse.
  void parseEmuXmlMember_(const std::string& member);
  void parseFeatureRom_(const BasePlatform::FeatureRom& record);
  void parseDesignIPs_(const BasePlatform::DesignIPs& designIPs);

  std::string file_;
  HPLPlatform* platform_;
  std::string errorMsg_;
  std::shared_ptr<ArchiveMemberCache> ownCache_;
  ArchiveMemberCache* cache_;
};

#endif
