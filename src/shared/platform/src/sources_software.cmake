list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/TEQSoftwarePlatformLMX.cpp
  ${ZR_PLATFORM_DIR}/HTEQSoftwarePlatform.cpp
  ${ZR_PLATFORM_DIR}/HTEQSystemConfig.cpp
  ${ZR_PLATFORM_DIR}/HTEQProcessorGroup.cpp
  ${ZR_PLATFORM_DIR}/HTEQBootImg.cpp
  ${ZR_PLATFORM_DIR}/HTEQSoftwarePlatformUtils.cpp
  ${ZR_PLATFORM_DIR}/HTEQSoftwarePlatformXMLReader.cpp
)
