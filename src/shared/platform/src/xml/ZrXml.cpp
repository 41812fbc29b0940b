#include "xml/ZrXml.h"

#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <libxml/xmlschemas.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <map>
#include <mutex>

#include "host/HSTStringUtils.h"

namespace zr_xml {

namespace {

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
    xmlSchemaParserCtxtPtr pctxt = xmlSchemaNewMemParserCtxt(text, static_cast<int>(size));
    xmlSchemaSetParserStructuredErrors(pctxt, collectError, &errors);
    schema_ = xmlSchemaParse(pctxt);
    xmlSchemaFreeParserCtxt(pctxt);
    if (schema_ == nullptr)
      throw HXMLException(std::string("internal schema '") + key + "' is invalid: " + errors.text,
                          errors.line);
  }
  ~Schema() { xmlSchemaFree(schema_); }

  // Throws the first violation of the document.
  void validate(xmlDocPtr doc, const std::string& name) const {
    ErrorSink errors;
    xmlSchemaValidCtxtPtr vctxt = xmlSchemaNewValidCtxt(schema_);
    xmlSchemaSetValidStructuredErrors(vctxt, collectError, &errors);
    const int rc = xmlSchemaValidateDoc(vctxt, doc);
    xmlSchemaFreeValidCtxt(vctxt);
    if (rc != 0) {
      if (!errors.seen) errors.text = "the document does not match its schema";
      throw HXMLException(located(name, errors), errors.line);
    }
  }

 private:
  xmlSchemaPtr schema_;
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

// The whole of a regular file, read with a few system calls. False for
// anything else, and for what libxml2 reads differently from memory (a
// gzip-compressed file) or cannot take from memory (over 2 GiB).
bool readRegularFile(const std::string& path, std::string& data) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return false;
  struct stat st;
  bool ok = ::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size < INT_MAX;
  if (ok) {
    data.resize(static_cast<std::size_t>(st.st_size));
    std::size_t done = 0;
    while (ok && done < data.size()) {
      const ssize_t got = ::read(fd, &data[done], data.size() - done);
      if (got < 0 && errno == EINTR) continue;
      ok = got > 0;
      if (ok) done += static_cast<std::size_t>(got);
    }
  }
  ::close(fd);
  return ok && !(data.size() >= 2 && data[0] == '\x1f' && data[1] == '\x8b');
}

std::shared_ptr<void> readDoc(const std::string& name, const std::string* data) {
  initOnce();
  if (data && data->size() > static_cast<std::size_t>(INT_MAX))
    throw HXMLException(name + ": the document is too large", 0);
  xmlSetGenericErrorFunc(nullptr, dropGeneric);
  xmlParserCtxtPtr ctxt = xmlNewParserCtxt();
  if (ctxt == nullptr) throw HXMLException(name + ": out of memory", 0);
  ErrorSink errors;
  xmlDocPtr doc = data ? xmlCtxtReadMemory(ctxt, data->data(), static_cast<int>(data->size()), name.c_str(),
                                           nullptr, kParseOptions)
                       : xmlCtxtReadFile(ctxt, name.c_str(), nullptr, kParseOptions);
  if (doc == nullptr || !ctxt->wellFormed) {
    xmlErrorPtr err = xmlCtxtGetLastError(ctxt);
    if (err && err->message) {
      errors.text = HSTStringUtils::trim(err->message);
      errors.line = err->line;
    } else {
      errors.text = data ? "the document is not well-formed XML" : "cannot read the file";
    }
    if (doc) xmlFreeDoc(doc);
    xmlFreeParserCtxt(ctxt);
    throw HXMLException(located(name, errors), errors.line);
  }
  xmlFreeParserCtxt(ctxt);
  std::shared_ptr<void> owned(doc, [](void* d) { xmlFreeDoc(static_cast<xmlDocPtr>(d)); });
  checkNoEntities(doc, name);
  if (xmlDocGetRootElement(doc) == nullptr)
    throw HXMLException(name + ": the document has no root element", 0);
  return owned;
}

}  // namespace

std::string Node::name() const { return raw_ ? str(X(raw_)->name) : std::string(); }

std::string Node::nsUri() const { return raw_ && X(raw_)->ns ? str(X(raw_)->ns->href) : std::string(); }

int Node::line() const { return raw_ ? static_cast<int>(xmlGetLineNo(X(raw_))) : 0; }

std::string Node::text() const {
  if (!raw_) return std::string();
  xmlChar* content = xmlNodeGetContent(X(raw_));
  std::string out = str(content);
  xmlFree(content);
  return out;
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
  xmlChar* value = xmlNodeListGetString(X(raw_)->doc, a->children, 1);
  std::string out = str(value);
  xmlFree(value);
  return out;
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
  Document d;
  // A plain file is parsed from memory, which is the same parse without
  // libxml2's own checks on the path; anything else goes to libxml2, which
  // reports it as it always has.
  std::string data;
  if (readRegularFile(path, data)) {
    d.doc_ = readDoc(path, &data);
  } else {
    // A FIFO or a device is never opened for reading: it could block forever.
    struct stat st;
    if (::stat(path.c_str(), &st) == 0 && !S_ISREG(st.st_mode))
      throw HXMLException(path + ": not a regular file", 0);
    d.doc_ = readDoc(path, nullptr);
  }
  schema.validate(static_cast<xmlDocPtr>(d.doc_.get()), path);
  return d;
}

Document Document::parseMemory(const std::string& data, const std::string& name, const Schema& schema) {
  Document d;
  d.doc_ = readDoc(name, &data);
  schema.validate(static_cast<xmlDocPtr>(d.doc_.get()), name);
  return d;
}

Document Document::parseMemoryUnchecked(const std::string& data, const std::string& name) {
  Document d;
  d.doc_ = readDoc(name, &data);
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
  xmlNodePtr root = xmlNewDocNode(doc, nullptr, XC(rootName), nullptr);
  xmlDocSetRootElement(doc, root);
  if (!nsUri.empty()) {
    xmlNsPtr ns = xmlNewNs(root, XC(nsUri), prefix.empty() ? nullptr : XC(prefix));
    xmlSetNs(root, ns);
    ns_ = ns;
  }
  doc_ = doc;
}

Builder::~Builder() { xmlFreeDoc(static_cast<xmlDocPtr>(doc_)); }

Builder::Element Builder::root() { return Element(this, xmlDocGetRootElement(static_cast<xmlDocPtr>(doc_))); }

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
  xmlChar* escaped = xmlEncodeSpecialChars(X(raw_)->doc, XC(value));
  xmlNodeSetContent(X(raw_), escaped);
  xmlFree(escaped);
  return *this;
}

void Builder::validate(const Schema& schema) const {
  schema.validate(static_cast<xmlDocPtr>(doc_), "generated document");
}

std::string Builder::toString() const {
  xmlChar* mem = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(static_cast<xmlDocPtr>(doc_), &mem, &size, "UTF-8", 1);
  std::string out(reinterpret_cast<const char*>(mem), static_cast<std::size_t>(size));
  xmlFree(mem);
  return out;
}

}  // namespace zr_xml
