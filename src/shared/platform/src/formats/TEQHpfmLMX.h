#ifndef PLATFORM_TEQHPFMLMX_H
#define PLATFORM_TEQHPFMLMX_H

// The records of the hardware platform file (hpfm): one record per element,
// named after it, with the attributes and children of the element in document
// order. Every element and attribute of the format is qualified with the kp
// namespace; the records use the local names.
//
// Strings are kept as wide strings (HI18N::convert gives UTF-8); decimals and
// unbounded integers keep the text of the document, without the blanks the
// format allows around them. An optional attribute knows whether it is set;
// an optional child is an owned, nullable record whose non-const getter
// creates it, so ask Isset<child> first to learn whether the document had it.
// Copying a record copies its whole subtree.
//
// Accessors: Get/Set/Isset/Unset for an attribute and for the one element
// with text content (PlatformInfo's description); Isset/Get/Assign/Unset for
// a single child; Size/Get/Append/Insert/Assign/Delete/Clear for a list.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "xml/XmlRecordSupport.h"

namespace WELHardwarePlatform {

// The namespace URI of every element and attribute of the format, and the
// prefix it is written with.
extern const char* const kNamespaceUri;
extern const char* const kNamespacePrefix;

// A decimal number kept as the text the document gave, blanks removed.
class Decimal {
 public:
  Decimal() = default;
  explicit Decimal(std::string text) : text_(std::move(text)) {}
  const std::string& get_as_string() const { return text_; }
  bool operator==(const Decimal& other) const { return text_ == other.text_; }

 private:
  std::string text_;
};

// An integer without bounds, kept as text: the model narrows it where it
// needs a number.
class Integer {
 public:
  Integer() = default;
  explicit Integer(std::string text) : text_(std::move(text)) {}
  const std::string& get_as_string() const { return text_; }
  // The value in the range of int; values beyond it are held at its limits,
  // and a text that is no integer gives 0.
  int toIntSaturated() const;
  bool operator==(const Integer& other) const { return text_ == other.text_; }

 private:
  std::string text_;
};

}  // namespace WELHardwarePlatform

// Value types of attributes.
#define WHP_TYPE_String std::wstring
#define WHP_TYPE_U16 std::uint16_t
#define WHP_TYPE_S16 std::int16_t
#define WHP_TYPE_U32 std::uint32_t
#define WHP_TYPE_Integer ::WELHardwarePlatform::Integer
#define WHP_TYPE_Decimal ::WELHardwarePlatform::Decimal
#define WHP_TYPE_Bool bool

// A field table lists, in document order, A(Name, "xml name", type,
// Required|Optional), C(Name, "xml name", record, One|Opt|Many) and
// E(Name, "xml name") for a required element that holds only text.
#define WHP_ATTR_MEMBER(N, X, T, U) ::zr_xml_record::Attribute<WHP_TYPE_##T> m_##N{WHP_TYPE_##T{}};
#define WHP_CHILD_MEMBER(N, X, R, O) ZR_XML_HOLDER_##O<R> m_##N;
#define WHP_TEXT_MEMBER(N, X) ::zr_xml_record::Attribute<std::wstring> m_##N;

#define WHP_ATTR_API(N, X, T, U)                               \
  const WHP_TYPE_##T& Get##N() const { return m_##N.get(); }   \
  void Set##N(const WHP_TYPE_##T& value) { m_##N.set(value); } \
  bool Isset##N() const { return m_##N.isSet(); }              \
  void Unset##N() { m_##N.unset(WHP_TYPE_##T{}); }
#define WHP_CHILD_API(N, X, R, O) ZR_XML_CHILD_API(N, R, O)
#define WHP_TEXT_API(N, X)                                     \
  const std::wstring& Get##N() const { return m_##N.get(); }   \
  void Set##N(const std::wstring& value) { m_##N.set(value); } \
  bool Isset##N() const { return m_##N.isSet(); }              \
  void Unset##N() { m_##N.unset(std::wstring()); }

