# Emulation metadata: the model, its XML and JSON readers, the extended
# metadata reader and the XML writer.
list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/TEQEmulationLMX.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulationFile.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulation.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmuFeatureRom.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulations.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulationCfaMember.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulationXMLReader.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulationJsonReader.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulationExtMetaJsonReader.cpp
  ${ZR_PLATFORM_DIR}/HTEQEmulationXMLWriter.cpp
)
