list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/HTEQSoftwarePlatform.cpp
  ${ZR_PLATFORM_DIR}/HTEQSoftwarePlatformXMLReader.cpp
)
