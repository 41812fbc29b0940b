list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/HPLMemory.cpp
  ${ZR_PLATFORM_DIR}/HTEQHardwarePlatformMemory.cpp
  ${ZR_PLATFORM_DIR}/HTEQHardwarePlatformTil.cpp
  ${ZR_PLATFORM_DIR}/PlatformArchiveAccess.cpp
  ${ZR_PLATFORM_DIR}/HTEQDesignIPInstance.cpp
  ${ZR_PLATFORM_DIR}/HTEQHardwareAddressSegment.cpp
  ${ZR_PLATFORM_DIR}/HTEQHardwareBusInterface.cpp
  ${ZR_PLATFORM_DIR}/HTEQHardwareIPParam.cpp
  ${ZR_PLATFORM_DIR}/HTEQHardwareNocConnectivity.cpp
  ${ZR_PLATFORM_DIR}/HTEQReconfigPartition.cpp
  ${ZR_PLATFORM_DIR}/HTEQSystemClock.cpp
  ${ZR_PLATFORM_DIR}/HTEQTilHardware.cpp
  ${ZR_PLATFORM_DIR}/HTEQTilPartition.cpp
  ${ZR_PLATFORM_DIR}/HTEQTilPartitionsJsonReader.cpp
)

# The hardware platform looks into devices, feature ROMs and loaded platforms
# when those records are part of the build. The switches are compile
# definitions rather than header tests in the source, so that a build (and its
# compiler cache) sees the change when the records arrive.
include(${PROJECT_SOURCE_DIR}/cmake/ZrHwcoreRecords.cmake)
set_property(SOURCE ${ZR_PLATFORM_DIR}/HTEQHardwarePlatform.cpp APPEND PROPERTY COMPILE_DEFINITIONS
  ${ZR_HW_RECORD_DEFINITIONS})
