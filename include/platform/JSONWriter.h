#ifndef PLATFORM_JSONWRITER_H
#define PLATFORM_JSONWRITER_H

#include <boost/property_tree/ptree.hpp>
#include <ostream>

#include "platform/ZrPlatformExport.h"

namespace teq_platform {

// Owns one property tree. Every value in it is a string; an array is a node
// whose children have empty keys.
class ZR_PLATFORM_API JSONWriter {
 public:
  using Tree = boost::property_tree::ptree;

  Tree& getTree() { return tree_; }
  const Tree& getTree() const { return tree_; }
  Tree& getOtherTree(JSONWriter& other) { return other.tree_; }
  const Tree& getOtherTree(const JSONWriter& other) const { return other.tree_; }

  // True when the tree has no children; a value of its own does not count.
  bool empty() const { return tree_.empty(); }

  // The tree as pretty JSON text: four blanks per level, every leaf a quoted
  // string, "/" written as "\/", a trailing newline. A node with both a value
  // and children cannot be written and raises the property tree's parser error.
  void write(std::ostream& out) const;

 private:
  Tree tree_;
};

}  // namespace teq_platform

#endif
