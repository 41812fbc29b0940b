#ifndef PLATFORM_SRC_JSONTEXT_H
#define PLATFORM_SRC_JSONTEXT_H

#include <boost/property_tree/ptree.hpp>
#include <iosfwd>
#include <string>

namespace zr_json {

// The property tree as pretty JSON text, byte for byte what the property
// tree's own writer prints (four blanks per level, every leaf a quoted string,
// "/" and control characters escaped, the trailing line end) for a tree of
// UTF-8 texts (other bytes become U+FFFD, see below), but appended to
// one string instead of going through a stream a piece at a time. A tree the
// writer refuses (a node with a value and children, a root with a value)
// raises the writer's own error and appends nothing.
void appendText(const boost::property_tree::ptree& tree, std::string& out);

// The same in two steps, for callers that own the buffer: the exact length of
// the text (raising the writer's error for a tree it refuses), then the text
// itself written from `out`, which must have room for it. Answers the end.
std::size_t textSize(const boost::property_tree::ptree& tree);
char* writeText(const boost::property_tree::ptree& tree, char* out);

// The text without its final line end, written to a stream a block at a time
// (raising the writer's error, before writing, for a tree it refuses).
void writeText(const boost::property_tree::ptree& tree, std::ostream& out);

// A text escaped as the tree writer escapes keys and values; bytes that are
// not well-formed UTF-8 are written as U+FFFD, so that the text is always
// valid JSON (the tree writer would pass them through).
void appendEscaped(const std::string& text, std::string& out);

// True when the text is well-formed UTF-8 (no overlong form, no surrogate,
// nothing past U+10FFFF), and so printed byte for byte as the tree writer does.
bool isUtf8(const std::string& text);

// A node below the root printed as the tree writer prints it at `level`
// (a leaf as a quoted value, a node whose children all have empty keys as an
// array, any other as an object). False, appending nothing, for a node the
// writer refuses: somewhere a value beside children.
bool appendValue(const boost::property_tree::ptree& tree, int level, std::string& out);

}  // namespace zr_json

#endif
