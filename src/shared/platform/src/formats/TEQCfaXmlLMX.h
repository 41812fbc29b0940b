#ifndef PLATFORM_TEQCFAXMLLMX_H
#define PLATFORM_TEQCFAXMLLMX_H

// The records of the hardware archive's XML member: one record per element,
// named after it, with the attributes and children of the element in document
// order. "Core", "Config" and "Param" occur in two places with different
// content; below the Device's Core they are held by InnerCore, InnerCoreConfig
// and InnerCoreConfigParam.
//
// Strings are kept as wide strings (HI18N::convert gives UTF-8). An optional
// attribute knows whether it is set; an optional child is an owned, nullable
// record whose non-const getter creates it, so ask Isset<child> first to learn
// whether the document had it. Copying a record copies its whole subtree.
// The accessors each field gets are listed in XmlRecordSupport.h.

#include <cstddef>
#include <iosfwd>
#include <string>

#include "xml/XmlRecordSupport.h"

namespace BasePlatform {

// The Name/Value pair shared by switches, IP parameters and both kinds of Param.
#define BP_FIELDS_NameValue(A, C, ...) \
  A(Name, "Name", String, Required)    \
  A(Value, "Value", String, Required)

ZR_XML_RECORD(ZuncCompileSwitch, BP_FIELDS_NameValue)
ZR_XML_RECORD(ZuncLinkSwitch, BP_FIELDS_NameValue)
ZR_XML_RECORD(Parameter, BP_FIELDS_NameValue)
ZR_XML_RECORD(Param, BP_FIELDS_NameValue)
ZR_XML_RECORD(InnerCoreConfigParam, BP_FIELDS_NameValue)

#define BP_FIELDS_GenAppInfo(A, C, ...)   \
  A(Name, "Name", String, Required)       \
  A(Version, "Version", String, Required) \
  A(CL, "CL", U64, Required)              \
  A(TimeStamp, "TimeStamp", String, Optional)
ZR_XML_RECORD(GenAppInfo, BP_FIELDS_GenAppInfo)

#define BP_FIELDS_Host(A, C, ...)                   \
  A(Architecture, "Architecture", String, Required) \
  A(Interface, "Interface", String, Optional)
ZR_XML_RECORD(Host, BP_FIELDS_Host)

#define BP_FIELDS_ZuncCompileSwitches(A, C, ...) \
  C(ZuncCompileSwitch, "ZuncCompileSwitch", ZuncCompileSwitch, Many)
ZR_XML_RECORD(ZuncCompileSwitches, BP_FIELDS_ZuncCompileSwitches)

#define BP_FIELDS_ZuncLinkSwitches(A, C, ...) C(ZuncLinkSwitch, "ZuncLinkSwitch", ZuncLinkSwitch, Many)
ZR_XML_RECORD(ZuncLinkSwitches, BP_FIELDS_ZuncLinkSwitches)

#define BP_FIELDS_Build(A, C, ...)                                          \
  A(Flow, "Flow", String, Optional)                                         \
  A(UsesPR, "UsesPR", String, Optional)                                     \
  A(UsesDCP, "UsesDCP", String, Optional)                                   \
  A(StaticSynthCheckpoint, "StaticSynthCheckpoint", String, Optional)       \
  A(PlatformState, "PlatformState", String, Optional)                       \
  A(AcceleratorBinaryFormat, "AcceleratorBinaryFormat", String, Optional)   \
  A(AcceleratorBinaryContent, "AcceleratorBinaryContent", String, Optional) \
  A(ValidBinaryContentValues, "ValidBinaryContentValues", String, Optional) \
  A(TopModuleName, "TopModuleName", String, Optional)                       \
  C(ZuncCompileSwitches, "ZuncCompileSwitches", ZuncCompileSwitches, Opt)   \
  C(ZuncLinkSwitches, "ZuncLinkSwitches", ZuncLinkSwitches, Opt)
ZR_XML_RECORD(Build, BP_FIELDS_Build)

#define BP_FIELDS_Configuration(A, C, ...) C(Parameter, "Parameter", Parameter, Many)
ZR_XML_RECORD(Configuration, BP_FIELDS_Configuration)

#define BP_FIELDS_IP(A, C, ...)                     \
  A(InstanceName, "InstanceName", String, Required) \
  A(VLNV, "VLNV", String, Required)                 \
  C(Configuration, "Configuration", Configuration, Opt)
ZR_XML_RECORD(IP, BP_FIELDS_IP)

#define BP_FIELDS_DesignIPs(A, C, ...) C(IP, "IP", IP, Many)
ZR_XML_RECORD(DesignIPs, BP_FIELDS_DesignIPs)

#define BP_FIELDS_Interface(A, C, ...) \
  A(Id, "Id", String, Required)        \
  A(Name, "Name", String, Required)    \
  A(Type, "Type", String, Required)
ZR_XML_RECORD(Interface, BP_FIELDS_Interface)

#define BP_FIELDS_Interfaces(A, C, ...) C(Interface, "Interface", Interface, One)
ZR_XML_RECORD(Interfaces, BP_FIELDS_Interfaces)

#define BP_FIELDS_Config(A, C, ...) C(Param, "Param", Param, Many)
ZR_XML_RECORD(Config, BP_FIELDS_Config)

#define BP_FIELDS_Memory(A, C, ...)                  \
  A(Name, "Name", String, Required)                  \
  A(Type, "Type", String, Required)                  \
  A(Size, "Size", String, Required)                  \
  A(LowestAddress, "LowestAddress", S64, Optional)   \
  A(HighestAddress, "HighestAddress", S64, Optional) \
  C(Config, "Config", Config, Opt)
ZR_XML_RECORD(Memory, BP_FIELDS_Memory)

#define BP_FIELDS_Memories(A, C, ...) C(Memory, "Memory", Memory, Many)
ZR_XML_RECORD(Memories, BP_FIELDS_Memories)

#define BP_FIELDS_Connector(A, C, ...)                                                \
  A(Name, "Name", String, Required)                                                   \
  A(DisplayName, "DisplayName", String, Required)                                     \
  A(Type, "Type", String, Required)                                                   \
  A(ConnectedConnector, "ConnectedConnector", String, Optional)                       \
  A(ConnectedConnectorDisplayName, "ConnectedConnectorDisplayName", String, Optional) \
  A(IsLocked, "IsLocked", String, Optional)
ZR_XML_RECORD(Connector, BP_FIELDS_Connector)

#define BP_FIELDS_Connectors(A, C, ...) C(Connector, "Connector", Connector, Many)
ZR_XML_RECORD(Connectors, BP_FIELDS_Connectors)

#define BP_FIELDS_Img(A, C, ...)    \
  A(Type, "Type", String, Required) \
  A(File, "File", String, Required)
ZR_XML_RECORD(Img, BP_FIELDS_Img)

#define BP_FIELDS_Images(A, C, ...) C(Img, "Img", Img, Many)
ZR_XML_RECORD(Images, BP_FIELDS_Images)

#define BP_FIELDS_Driver(A, C, ...)         \
  A(Name, "Name", String, Required)         \
  A(Vendor, "Vendor", String, Required)     \
  A(Version, "Version", String, Required)   \
  A(Platform, "Platform", String, Optional) \
  A(File, "File", String, Required)
ZR_XML_RECORD(Driver, BP_FIELDS_Driver)

#define BP_FIELDS_Drivers(A, C, ...) C(Driver, "Driver", Driver, Many)
ZR_XML_RECORD(Drivers, BP_FIELDS_Drivers)

#define BP_FIELDS_PCIeId(A, C, ...)           \
  A(Vendor, "Vendor", String, Required)       \
  A(Device, "Device", String, Required)       \
  A(Subsystem, "Subsystem", String, Required) \
  A(FeatureId, "FeatureId", String, Optional)
ZR_XML_RECORD(PCIeId, BP_FIELDS_PCIeId)

#define BP_FIELDS_Board(A, C, ...)             \
  A(Name, "Name", String, Required)            \
  A(Vendor, "Vendor", String, Required)        \
  A(Part, "Part", String, Required)            \
  A(BoardPart, "BoardPart", String, Optional)  \
  C(Interfaces, "Interfaces", Interfaces, Opt) \
  C(Memories, "Memories", Memories, Opt)       \
  C(Connectors, "Connectors", Connectors, Opt) \
  C(Images, "Images", Images, One)             \
  C(Drivers, "Drivers", Drivers, Opt)          \
  C(PCIeId, "PCIeId", PCIeId, Opt)
ZR_XML_RECORD(Board, BP_FIELDS_Board)

#define BP_FIELDS_SystemClock(A, C, ...) \
  A(Name, "Name", String, Required)      \
  A(Frequency, "Frequency", String, Required)
ZR_XML_RECORD(SystemClock, BP_FIELDS_SystemClock)

#define BP_FIELDS_SystemClocks(A, C, ...) C(SystemClock, "SystemClock", SystemClock, Many)
ZR_XML_RECORD(SystemClocks, BP_FIELDS_SystemClocks)

#define BP_FIELDS_InnerCoreConfig(A, C, ...) C(Param, "Param", InnerCoreConfigParam, Many)
ZR_XML_RECORD(InnerCoreConfig, BP_FIELDS_InnerCoreConfig)

#define BP_FIELDS_AddressSegment(A, C, ...) \
  A(Name, "Name", String, Required)         \
  A(Base, "Base", String, Required)         \
  A(Range, "Range", String, Required)       \
  A(Slave, "Slave", String, Required)
ZR_XML_RECORD(AddressSegment, BP_FIELDS_AddressSegment)

#define BP_FIELDS_AddressSegments(A, C, ...) C(AddressSegment, "AddressSegment", AddressSegment, Many)
ZR_XML_RECORD(AddressSegments, BP_FIELDS_AddressSegments)

#define BP_FIELDS_Port(A, C, ...)                       \
  A(Name, "Name", String, Required)                     \
  A(Type, "Type", String, Required)                     \
  A(Mode, "Mode", String, Optional)                     \
  A(Protocol, "Protocol", String, Optional)             \
  A(Base, "Base", String, Optional)                     \
  A(Range, "Range", String, Optional)                   \
  A(DataWidth, "DataWidth", String, Optional)           \
  A(IdWidth, "IdWidth", String, Optional)               \
  A(UserWidth, "UserWidth", String, Optional)           \
  A(AddressWidth, "AddressWidth", String, Optional)     \
  A(AddressOffset, "AddressOffset", String, Optional)   \
  A(AddressRange, "AddressRange", String, Optional)     \
  A(MaxBurstLength, "MaxBurstLength", String, Optional) \
  A(Frequency, "Frequency", String, Optional)           \
  A(Direction, "Direction", String, Optional)           \
  A(Polarity, "Polarity", String, Optional)             \
  C(AddressSegments, "AddressSegments", AddressSegments, Opt)
ZR_XML_RECORD(Port, BP_FIELDS_Port)

#define BP_FIELDS_Resource(A, C, ...) \
  A(Name, "Name", String, Required)   \
  A(Val, "Val", String, Required)
ZR_XML_RECORD(Resource, BP_FIELDS_Resource)

#define BP_FIELDS_PBlock(A, C, ...)           \
  A(Name, "Name", String, Required)           \
  A(ValidSLRs, "ValidSLRs", String, Optional) \
  C(Resource, "Resource", Resource, Many)
ZR_XML_RECORD(PBlock, BP_FIELDS_PBlock)

#define BP_FIELDS_AvailableResources(A, C, ...) \
  A(LUT, "LUT", String, Required)               \
  A(REG, "REG", String, Required)               \
  A(BRAM, "BRAM", String, Required)             \
  A(DSP, "DSP", String, Required)               \
  C(PBlock, "PBlock", PBlock, Many)
ZR_XML_RECORD(AvailableResources, BP_FIELDS_AvailableResources)

#define BP_FIELDS_InnerCore(A, C, ...)      \
  C(Config, "Config", InnerCoreConfig, Opt) \
  C(Port, "Port", Port, Many)               \
  C(AvailableResources, "AvailableResources", AvailableResources, Opt)
ZR_XML_RECORD(InnerCore, BP_FIELDS_InnerCore)

#define BP_FIELDS_Core(A, C, ...)                                   \
  A(Name, "Name", String, Required)                                 \
  A(Type, "Type", String, Required)                                 \
  A(ComputeUnits, "ComputeUnits", U8, Required)                     \
  A(VLNV, "VLNV", String, Optional)                                 \
  A(InstancePath, "InstancePath", String, Optional)                 \
  A(ParentRMInstancePath, "ParentRMInstancePath", String, Optional) \
  A(ClockFreq, "ClockFreq", String, Optional)                       \
  A(DRBaseAddress, "DRBaseAddress", String, Optional)               \
  A(DRBDName, "DRBDName", String, Optional)                         \
  C(Core, "Core", InnerCore, Opt)
ZR_XML_RECORD(Core, BP_FIELDS_Core)

#define BP_FIELDS_Device(A, C, ...)                  \
  A(Name, "Name", String, Required)                  \
  A(Type, "Type", String, Required)                  \
  A(FpgaDevice, "FpgaDevice", String, Optional)      \
  C(SystemClocks, "SystemClocks", SystemClocks, Opt) \
  C(Core, "Core", Core, One)
ZR_XML_RECORD(Device, BP_FIELDS_Device)

#define BP_FIELDS_Devices(A, C, ...) C(Device, "Device", Device, OneOrMore)
ZR_XML_RECORD(Devices, BP_FIELDS_Devices)

#define BP_FIELDS_File(A, C, ...)       \
  A(Type, "Type", String, Required)     \
  A(Name, "Name", String, Required)     \
  A(UsedIn, "UsedIn", String, Optional) \
  A(ProcessingOrder, "ProcessingOrder", String, Optional)
ZR_XML_RECORD(File, BP_FIELDS_File)

#define BP_FIELDS_Files(A, C, ...) C(File, "File", File, Many)
ZR_XML_RECORD(Files, BP_FIELDS_Files)

#define BP_FIELDS_FeatureRom(A, C, ...)                  \
  A(MajorVersion, "MajorVersion", U8, Required)          \
  A(MinorVersion, "MinorVersion", U8, Required)          \
  A(MorwenBuildID, "MorwenBuildID", U32, Required)       \
  A(IPBuildID, "IPBuildID", U32, Required)               \
  A(TimeSinceEpoch, "TimeSinceEpoch", U64, Required)     \
  A(FPGAPartName, "FPGAPartName", String, Required)      \
  A(VBNVName, "VBNVName", String, Required)              \
  A(DDRChannelCount, "DDRChannelCount", U8, Required)    \
  A(DDRChannelSize, "DDRChannelSize", U8, Required)      \
  A(DRBaseAddress, "DRBaseAddress", U64, Required)       \
  A(FeatureBitMap, "FeatureBitMap", U64, Required)       \
  A(UUID, "UUID", String, Optional)                      \
  A(CDMABaseAddress0, "CDMABaseAddress0", U32, Optional) \
  A(CDMABaseAddress1, "CDMABaseAddress1", U32, Optional) \
  A(CDMABaseAddress2, "CDMABaseAddress2", U32, Optional) \
  A(CDMABaseAddress3, "CDMABaseAddress3", U32, Optional) \
  A(MaxTempLimit, "MaxTempLimit", U32, Optional)         \
  A(MaxPowerLimit, "MaxPowerLimit", U32, Optional)
ZR_XML_RECORD(FeatureRom, BP_FIELDS_FeatureRom)

// VersionMajor and VersionMinor are the platform's own version numbers.
#define BP_FIELDS_CFA(A, C, ...)                                            \
  A(Vendor, "Vendor", String, Required)                                     \
  A(BoardId, "BoardId", String, Required)                                   \
  A(Name, "Name", String, Required)                                         \
  A(VersionMajor, "VersionMajor", U32, Required)                            \
  A(VersionMinor, "VersionMinor", U32, Required)                            \
  A(Description, "Description", String, Required)                           \
  A(FeatureRomTimestamp, "FeatureRomTimestamp", U64, Optional)              \
  A(DcpLogicFunctionStripped, "DcpLogicFunctionStripped", String, Optional) \
  A(DcpEncrypt, "DcpEncrypt", String, Optional)                             \
  A(Unified, "Unified", String, Optional)                                   \
  A(Fixed, "Fixed", String, Optional)                                       \
  A(DefaultOutputType, "DefaultOutputType", String, Optional)               \
  C(Host, "Host", Host, Opt)                                                \
  C(Build, "Build", Build, One)                                             \
  C(DesignIPs, "DesignIPs", DesignIPs, Opt)                                 \
  C(Board, "Board", Board, One)                                             \
  C(Devices, "Devices", Devices, One)                                       \
  C(Files, "Files", Files, One)                                             \
  C(FeatureRom, "FeatureRom", FeatureRom, Opt)
ZR_XML_RECORD(CFA, BP_FIELDS_CFA)

// The root's version attributes are the version of this document format. A
// new record holds the current version, unset: a document must carry both.
#define BP_FIELDS_Root(A, C, ...)                    \
  A(VersionMajor, "VersionMajor", U32, Required, 1)  \
  A(VersionMinor, "VersionMinor", U32, Required, 15) \
  C(GenAppInfo, "GenAppInfo", GenAppInfo, Opt)       \
  C(CFA, "CFA", CFA, One)

// What a failed Unmarshal leaves for a caller that wants it besides the
// exception: the exception's text and the line of the document.
struct DebugError {
  std::string text;
  int line = 0;
};

class Root {
  ZR_XML_RECORD_BODY(Root, BP_FIELDS_Root)

