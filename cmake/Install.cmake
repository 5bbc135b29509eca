# Header, library, CMake package and pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS zqColorConversion EXPORT zqColorConversionTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/zqColorConversion.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT zqColorConversionTargets NAMESPACE zqColorConversion::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zqColorConversion)

configure_package_config_file(cmake/zqColorConversionConfig.cmake.in zqColorConversionConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zqColorConversion)
write_basic_package_version_file(zqColorConversionConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zqColorConversionConfig.cmake
  ${PROJECT_BINARY_DIR}/zqColorConversionConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zqColorConversion)

configure_file(cmake/zqColorConversion.pc.in zqColorConversion.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zqColorConversion.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