#define WHP_ATTR_VISIT(N, X, T, U) v.attribute(X, m_##N, ::zr_xml_record::AttrUse::k##U);
#define WHP_CHILD_VISIT(N, X, R, O) v.child(X, m_##N, ::zr_xml_record::ChildOccurs::k##O);
#define WHP_TEXT_VISIT(N, X) v.text(X, m_##N);
#define WHP_FIELD_EQ(N, ...) &&m_##N == other.m_##N

#define WHP_RECORD_BODY(Record, FIELDS)                                             \
 private:                                                                           \
  FIELDS(WHP_ATTR_MEMBER, WHP_CHILD_MEMBER, WHP_TEXT_MEMBER)                        \
                                                                                    \
 public:                                                                            \
  bool operator==(const Record& other) const {                                      \
    return true FIELDS(WHP_FIELD_EQ, WHP_FIELD_EQ, WHP_FIELD_EQ);                   \
  }                                                                                 \
  bool operator!=(const Record& other) const { return !(*this == other); }          \
  void Swap(Record& other) noexcept { std::swap(*this, other); }                    \
  void Reset() { *this = Record(); }                                                \
  std::unique_ptr<Record> Clone() const { return std::make_unique<Record>(*this); } \
  /* True when every required attribute is set and every required child is */       \
  /* present, in the whole subtree; otherwise `why` names the first gap. */         \
  bool IsOccursOk(std::string* why = nullptr) const;                                \
  FIELDS(WHP_ATTR_API, WHP_CHILD_API, WHP_TEXT_API)                                 \
  template <class V>                                                                \
  void visit(V& v) {                                                                \
    FIELDS(WHP_ATTR_VISIT, WHP_CHILD_VISIT, WHP_TEXT_VISIT)                         \
  }                                                                                 \
  template <class V>                                                                \
  void visit(V& v) const {                                                          \
    FIELDS(WHP_ATTR_VISIT, WHP_CHILD_VISIT, WHP_TEXT_VISIT)                         \
  }

#define WHP_RECORD(Record, FIELDS)  \
  class Record {                    \
    WHP_RECORD_BODY(Record, FIELDS) \
  };

