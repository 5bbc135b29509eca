# Which versions may replace each other: before 1.0 those with the same minor number, later those with the same major
# number. The shared object's name, the version node of its symbols and the CMake package all say so.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(ZQCC_ABI_VERSION 0.${PROJECT_VERSION_MINOR})
  set(ZQCC_COMPATIBILITY SameMinorVersion)
else()
  set(ZQCC_ABI_VERSION ${PROJECT_VERSION_MAJOR})
  set(ZQCC_COMPATIBILITY SameMajorVersion)
endif()
