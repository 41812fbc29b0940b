list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_PLATFORM_DIR}/HTEQHardwareFeatureRom.cpp
  ${ZR_PLATFORM_DIR}/HPLCore.cpp
  ${ZR_PLATFORM_DIR}/HPLPort.cpp
  ${ZR_PLATFORM_DIR}/HPLInterface.cpp
  ${ZR_PLATFORM_DIR}/HTEQDevice.cpp
  ${ZR_PLATFORM_DIR}/HPLDevice.cpp
  ${ZR_PLATFORM_DIR}/HPLBoard.cpp
  ${ZR_PLATFORM_DIR}/HPLPCIeId.cpp
  ${ZR_PLATFORM_DIR}/HPLFile.cpp
  ${ZR_PLATFORM_DIR}/HPLMemSizeParser.cpp
)

# The hardware platform reads members of its archive through HUTZip once the
# archive layer is part of the library. A definition, unlike a test for the
# header in the source, changes the compile command, so no cached object
# built without the archive layer is reused.
if(EXISTS ${PROJECT_SOURCE_DIR}/include/host/HUTZip.h)
  set_property(SOURCE ${ZR_PLATFORM_DIR}/HPLPlatform.cpp APPEND PROPERTY COMPILE_DEFINITIONS ZR_HAVE_HUTZIP=1)
endif()
