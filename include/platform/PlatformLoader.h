#ifndef PLATFORM_PLATFORMLOADER_H
#define PLATFORM_PLATFORMLOADER_H

#include <map>
#include <memory>
#include <string>

#include "platform/PlatformParseException.h"
#include "platform/ZrPlatformExport.h"

class ArchiveMemberCache;
class HTEQPlatform;
class HTEQHardwarePlatform;
class HTEQReconfigurablePartition;

namespace teq_platform {

// The one way from a file to a platform. The constructor is cheap: it looks at
// the extension and, for a descriptor, parses it, so that names and file paths
// are known at once. load() attaches the hardware, hardware emulation and
// software platforms.
//
// Failures: the constructor throws HEXFileNotFoundException for a missing
// descriptor and PlatformParseException for an invalid one. load() turns a
// PlatformParseException into message "@74-60@%s" and a null result, after
// which the loader holds no platform; any other exception passes through.
//
// A load reads and parses each archive member once, however many file
// entries or platforms name it; reconfigurable partitions that name one
// hardware file share the one hardware object read from it.
class ZR_PLATFORM_API PlatformLoader {
 public:
  // Where hardware metadata is read from.
  enum HwMetadataMode { Default = 0, PrimaryJsonOnly = 1, XmlOnly = 2 };
  // What the path names, decided by its extension.
  enum FileKind { HardwareFile = 0, SoftwareFile = 1, ZdfFile = 2 };

  PlatformLoader(const std::string& file, HwMetadataMode mode);
  ~PlatformLoader();
  PlatformLoader(const PlatformLoader&) = delete;
  PlatformLoader& operator=(const PlatformLoader&) = delete;

  std::shared_ptr<HTEQPlatform> load();

  // Forward to the platform; usable right after the constructor.
  std::string getVersion() const;
  std::string getFilePath() const;
  std::string getBaseName() const;
  std::string getName() const;
  std::string getVendor() const;
  std::string getDescription() const;
  std::string getHardwarePlatformFile() const;
  std::string getHardwareEmuPlatformFile() const;
  std::string getSoftwarePlatformFile() const;

  // The steps of load(); each returns at once when its object is attached.
  void attachHardwarePlatform();
  void attachHardwareEmulationPlatform();
  void attachSoftwarePlatform();

  FileKind getFileKind() const { return fileKind_; }
  bool isLoaded() const { return loaded_; }

 private:
  void attachRPHardwarePlatform_(HTEQReconfigurablePartition* partition);
  void attachRPHardwareEmulationPlatform_(HTEQReconfigurablePartition* partition);
  HTEQHardwarePlatform* partitionPlatform_(const std::string& file, const char* failure);
  ArchiveMemberCache* memberCache_();
  class LoadScope;

  std::shared_ptr<HTEQPlatform> platform_ptr_;
  std::string file_;
  FileKind fileKind_ = ZdfFile;
  bool loaded_ = false;
  HwMetadataMode mode_;
  // What the current load made; emptied when it ends.
  std::unique_ptr<ArchiveMemberCache> members_;
  std::map<std::string, HTEQHardwarePlatform*> partitionPlatforms_;
};

}  // namespace teq_platform

#endif
