#include "platform/JSONWriter.h"

#include <boost/property_tree/json_parser.hpp>

#include "platform/JSONSerializable.h"

namespace teq_platform {

JSONSerializable::~JSONSerializable() = default;

void JSONWriter::write(std::ostream& out) const { boost::property_tree::write_json(out, tree_, true); }

}  // namespace teq_platform
