#include "xml/ZrXml.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlschemas.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "ZrOwned.h"
#include "host/HSTStringUtils.h"
#include "host/HUTEnv.h"
#include "host/HUTFile.h"

namespace zr_xml {

namespace {

using zr_owned::Owned;

// Strings the XML library hands over are freed by its own deallocator, which is
// a variable rather than a function.
struct XmlFree {
  void operator()(xmlChar* s) const { xmlFree(s); }
};
using XmlString = std::unique_ptr<xmlChar, XmlFree>;

void initOnce() {
  static std::once_flag flag;
  std::call_once(flag, [] { xmlInitParser(); });
}

// Keeps the first error libxml2 reports, with its line.
struct ErrorSink {
  std::string text;
  int line = 0;
  bool seen = false;
};

void collectError(void* user, xmlErrorPtr err) {
  auto* sink = static_cast<ErrorSink*>(user);
  if (sink->seen || err == nullptr || err->level < XML_ERR_ERROR) return;
  sink->seen = true;
  sink->line = err->line;
  sink->text = err->message ? HSTStringUtils::trim(err->message) : std::string("unknown XML error");
}

// libxml2 errors without a structured handler go to this, which drops them:
// the library reports through exceptions, never by printing.
void dropGeneric(void*, const char*, ...) {}

std::string located(const std::string& name, const ErrorSink& e) {
  return name + ":" + std::to_string(e.line) + ": " + e.text;
}

}  // namespace

class Schema {
 public:
  Schema(const char* key, const char* text, std::size_t size) {
    initOnce();
    ErrorSink errors;
    const Owned<xmlSchemaParserCtxt, xmlSchemaFreeParserCtxt> pctxt(
        xmlSchemaNewMemParserCtxt(text, static_cast<int>(size)));
    if (pctxt) {
      xmlSchemaSetParserStructuredErrors(pctxt.get(), collectError, &errors);
      schema_.reset(xmlSchemaParse(pctxt.get()));
    }
    if (!schema_)
      throw HXMLException(std::string("internal schema '") + key + "' is invalid: " + errors.text,
                          errors.line);
  }

  // Throws the first violation of the document.
  void validate(xmlDocPtr doc, const std::string& name) const {
    ErrorSink errors;
    ValidCtxt vctxt = takeContext_();
    if (!vctxt) throw HXMLException(name + ": out of memory", 0);
    xmlSchemaSetValidStructuredErrors(vctxt.get(), collectError, &errors);
    const int result = xmlSchemaValidateDoc(vctxt.get(), doc);
    xmlSchemaSetValidStructuredErrors(vctxt.get(), nullptr, nullptr);
    if (result != 0) {
      if (!errors.seen) errors.text = "the document does not match its schema";
      throw HXMLException(located(name, errors), errors.line);
    }
    // Only a context whose run ended cleanly is used again.
    returnContext_(std::move(vctxt));
  }

 private:
  using ValidCtxt = Owned<xmlSchemaValidCtxt, xmlSchemaFreeValidCtxt>;

  // Validation contexts are made once and used again: each validation starts
  // the context afresh, and making one costs about as much as checking a
  // small document. One context is kept per thread that validates at once.
  ValidCtxt takeContext_() const {
    {
      std::lock_guard<std::mutex> lock(poolMutex_);
      if (!pool_.empty()) {
        ValidCtxt vctxt = std::move(pool_.back());
        pool_.pop_back();
        return vctxt;
      }
    }
    return ValidCtxt(xmlSchemaNewValidCtxt(schema_.get()));
  }
  void returnContext_(ValidCtxt vctxt) const {
    std::lock_guard<std::mutex> lock(poolMutex_);
    if (pool_.size() < kPooled) pool_.push_back(std::move(vctxt));
  }

