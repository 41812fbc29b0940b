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