namespace WELHardwarePlatform {

#define WHP_FIELDS_DeviceInfo(A, C, E)              \
  A(Name, "name", String, Optional)                 \
  A(Architecture, "architecture", String, Required) \
  A(Device, "device", String, Required)             \
  A(Package, "package", String, Required)           \
  A(SpeedGrade, "speedGrade", String, Required)
WHP_RECORD(DeviceInfo, WHP_FIELDS_DeviceInfo)

#define WHP_FIELDS_RegisteredDevices(A, C, E) \
  A(Kio, "kio", U16, Required)                \
  A(Uio, "uio", U16, Required)
WHP_RECORD(RegisteredDevices, WHP_FIELDS_RegisteredDevices)

#define WHP_FIELDS_Clock(A, C, E)                            \
  A(Name, "name", String, Required)                          \
  A(InstanceRef, "instanceRef", String, Required)            \
  A(ComponentRef, "componentRef", String, Required)          \
  A(Frequency, "frequency", Decimal, Required)               \
  A(Period, "period", Decimal, Required)                     \
  A(Status, "status", String, Required)                      \
  A(Id, "id", U16, Optional)                                 \
  A(NormalizedPeriod, "normalizedPeriod", Decimal, Optional) \
  A(ClkDomain, "clkDomain", String, Optional)
WHP_RECORD(Clock, WHP_FIELDS_Clock)

#define WHP_FIELDS_SystemClocks(A, C, E)         \
  A(DefaultClock, "defaultClock", U16, Required) \
  C(Clock, "clock", Clock, Many)
WHP_RECORD(SystemClocks, WHP_FIELDS_SystemClocks)

#define WHP_FIELDS_PlatformInfo(A, C, E)                            \
  C(DeviceInfo, "deviceInfo", DeviceInfo, One)                      \
  C(RegisteredDevices, "registeredDevices", RegisteredDevices, Opt) \
  E(Description, "description")                                     \
  C(SystemClocks, "systemClocks", SystemClocks, One)
WHP_RECORD(PlatformInfo, WHP_FIELDS_PlatformInfo)

#define WHP_FIELDS_Parameter(A, C, E)               \
  A(Name, "name", String, Required)                 \
  A(InstanceRef, "instanceRef", String, Required)   \
  A(ComponentRef, "componentRef", String, Required) \
  A(IsValid, "isValid", String, Required)           \
  A(Value, "value", String, Required)
WHP_RECORD(Parameter, WHP_FIELDS_Parameter)

#define WHP_FIELDS_BusInterfaceAddressSegment(A, C, E)  \
  A(BaseName, "baseName", String, Optional)             \
  A(Index, "index", U16, Optional)                      \
  A(MemoryInstance, "memoryInstance", String, Optional) \
  A(Auto, "auto", String, Optional)                     \
  A(Sptag, "sptag", String, Optional)                   \
  A(Slr, "slr", String, Optional)                       \
  A(MaxMasters, "maxMasters", U16, Optional)            \
  A(Name, "name", String, Optional)                     \
  A(InstanceRef, "instanceRef", String, Optional)       \
  A(Region, "region", String, Optional)                 \
  A(ReadBwUsed, "readBwUsed", Integer, Optional)        \
  A(WriteBwUsed, "writeBwUsed", Integer, Optional)      \
  A(Interleave, "interleave", U32, Optional)
WHP_RECORD(BusInterfaceAddressSegment, WHP_FIELDS_BusInterfaceAddressSegment)

// The attribute kp:addressSegment (AddressSegment) and the child elements
// kp:addressSegment (BusInterfaceAddressSegment) share a name in the document.
#define WHP_FIELDS_BusInterface(A, C, E)                          \
  A(BusTypeRef, "busTypeRef", String, Optional)                   \
  A(Name, "name", String, Required)                               \
  A(InstanceRef, "instanceRef", String, Optional)                 \
  A(ComponentRef, "componentRef", String, Optional)               \
  A(Mode, "mode", String, Optional)                               \
  A(Category, "category", String, Optional)                       \
  A(DataWidth, "dataWidth", S16, Optional)                        \
  A(ClockRef, "clockRef", String, Optional)                       \
  A(ResetRef, "resetRef", String, Optional)                       \
  A(BusInterfaceRef, "busInterfaceRef", String, Optional)         \
  A(Memport, "memport", String, Optional)                         \
  A(Sptag, "sptag", String, Optional)                             \
  A(CacheCoherent, "cacheCoherent", Bool, Optional)               \
  A(Direction, "direction", String, Optional)                     \
  A(Irq, "irq", U16, Optional)                                    \
  A(AddressSegment, "addressSegment", String, Optional)           \
  A(MemoryInstance, "memoryInstance", String, Optional)           \
  A(ClkDomain, "clkDomain", String, Optional)                     \
  A(HasTlast, "hasTlast", Bool, Optional)                         \
  A(IdBits, "idBits", U32, Optional)                              \
  A(Cardinality, "cardinality", U16, Optional)                    \
  A(Size, "size", String, Optional)                               \
  A(Slr, "slr", String, Optional)                                 \
  A(PeakMemoryBandwidth, "peakMemoryBandwidth", String, Optional) \
  A(MaxMasters, "maxMasters", U16, Optional)                      \
  A(IsrId, "isrId", U16, Optional)                                \
  A(Auto, "auto", String, Optional)                               \
  C(BusInterfaceAddressSegment, "addressSegment", BusInterfaceAddressSegment, Many)
WHP_RECORD(BusInterface, WHP_FIELDS_BusInterface)

#define WHP_FIELDS_NocConnectivity(A, C, E)       \
  A(InstanceRef, "instanceRef", String, Required) \
  C(BusInterface, "busInterface", BusInterface, Many)
WHP_RECORD(NocConnectivity, WHP_FIELDS_NocConnectivity)

#define WHP_FIELDS_ResourceEstimates(A, C, E)          \
  A(BRAM, "BRAM", U32, Required)                       \
  A(DSP, "DSP", U32, Required)                         \
  A(FF, "FF", U32, Required)                           \
  A(LUT, "LUT", U32, Required)                         \
  A(NocChannelMaxBw, "nocChannelMaxBw", U32, Optional) \
  A(NocPlNsu, "nocPlNsu", U32, Optional)               \
  A(NocPlNmu, "nocPlNmu", U32, Optional)               \
  A(NocTilNsu, "nocTilNsu", U32, Optional)             \
  A(NocTilNmu, "nocTilNmu", U32, Optional)
WHP_RECORD(ResourceEstimates, WHP_FIELDS_ResourceEstimates)

#define WHP_FIELDS_Component(A, C, E)                          \
  A(Name, "name", String, Required)                            \
  A(Library, "library", String, Required)                      \
  A(Version, "version", Decimal, Required)                     \
  A(Vendor, "vendor", String, Required)                        \
  A(Type, "type", String, Required)                            \
  A(BRAM, "BRAM", U32, Required)                               \
  A(DSP, "DSP", U32, Required)                                 \
  A(FF, "FF", U32, Required)                                   \
  A(LUT, "LUT", U32, Required)                                 \
  C(PlatformInfo, "platformInfo", PlatformInfo, One)           \
  C(Parameter, "parameter", Parameter, Many)                   \
  C(BusInterface, "busInterface", BusInterface, Many)          \
  C(NocConnectivity, "nocConnectivity", NocConnectivity, Many) \
  C(ResourceEstimates, "resourceEstimates", ResourceEstimates, Opt)
WHP_RECORD(Component, WHP_FIELDS_Component)

#define WHP_FIELDS_Repository(A, C, E)     \
  A(Name, "name", String, Required)        \
  A(Library, "library", String, Required)  \
  A(Version, "version", Decimal, Required) \
  A(Vendor, "vendor", String, Required)    \
  C(Component, "component", Component, One)

// The document element of a hardware platform file.
class Repository {
  WHP_RECORD_BODY(Repository, WHP_FIELDS_Repository)

