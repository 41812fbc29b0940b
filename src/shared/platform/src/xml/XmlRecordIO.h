#ifndef PLATFORM_XMLRECORDIO_H
#define PLATFORM_XMLRECORDIO_H

// Moves records declared with XmlRecordSupport.h between a validated document
// and memory, and checks their occurrence rules before they are written. Each
// class here is a visitor: a record hands it its fields in document order.

#include <cstdint>
#include <string>

#include "xml/XmlRecordSupport.h"
#include "xml/ZrXml.h"

namespace zr_xml_record {

// Writes a finished document to a file; HXMLException when it cannot.
void writeDocumentFile(const std::string& path, const std::string& text);

// A conversion set turns field text into values and back. The reader and
// writer below take one as a template argument and call its static
// fromText/toText overloads; a format with more value types derives from
// this set and adds overloads for them (bring the base ones in with `using`).
struct PlainConversions {
  // Field text to a value. The document has been validated, so a numeric
  // text is an integer in range; anything else throws HXMLException at `line`.
  static void fromText(const std::string& text, std::wstring& out, int line, const char* name);
  static void fromText(const std::string& text, std::uint8_t& out, int line, const char* name);
  static void fromText(const std::string& text, std::uint32_t& out, int line, const char* name);
  static void fromText(const std::string& text, std::uint64_t& out, int line, const char* name);
  static void fromText(const std::string& text, std::int64_t& out, int line, const char* name);
  // A decimal keeps its text, without the blanks around it.
  static void fromText(const std::string& text, Decimal& out, int line, const char* name);

  static std::string toText(const std::wstring& value);
  static std::string toText(std::uint8_t value);
  static std::string toText(std::uint32_t value);
  static std::string toText(std::uint64_t value);
  static std::string toText(std::int64_t value);
  static std::string toText(const Decimal& value);
};

// Whether XML can carry the text at all: it refuses most control characters.
bool isXmlText(const std::wstring& value);
template <class T>
bool isXmlText(const T&) {
  return true;
}

// The name of the first element a record's fields expect, or null when they
// expect none: what tells the alternatives of a choice apart.
class LeadingElement {
 public:
  template <class R>
  static const char* of() {
    LeadingElement v;
    const R record;
    record.visit(v);
    return v.name_;
  }

  template <class... Ignored>
  void attribute(const Ignored&...) {}
  template <class... Ignored>
  void text(const char* name, const Ignored&...) {
    take(name);
  }
  template <class... Ignored>
  void child(const char* name, const Ignored&...) {
    take(name);
  }
  template <class R>
  void alternative(const char*, const Single<R>&) {
    if (!name_) name_ = of<R>();
  }

 private:
  void take(const char* name) {
    if (!name_) name_ = name;
  }
  const char* name_ = nullptr;
};

// Fills a record from an element of a validated document. A text field is a
// child element that holds only text; it is held like an attribute. Of a
// choice, the first alternative whose leading element the element holds is
// read (the schema has made sure that one fits), from the same element.
template <class Conv>
class BasicRecordReader {
 public:
  template <class R>
  static void read(const zr_xml::Node& node, R& record) {
    BasicRecordReader reader(node);
    record.visit(reader);
  }

  template <class T>
  void attribute(const char* name, Attribute<T>& attr, AttrUse) {
    if (!node_.hasAttr(name)) return;
    T value{};
    Conv::fromText(node_.attr(name), value, node_.line(), name);
    attr.set(value);
  }
  template <class T>
  void text(const char* name, Attribute<T>& holder) {
    const zr_xml::Node node = node_.child(name);
    if (!node) return;
    T value{};
    Conv::fromText(node.text(), value, node.line(), name);
    holder.set(value);
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
  template <class R>
  void alternative(const char*, Single<R>& holder) {
    if (chosen_) return;
    const char* leading = LeadingElement::of<R>();
    if (leading && !node_.child(leading)) return;
    chosen_ = true;
    read(node_, holder.get());
  }

 private:
  explicit BasicRecordReader(const zr_xml::Node& node) : node_(node) {}
  zr_xml::Node node_;
  bool chosen_ = false;
};
using RecordReader = BasicRecordReader<PlainConversions>;

// Writes a record into an element being built: set attributes, then present
// children and text fields, each in table order. The alternative held of a
// choice writes its fields into the same element.
template <class Conv>
class BasicRecordWriter {
 public:
  template <class R>
  static void write(zr_xml::Builder::Element element, const R& record) {
    BasicRecordWriter writer(element);
    record.visit(writer);
  }

