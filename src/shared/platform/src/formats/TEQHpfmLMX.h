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
using Decimal = ::zr_xml_record::Decimal;

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

// The value types the format adds to those of XmlRecordSupport.h; its
// conversions read and write them.
#define ZR_XML_TYPE_U16 std::uint16_t
#define ZR_XML_TYPE_S16 std::int16_t
#define ZR_XML_TYPE_Bool bool
#define ZR_XML_TYPE_Integer ::WELHardwarePlatform::Integer

namespace WELHardwarePlatform {

#define WHP_FIELDS_DeviceInfo(A, C, T, ...)         \
  A(Name, "name", String, Optional)                 \
  A(Architecture, "architecture", String, Required) \
  A(Device, "device", String, Required)             \
  A(Package, "package", String, Required)           \
  A(SpeedGrade, "speedGrade", String, Required)
ZR_XML_RECORD(DeviceInfo, WHP_FIELDS_DeviceInfo)

#define WHP_FIELDS_RegisteredDevices(A, C, T, ...) \
  A(Kio, "kio", U16, Required)                     \
  A(Uio, "uio", U16, Required)
ZR_XML_RECORD(RegisteredDevices, WHP_FIELDS_RegisteredDevices)

#define WHP_FIELDS_Clock(A, C, T, ...)                       \
  A(Name, "name", String, Required)                          \
  A(InstanceRef, "instanceRef", String, Required)            \
  A(ComponentRef, "componentRef", String, Required)          \
  A(Frequency, "frequency", Decimal, Required)               \
  A(Period, "period", Decimal, Required)                     \
  A(Status, "status", String, Required)                      \
  A(Id, "id", U16, Optional)                                 \
  A(NormalizedPeriod, "normalizedPeriod", Decimal, Optional) \
  A(ClkDomain, "clkDomain", String, Optional)
ZR_XML_RECORD(Clock, WHP_FIELDS_Clock)

#define WHP_FIELDS_SystemClocks(A, C, T, ...)    \
  A(DefaultClock, "defaultClock", U16, Required) \
  C(Clock, "clock", Clock, Many)
ZR_XML_RECORD(SystemClocks, WHP_FIELDS_SystemClocks)

#define WHP_FIELDS_PlatformInfo(A, C, T, ...)                       \
  C(DeviceInfo, "deviceInfo", DeviceInfo, One)                      \
  C(RegisteredDevices, "registeredDevices", RegisteredDevices, Opt) \
  T(Description, "description", String)                             \
  C(SystemClocks, "systemClocks", SystemClocks, One)
ZR_XML_RECORD(PlatformInfo, WHP_FIELDS_PlatformInfo)

#define WHP_FIELDS_Parameter(A, C, T, ...)          \
  A(Name, "name", String, Required)                 \
  A(InstanceRef, "instanceRef", String, Required)   \
  A(ComponentRef, "componentRef", String, Required) \
  A(IsValid, "isValid", String, Required)           \
  A(Value, "value", String, Required)
ZR_XML_RECORD(Parameter, WHP_FIELDS_Parameter)

#define WHP_FIELDS_BusInterfaceAddressSegment(A, C, T, ...) \
  A(BaseName, "baseName", String, Optional)                 \
  A(Index, "index", U16, Optional)                          \
  A(MemoryInstance, "memoryInstance", String, Optional)     \
  A(Auto, "auto", String, Optional)                         \
  A(Sptag, "sptag", String, Optional)                       \
  A(Slr, "slr", String, Optional)                           \
  A(MaxMasters, "maxMasters", U16, Optional)                \
  A(Name, "name", String, Optional)                         \
  A(InstanceRef, "instanceRef", String, Optional)           \
  A(Region, "region", String, Optional)                     \
  A(ReadBwUsed, "readBwUsed", Integer, Optional)            \
  A(WriteBwUsed, "writeBwUsed", Integer, Optional)          \
  A(Interleave, "interleave", U32, Optional)
ZR_XML_RECORD(BusInterfaceAddressSegment, WHP_FIELDS_BusInterfaceAddressSegment)

// The attribute kp:addressSegment (AddressSegment) and the child elements
// kp:addressSegment (BusInterfaceAddressSegment) share a name in the document.
#define WHP_FIELDS_BusInterface(A, C, T, ...)                     \
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
ZR_XML_RECORD(BusInterface, WHP_FIELDS_BusInterface)

#define WHP_FIELDS_NocConnectivity(A, C, T, ...)  \
  A(InstanceRef, "instanceRef", String, Required) \
  C(BusInterface, "busInterface", BusInterface, Many)
ZR_XML_RECORD(NocConnectivity, WHP_FIELDS_NocConnectivity)

#define WHP_FIELDS_ResourceEstimates(A, C, T, ...)     \
  A(BRAM, "BRAM", U32, Required)                       \
  A(DSP, "DSP", U32, Required)                         \
  A(FF, "FF", U32, Required)                           \
  A(LUT, "LUT", U32, Required)                         \
  A(NocChannelMaxBw, "nocChannelMaxBw", U32, Optional) \
  A(NocPlNsu, "nocPlNsu", U32, Optional)               \
  A(NocPlNmu, "nocPlNmu", U32, Optional)               \
  A(NocTilNsu, "nocTilNsu", U32, Optional)             \
  A(NocTilNmu, "nocTilNmu", U32, Optional)
ZR_XML_RECORD(ResourceEstimates, WHP_FIELDS_ResourceEstimates)

#define WHP_FIELDS_Component(A, C, T, ...)                     \
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
ZR_XML_RECORD(Component, WHP_FIELDS_Component)

#define WHP_FIELDS_Repository(A, C, T, ...) \
  A(Name, "name", String, Required)         \
  A(Library, "library", String, Required)   \
  A(Version, "version", Decimal, Required)  \
  A(Vendor, "vendor", String, Required)     \
  C(Component, "component", Component, One)

// The document element of a hardware platform file.
class Repository {
  ZR_XML_RECORD_BODY(Repository, WHP_FIELDS_Repository)

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
