# Packages of what is installed: `cpack` in the build directory makes a .deb and a .tar.gz.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME zqColorConversion)
set(CPACK_PACKAGE_FILE_NAME zqColorConversion-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_VENDOR "zqColorConversion developers")
set(CPACK_PACKAGE_CONTACT "zqColorConversion developers <zqcolorconversion@example.org>")
set(CPACK_PACKAGE_DESCRIPTION "One decoded picture at a time becomes the display's pixel format, chiefly RGB565:\
 converted, resized, turned, flipped, in integer arithmetic. Contains the library, what is needed to develop with it,\
 and the program zqconvert.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackageOptions.cmake)

set(CPACK_DEBIAN_PACKAGE_NAME zqcolorconversion)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
# Dependencies come from the files themselves; zqconvert's own library is in the package.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_IGNORE_FILES "^${PROJECT_SOURCE_DIR}/(build|\\.git)(/|$)")
include(CPack)
