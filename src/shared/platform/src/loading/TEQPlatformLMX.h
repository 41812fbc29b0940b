#ifndef PLATFORM_TEQPLATFORMLMX_H
#define PLATFORM_TEQPLATFORMLMX_H

// Records of the platform descriptor (.zdf), one per element and named after
// it. They live only between parsing a descriptor and filling an HTEQPlatform
// from it. Every element and attribute is qualified with the teq namespace;
// the records use the local names. The accessors each field gets are listed
// in XmlRecordSupport.h.

#include <string>

#include "xml/XmlRecordSupport.h"

namespace TEQPlatform {

// The namespace of every element and attribute of the format.
extern const char* const kNamespaceUri;

// teq:hardwarePlatform, teq:hwEmuPlatform and teq:softwarePlatform: a file named
// by a directory relative to the descriptor and a file name in it.
#define TEQ_FIELDS_FileRef(A, ...)  \
  A(Path, "path", String, Required) \
  A(Name, "name", String, Required)
ZR_XML_RECORD(HardwarePlatform, TEQ_FIELDS_FileRef)
ZR_XML_RECORD(HwEmuPlatform, TEQ_FIELDS_FileRef)
ZR_XML_RECORD(SoftwarePlatform, TEQ_FIELDS_FileRef)

// The first alternative of teq:hardwarePlatforms and of a partition: a
// hardware file, perhaps with an emulation file of its own.
#define TEQ_FIELDS_AnonHardwarePlatform(A, C, ...)               \
  C(HardwarePlatform, "hardwarePlatform", HardwarePlatform, One) \
  C(HwEmuPlatform, "hwEmuPlatform", HwEmuPlatform, Opt)
ZR_XML_RECORD(AnonHardwarePlatform, TEQ_FIELDS_AnonHardwarePlatform)
ZR_XML_RECORD(ReconfigurablePartitionAnonHardwarePlatform, TEQ_FIELDS_AnonHardwarePlatform)

// The alternative of an emulation file alone.
#define TEQ_FIELDS_HwEmuPlatformAlone(A, C, ...) C(HwEmuPlatform, "hwEmuPlatform", HwEmuPlatform, One)
ZR_XML_RECORD(HwEmuPlatformAlone, TEQ_FIELDS_HwEmuPlatformAlone)

#define TEQ_FIELDS_ReconfigurablePartition(A, C, T, X)                 \
  A(Id, "id", S64, Required)                                           \
  X(AnonHardwarePlatform, ReconfigurablePartitionAnonHardwarePlatform) \
  X(HwEmuPlatformAlone, HwEmuPlatformAlone)
ZR_XML_RECORD(ReconfigurablePartition, TEQ_FIELDS_ReconfigurablePartition)

// The alternative of a partitioned platform.
#define TEQ_FIELDS_ReconfigurablePartitions(A, C, ...) \
  C(ReconfigurablePartition, "reconfigurablePartition", ReconfigurablePartition, OneOrMore)
ZR_XML_RECORD(ReconfigurablePartitions, TEQ_FIELDS_ReconfigurablePartitions)

#define TEQ_FIELDS_HardwarePlatforms(A, C, T, X) \
  A(DefaultRP, "defaultRP", S64, Optional)       \
  X(AnonHardwarePlatform, AnonHardwarePlatform)  \
  X(HwEmuPlatformAlone, HwEmuPlatformAlone)      \
  X(ReconfigurablePartitions, ReconfigurablePartitions)
ZR_XML_RECORD(HardwarePlatforms, TEQ_FIELDS_HardwarePlatforms)

#define TEQ_FIELDS_SoftwarePlatforms(A, C, ...) C(SoftwarePlatform, "softwarePlatform", SoftwarePlatform, One)
ZR_XML_RECORD(SoftwarePlatforms, TEQ_FIELDS_SoftwarePlatforms)

#define TEQ_FIELDS_Platform(A, C, T, ...)                           \
  A(Vendor, "vendor", String, Required)                             \
  A(Library, "library", String, Required)                           \
  A(Name, "name", String, Required)                                 \
  A(Version, "version", Decimal, Required)                          \
  A(SchemaVersion, "schemaVersion", Decimal, Optional)              \
  T(Description, "description", String)                             \
  C(HardwarePlatforms, "hardwarePlatforms", HardwarePlatforms, One) \
  C(SoftwarePlatforms, "softwarePlatforms", SoftwarePlatforms, One)
ZR_XML_RECORD(Platform, TEQ_FIELDS_Platform)

// Parses and validates a descriptor file into records. Throws HXMLException
// (with a line number where there is one) for anything that is not a valid
// descriptor.
Platform unmarshalFile(const std::string& path);
// The same for a document in memory; `name` appears in error texts.
Platform unmarshalMemory(const std::string& text, const std::string& name);

}  // namespace TEQPlatform

#endif
