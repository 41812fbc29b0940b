// The file index of a metadata archive.

#include "platform/HRQAFiles.h"

#include "platform/JSONListWriter.h"
#include "platform/JSONObjectWriter.h"

void HRQAFiles::add(const std::string& type, const std::string& name) {
  if (type.empty() || name.empty()) return;
  files_[type] = name;
}

std::string HRQAFiles::get(const std::string& type) const {
  const auto it = files_.find(type);
  return it == files_.end() ? std::string() : it->second;
}

void HRQAFiles::getTypes(std::vector<std::string>& types) const {
  for (const auto& entry : files_) types.push_back(toType(entry));
}

void HRQAFiles::getNames(std::vector<std::string>& names) const {
  for (const auto& entry : files_) names.push_back(toName(entry));
}

void HRQAFiles::parse(const boost::property_tree::ptree& files) {
  for (const auto& item : files) {
    // Only leaves count: an object or array where a string belongs reads as missing.
    const auto name = item.second.get_child_optional(boost::property_tree::ptree::path_type("name", '\0'));
    const auto type = item.second.get_child_optional(boost::property_tree::ptree::path_type("type", '\0'));
    if (!name || !type || !name->empty() || !type->empty()) continue;
    add(type->data(), name->data());
  }
}

void HRQAFiles::toJSON(teq_platform::JSONObjectWriter& writer) const {
  teq_platform::JSONListWriter list;
  for (const auto& entry : files_) {
    teq_platform::JSONObjectWriter item;
    item.addKey("name", toName(entry));
    item.addKey("type", toType(entry));
    list.addItem(std::move(item));
  }
  writer.addKey("files", std::move(list));
}
