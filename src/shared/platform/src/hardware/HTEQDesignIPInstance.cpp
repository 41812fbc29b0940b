#include "platform/HTEQDesignIPInstance.h"

#include "host/HEXAll.h"
#include "platform/JSONObjectWriter.h"

void HTEQDesignIPInstance::addConfigParam(const std::string& key, const std::string& value) {
  if (config_.count(key) != 0) {
    throw HEXAlgException("Attempt to readd Design IP Instance Config Param key: '" + key +
                          "' is not allowed!");
  }
  config_[key] = value;
}

void HTEQDesignIPInstance::toJSON(teq_platform::JSONObjectWriter& writer) const {
  writer.addKey("vlnv", vlnv_);
  writer.addKey("instance", instanceName_);
  // Each configuration key becomes one member; the tree is filled directly so
  // that a dot inside a key stays part of the name.
  teq_platform::JSONObjectWriter::Tree config;
  for (const auto& entry : config_) {
    if (!entry.second.empty())
      config.push_back(std::make_pair(entry.first, teq_platform::JSONObjectWriter::Tree(entry.second)));
  }
  writer.addKey("configuration", config);
}
