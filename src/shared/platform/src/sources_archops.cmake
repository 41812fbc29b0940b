list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/HTEQHardwarePlatformArchive.cpp
  ${ZR_PLATFORM_DIR}/PlatformFileExtractor.cpp
  ${ZR_PLATFORM_DIR}/PlatformTilprjFileExtractor.cpp
)
