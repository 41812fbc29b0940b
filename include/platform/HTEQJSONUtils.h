#ifndef PLATFORM_HTEQJSONUTILS_H
#define PLATFORM_HTEQJSONUTILS_H

#include <boost/optional.hpp>
#include <boost/property_tree/ptree.hpp>
#include <istream>
#include <string>

#include "platform/ZrPlatformExport.h"

// Typed reads of a property tree, with a fallback for a missing key. Keys are
// paths with "." as separator. No read reports an error. Each read also takes
// an optional tree, which answers the not-found result when it is empty.
class ZR_PLATFORM_API HTEQJSONUtils {
 public:
  using Tree = boost::property_tree::ptree;
  using OptTree = boost::optional<const Tree&>;

  static bool findKey(const Tree& tree, const std::string& key);
  static bool hasKey(const Tree& tree, const std::string& key);
  static std::string getValue(const Tree& tree, const std::string& key);
  static std::string getStringValue(const Tree& tree, const std::string& key);
  // True when the text equals "true" ignoring case.
  static bool getBoolValue(const Tree& tree, const std::string& key);
  // The text read as a signed decimal long (leading digits only; text that does
  // not start with a number gives 0), cut to the result type. Empty text or a
  // missing key gives the fallback.
  static int getIntValue(const Tree& tree, const std::string& key, int fallback);
  static unsigned int getUnsignedIntValue(const Tree& tree, const std::string& key, unsigned int fallback);
  static long getLongValue(const Tree& tree, const std::string& key, long fallback);
  static unsigned long getUnsignedLongValue(const Tree& tree, const std::string& key, unsigned long fallback);

  static bool findKey(const OptTree& tree, const std::string& key);
  static bool hasKey(const OptTree& tree, const std::string& key);
  static std::string getValue(const OptTree& tree, const std::string& key);
  static std::string getStringValue(const OptTree& tree, const std::string& key);
  static bool getBoolValue(const OptTree& tree, const std::string& key);
  static int getIntValue(const OptTree& tree, const std::string& key, int fallback);
  static unsigned int getUnsignedIntValue(const OptTree& tree, const std::string& key, unsigned int fallback);
  static long getLongValue(const OptTree& tree, const std::string& key, long fallback);
  static unsigned long getUnsignedLongValue(const OptTree& tree, const std::string& key,
                                            unsigned long fallback);

  // The deepest nesting readJSON accepts by default.
  static constexpr unsigned kMaxDepth = 512;

  // Reads JSON text into a tree. Unlike the property tree's own reader this one
  // refuses documents nested deeper than maxDepth before parsing (the parser
  // recurses once per level) and reports every failure as HEXDataException
  // naming `name`.
  static void readJSON(std::istream& in, Tree& tree, const std::string& name, unsigned maxDepth = kMaxDepth);
  static void readJSON(const std::string& text, Tree& tree, const std::string& name,
                       unsigned maxDepth = kMaxDepth);
};

#endif