  template <class T>
  void attribute(const char* name, const Attribute<T>& attr, AttrUse) {
    if (attr.isSet()) element_.setAttr(name, Conv::toText(attr.get()));
  }
  template <class T>
  void text(const char* name, const Attribute<T>& holder) {
    if (holder.isSet()) element_.addChild(name).setText(Conv::toText(holder.get()));
  }
  template <class R>
  void child(const char* name, const Single<R>& holder, ChildOccurs) {
    if (holder.isSet()) write(element_.addChild(name), holder.get());
  }
  template <class R>
  void child(const char* name, const List<R>& holder, ChildOccurs) {
    for (std::size_t i = 0; i < holder.size(); ++i) write(element_.addChild(name), holder.at(i));
  }
  template <class R>
  void alternative(const char*, const Single<R>& holder) {
    if (holder.isSet()) write(element_, holder.get());
  }

 private:
  explicit BasicRecordWriter(zr_xml::Builder::Element element) : element_(element) {}
  zr_xml::Builder::Element element_;
};

// Finds the first required attribute or text field that is unset, required
// child that is missing, list that must hold an item and is empty, or text
// that XML cannot carry, or a choice none of whose alternatives is held.
// `path` names the element as "Root/CFA/Devices". A text field is always
// required.
class OccursChecker {
 public:
  template <class R>
  static bool check(const std::string& path, const R& record, std::string* why) {
    OccursChecker checker(path);
    record.visit(checker);
    if (checker.ok_ && checker.alternatives_ && !checker.chosen_)
      checker.fail("the element '" + path + "' holds none of its alternatives");
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
  template <class T>
  void text(const char* name, const Attribute<T>& holder) {
    if (!ok_) return;
    if (!holder.isSet())
      fail("the element '" + path_ + "' lacks its required child '" + name + "'");
    else if (!isXmlText(holder.get()))
      fail("the element '" + path_ + "/" + name + "' holds a character that XML cannot carry");
  }
  template <class R>
  void alternative(const char*, const Single<R>& holder) {
    alternatives_ = true;
    if (!ok_ || !holder.isSet()) return;
    chosen_ = true;
    std::string why;
    if (!check(path_, holder.get(), &why)) fail(why);
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
  bool alternatives_ = false;
  bool chosen_ = false;
};

// Defines Record::IsOccursOk; `path` names the record's element in the reason.
#define ZR_XML_DEFINE_OCCURS_OK(Record, path)                       \
  bool Record::IsOccursOk(std::string* why) const {                 \
    return ::zr_xml_record::OccursChecker::check(path, *this, why); \
  }

// Throws HXMLException unless the element is `localName` in the namespace
// `nsUri` (no namespace when empty); `prefix` is how the format writes it.
void requireElement(const zr_xml::Node& node, const char* localName, const char* nsUri = "",
                    const char* prefix = "");

// Replaces `target` with the record read from the document element, which
// must be `rootName` (see requireElement); on failure `target` is unchanged.
template <class Conv = PlainConversions, class R>
void unmarshalRecord(const zr_xml::Document& doc, R& target, const char* rootName, const char* nsUri = "",
                     const char* prefix = "") {
  const zr_xml::Node top = doc.root();
  requireElement(top, rootName, nsUri, prefix);
  R parsed;
  BasicRecordReader<Conv>::read(top, parsed);
  target.Swap(parsed);
}

// The document text of a root record: its occurrence rules checked first
// (a clear error naming what is missing), then built, validated against the
// schema and written. `what` names the document in errors. A format with a
// namespace gives its URI and prefix; its attributes are qualified too.
template <class Conv = PlainConversions, class R>
std::string marshalRecord(const R& root, const char* rootName, const zr_xml::Schema& schema, const char* what,
                          const char* nsUri = "", const char* prefix = "") {
  std::string why;
  if (!root.IsOccursOk(&why)) throw HXMLException(std::string("cannot write the ") + what + ": " + why, 0);
  const bool qualified = *nsUri != '\0';
  zr_xml::Builder builder(rootName, nsUri, prefix, qualified);
  BasicRecordWriter<Conv>::write(builder.root(), root);
  builder.validate(schema);
  return builder.toString();
}

}  // namespace zr_xml_record

#endif