 public:
  // Parse a whole document held in memory, or a file, and replace the
  // record's content with it. A document that is not well-formed, breaks the
  // format or has another document element raises HXMLException with the
  // line of the failure (0 when it has none); the record is then unchanged.
  void Unmarshal(const char* buffer, std::size_t length);
  void Unmarshal(const std::string& path);

  // Write the document with the document element "kp:repository": one
  // element to a line, indented by two blanks, the attributes of an element
  // on its line separated by single blanks. A record that breaks the format
  // raises HXMLException before anything is written.
  void Marshal(const std::string& path) const;
  void Marshal(std::string* out) const;
};

// The two elements the format admits at the top: a repository or a lone bus
// interface. Holding one unsets the other. Hardware platform files are read
// through Repository; this record only tells the two apart.
class Kp {
 public:
  bool IssetRepository() const { return repository_.isSet(); }
  const Repository& GetRepository() const { return repository_.get(); }
  void AssignRepository(const Repository& value);
  bool IssetBusInterface() const { return busInterface_.isSet(); }
  const BusInterface& GetBusInterface() const { return busInterface_.get(); }
  void AssignBusInterface(const BusInterface& value);
  bool operator==(const Kp& other) const {
    return repository_ == other.repository_ && busInterface_ == other.busInterface_;
  }

  // Parse a document whose element is either of the two; failures as for
  // Repository::Unmarshal.
  void Unmarshal(const char* buffer, std::size_t length);

 private:
  ::zr_xml_record::Single<Repository> repository_;
  ::zr_xml_record::Single<BusInterface> busInterface_;
};

}  // namespace WELHardwarePlatform

#endif
