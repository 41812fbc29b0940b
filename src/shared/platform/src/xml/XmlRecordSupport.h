#ifndef PLATFORM_XMLRECORDSUPPORT_H
#define PLATFORM_XMLRECORDSUPPORT_H

// Building blocks of the in-memory records of an XML schema: an attribute with
// its set/unset state, an owned optional child, an owned ordered list of
// children, a decimal kept as text, and the macros that turn a field table
// into a record class.
//
// A record is declared from one table that lists its fields in document order:
//
//   #define MY_FIELDS(A, C, ...) A(Name, "name", String, Required) A(Count, "count", U32, Optional, 7)
//   ZR_XML_RECORD(MyRecord, MY_FIELDS)
//   #define PARENT_FIELDS(A, C, ...) C(Kid, "kid", MyRecord, Opt)
//   ZR_XML_RECORD(Parent, PARENT_FIELDS)
//
// The table macro takes the four row kinds in the order (A, C, T, X); a table
// names those it uses and ends with `...`.
//   A(Member, "xml name", value type, Required|Optional[, initial value]): an attribute.
//   C(Member, "xml name", record type, One|Opt|Many|OneOrMore): a child element.
//   T(Member, "xml name", value type): a required child element that holds only text.
//   X(Member, record type): one alternative of the element's choice. The
//     alternative's record is a group: its fields live in this element, not in
//     one of their own. Exactly one alternative is held at a time.
// A value type is the suffix of a ZR_XML_TYPE_ macro below; a format that
// needs another defines ZR_XML_TYPE_<Name> and gives its conversions (see
// XmlRecordIO.h).
//
// The table yields the members, the accessors (Get/Set/Isset/Unset for an
// attribute or a text element; Isset/Get/Assign/Unset for a single child;
// Size/Get/Append/Insert/Assign/Delete/Clear for a list; Isset/Get/Select for
// an alternative, where Select drops the other alternatives), value equality,
// Swap, Reset, Clone, and a visit() that hands every field, in order, to a
// reader, writer or checker (see XmlRecordIO.h).

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zr_xml_record {

enum class AttrUse { kRequired, kOptional };
enum class ChildOccurs { kOne, kOpt, kMany, kOneOrMore };

// Throws HEXAlgException: a list was indexed outside its bounds.
[[noreturn]] void throwBadIndex(std::size_t index, std::size_t size);

// A value and whether the document carries it. An unset attribute holds its
// initial value; absent and empty are different states.
template <class T>
class Attribute {
 public:
  explicit Attribute(T initial = T()) : value_(std::move(initial)) {}
  const T& get() const { return value_; }
  void set(const T& value) {
    value_ = value;
    set_ = true;
  }
  bool isSet() const { return set_; }
  void unset(T initial) {
    value_ = std::move(initial);
    set_ = false;
  }
  bool operator==(const Attribute& other) const { return set_ == other.set_ && value_ == other.value_; }

 private:
  T value_;
  bool set_ = false;
};

// An owned child that may be absent. Copying copies the child.
template <class T>
class Single {
 public:
  Single() = default;
  Single(const Single& other) : item_(other.item_ ? std::make_unique<T>(*other.item_) : nullptr) {}
  Single& operator=(const Single& other) {
    if (this != &other) item_ = other.item_ ? std::make_unique<T>(*other.item_) : nullptr;
    return *this;
  }
  Single(Single&&) noexcept = default;
  Single& operator=(Single&&) noexcept = default;

  bool isSet() const { return item_ != nullptr; }
  // Creates the child when it is missing.
  T& get() {
    if (!item_) item_ = std::make_unique<T>();
    return *item_;
  }
  // A missing child reads as a new, empty record.
  const T& get() const {
    if (item_) return *item_;
    static const T empty;
    return empty;
  }
  void assign(const T& value) { item_ = std::make_unique<T>(value); }
  void unset() { item_.reset(); }
  bool operator==(const Single& other) const {
    return item_ ? (other.item_ && *item_ == *other.item_) : !other.item_;
  }

 private:
  std::unique_ptr<T> item_;
};

// An owned, ordered list of children. Copying copies every child.
template <class T>
class List {
 public:
  List() = default;
  List(const List& other) { copyFrom(other); }
  List& operator=(const List& other) {
    if (this != &other) copyFrom(other);
    return *this;
  }
  List(List&&) noexcept = default;
  List& operator=(List&&) noexcept = default;

  std::size_t size() const { return items_.size(); }
  const T& at(std::size_t index) const { return *items_[checked(index, items_.size())]; }
  T& at(std::size_t index) { return *items_[checked(index, items_.size())]; }
  T& append(const T& value = T()) {
    items_.push_back(std::make_unique<T>(value));
    return *items_.back();
  }
  // Inserts before `index`; index == size() appends.
  T& insert(std::size_t index, const T& value = T()) {
    const auto at = items_.begin() + static_cast<std::ptrdiff_t>(checked(index, items_.size() + 1));
    return **items_.insert(at, std::make_unique<T>(value));
  }
  void assign(std::size_t index, const T& value) {
    auto copy = std::make_unique<T>(value);
    items_[checked(index, items_.size())] = std::move(copy);
  }
  void erase(std::size_t index) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(checked(index, items_.size())));
  }
  void clear() { items_.clear(); }
  bool operator==(const List& other) const {
    if (items_.size() != other.items_.size()) return false;
    for (std::size_t i = 0; i < items_.size(); ++i)
      if (!(*items_[i] == *other.items_[i])) return false;
    return true;
  }

 private:
  static std::size_t checked(std::size_t index, std::size_t limit) {
    if (index >= limit) throwBadIndex(index, limit);
    return index;
  }
  void copyFrom(const List& other) {
    std::vector<std::unique_ptr<T>> copy;
    copy.reserve(other.items_.size());
    for (const auto& item : other.items_) copy.push_back(std::make_unique<T>(*item));
    items_ = std::move(copy);
  }
  std::vector<std::unique_ptr<T>> items_;
};