 public:
  // Parses and validates a whole document, then replaces this record's content
  // with it. On failure throws HXMLException (with the document's line number,
  // 0 when there is none), fills `debugError` when given, and leaves the
  // record as it was.
  void Unmarshal(const char* buffer, std::size_t length, DebugError* debugError = nullptr);
  void Unmarshal(const std::string& path);

  // Writes the document, top element "Root". The occurrence rules are checked
  // first and the built document validated: a violation throws HXMLException
  // and nothing is written.
  void Marshal(const std::string& path) const;
  void Marshal(std::ostream& out) const;
  void Marshal(std::string* out) const;
};

// Every record, for code that treats them all alike.
// clang-format off
#define BP_ALL_RECORDS(X)                                                                             \
  X(ZuncCompileSwitch) X(ZuncLinkSwitch) X(Parameter) X(Param) X(InnerCoreConfigParam) X(GenAppInfo) \
  X(Host) X(ZuncCompileSwitches) X(ZuncLinkSwitches) X(Build) X(Configuration) X(IP) X(DesignIPs)    \
  X(Interface) X(Interfaces) X(Config) X(Memory) X(Memories) X(Connector) X(Connectors) X(Img)       \
  X(Images) X(Driver) X(Drivers) X(PCIeId) X(Board) X(SystemClock) X(SystemClocks)                   \
  X(InnerCoreConfig) X(AddressSegment) X(AddressSegments) X(Port) X(Resource) X(PBlock)              \
  X(AvailableResources) X(InnerCore) X(Core) X(Device) X(Devices) X(File) X(Files) X(FeatureRom)     \
  X(CFA) X(Root)
// clang-format on

}  // namespace BasePlatform

#endif
