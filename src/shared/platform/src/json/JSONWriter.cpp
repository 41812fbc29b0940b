#include "platform/JSONWriter.h"

#include <boost/property_tree/json_parser.hpp>
#include <string>

#include "json/JsonText.h"
#include "platform/JSONSerializable.h"

namespace teq_platform {

JSONSerializable::~JSONSerializable() = default;

void JSONWriter::write(std::ostream& out) const {
  zr_json::writeText(tree_, out);
  // The line end goes through the stream, flushing it, as a stream writer's
  // final std::endl would.
  out << std::endl;
  if (!out.good()) throw boost::property_tree::json_parser_error("write error", std::string(), 0);
}

}  // namespace teq_platform
