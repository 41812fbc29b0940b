// The metadata archive: its index member "rqa.json", archiving files into it
// and extracting them by type.

#include "platform/HRQAArchive.h"

#include <fstream>
#include <ios>
#include <sstream>

#include "ZrZipArchive.h"
#include "host/ComMsgMgr.h"
#include "host/HEXAll.h"
#include "host/HUTFile.h"
#include "host/HUTFileUtils.h"
#include "host/HUTZip.h"
#include "host/IslIostreams.h"
#include "platform/HTEQJSONUtils.h"
#include "platform/JSONObjectWriter.h"

namespace {

const unsigned kWarningMask = 0x10000000;

// The string at a top-level key that is a leaf, else "".
std::string leafAt(const boost::property_tree::ptree& root, const char* key) {
  const auto child = root.get_child_optional(boost::property_tree::ptree::path_type(key, '\0'));
  return child && child->empty() ? child->data() : std::string();
}

void refuseUnsafeName(const std::string& where, const std::string& name) {
  const std::string reason = zr_zip::unsafeNameReason(name);
  if (!reason.empty()) throw HEXUserException(where + " - refused member name '" + name + "': " + reason);
}

}  // namespace

bool HRQAArchive::parse() { return parseJsonString(readJsonFile()); }

std::string HRQAArchive::readJsonFile() const {
  if (file_.empty() || !HUTFile::isFile(file_)) {
    ZR_SEND_MSG("@74-89@%s", kWarningMask, file_);
    return std::string();
  }
  std::string text;
  if (!HUTZip::readMember(file_, getJsonFileName(), text)) {
    ZR_SEND_MSG("@74-67@%s%s", kWarningMask, getJsonFileName(), file_);
    return std::string();
  }
  return text;
}

bool HRQAArchive::parseJsonString(const std::string& text) {
  if (text.empty()) return false;
  boost::property_tree::ptree root;
  HTEQJSONUtils::readJSON(text, root, file_.empty() ? getJsonFileName() : file_ + ":" + getJsonFileName());
  parseRoot(root);
  return true;
}

void HRQAArchive::parseRoot(const boost::property_tree::ptree& root) {
  // "version" is read by nobody: an index of any version reads the same.
  instPath_ = leafAt(root, "instPath");
  drBdInstName_ = leafAt(root, "drBdInstName");
  pfmName_ = leafAt(root, "pfmName");
  hierName_ = leafAt(root, "hierName");
  const auto files = root.get_child_optional(boost::property_tree::ptree::path_type("files", '\0'));
  if (files) files_.parse(*files);
}

void HRQAArchive::toJSON(teq_platform::JSONObjectWriter& writer) const {
  teq_platform::JSONObjectWriter version;
  version.addKey("major", "1");
  version.addKey("minor", "0");
  writer.addKey("version", std::move(version));
  writer.addKey("instPath", instPath_);
  writer.addKey("drBdInstName", drBdInstName_);
  writer.addKey("pfmName", pfmName_);
  writer.addKey("hierName", hierName_);
  files_.toJSON(writer);
}

void HRQAArchive::writeJSON() const {
  if (file_.empty()) return;
  writeJsonTo_(file_);
}

void HRQAArchive::writeJsonTo_(const std::string& archive) const {
  teq_platform::JSONObjectWriter writer;
  toJSON(writer);
  std::ostringstream text;
  writer.write(text);
  isl::iostreams::zip_ostream out(archive, getJsonFileName(), isl::iostreams::none);
  if (!out.is_open())
    throw HEXUserException("HRQAArchive::writeJSON() - Could not open file for streaming: " + file_);
  out << text.str() << "\n";
  out.close();
}

void HRQAArchive::attachDigest() const {
  if (!file_.empty()) HUTZip::attachDigestEn(file_);
}

void HRQAArchive::archive(const std::string& type, const std::string& name, const std::string& source) {
  if (file_.empty()) throw HEXAlgException("HRQAArchive::archive() - rqaFile is not set");
  if (getJsonFileName().empty()) throw HEXAlgException("HRQAArchive::archive() - jsonFile is not set");
  if (!HUTFile::isFile(file_)) throw HEXAlgException("HRQAArchive::archive() - rqaFile does not exist");
  refuseUnsafeName("HRQAArchive::archive()", name);
  // Every step works on a copy beside the archive, renamed over it once all
  // of them succeeded; the index entry is put back when one fails.
  const HRQAFiles saved = files_;
  const std::string work = HUTFileUtils::uniquifyFilenameInDir(file_ + ".update");
  try {
    files_.add(type, name);
    HUTFile::copyFile(file_, work);
    archiveTo_(work, name, source);
    writeJsonTo_(work);
    HUTZip::attachDigestEn(work);
    HUTFile::renameFile(work, file_);
  } catch (...) {
    HUTFile::rmRecursive(work);
    files_ = saved;
    throw;
  }
}

void HRQAArchive::archiveTo_(const std::string& archive, const std::string& name,
                             const std::string& source) const {
  std::ifstream in;
  // A directory would open and then read as nothing: callers compress it first.
  if (HUTFile::isFile(source)) in.open(source, std::ios_base::in | std::ios_base::binary);
  if (!in.is_open())
    throw HEXUserException("HRQAArchive::archiveFile() - Could not open file for reading: " + source);
  isl::iostreams::zip_ostream out(archive, name, isl::iostreams::none);
  if (!out.is_open())
    throw HEXUserException("HRQAArchive::archiveFile() - Could not open file for streaming: " + file_);
  char block[4096];
  while (in.read(block, sizeof block) || in.gcount() > 0) {
    if (!out.write(block, in.gcount())) break;
  }
  // A read that broke off fails the stream, so that close() refuses a truncated member.
  if (in.bad() || !out) out.setstate(std::ios_base::badbit);
  out.close();
}

std::string HRQAArchive::extract(const std::string& type, const std::string& dest) const {
  if (dest.empty()) throw HEXUserException("HRQAArchive::extract() - destDir argument must not be empty");
  HUTFile::mkDirRecursive(dest);
  std::string name = files_.get(type);
  if (name.empty()) return std::string();
  if (type == "DR_BD") return _extractDir("bd", dest);
  if (type == "BOARD_REPO_PATH" || type == "IP_REPO_PATH") return _extractDir(name, dest);
  return _extractFile(name, dest);
}

std::string HRQAArchive::_extractDir(const std::string& name, const std::string& dest) const {
  refuseUnsafeName("HRQAArchive::_extractDir()", name);
  std::string dir = name;
  while (!dir.empty() && dir.back() == '/') dir.pop_back();
  HUTZip::uncompressDir(file_, dir, dest, true);
  const std::string result = dest + "/" + dir;
  if (!HUTFile::isDir(result))
    throw HEXUserException("HRQAArchive::_extractDir() - dir was not extracted to the expected location: " +
                           result);
  return result;
}

std::string HRQAArchive::_extractFile(const std::string& name, const std::string& dest) const {
  refuseUnsafeName("HRQAArchive::_extractFile()", name);
  if (!HUTZip::uncompress(file_, name, dest, true)) return std::string();
  return dest + "/" + name;
}
