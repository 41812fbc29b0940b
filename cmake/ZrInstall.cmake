include(CMakePackageConfigHelpers)

install(TARGETS zr_platform EXPORT zr_platformTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/platform include/host DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY schemas/ DESTINATION ${CMAKE_INSTALL_DATADIR}/zr_platform/schemas)
install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/zr_platform/data)
install(FILES data/platform_keys_doc.json DESTINATION ${CMAKE_INSTALL_DATADIR}/zr_platform/platforms)
install(EXPORT zr_platformTargets NAMESPACE zr_platform::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zr_platform)

configure_package_config_file(cmake/zr_platformConfig.cmake.in
  ${CMAKE_BINARY_DIR}/zr_platformConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zr_platform)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/zr_platformConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/zr_platformConfig.cmake
              ${CMAKE_BINARY_DIR}/zr_platformConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zr_platform)

configure_file(cmake/zr_platform.pc.in ${CMAKE_BINARY_DIR}/zr_platform.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/zr_platform.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES ${PROJECT_BINARY_DIR}/platforms/achromatic DESTINATION ${CMAKE_INSTALL_DATADIR}/zr_platform/platforms)
