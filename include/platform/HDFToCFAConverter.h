#ifndef PLATFORM_HDFTOCFACONVERTER_H
#define PLATFORM_HDFTOCFACONVERTER_H

#include <memory>
#include <string>

#include "platform/ZrPlatformExport.h"

class HHDFHwDef;
class HPLPlatform;

// Packs a hardware handoff file (HDF) into a hardware archive: the HDF, plus
// generated XML and JSON metadata describing a fixed, unified platform in the
// state "pre_synth", named after the HDF's top module. The metadata members
// are "lfa.xml"/"lfa.json" when the output name ends in ".lfa" (exactly), and
// "cfa.xml"/"cfa.json" otherwise. The archive carries a digest.
class ZR_PLATFORM_API HDFToCFAConverter {
 public:
  // Raises HEXAlgException with "Could not find specified file: '<hdf>'on
  // disk." when the HDF is no file, and "Could not find specified dir:
  // '<dir>'on disk." when the output directory is missing.
  HDFToCFAConverter(const std::string& hdfFile, const std::string& outputDir, const std::string& outputName);
  ~HDFToCFAConverter();
  HDFToCFAConverter(const HDFToCFAConverter&) = delete;
  HDFToCFAConverter& operator=(const HDFToCFAConverter&) = delete;

  const std::string& getHwPfmDir() const { return hwPfmDir_; }
  const std::string& getHwPfmFileName() const { return hwPfmFileName_; }
  const std::string& getHwPfmFile() const { return hwPfmFile_; }
  // Under the tool's temporary directory; made unique by createStagingDir.
  const std::string& getStagingDir() const { return stagingDir_; }

  // Makes the staging directory (a new name when the path is taken).
  // HEXUserException when it cannot be made or written into.
  void createStagingDir();
  // Copies the HDF into the staging directory.
  bool writeHDF();
  // Writes "<kw>.xml" and "<kw>.json" into the staging directory; true when
  // both are there afterwards. A failure of either write answers false.
  bool writeCfaXml();
  // Packs the staging directory into the output, stamps the digest, and
  // removes the staging directory. The output is replaced whole or not at all.
  void writeCfaArchive();
  // The whole job: false, after "@74-46@" or "@74-47@", when the HDF or the
  // metadata cannot be written. Raises what createStagingDir and
  // writeCfaArchive raise.
  bool writeCFA();

 private:
  // The stem of the metadata members for an output name.
  static std::string hwpfKeyword_(const std::string& name);
  void removeStagingDir_();

  std::unique_ptr<HPLPlatform> platform_;
  std::shared_ptr<HHDFHwDef> hdf_;
  std::string hwPfmDir_;
  std::string hwPfmFileName_;
  std::string hwPfmFile_;
  std::string stagingDir_;
  bool stagingMade_ = false;
};

#endif
