#ifndef PLATFORM_SRC_SERVICEJSON_H
#define PLATFORM_SRC_SERVICEJSON_H

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "json/JsonDocument.h"
#include "platform/HTEQJSONUtils.h"

namespace zr_services {

// JSON text handed to a query service, parsed with the library's depth limit;
// malformed text raises boost::property_tree::json_parser_error.
inline void parseDocument(const std::string& text, boost::property_tree::ptree& tree) {
  zr_json::parseTree(text, tree, HTEQJSONUtils::kMaxDepth);
}

// The tree as pretty JSON text, as the property tree's writer prints it.
std::string prettyJson(const boost::property_tree::ptree& tree);

}  // namespace zr_services

#endif
