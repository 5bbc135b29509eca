# Headers, libraries, CMake package, pkg-config files, documents and examples.
include(CMakePackageConfigHelpers)

set(libraries zqColorConversion)
if(ZQP_BUILT)
  list(APPEND libraries zqPicture)
  install(FILES include/zqPicture.h include/zqPicture.hpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
endif()
install(TARGETS ${libraries} EXPORT zqColorConversionTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/zqColorConversion.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT zqColorConversionTargets NAMESPACE zqColorConversion::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zqColorConversion)

configure_package_config_file(cmake/zqColorConversionConfig.cmake.in zqColorConversionConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zqColorConversion)
write_basic_package_version_file(zqColorConversionConfigVersion.cmake COMPATIBILITY ${ZQCC_COMPATIBILITY})
install(FILES ${PROJECT_BINARY_DIR}/zqColorConversionConfig.cmake
  ${PROJECT_BINARY_DIR}/zqColorConversionConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zqColorConversion)

# The pkg-config file finds its prefix from where it lies, so that an installation may stand anywhere. A library
# directory given as an absolute path is outside the prefix, and then the configured prefix is the one to name.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(ZQCC_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(ZQCC_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
else()
  file(RELATIVE_PATH ZQCC_PC_UP "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
  string(REGEX REPLACE "/$" "" ZQCC_PC_UP "${ZQCC_PC_UP}")
  set(ZQCC_PC_PREFIX "\${pcfiledir}/${ZQCC_PC_UP}")
  set(ZQCC_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(ZQCC_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(ZQCC_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
foreach(library ${libraries})
  configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# As in the source tree, so that the links in the README hold.
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
file(GLOB documents CONFIGURE_DEPENDS docs/*.md)
install(FILES ${documents} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
