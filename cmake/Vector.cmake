# Whether vector code is built: ZQCC_VECTOR_BUILT, with the headers of Highway in ZQCC_HIGHWAY. Nothing but its headers is
# used, and nothing of it at run time.
set(ZQCC_VECTOR AUTO CACHE STRING "Build vector code: ON, OFF, or AUTO for where Highway's headers are found")
set_property(CACHE ZQCC_VECTOR PROPERTY STRINGS AUTO ON OFF)

set(ZQCC_VECTOR_BUILT OFF)
if(ZQCC_VECTOR)
  include(CheckCXXSourceCompiles)
  check_cxx_source_compiles("
    #if !defined(__x86_64__) && !defined(__aarch64__)
    #error no level of vector code for this processor
    #endif
    int main() {}" ZQCC_PROCESSOR_HAS_LEVELS)
  # Headers alone serve every processor, so that those of the machine that compiles do for the one it compiles for. Only
  # they are made visible, through a link: the folder around them is full of the compiling machine's own.
  find_path(ZQCC_HIGHWAY_HEADERS hwy/foreach_target.h PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH)
  if(ZQCC_PROCESSOR_HAS_LEVELS AND ZQCC_HIGHWAY_HEADERS)
    set(ZQCC_HIGHWAY ${PROJECT_BINARY_DIR}/highway)
    file(MAKE_DIRECTORY ${ZQCC_HIGHWAY})
    file(CREATE_LINK ${ZQCC_HIGHWAY_HEADERS}/hwy ${ZQCC_HIGHWAY}/hwy SYMBOLIC)
    set(ZQCC_VECTOR_BUILT ON)
  elseif(NOT ZQCC_VECTOR STREQUAL "AUTO")
    message(FATAL_ERROR "ZQCC_VECTOR is ON, but Highway's headers (libhwy-dev) or levels for this processor are missing")
  elseif(ZQCC_PROCESSOR_HAS_LEVELS)
    message(STATUS "Vector code is left out: Highway's headers (libhwy-dev) are missing")
  endif()
endif()