  static constexpr std::size_t kPooled = 4;
  Owned<xmlSchema, xmlSchemaFree> schema_;
  mutable std::mutex poolMutex_;
  mutable std::vector<ValidCtxt> pool_;
};

const Schema& schemaFor(const char* key, const char* xsdText, std::size_t size) {
  static std::mutex mutex;
  static std::map<std::string, std::unique_ptr<Schema>> cache;
  std::lock_guard<std::mutex> lock(mutex);
  auto& slot = cache[key];
  if (!slot) slot = std::make_unique<Schema>(key, xsdText, size);
  return *slot;
}

namespace {

xmlNodePtr X(void* raw) { return static_cast<xmlNodePtr>(raw); }

std::string str(const xmlChar* s) {
  return s ? std::string(reinterpret_cast<const char*>(s)) : std::string();
}

constexpr int kParseOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES;

// Refuses what a platform file never needs and what could make a document
// expand beyond its size: entity declarations of any kind.
void checkNoEntities(xmlDocPtr doc, const std::string& name) {
  for (xmlDtdPtr dtd : {doc->intSubset, doc->extSubset}) {
    if (dtd == nullptr) continue;
    for (xmlNodePtr n = dtd->children; n; n = n->next) {
      if (n->type == XML_ENTITY_DECL)
        throw HXMLException(name + ":" + std::to_string(xmlGetLineNo(n) > 0 ? xmlGetLineNo(n) : 0) +
                                ": entity declarations are not allowed",
                            static_cast<int>(xmlGetLineNo(n) > 0 ? xmlGetLineNo(n) : 0));
    }
  }
}

// The compressed forms the XML library would unpack when reading a file
// itself. A document is read by us and parsed from memory, so it never
// unpacks them; they are named here, so that the refusal says why.
const char* compressedForm(const std::string& data) {
  static const struct {
    const char* magic;
    std::size_t size;
    const char* name;
  } kForms[] = {
      {"\x1f\x8b", 2, "gzip"},
      {"\xfd\x37\x7a\x58\x5a\0", 6, "xz"},
      {"\x5d\0\0", 3, "lzma"},
  };
  for (const auto& form : kForms)
    if (data.size() >= form.size && std::memcmp(data.data(), form.magic, form.size) == 0) return form.name;
  return nullptr;
}

// Throws the refusal of a document with more nodes than the tree may hold.
[[noreturn]] void refuseDocument(const std::string& name, int line) {
  throw HXMLException(name + ":" + std::to_string(line) + ": the document has more than " +
                          std::to_string(kMaxNodes) + " elements and attributes (the limit per document)",
                      line);
}

// Throws the refusal of an element found by the scan below.
[[noreturn]] void refuseElement(const std::string& name, int line, const char* what, std::size_t limit) {
  throw HXMLException(name + ":" + std::to_string(line) + ": an element with more than " +
                          std::to_string(limit) + " " + what + " is refused (the limit of " + what +
                          " per element)",
                      line);
}

// A linear look at the text before the parser sees it. The parser takes time
// that grows with the square of the attributes of one element, so an element
// with more attributes, or more children, than any platform file has is
// refused here, with its line. The scan only counts: whatever it cannot make
// sense of is left to the parser, which reports it.
void scanElementCounts(const std::string& data, const std::string& name) {
  const char* p = data.data();
  const char* const end = p + data.size();
  int line = 1;
  std::size_t nodes = 0;              // elements and attributes so far
  std::vector<std::size_t> children;  // one count per open element
  // Moves p past the first `close` at or after p (to the end when there is
  // none), counting the lines on the way.
  const auto skipPast = [&](const char* close) {
    const std::size_t length = std::strlen(close);
    const char* found = std::search(p, end, close, close + length);
    const char* stop = found == end ? end : found + length;
    line += static_cast<int>(std::count(p, stop, '\n'));
    p = stop;
  };
  const auto startsWith = [&](const char* text) {
    const std::size_t length = std::strlen(text);
    return static_cast<std::size_t>(end - p) >= length && std::memcmp(p, text, length) == 0;
  };
  while (p < end) {
    const char* lt = static_cast<const char*>(std::memchr(p, '<', static_cast<std::size_t>(end - p)));
    if (lt == nullptr) break;
    line += static_cast<int>(std::count(p, lt, '\n'));
    p = lt;
    if (startsWith("<!--")) {
      skipPast("-->");
    } else if (startsWith("<![CDATA[")) {
      skipPast("]]>");
    } else if (startsWith("<?")) {
      skipPast("?>");
    } else if (startsWith("<!")) {
      // A document type declaration: its internal subset may hold '>' in
      // brackets and quotes.
      int depth = 0;
      char quote = 0;
      for (++p; p < end; ++p) {
        const char c = *p;
        if (c == '\n') ++line;
        if (quote) {
          if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
          quote = c;
        } else if (c == '[') {
          ++depth;
        } else if (c == ']') {
          --depth;
        } else if (c == '>' && depth <= 0) {
          ++p;
          break;
        }
      }
    } else if (startsWith("</")) {
      if (!children.empty()) children.pop_back();
      skipPast(">");
    } else {
      const int startLine = line;
      if (++nodes > kMaxNodes) refuseDocument(name, startLine);
      if (!children.empty() && ++children.back() > kMaxChildren)
        refuseElement(name, startLine, "children", kMaxChildren);
      // Attributes are counted by their '=' outside quoted values.
      std::size_t attributes = 0;
      char quote = 0;
      bool empty = false;
      for (++p; p < end; ++p) {
        const char c = *p;
        if (c == '\n') ++line;
        if (quote) {
          if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
          quote = c;
        } else if (c == '=') {
          if (++attributes > kMaxAttributes) refuseElement(name, startLine, "attributes", kMaxAttributes);
          if (++nodes > kMaxNodes) refuseDocument(name, startLine);
        } else if (c == '>') {
          empty = p[-1] == '/';
          ++p;
          break;
        }
      }
      if (!empty) children.push_back(0);
    }
  }
}

// The parser context of this thread, made once and used again for every
// document (each parse starts it afresh): making one, with its dictionary,
// costs about as much as parsing a small document. The documents share the
// dictionary by reference; a new context is made once it holds more than
// kDictNames names, so that it stays bounded.
using ParserCtxt = Owned<xmlParserCtxt, xmlFreeParserCtxt>;
constexpr std::size_t kDictNames = 10000;

ParserCtxt& threadParser() {
  thread_local ParserCtxt ctxt;
  if (ctxt && ctxt->dict != nullptr && static_cast<std::size_t>(xmlDictSize(ctxt->dict)) > kDictNames)
    ctxt.reset();
  if (!ctxt) ctxt.reset(xmlNewParserCtxt());
  return ctxt;
}

std::shared_ptr<void> readDoc(const std::string& name, const std::string& data) {
  initOnce();
  const unsigned long long limit = HUTEnv::instance().getMaxMetadataSize();
  if (data.size() > limit || data.size() > static_cast<std::size_t>(INT_MAX))
    throw HXMLException(name + ": the document is " + std::to_string(data.size()) +
                            " bytes, beyond the metadata size limit of " + std::to_string(limit) + " bytes",
                        0);
  if (const char* form = compressedForm(data))
    throw HXMLException(name + ": the document is compressed (" + form + "); compressed XML is not read", 0);
  scanElementCounts(data, name);
  xmlSetGenericErrorFunc(nullptr, dropGeneric);
  ParserCtxt& shared = threadParser();
  if (!shared) throw HXMLException(name + ": out of memory", 0);
  ErrorSink errors;
  Owned<xmlDoc, xmlFreeDoc> doc(xmlCtxtReadMemory(shared.get(), data.data(), static_cast<int>(data.size()),
                                                  name.c_str(), nullptr, kParseOptions));
  if (!doc || !shared->wellFormed) {
    // A context that saw an error is not used again.
    const ParserCtxt ctxt(shared.release());
    xmlErrorPtr err = xmlCtxtGetLastError(ctxt.get());
    if (err && err->message) {
      errors.text = HSTStringUtils::trim(err->message);
      errors.line = err->line;
    } else {
      errors.text = "the document is not well-formed XML";
    }
    throw HXMLException(located(name, errors), errors.line);
  }
  checkNoEntities(doc.get(), name);
  if (xmlDocGetRootElement(doc.get()) == nullptr)
    throw HXMLException(name + ": the document has no root element", 0);
  return std::shared_ptr<void>(doc.release(), [](void* d) { xmlFreeDoc(static_cast<xmlDocPtr>(d)); });
}

}  // namespace

std::string Node::name() const { return raw_ ? str(X(raw_)->name) : std::string(); }

std::string Node::nsUri() const { return raw_ && X(raw_)->ns ? str(X(raw_)->ns->href) : std::string(); }

int Node::line() const { return raw_ ? static_cast<int>(xmlGetLineNo(X(raw_))) : 0; }

std::string Node::text() const {
  if (!raw_) return std::string();
  const XmlString content(xmlNodeGetContent(X(raw_)));
  return str(content.get());
}

namespace {
xmlAttrPtr findAttr(xmlNodePtr node, const char* localName) {
  for (xmlAttrPtr a = node->properties; a; a = a->next)
    if (xmlStrEqual(a->name, reinterpret_cast<const xmlChar*>(localName))) return a;
  return nullptr;
}
}  // namespace

bool Node::hasAttr(const char* localName) const { return raw_ && findAttr(X(raw_), localName) != nullptr; }

std::string Node::attr(const char* localName) const {
  if (!raw_) return std::string();
  xmlAttrPtr a = findAttr(X(raw_), localName);
  if (!a) return std::string();
  const XmlString value(xmlNodeListGetString(X(raw_)->doc, a->children, 1));
  return str(value.get());
}

std::vector<Node> Node::children() const {
  std::vector<Node> out;
  if (!raw_) return out;
  for (xmlNodePtr c = X(raw_)->children; c; c = c->next)
    if (c->type == XML_ELEMENT_NODE) out.push_back(Node(c));
  return out;
}

std::vector<Node> Node::children(const char* localName) const {
  std::vector<Node> out;
  if (!raw_) return out;
  for (xmlNodePtr c = X(raw_)->children; c; c = c->next)
    if (c->type == XML_ELEMENT_NODE && xmlStrEqual(c->name, reinterpret_cast<const xmlChar*>(localName)))
      out.push_back(Node(c));
  return out;
}

Node Node::child(const char* localName) const {
  if (!raw_) return Node();
  for (xmlNodePtr c = X(raw_)->children; c; c = c->next)
    if (c->type == XML_ELEMENT_NODE && xmlStrEqual(c->name, reinterpret_cast<const xmlChar*>(localName)))
      return Node(c);
  return Node();
}

Document Document::parseFile(const std::string& path, const Schema& schema) {
  // The file is read whole by us and parsed from memory: the XML library's own
  // file reader would open anything and unpack compressed files unbounded.
  std::string data;
  try {
    data = HUTFile::readAll(path, HUTEnv::instance().getMaxMetadataSize(), "metadata size limit");
  } catch (const HEXAll& e) {
    throw HXMLException(e.getText(), 0);
  }
  Document d;
  d.doc_ = readDoc(path, data);
  schema.validate(static_cast<xmlDocPtr>(d.doc_.get()), path);
  return d;
}

Document Document::parseMemory(const std::string& data, const std::string& name, const Schema& schema) {
  Document d;
  d.doc_ = readDoc(name, data);
  schema.validate(static_cast<xmlDocPtr>(d.doc_.get()), name);
  return d;
}

Document Document::parseMemoryUnchecked(const std::string& data, const std::string& name) {
  Document d;
  d.doc_ = readDoc(name, data);
  return d;
}

Node Document::root() const {
  return doc_ ? Node(xmlDocGetRootElement(static_cast<xmlDocPtr>(doc_.get()))) : Node();
}

namespace {
const xmlChar* XC(const std::string& s) { return reinterpret_cast<const xmlChar*>(s.c_str()); }
}  // namespace

Builder::Builder(const std::string& rootName, const std::string& nsUri, const std::string& prefix,
                 bool qualifiedAttributes)
    : qualifiedAttributes_(qualifiedAttributes) {
  initOnce();
  xmlDocPtr doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  if (doc == nullptr) throw HXMLException("out of memory for a new XML document", 0);
  doc_.reset(doc);
  xmlNodePtr root = xmlNewDocNode(doc, nullptr, XC(rootName), nullptr);
  xmlDocSetRootElement(doc, root);
  if (!nsUri.empty()) {
    xmlNsPtr ns = xmlNewNs(root, XC(nsUri), prefix.empty() ? nullptr : XC(prefix));
    xmlSetNs(root, ns);
    ns_ = ns;
  }
}

Builder::~Builder() = default;

void Builder::FreeDoc::operator()(void* doc) const { xmlFreeDoc(static_cast<xmlDocPtr>(doc)); }

Builder::Element Builder::root() {
  return Element(this, xmlDocGetRootElement(static_cast<xmlDocPtr>(doc_.get())));
}

Builder::Element Builder::Element::addChild(const std::string& localName) {
  xmlNodePtr c = xmlNewChild(X(raw_), static_cast<xmlNsPtr>(owner_->ns_), XC(localName), nullptr);
  return Element(owner_, c);
}

Builder::Element& Builder::Element::setAttr(const std::string& localName, const std::string& value) {
  if (owner_->qualifiedAttributes_ && owner_->ns_)
    xmlSetNsProp(X(raw_), static_cast<xmlNsPtr>(owner_->ns_), XC(localName), XC(value));
  else
    xmlSetProp(X(raw_), XC(localName), XC(value));
  return *this;
}

Builder::Element& Builder::Element::setText(const std::string& value) {
  const XmlString escaped(xmlEncodeSpecialChars(X(raw_)->doc, XC(value)));
  xmlNodeSetContent(X(raw_), escaped.get());
  return *this;
}

void Builder::validate(const Schema& schema) const {
  schema.validate(static_cast<xmlDocPtr>(doc_.get()), "generated document");
}

std::string Builder::toString() const {
  xmlChar* mem = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(static_cast<xmlDocPtr>(doc_.get()), &mem, &size, "UTF-8", 1);
  const XmlString owned(mem);
  if (!owned || size < 0) throw HXMLException("out of memory for the text of an XML document", 0);
  return std::string(reinterpret_cast<const char*>(owned.get()), static_cast<std::size_t>(size));
}

}  // namespace zr_xml
