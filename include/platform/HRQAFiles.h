#ifndef PLATFORM_HRQAFILES_H
#define PLATFORM_HRQAFILES_H

#include <boost/property_tree/ptree.hpp>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/JSONSerializable.h"
#include "platform/ZrPlatformExport.h"

// The file index of a metadata archive: member names by file type, sorted by
// type, one name per type.
class ZR_PLATFORM_API HRQAFiles : public teq_platform::JSONSerializable {
 public:
  using FileMap = std::map<std::string, std::string>;

  // Sets the name of the type; nothing when either string is empty.
  void add(const std::string& type, const std::string& name);
  // The name of the type, or "".
  std::string get(const std::string& type) const;
  bool contains(const std::string& type) const { return !get(type).empty(); }
  void remove(const std::string& type) { files_.erase(type); }
  void getTypes(std::vector<std::string>& types) const;
  void getNames(std::vector<std::string>& names) const;
  FileMap getFiles() const { return files_; }
  std::size_t size() const { return files_.size(); }
  bool empty() const { return files_.empty(); }
  void clear() { files_.clear(); }

  static const std::string& toType(const FileMap::value_type& entry) { return entry.first; }
  static const std::string& toName(const FileMap::value_type& entry) { return entry.second; }

  // Adds the entries of a "files" array: objects with "name" and "type"; an
  // object missing either (or one that is no object) adds nothing.
  void parse(const boost::property_tree::ptree& files);
  // Writes the key "files": the array of {"name", "type"} in type order.
  void toJSON(teq_platform::JSONObjectWriter& writer) const override;

 private:
  FileMap files_;
};

#endif
