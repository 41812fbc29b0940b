list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_HOST_DIR}/HEXAll.cpp
  ${ZR_HOST_DIR}/ComMsgMgr.cpp
  ${ZR_HOST_DIR}/HUTEnv.cpp
  ${ZR_HOST_DIR}/HUTFile.cpp
  ${ZR_HOST_DIR}/HUTFileUtils.cpp
  ${ZR_HOST_DIR}/HUTPathUtils.cpp
  ${ZR_HOST_DIR}/HI18N.cpp
  ${ZR_HOST_DIR}/HSTStringUtils.cpp
  ${ZR_HOST_DIR}/ZrXml.cpp
)
