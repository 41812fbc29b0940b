#ifndef HOST_ZRXML_H
#define HOST_ZRXML_H

// The XML layer behind every XML format of the library: parsing with schema
// validation on read, navigation of the validated tree, and building and
// validating documents before they are written. libxml2 stays inside
// ZrXml.cpp; nothing here exposes its types.
//
// Reading never touches the network, never loads a DTD and never expands an
// entity: a document that declares entities is refused. Documents are read
// into memory by the library and parsed from there: a file must be a regular
// file, no larger than the environment's metadata size limit, and not
// compressed. An element with more than kMaxAttributes attributes or
// kMaxChildren element children is refused before the parse, as no platform
// file comes near either and the parser's time grows with the square of the
// attributes of one element. Every failure is an HXMLException carrying the
// line number (0 when there is none).

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/HEXAll.h"

namespace zr_xml {

constexpr std::size_t kMaxAttributes = 256;
constexpr std::size_t kMaxChildren = 100000;
// Elements and attributes of a whole document. The parsed tree costs some
// hundred bytes per node, so this bounds its memory (a few hundred MB at most)
// whatever the text's size; a platform file of tens of MB has well under it.
constexpr std::size_t kMaxNodes = 4000000;

class Schema;

// A compiled schema, built once per process from the XSD text compiled into the
// library. `key` names it in the cache; the text must live for the process.
const Schema& schemaFor(const char* key, const char* xsdText, std::size_t size);

// Declares the embedded XSD "schemas/NAME.xsd" and yields its compiled schema.
#define ZR_XML_SCHEMA(name)                                                                               \
  ([]() -> const ::zr_xml::Schema& {                                                                      \
    return ::zr_xml::schemaFor(#name, ::zr_embedded::schema_##name, ::zr_embedded::schema_##name##_size); \
  }())
#define ZR_XML_DECLARE_SCHEMA(name)              \
  namespace zr_embedded {                        \
  extern const char schema_##name[];             \
  extern const std::size_t schema_##name##_size; \
  }

// A non-owning handle on an element of a Document; valid while the document lives.
class Node {
 public:
  Node() = default;
  explicit operator bool() const { return raw_ != nullptr; }

  // Local name, without prefix.
  std::string name() const;
  // Namespace URI, empty when the element has none.
  std::string nsUri() const;
  int line() const;
  // The text content of the element and its descendants.
  std::string text() const;

  // Attributes are found by local name, whatever their namespace: a validated
  // document cannot hold two that differ only by namespace.
  bool hasAttr(const char* localName) const;
  std::string attr(const char* localName) const;

  // Element children in document order, all or by local name.
  std::vector<Node> children() const;
  std::vector<Node> children(const char* localName) const;
  // The first element child of that local name, or a null handle.
  Node child(const char* localName) const;

 private:
  friend class Document;
  friend class Builder;
  explicit Node(void* raw) : raw_(raw) {}
  void* raw_ = nullptr;
};

class Document {
 public:
  // Parses and validates. `name` is used in error texts.
  static Document parseFile(const std::string& path, const Schema& schema);
  static Document parseMemory(const std::string& data, const std::string& name, const Schema& schema);
  // Parses without a schema (well-formedness and the entity rule only).
  static Document parseMemoryUnchecked(const std::string& data, const std::string& name);

  Node root() const;

 private:
  std::shared_ptr<void> doc_;
};

// Builds a document to write. Elements get the root's namespace and prefix when
// one was given; attributes are qualified with it when `qualifiedAttributes`.
class Builder {
 public:
  class Element {
   public:
    Element addChild(const std::string& localName);
    Element& setAttr(const std::string& localName, const std::string& value);
    Element& setText(const std::string& value);

   private:
    friend class Builder;
    Element(Builder* owner, void* raw) : owner_(owner), raw_(raw) {}
    Builder* owner_;
    void* raw_;
  };

  Builder(const std::string& rootName, const std::string& nsUri = "", const std::string& prefix = "",
          bool qualifiedAttributes = false);
  ~Builder();
  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;

  Element root();
  // Throws HXMLException with the first violation.
  void validate(const Schema& schema) const;
  // The document as indented UTF-8 text with an XML declaration.
  std::string toString() const;

 private:
  struct FreeDoc {
    void operator()(void* doc) const;
  };
  std::unique_ptr<void, FreeDoc> doc_;
  void* ns_ = nullptr;
  bool qualifiedAttributes_;
};

}  // namespace zr_xml

#endif
