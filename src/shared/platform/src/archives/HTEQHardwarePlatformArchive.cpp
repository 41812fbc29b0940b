// The archive side of the hardware platform: copying members out of the
// platform archive (plain, and out of the tile-array project nested in it)
// and writing files and the JSON metadata back into it.

#include <fstream>
#include <ios>
#include <sstream>
#include <vector>

#include "ZrTempFile.h"
#include "ZrZipArchive.h"
#include "archives/PlatformFileExtractor.h"
#include "archives/PlatformTilprjFileExtractor.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTFileUtils.h"
#include "host/HUTPathUtils.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "platform/HPLFile.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/JSONObjectWriter.h"

namespace {

// Files inside the tile-array project.
const char* const kLarchInProject = "tilarchive/morwen/logical_arch_til.larch";
const char* const kIntfCstInProject = "tilarchive/morwen/til_interface.tilintfcst";
const char* const kIntfSolInProject = "tilarchive/morwen/til_interface.tilintfsol";
const char* const kTilCstInProject = "tilarchive/morwen/til_constraints.tilcst";
const char* const kMetaDataInProject = "tilarchive/morwen/tilprj_meta_data.json";

const std::streamsize kCopyBlock = 4096;

// Copies the rest of in to out in blocks; false when reading broke off.
bool copyStream(std::istream& in, std::ostream& out) {
  char block[kCopyBlock];
  while (in.read(block, kCopyBlock) || in.gcount() > 0) {
    if (!out.write(block, in.gcount())) return false;
  }
  return !in.bad();
}

// The member of the first file of this type, from the platform archive.
bool extractType(const HTEQHardwarePlatform& platform, const char* type, const std::string& dest,
                 bool fixHpfm = false) {
  const std::string member = platform.getFile(type);
  if (member.empty()) return false;
  return PlatformFileExtractor(platform, fixHpfm).extract(member, dest);
}

// A file inside the tile-array project; an archive from before the project
// existed may hold it as a plain member of oldType.
bool extractFromProject(const HTEQHardwarePlatform& platform, const char* pathInProject,
                        const std::string& dest, const char* oldType = nullptr) {
  {
    PlatformTilprjFileExtractor extractor(platform);
    if (extractor.extractFile(pathInProject, dest)) return true;
  }
  return oldType != nullptr && extractType(platform, oldType, dest);
}

}  // namespace

bool HTEQHardwarePlatform::extract(const std::string& member, const std::string& archive,
                                   const std::string& dest) {
  if (member.empty() || archive.empty() || dest.empty()) return false;
  isl::iostreams::zip_istream in(member, archive, std::ios_base::in | std::ios_base::binary,
                                 isl::iostreams::zip_filter_default);
  if (!in.is_open()) return false;
  try {
    const std::string parent = HUTPathUtils::getParent(dest);
    if (!parent.empty()) HUTFile::mkDirRecursive(parent);
  } catch (const HEXAll&) {
    return false;
  }
  // The copy goes to a new file renamed over dest, so that a damaged member
  // or a full disk leaves dest as it was; a device, FIFO or link at dest is
  // never replaced nor written through.
  if (!HUTFile::isReplaceable(dest)) return false;
  try {
    zr_zip::TempFile out(zr_zip::directoryOf(dest), ".zr-extract-", dest);
    char block[kCopyBlock];
    while (in.read(block, kCopyBlock) || in.gcount() > 0)
      out.write(block, static_cast<std::size_t>(in.gcount()));
    if (in.bad() || !HUTFile::isReplaceable(dest)) return false;
    out.commitTo(dest, zr_zip::newFileMode(0666));
  } catch (const HEXUserException&) {
    return false;
  }
  return true;
}

bool HTEQHardwarePlatform::extractFile(const std::string& type, const std::string& dest) const {
  const std::string member = getFile(type);
  if (member.empty()) return false;
  return extract(member, platformFile_, dest);
}

bool HTEQHardwarePlatform::extractFileFromPlatform(const std::string& member, const std::string& dest) const {
  if (member.empty() || dest.empty()) return false;
  return PlatformFileExtractor(*this, false).extract(member, dest);
}

bool HTEQHardwarePlatform::extractHPFMFile(const std::string& dest, bool fixHpfm) const {
  return extractType(*this, "HPFM", dest, fixHpfm);
}

bool HTEQHardwarePlatform::extractDrBdFile(const std::string& dest) const {
  return extractType(*this, "DR_BD", dest);
}

bool HTEQHardwarePlatform::extractEmuXmlFile(const std::string& dest) const {
  return extractType(*this, "EMU_XML", dest);
}

bool HTEQHardwarePlatform::extractEmuJsonFile(const std::string& dest) const {
  return extractType(*this, "EMU_JSON", dest);
}

bool HTEQHardwarePlatform::extractNTSFile(const std::string& dest) const {
  return extractType(*this, "NOC_TRAFFIC", dest);
}

bool HTEQHardwarePlatform::extractNCRFile(const std::string& dest) const {
  return extractType(*this, "NOC_SOLUTION", dest);
}