// A decimal number kept as the text the document gave, blanks removed: "1.10"
// stays "1.10".
class Decimal {
 public:
  Decimal() = default;
  explicit Decimal(std::string text) : text_(std::move(text)) {}
  const std::string& get_as_string() const { return text_; }
  bool operator==(const Decimal& other) const { return text_ == other.text_; }

 private:
  std::string text_;
};

// Drops every alternative of a record's choice; Select<alternative> uses it
// before it takes its own.
struct ChoiceReset {
  template <class... Ignored>
  void attribute(const Ignored&...) {}
  template <class... Ignored>
  void text(const Ignored&...) {}
  template <class... Ignored>
  void child(const Ignored&...) {}
  template <class R>
  void alternative(const char*, Single<R>& holder) {
    holder.unset();
  }
};

}  // namespace zr_xml_record

// Value types of attributes.
#define ZR_XML_TYPE_String std::wstring
#define ZR_XML_TYPE_U8 std::uint8_t
#define ZR_XML_TYPE_U32 std::uint32_t
#define ZR_XML_TYPE_U64 std::uint64_t
#define ZR_XML_TYPE_S64 std::int64_t
#define ZR_XML_TYPE_Decimal ::zr_xml_record::Decimal

// Holders of children by cardinality.
#define ZR_XML_HOLDER_One ::zr_xml_record::Single
#define ZR_XML_HOLDER_Opt ::zr_xml_record::Single
#define ZR_XML_HOLDER_Many ::zr_xml_record::List
#define ZR_XML_HOLDER_OneOrMore ::zr_xml_record::List

#define ZR_XML_ATTR_MEMBER(N, X, T, U, ...) \
  ::zr_xml_record::Attribute<ZR_XML_TYPE_##T> m_##N{ZR_XML_TYPE_##T{__VA_ARGS__}};
#define ZR_XML_CHILD_MEMBER(N, X, R, O) ZR_XML_HOLDER_##O<R> m_##N;
#define ZR_XML_TEXT_MEMBER(N, X, T) ::zr_xml_record::Attribute<ZR_XML_TYPE_##T> m_##N;
#define ZR_XML_ALT_MEMBER(N, R) ::zr_xml_record::Single<R> m_##N;

#define ZR_XML_ATTR_API(N, X, T, U, ...)                          \
  const ZR_XML_TYPE_##T& Get##N() const { return m_##N.get(); }   \
  void Set##N(const ZR_XML_TYPE_##T& value) { m_##N.set(value); } \
  bool Isset##N() const { return m_##N.isSet(); }                 \
  void Unset##N() { m_##N.unset(ZR_XML_TYPE_##T{__VA_ARGS__}); }
#define ZR_XML_TEXT_API(N, X, T) ZR_XML_ATTR_API(N, X, T, Required)
#define ZR_XML_ALT_API(N, R)                      \
  bool Isset##N() const { return m_##N.isSet(); } \
  const R& Get##N() const { return m_##N.get(); } \
  R& Select##N() {                                \
    ::zr_xml_record::ChoiceReset reset;           \
    visit(reset);                                 \
    return m_##N.get();                           \
  }

