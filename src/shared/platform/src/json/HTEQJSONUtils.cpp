#include "platform/HTEQJSONUtils.h"

#include <boost/property_tree/ptree.hpp>
#include <cstdlib>

#include "host/HEXAll.h"
#include "host/HSTStringUtils.h"
#include "json/JsonDocument.h"

using Tree = HTEQJSONUtils::Tree;

namespace {

const Tree* childAt(const Tree& tree, const std::string& key) {
  const auto child = tree.get_child_optional(key);
  return child ? &*child : nullptr;
}

// The value read as a signed decimal long; the fallback for an empty text.
long decimalOr(const Tree& tree, const std::string& key, long fallback, bool& found) {
  const Tree* child = childAt(tree, key);
  found = child != nullptr && !child->data().empty();
  if (!found) return fallback;
  return std::strtol(child->data().c_str(), nullptr, 10);
}

}  // namespace

bool HTEQJSONUtils::findKey(const Tree& tree, const std::string& key) {
  return childAt(tree, key) != nullptr;
}
bool HTEQJSONUtils::hasKey(const Tree& tree, const std::string& key) { return findKey(tree, key); }

std::string HTEQJSONUtils::getValue(const Tree& tree, const std::string& key) {
  const Tree* child = childAt(tree, key);
  return child ? child->data() : std::string();
}

std::string HTEQJSONUtils::getStringValue(const Tree& tree, const std::string& key) {
  return getValue(tree, key);
}

bool HTEQJSONUtils::getBoolValue(const Tree& tree, const std::string& key) {
  return HSTStringUtils::iequals(getValue(tree, key), "true");
}

int HTEQJSONUtils::getIntValue(const Tree& tree, const std::string& key, int fallback) {
  bool found;
  const long v = decimalOr(tree, key, fallback, found);
  return found ? static_cast<int>(v) : fallback;
}

unsigned int HTEQJSONUtils::getUnsignedIntValue(const Tree& tree, const std::string& key,
                                                unsigned int fallback) {
  bool found;
  const long v = decimalOr(tree, key, 0, found);
  return found ? static_cast<unsigned int>(v) : fallback;
}

long HTEQJSONUtils::getLongValue(const Tree& tree, const std::string& key, long fallback) {
  bool found;
  return decimalOr(tree, key, fallback, found);
}

unsigned long HTEQJSONUtils::getUnsignedLongValue(const Tree& tree, const std::string& key,
                                                  unsigned long fallback) {
  bool found;
  const long v = decimalOr(tree, key, 0, found);
  return found ? static_cast<unsigned long>(v) : fallback;
}

bool HTEQJSONUtils::findKey(const OptTree& tree, const std::string& key) {
  return tree && findKey(*tree, key);
}
bool HTEQJSONUtils::hasKey(const OptTree& tree, const std::string& key) { return tree && hasKey(*tree, key); }
std::string HTEQJSONUtils::getValue(const OptTree& tree, const std::string& key) {
  return tree ? getValue(*tree, key) : std::string();
}
std::string HTEQJSONUtils::getStringValue(const OptTree& tree, const std::string& key) {
  return tree ? getStringValue(*tree, key) : std::string();
}
bool HTEQJSONUtils::getBoolValue(const OptTree& tree, const std::string& key) {
  return tree && getBoolValue(*tree, key);
}
int HTEQJSONUtils::getIntValue(const OptTree& tree, const std::string& key, int fallback) {
  return tree ? getIntValue(*tree, key, fallback) : fallback;
}
unsigned int HTEQJSONUtils::getUnsignedIntValue(const OptTree& tree, const std::string& key,
                                                unsigned int fallback) {
  return tree ? getUnsignedIntValue(*tree, key, fallback) : fallback;
}
long HTEQJSONUtils::getLongValue(const OptTree& tree, const std::string& key, long fallback) {
  return tree ? getLongValue(*tree, key, fallback) : fallback;
}
unsigned long HTEQJSONUtils::getUnsignedLongValue(const OptTree& tree, const std::string& key,
                                                  unsigned long fallback) {
  return tree ? getUnsignedLongValue(*tree, key, fallback) : fallback;
}

void HTEQJSONUtils::readJSON(std::istream& in, Tree& tree, const std::string& name, unsigned maxDepth) {
  readJSON(zr_json::readText(in, name), tree, name, maxDepth);
}

void HTEQJSONUtils::readJSON(const std::string& text, Tree& tree, const std::string& name,
                             unsigned maxDepth) {
  // The flat document parses without recursing past the depth limit and
  // without an allocation per node; the tree is built from it in one pass.
  zr_json::Document doc;
  zr_json::readDocument(text, doc, name, maxDepth);
  Tree result;
  doc.toTree(result);
  tree.swap(result);
}