bool HTEQHardwarePlatform::extractTILPRJFile(const std::string& dest) const {
  if (HUTFile::isFile(dest)) return true;
  PlatformTilprjFileExtractor extractor(*this);
  // "ME_ARCHIVE" is the project's type in older archives.
  for (const char* type : {"TILPRJ", "ME_ARCHIVE"}) {
    const std::string member = getFile(type);
    if (!member.empty() && extractor.extract(member, platformFile_, dest)) return true;
  }
  return false;
}

bool HTEQHardwarePlatform::extractLARCHFile(const std::string& dest) const {
  return extractFromProject(*this, kLarchInProject, dest, "ME_LOGICAL_ARCH");
}

bool HTEQHardwarePlatform::extractINTFCSTFile(const std::string& dest) const {
  return extractFromProject(*this, kIntfCstInProject, dest, "ME_CONSTRAINT");
}

bool HTEQHardwarePlatform::extractINTFSOLFile(const std::string& dest) const {
  return extractFromProject(*this, kIntfSolInProject, dest);
}

bool HTEQHardwarePlatform::extractTILCSTFile(const std::string& dest) const {
  return extractFromProject(*this, kTilCstInProject, dest);
}

bool HTEQHardwarePlatform::extractTILMetadataFile(const std::string& dest) const {
  return extractFromProject(*this, kMetaDataInProject, dest);
}

void HTEQHardwarePlatform::writeToJSON() const { writeJsonTo_(platformFile_); }

void HTEQHardwarePlatform::writeJsonTo_(const std::string& archive) const {
  const std::string member = getJsonFileName();
  if (archive.empty() || member.empty()) return;
  const HPLPlatform* platform = dynamic_cast<const HPLPlatform*>(this);
  if (platform == nullptr)
    throw HEXAlgException("HTEQHardwarePlatform::writeToJSON() - Could not cast this to HPLPlatform");
  // The document is made before the archive is touched, so that a model that
  // cannot be written leaves the archive alone.
  teq_platform::JSONObjectWriter writer;
  platform->toJSON(writer);
  std::ostringstream text;
  writer.write(text);
  isl::iostreams::zip_ostream out(archive, member, isl::iostreams::none);
  if (!out.is_open())
    throw HEXUserException("HTEQHardwarePlatform::writeToJSON() - Could not open file for streaming: " +
                           member);
  out << text.str() << "\n";
  out.close();
}

void HTEQHardwarePlatform::archiveFile(const std::string& type, const std::string& member,
                                       const std::string& source) {
  const std::string jsonFile = getJsonFileName();
  if (platformFile_.empty())
    throw HEXAlgException("HTEQHardwarePlatform::archiveFile() - lfaFile is not set");
  if (jsonFile.empty()) throw HEXAlgException("HTEQHardwarePlatform::archiveFile() - jsonFile is not set");
  if (!HUTFile::isFile(platformFile_))
    throw HEXAlgException("HTEQHardwarePlatform::archiveFile() - lfaFile does not exist");
  HPLPlatform* platform = dynamic_cast<HPLPlatform*>(this);
  if (platform == nullptr)
    throw HEXAlgException("HTEQHardwarePlatform::archiveFile() - Could not cast this to HPLPlatform");
  // The steps work on a copy beside the archive, which replaces it in one
  // rename once all of them succeeded. The file list is kept to be restored.
  std::vector<HPLFile> savedFiles;
  for (auto range = platform->getFileVecRange(); range.first != range.second; ++range.first)
    savedFiles.push_back(**range.first);
  const std::string work = HUTFileUtils::uniquifyFilenameInDir(platformFile_ + ".update");
  try {
    HUTFile::copyFile(platformFile_, work);
    // One file of each type: the new entry replaces the old one in the list,
    // while the old member stays in the archive.
    platform->removeFileType(type);
    platform->addFile(type, member);
    archiveFileTo_(work, member, source);
    writeJsonTo_(work);
    HUTZip::attachDigestEn(work);
    HUTFile::renameFile(work, platformFile_);
  } catch (...) {
    HUTFile::rmRecursive(work);
    platform->restoreFiles_(savedFiles);
    throw;
  }
}

void HTEQHardwarePlatform::_archiveFile(const std::string& member, const std::string& source) const {
  archiveFileTo_(platformFile_, member, source);
}

void HTEQHardwarePlatform::archiveFileTo_(const std::string& archive, const std::string& member,
                                          const std::string& source) const {
  if (archive.empty()) return;
  std::ifstream in;
  // A directory would open, and then read as nothing.
  if (HUTFile::isFile(source)) in.open(source, std::ios_base::in | std::ios_base::binary);
  if (!in.is_open())
    throw HEXUserException("HTEQHardwarePlatform::archiveFile() - Could not open file for reading: " +
                           source);
  isl::iostreams::zip_ostream out(archive, member, isl::iostreams::none);
  if (!out.is_open())
    throw HEXUserException("HTEQHardwarePlatform::archiveFile() - Could not open file for streaming: " +
                           platformFile_);
  // A read that breaks off marks the stream failed, so that close() refuses
  // to put a truncated member into the archive.
  if (!copyStream(in, out)) out.setstate(std::ios_base::badbit);
  out.close();
}

void HTEQHardwarePlatform::attachDigest() const {
  if (!platformFile_.empty()) HUTZip::attachDigestEn(platformFile_);
}
