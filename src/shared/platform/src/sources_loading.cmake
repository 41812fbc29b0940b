list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/JSONWriter.cpp
  ${ZR_PLATFORM_DIR}/JSONObjectWriter.cpp
  ${ZR_PLATFORM_DIR}/JSONListWriter.cpp
  ${ZR_PLATFORM_DIR}/HTEQJSONUtils.cpp
)
list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/HTEQDesignIntentStorage.cpp
  ${ZR_PLATFORM_DIR}/HTEQReconfigurablePartition.cpp
)
