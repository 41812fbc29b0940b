#ifndef PLATFORM_HRQAARCHIVE_H
#define PLATFORM_HRQAARCHIVE_H

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "platform/HRQAFiles.h"
#include "platform/JSONSerializable.h"
#include "platform/ZrPlatformExport.h"

// A metadata archive: a zip file with named files and directories and the
// index member "rqa.json" that lists them by type. A new archive is made by
// setFile, writeJSON (which creates the zip holding only the index), then
// archive for each member.
//
// Errors: parseJsonString raises HEXDataException for a malformed index,
// nesting too deep included; archive raises HEXAlgException when the archive
// is not set up and HEXUserException when a source or the archive cannot be
// used, leaving the archive and the index as they were; extract raises
// HEXUserException for an empty destination or a directory not extracted.
// Member names that are absolute or climb out with ".." are refused.
class ZR_PLATFORM_API HRQAArchive : public teq_platform::JSONSerializable {
 public:
  const std::string& getFile() const { return file_; }
  void setFile(const std::string& file) { file_ = file; }
  static std::string getJsonFileName() { return "rqa.json"; }

  const std::string& getInstPath() const { return instPath_; }
  void setInstPath(const std::string& value) { instPath_ = value; }
  const std::string& getDrBdInstName() const { return drBdInstName_; }
  void setDrBdInstName(const std::string& value) { drBdInstName_ = value; }
  const std::string& getPfmName() const { return pfmName_; }
  void setPfmName(const std::string& value) { pfmName_ = value; }
  const std::string& getHierName() const { return hierName_; }
  void setHierName(const std::string& value) { hierName_ = value; }
  HRQAFiles& getFiles() { return files_; }
  const HRQAFiles& getFiles() const { return files_; }

  // Reads and parses the index member; false when there is none.
  bool parse();
  // The index member's text, or "" after a warning.
  std::string readJsonFile() const;
  // False for empty text; otherwise parses it (HEXDataException when malformed).
  bool parseJsonString(const std::string& text);
  void parseRoot(const boost::property_tree::ptree& root);

  // Lists a member in the index without touching the archive.
  void registerFile(const std::string& type, const std::string& name) { files_.add(type, name); }
  // Puts the file source into the archive as the member name, lists it under
  // the type, rewrites the index and stamps the digest: all or nothing.
  void archive(const std::string& type, const std::string& name, const std::string& source);
  void archiveFile(const std::string& type, const std::string& name, const std::string& source) {
    archive(type, name, source);
  }
  // Extracts the member of the type into dest; the path of what was
  // extracted, or "" when the type is not listed or its member is missing.
  std::string extract(const std::string& type, const std::string& dest) const;
  // Writes the index member (creating the archive when missing).
  void writeJSON() const;
  void attachDigest() const;

  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  void writeJsonTo_(const std::string& archive) const;
  void archiveTo_(const std::string& archive, const std::string& name, const std::string& source) const;
  std::string _extractDir(const std::string& name, const std::string& dest) const;
  std::string _extractFile(const std::string& name, const std::string& dest) const;

  std::string file_;
  HRQAFiles files_;
  std::string instPath_;
  std::string drBdInstName_;
  std::string pfmName_;
  std::string hierName_;
};

#endif
