# Archive services: zip members as streams, whole-archive operations, the
# archive digest and the packed "xp" form.
list(APPEND ZR_PLATFORM_SOURCES
  ${ZR_HOST_DIR}/ZrTempFile.cpp
  ${ZR_HOST_DIR}/ZrZipArchive.cpp
  ${ZR_HOST_DIR}/ZrZipRawScan.cpp
  ${ZR_HOST_DIR}/ZrZipDigest.cpp
  ${ZR_HOST_DIR}/HUTZip.cpp
  ${ZR_HOST_DIR}/IslIostreams.cpp
  ${ZR_HOST_DIR}/IslXp.cpp
)
