# ZR_HW_RECORD_DEFINITIONS: which records of the archive-backed hardware model
# exist in this tree, as compile definitions of 0 or 1.
set(ZR_HW_RECORD_DEFINITIONS)
set(_zr_inc ${CMAKE_CURRENT_LIST_DIR}/../include/platform)
foreach(pair "DEVICES;HPLDevice.h" "FEATURE_ROMS;HTEQHardwareFeatureRom.h" "LOADER;HTEQPlatform.h")
  list(GET pair 0 what)
  list(GET pair 1 header)
  if(EXISTS ${_zr_inc}/${header})
    list(APPEND ZR_HW_RECORD_DEFINITIONS ZR_HW_HAS_${what}=1)
  else()
    list(APPEND ZR_HW_RECORD_DEFINITIONS ZR_HW_HAS_${what}=0)
  endif()
endforeach()
unset(_zr_inc)
