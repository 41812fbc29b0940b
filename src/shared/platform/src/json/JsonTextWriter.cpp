#include "json/JsonTextWriter.h"

#include <algorithm>
#include <boost/property_tree/ptree.hpp>
#include <cstring>
#include <typeinfo>

#include "json/JsonText.h"
#include "platform/HPLPlatform.h"
#include "platform/HTEQHardwareAddressSegment.h"
#include "platform/HTEQHardwareBusInterface.h"
#include "platform/HTEQHardwarePlatform.h"
#include "platform/HTEQPlatform.h"
#include "platform/JSONSerializable.h"

namespace teq_platform {

namespace {

void indent(std::string& out, int level) { out.append(4 * static_cast<std::size_t>(level), ' '); }

// The end of an object or array at `level`: a line end after its last
// member, the indent and the bracket.
std::string closing(std::size_t count, int level, char bracket) {
  std::string out = count > 0 ? "\n" : "";
  indent(out, level);
  return out + bracket;
}

void quoted(const std::string& value, std::string& out) {
  out += '"';
  zr_json::appendEscaped(value, out);
  out += '"';
}

}  // namespace

// Lets an object write itself: through the body it shares with the tree
// writer when its class has one (and is exactly that class, since a derived
// class may write otherwise), else into a small tree printed at once.
struct TextDispatch {
  static void write(const JSONSerializable& object, TextObjectWriter& writer) {
    const std::type_info& type = typeid(object);
    if (type == typeid(HPLPlatform)) return static_cast<const HPLPlatform&>(object).writeJSON_(writer);
    if (type == typeid(HTEQHardwareBusInterface))
      return static_cast<const HTEQHardwareBusInterface&>(object).writeJSON_(writer);
    if (type == typeid(HTEQHardwareAddressSegment))
      return static_cast<const HTEQHardwareAddressSegment&>(object).writeJSON_(writer);
    if (type == typeid(HTEQHardwarePlatform))
      return static_cast<const HTEQHardwarePlatform&>(object).writeJSON_(writer);
    if (type == typeid(HTEQPlatform)) return static_cast<const HTEQPlatform&>(object).writeJSON_(writer);
    JSONObjectWriter tree;
    object.toJSON(tree);
    writer.addTreeMembers(tree.getTree());
  }
};

std::size_t TextPieces::size() const {
  std::size_t n = 0;
  for (const auto& piece : pieces_) n += piece.size();
  return n;
}

char* TextPieces::copyTo(char* out) const {
  for (const auto& piece : pieces_) {
    std::memcpy(out, piece.data(), piece.size());
    out += piece.size();
  }
  return out;
}

void TextPieces::adopt(const std::string& open, TextPieces&& child, const std::string& close) {
  tail() += open;
  // A small child is copied into this writer's own text; a large one keeps
  // its pieces, which move.
  if (child.size() < 4096) {
    for (const auto& piece : child.pieces_) tail() += piece;
  } else {
    for (auto& piece : child.pieces_) pieces_.push_back(std::move(piece));
    pieces_.emplace_back();
  }
  tail() += close;
}

void TextObjectWriter::member(const std::string& key, bool put) {
  // A path, or a value put where the key is already, needs the tree.
  if (key.empty() || key.find('.') != std::string::npos) throw TextNeedsTree();
  if (put && std::find(keys_.begin(), keys_.end(), key) != keys_.end()) throw TextNeedsTree();
  keys_.push_back(key);
  std::string& out = tail();
  if (count_++ > 0) out += ",\n";
  indent(out, level_ + 1);
  quoted(key, out);
  out += ": ";
}

void TextObjectWriter::addKey(const std::string& key, const std::string& value) {
  if (value.empty()) return;
  member(key, true);
  quoted(value, tail());
}

void TextObjectWriter::addKey(const std::string& key, bool value) {
  member(key, true);
  tail() += value ? "\"true\"" : "\"false\"";
}

void TextObjectWriter::addKey(const std::string& key, TextObjectWriter&& child) {
  if (child.empty()) return;
  member(key, false);
  adopt("{\n", std::move(child), child.close());
}

void TextObjectWriter::addKey(const std::string& key, TextListWriter&& child) {
  if (child.empty()) return;
  member(key, false);
  adopt("[\n", std::move(child), child.close());
}

void TextObjectWriter::addKey(const std::string& key, const JSONSerializable* object) {
  if (object == nullptr) return;
  TextObjectWriter child(level_ + 1);
  TextDispatch::write(*object, child);
  addKey(key, std::move(child));
}

void TextObjectWriter::addKey(const std::string& key, const boost::property_tree::ptree& tree) {
  if (tree.empty()) return;
  member(key, false);
  if (!zr_json::appendValue(tree, level_ + 1, tail())) throw TextNeedsTree();
}

void TextObjectWriter::addKey(const std::string& key, const std::vector<std::string>& values) {
  TextListWriter list(level_ + 1);
  for (const auto& v : values) list.addItem(v);
  addKey(key, std::move(list));
}

void TextObjectWriter::writeObject(const JSONSerializable* object) {
  if (object != nullptr) TextDispatch::write(*object, *this);
}

void TextObjectWriter::writeObject(const JSONSerializable& object) { TextDispatch::write(object, *this); }

void TextObjectWriter::addTreeMembers(const boost::property_tree::ptree& tree) {
  // The object would have written into this writer's tree, where a key it
  // repeats replaces or doubles one: any repeat goes to the tree.
  for (const auto& child : tree) {
    if (std::find(keys_.begin(), keys_.end(), child.first) != keys_.end()) throw TextNeedsTree();
    member(child.first, false);
    if (!zr_json::appendValue(child.second, level_ + 1, tail())) throw TextNeedsTree();
  }
}

std::string TextObjectWriter::close() const { return closing(count_, level_, '}'); }

void TextListWriter::item() {
  std::string& out = tail();
  if (count_++ > 0) out += ",\n";
  indent(out, level_ + 1);
}

void TextListWriter::addItem(TextObjectWriter&& object) {
  if (object.empty()) return;
  item();
  adopt("{\n", std::move(object), object.close());
}

void TextListWriter::addItem(const JSONSerializable* object) {
  if (object == nullptr) return;
  TextObjectWriter child(level_ + 1);
  TextDispatch::write(*object, child);
  addItem(std::move(child));
}

void TextListWriter::addItem(const std::string& value) {
  if (value.empty()) return;
  item();
  quoted(value, tail());
}

void TextListWriter::addItem(bool value) {
  // Refused exactly as the tree's list writer refuses it.
  JSONListWriter().addItem(value);
}

std::string TextListWriter::close() const { return closing(count_, level_, ']'); }

char* platformText(const HTEQPlatform& platform) {
  TextObjectWriter root(0);
  root.writeObject(platform);
  const std::string open = "{\n", close = root.close() + "\n";
  const std::size_t size = open.size() + root.size() + close.size();
  char* text = new char[size + 1];
  char* end = root.copyTo(text + open.size());
  std::memcpy(text, open.data(), open.size());
  std::memcpy(end, close.data(), close.size());
  text[size] = '\0';
  return text;
}

}  // namespace teq_platform
