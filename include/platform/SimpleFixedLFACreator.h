#ifndef PLATFORM_SIMPLEFIXEDLFACREATOR_H
#define PLATFORM_SIMPLEFIXEDLFACREATOR_H

#include <memory>
#include <string>

#include "platform/ZrPlatformExport.h"

class HPLPlatform;
class HTEQHardwarePlatform;
class HTEQTmpDirObject;

// Makes a minimal fixed hardware archive from scratch: a unified platform
// that is not expandable, made by the linker, with its JSON metadata as the
// member "lfa.json" (whatever the output's extension) and every file a caller
// dropped into the staging directory, at the same relative path.
//
// Members are added in the bytewise order of their relative paths, so the
// same staging content always makes the same archive.
class ZR_PLATFORM_API SimpleFixedLFACreator {
 public:
  // Makes the staging directory and removes a file at the output path, so
  // that no old archive is mistaken for the new one. Throws HEXUserException
  // when the staging directory cannot be made or the output path holds a file
  // that cannot be removed or is a directory.
  explicit SimpleFixedLFACreator(const std::string& outputPath);
  ~SimpleFixedLFACreator();
  SimpleFixedLFACreator(const SimpleFixedLFACreator&) = delete;
  SimpleFixedLFACreator& operator=(const SimpleFixedLFACreator&) = delete;

  // Kept, not owned; the archive is made from the creator's own platform.
  void setSeedPlatform(HTEQHardwarePlatform* seed) { seed_ = seed; }
  HTEQHardwarePlatform* getSeedPlatform() const { return seed_; }

  // Where callers drop the files the archive is to carry. It lives as long
  // as the creator.
  std::string getStagingDir() const;
  const std::string& getOutputPath() const { return outputPath_; }

  // Sets the platform's flags, writes "lfa.json" into the staging directory
  // and packs the staging directory into the output. Answers true. Raises
  // HEXUserException when "lfa.json" cannot be written (no archive is made
  // then) or the archive cannot be written; the archive is built by updates
  // that each replace the file whole.
  bool writeLFA();

 private:
  void setPlatformAttributes_();
  void writeJSON_();
  void createArchive_();

  std::unique_ptr<HPLPlatform> platform_;
  HTEQHardwarePlatform* seed_ = nullptr;
  std::unique_ptr<HTEQTmpDirObject> staging_;
  std::string outputPath_;
};

#endif