#define ZR_XML_CHILD_API(N, X, R, O) ZR_XML_CHILD_API_##O(N, R)
#define ZR_XML_CHILD_API_One(N, R) ZR_XML_SINGLE_API(N, R)
#define ZR_XML_CHILD_API_Opt(N, R) ZR_XML_SINGLE_API(N, R)
#define ZR_XML_CHILD_API_Many(N, R) ZR_XML_LIST_API(N, R)
#define ZR_XML_CHILD_API_OneOrMore(N, R) ZR_XML_LIST_API(N, R)

#define ZR_XML_SINGLE_API(N, R)                           \
  bool Isset##N() const { return m_##N.isSet(); }         \
  const R& Get##N() const { return m_##N.get(); }         \
  R& Get##N() { return m_##N.get(); }                     \
  void Assign##N(const R& value) { m_##N.assign(value); } \
  void Unset##N() { m_##N.unset(); }

#define ZR_XML_LIST_API(N, R)                                                            \
  std::size_t Size##N() const { return m_##N.size(); }                                   \
  const R& Get##N(std::size_t index) const { return m_##N.at(index); }                   \
  R& Get##N(std::size_t index) { return m_##N.at(index); }                               \
  R& Append##N() { return m_##N.append(); }                                              \
  R& Append##N(const R& value) { return m_##N.append(value); }                           \
  R& Insert##N(std::size_t index) { return m_##N.insert(index); }                        \
  R& Insert##N(std::size_t index, const R& value) { return m_##N.insert(index, value); } \
  void Assign##N(std::size_t index, const R& value) { m_##N.assign(index, value); }      \
  void Delete##N(std::size_t index) { m_##N.erase(index); }                              \
  void Clear##N() { m_##N.clear(); }

#define ZR_XML_ATTR_VISIT(N, X, T, U, ...) v.attribute(X, m_##N, ::zr_xml_record::AttrUse::k##U);
#define ZR_XML_CHILD_VISIT(N, X, R, O) v.child(X, m_##N, ::zr_xml_record::ChildOccurs::k##O);
#define ZR_XML_TEXT_VISIT(N, X, T) v.text(X, m_##N);
#define ZR_XML_ALT_VISIT(N, R) v.alternative(#N, m_##N);
#define ZR_XML_FIELD_EQ(N, ...) &&m_##N == other.m_##N

// The body of a record class; ZR_XML_RECORD closes it, a record with
// operations of its own closes it itself.
#define ZR_XML_RECORD_BODY(Record, FIELDS)                                                  \
 private:                                                                                   \
  FIELDS(ZR_XML_ATTR_MEMBER, ZR_XML_CHILD_MEMBER, ZR_XML_TEXT_MEMBER, ZR_XML_ALT_MEMBER)    \
                                                                                            \
 public:                                                                                    \
  bool operator==(const Record& other) const {                                              \
    return true FIELDS(ZR_XML_FIELD_EQ, ZR_XML_FIELD_EQ, ZR_XML_FIELD_EQ, ZR_XML_FIELD_EQ); \
  }                                                                                         \
  bool operator!=(const Record& other) const { return !(*this == other); }                  \
  void Swap(Record& other) noexcept { std::swap(*this, other); }                            \
  void Reset() { *this = Record(); }                                                        \
  std::unique_ptr<Record> Clone() const { return std::make_unique<Record>(*this); }         \
  /* True when every required attribute is set, every required child is present */          \
  /* and one alternative of a choice is held, in the whole subtree; otherwise */            \
  /* `why` names the first gap. Defined by ZR_XML_DEFINE_OCCURS_OK. */                      \
  bool IsOccursOk(std::string* why = nullptr) const;                                        \
  FIELDS(ZR_XML_ATTR_API, ZR_XML_CHILD_API, ZR_XML_TEXT_API, ZR_XML_ALT_API)                \
  template <class V>                                                                        \
  void visit(V& v) {                                                                        \
    FIELDS(ZR_XML_ATTR_VISIT, ZR_XML_CHILD_VISIT, ZR_XML_TEXT_VISIT, ZR_XML_ALT_VISIT)      \
  }                                                                                         \
  template <class V>                                                                        \
  void visit(V& v) const {                                                                  \
    FIELDS(ZR_XML_ATTR_VISIT, ZR_XML_CHILD_VISIT, ZR_XML_TEXT_VISIT, ZR_XML_ALT_VISIT)      \
  }

#define ZR_XML_RECORD(Record, FIELDS)  \
  class Record {                       \
    ZR_XML_RECORD_BODY(Record, FIELDS) \
  };

#endif
