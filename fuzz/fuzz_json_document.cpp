// Differential target for the flat JSON document: arbitrary bytes go through
// the library's reader and through the property tree's own parser. Both must
// agree: the same tree when the text is read, the same error text when it is
// not. A tree that reads back is also printed by both writers, which must
// give the same bytes where the tree's texts are UTF-8. Any disagreement
// aborts, as does every crash, leak or hang.
#include <algorithm>
#include <boost/property_tree/json_parser.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "host/HEXAll.h"
#include "json/JsonDocument.h"
#include "json/JsonText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using Tree = boost::property_tree::ptree;
  const std::string text(reinterpret_cast<const char*>(data), size);
  // The reference parser recurses once per level: keep it to shallow texts,
  // as the library's reader does before it lets that parser near a text.
  unsigned depth = 0, deepest = 0;
  for (char c : text) {
    if (c == '{' || c == '[') deepest = std::max(deepest, ++depth);
    if ((c == '}' || c == ']') && depth > 0) --depth;
  }
  if (deepest > 64) return 0;

  Tree reference;
  std::string referenceError;
  try {
    std::istringstream in(text);
    boost::property_tree::read_json(in, reference);
  } catch (const boost::property_tree::json_parser_error& e) {
    referenceError = "fuzz:" + std::to_string(e.line()) + ": " + e.message();
  }

  zr_json::Document doc;
  std::string error;
  try {
    zr_json::readDocument(text, doc, "fuzz", 512);
  } catch (const HEXDataException& e) {
    error = e.what();
  }
  if (error != referenceError) std::abort();
  if (!error.empty()) return 0;
  Tree tree;
  doc.toTree(tree);
  if (!(tree == reference)) std::abort();

  std::ostringstream expected;
  bool refused = false;
  try {
    boost::property_tree::write_json(expected, tree, true);
  } catch (const boost::property_tree::json_parser_error&) {
    refused = true;
  }
  std::string printed;
  try {
    zr_json::appendText(tree, printed);
  } catch (const boost::property_tree::json_parser_error&) {
    if (!refused) std::abort();
    return 0;
  }
  if (refused) std::abort();
  // The reference writer passes bytes that are not UTF-8 through; the
  // library writes them as U+FFFD, so its text is always UTF-8.
  if (zr_json::isUtf8(expected.str()) ? printed != expected.str() : !zr_json::isUtf8(printed)) std::abort();
  return 0;
}
