#ifndef PLATFORM_XMLRECORDIO_H
#define PLATFORM_XMLRECORDIO_H

// Moves records declared with XmlRecordSupport.h between a validated document
// and memory, and checks their occurrence rules before they are written. Each
// class here is a visitor: a record hands it its fields in document order.

#include <cstdint>
#include <string>

#include "XmlRecordSupport.h"
#include "ZrXml.h"

namespace zr_xml_record {

// Attribute text to a value. The document has been validated, so a numeric
// text is an integer in range; anything else throws HXMLException at `line`.
void fromText(const std::string& text, std::wstring& out, int line, const char* name);
void fromText(const std::string& text, std::uint8_t& out, int line, const char* name);
void fromText(const std::string& text, std::uint32_t& out, int line, const char* name);
void fromText(const std::string& text, std::uint64_t& out, int line, const char* name);
void fromText(const std::string& text, std::int64_t& out, int line, const char* name);

// Writes a finished document to a file; HXMLException when it cannot.
void writeDocumentFile(const std::string& path, const std::string& text);

std::string toText(const std::wstring& value);
std::string toText(std::uint8_t value);
std::string toText(std::uint32_t value);
std::string toText(std::uint64_t value);
std::string toText(std::int64_t value);

// Whether XML can carry the text at all: it refuses most control characters.
bool isXmlText(const std::wstring& value);
template <class T>
bool isXmlText(const T&) {
  return true;
}

// Fills a record from an element of a validated document.
class RecordReader {
 public:
  template <class R>
  static void read(const zr_xml::Node& node, R& record) {
    RecordReader reader(node);
    record.visit(reader);
  }

  template <class T>
  void attribute(const char* name, Attribute<T>& attr, AttrUse) {
    if (!node_.hasAttr(name)) return;
    T value{};
    fromText(node_.attr(name), value, node_.line(), name);
    attr.set(value);
  }
  template <class R>
  void child(const char* name, Single<R>& holder, ChildOccurs) {
    const zr_xml::Node node = node_.child(name);
    if (node) read(node, holder.get());
  }
  template <class R>
  void child(const char* name, List<R>& holder, ChildOccurs) {
    for (const zr_xml::Node& node : node_.children(name)) read(node, holder.append());
  }

 private:
  explicit RecordReader(const zr_xml::Node& node) : node_(node) {}
  zr_xml::Node node_;
};

// Writes a record into an element being built: set attributes, then present
// children, each in table order.
class RecordWriter {
 public:
  template <class R>
  static void write(zr_xml::Builder::Element element, const R& record) {
    RecordWriter writer(element);
    record.visit(writer);
  }

  template <class T>
  void attribute(const char* name, const Attribute<T>& attr, AttrUse) {
    if (attr.isSet()) element_.setAttr(name, toText(attr.get()));
  }
  template <class R>
  void child(const char* name, const Single<R>& holder, ChildOccurs) {
    if (holder.isSet()) write(element_.addChild(name), holder.get());
  }
  template <class R>
  void child(const char* name, const List<R>& holder, ChildOccurs) {
    for (std::size_t i = 0; i < holder.size(); ++i) write(element_.addChild(name), holder.at(i));
  }

 private:
  explicit RecordWriter(zr_xml::Builder::Element element) : element_(element) {}
  zr_xml::Builder::Element element_;
};

// Finds the first required attribute that is unset, required child that is
// missing, list that must hold an item and is empty, or text that XML cannot
// carry. `path` names the element as "Root/CFA/Devices".
class OccursChecker {
 public:
  template <class R>
  static bool check(const std::string& path, const R& record, std::string* why) {
    OccursChecker checker(path);
    record.visit(checker);
    if (!checker.ok_ && why) *why = checker.why_;
    return checker.ok_;
  }

  template <class T>
  void attribute(const char* name, const Attribute<T>& attr, AttrUse use) {
    if (!ok_) return;
    if (use == AttrUse::kRequired && !attr.isSet())
      fail("the required attribute '" + std::string(name) + "' of element '" + path_ + "' is not set");
    else if (attr.isSet() && !isXmlText(attr.get()))
      fail("the attribute '" + std::string(name) + "' of element '" + path_ +
           "' holds a character that XML cannot carry");
  }
  template <class R>
  void child(const char* name, const Single<R>& holder, ChildOccurs occurs) {
    if (!ok_) return;
    if (holder.isSet())
      descend(name, holder.get());
    else if (occurs == ChildOccurs::kOne)
      fail("the element '" + path_ + "' lacks its required child '" + name + "'");
  }
  template <class R>
  void child(const char* name, const List<R>& holder, ChildOccurs occurs) {
    if (!ok_) return;
    if (holder.size() == 0 && occurs == ChildOccurs::kOneOrMore)
      fail("the element '" + path_ + "' needs at least one child '" + name + "'");
    for (std::size_t i = 0; ok_ && i < holder.size(); ++i) descend(name, holder.at(i));
  }

 private:
  explicit OccursChecker(std::string path) : path_(std::move(path)) {}
  template <class R>
  void descend(const char* name, const R& record) {
    std::string why;
    if (!check(path_ + "/" + name, record, &why)) fail(why);
  }
  void fail(const std::string& why) {
    ok_ = false;
    why_ = why;
  }

  std::string path_;
  std::string why_;
  bool ok_ = true;
};

// The document text of a root record: its occurrence rules checked first
// (a clear error naming what is missing), then built, validated against the
// schema and written. `what` names the document in errors.
template <class R>
std::string marshalRecord(const R& root, const char* rootName, const zr_xml::Schema& schema, const char* what) {
  std::string why;
  if (!root.IsOccursOk(&why)) throw HXMLException(std::string("cannot write the ") + what + ": " + why, 0);
  zr_xml::Builder builder(rootName);
  RecordWriter::write(builder.root(), root);
  builder.validate(schema);
  return builder.toString();
}

}  // namespace zr_xml_record

#endif
