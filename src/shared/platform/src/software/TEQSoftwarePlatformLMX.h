#ifndef PLATFORM_TEQSOFTWAREPLATFORMLMX_H
#define PLATFORM_TEQSOFTWAREPLATFORMLMX_H

// Records of the software platform file (.spfm), one per element and named
// after it. Strings are wide (HI18N::convert gives UTF-8); each attribute
// keeps whether the document set it, since the reader copies optional
// attributes into the model only when they are there, and an absent one reads
// as the empty string. Every element and attribute is qualified with the teq
// namespace; the records use the local names. The accessors each field gets
// are listed in XmlRecordSupport.h.

#include <string>

#include "xml/XmlRecordSupport.h"

namespace TEQSoftwarePlatform {

// The namespace of every element and attribute of the format.
extern const char* const kNamespaceUri;

#define TEQSW_FIELDS_Prebuilt(A, ...) A(Data, "data", String, Required)
ZR_XML_RECORD(Prebuilt, TEQSW_FIELDS_Prebuilt)

#define TEQSW_FIELDS_Image(A, ...)                      \
  A(Name, "name", String, Required)                     \
  A(Type, "type", String, Optional)                     \
  A(Bif, "bif", String, Required)                       \
  A(ImageData, "imageData", String, Optional)           \
  A(Bootmode, "bootmode", String, Optional)             \
  A(Rootfs, "rootfs", String, Optional)                 \
  A(MountPath, "mountPath", String, Optional)           \
  A(Readme, "readme", String, Required)                 \
  A(QemuDevicetree, "qemuDevicetree", String, Optional) \
  A(QemuBoot, "qemuBoot", String, Optional)             \
  A(QemuArguments, "qemuArguments", String, Optional)   \
  A(HwBootBin, "hwBootBin", String, Optional)
ZR_XML_RECORD(Image, TEQSW_FIELDS_Image)

#define TEQSW_FIELDS_BootImages(A, C, ...) \
  A(Default, "default", String, Required)  \
  C(Image, "image", Image, One)
ZR_XML_RECORD(BootImages, TEQSW_FIELDS_BootImages)

#define TEQSW_FIELDS_Os(A, ...)                               \
  A(Name, "name", String, Required)                           \
  A(DisplayName, "displayName", String, Required)             \
  A(HypervisorGuest, "hypervisorGuest", String, Optional)     \
  A(IncludePaths, "includePaths", String, Optional)           \
  A(LibraryPaths, "libraryPaths", String, Optional)           \
  A(LibraryNames, "libraryNames", String, Optional)           \
  A(Ldscript, "ldscript", String, Optional)                   \
  A(SysRoot, "sysRoot", String, Optional)                     \
  A(BspConfig, "bspConfig", String, Optional)                 \
  A(BspLibraryPaths, "bspLibraryPaths", String, Optional)     \
  A(BspIncludePaths, "bspIncludePaths", String, Optional)     \
  A(BspRepo, "bspRepo", String, Optional)                     \
  A(CompilerOptions, "compilerOptions", String, Optional)     \
  A(LinkerOptions, "linkerOptions", String, Optional)         \
  A(OsDependency, "osDependency", String, Optional)           \
  A(CrossCompilerType, "crossCompilerType", String, Optional) \
  A(ToolConfig, "toolConfig", String, Optional)
ZR_XML_RECORD(Os, TEQSW_FIELDS_Os)

#define TEQSW_FIELDS_ProcessorGroup(A, C, ...)      \
  A(Name, "name", String, Required)                 \
  A(DisplayName, "displayName", String, Required)   \
  A(CpuType, "cpuType", String, Required)           \
  A(Architecture, "architecture", String, Optional) \
  A(CpuInstance, "cpuInstance", String, Optional)   \
  C(Os, "os", Os, One)
ZR_XML_RECORD(ProcessorGroup, TEQSW_FIELDS_ProcessorGroup)

#define TEQSW_FIELDS_Configuration(A, C, T, ...)                      \
  A(Name, "name", String, Required)                                   \
  A(DisplayName, "displayName", String, Required)                     \
  A(DefaultProcessorGroup, "defaultProcessorGroup", String, Optional) \
  A(Runtimes, "runtimes", String, Optional)                           \
  T(Description, "description", String)                               \
  C(Prebuilt, "prebuilt", Prebuilt, Opt)                              \
  C(BootImages, "bootImages", BootImages, Opt)                        \
  C(ProcessorGroup, "processorGroup", ProcessorGroup, Many)
ZR_XML_RECORD(Configuration, TEQSW_FIELDS_Configuration)

#define TEQSW_FIELDS_SystemConfigurations(A, C, ...)                \
  A(DefaultConfiguration, "defaultConfiguration", String, Optional) \
  C(Configuration, "configuration", Configuration, OneOrMore)
ZR_XML_RECORD(SystemConfigurations, TEQSW_FIELDS_SystemConfigurations)

// Decimals keep the text of the document, without the blanks around it.
#define TEQSW_FIELDS_Platform(A, C, T, ...)            \
  A(Vendor, "vendor", String, Required)                \
  A(Library, "library", String, Required)              \
  A(Name, "name", String, Required)                    \
  A(Version, "version", Decimal, Required)             \
  A(SchemaVersion, "schemaVersion", Decimal, Optional) \
  T(Description, "description", String)                \
  C(SystemConfigurations, "systemConfigurations", SystemConfigurations, One)
ZR_XML_RECORD(Platform, TEQSW_FIELDS_Platform)

// Parse and validate a document into records. Anything that is not a valid
// software platform (unreadable file, malformed XML, unknown or misplaced
// element, missing required attribute or child) raises HXMLException with the
// line number where there is one. `name` stands for the document in errors.
Platform unmarshalFile(const std::string& path);
Platform unmarshalString(const std::string& text, const std::string& name);

// Write records back as a document, attributes and children in the order of
// the format. Records that break the format raise HXMLException: their
// occurrence rules are checked first, and the document is validated before
// it is returned.
std::string marshal(const Platform& platform);

}  // namespace TEQSoftwarePlatform

#endif
