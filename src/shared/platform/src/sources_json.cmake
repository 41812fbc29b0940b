list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/JsonDocument.cpp
  ${ZR_PLATFORM_DIR}/JsonText.cpp
  ${ZR_PLATFORM_DIR}/JsonTextWriter.cpp
)
