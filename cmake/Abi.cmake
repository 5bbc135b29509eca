# Which versions may replace each other: before 1.0 those with the same minor number, later those with the same major
# number. The shared objects' names, the version nodes of their symbols and the CMake package all say so. Each library
# has the version of its own header; the package has that of zqColorConversion.
function(zqcc_abi_version variable version)
  string(REGEX MATCH "^0[.][0-9]+" abi ${version})
  if(NOT abi)
    string(REGEX MATCH "^[0-9]+" abi ${version})
  endif()
  set(${variable} ${abi} PARENT_SCOPE)
endfunction()
zqcc_abi_version(ZQCC_ABI_VERSION ${PROJECT_VERSION})
zqcc_header_version(ZQP_VERSION zqPicture.h ZQP)
zqcc_abi_version(ZQP_ABI_VERSION ${ZQP_VERSION})
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(ZQCC_COMPATIBILITY SameMinorVersion)
else()
  set(ZQCC_COMPATIBILITY SameMajorVersion)
endif()
