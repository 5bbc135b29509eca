# Whether vector code is built: ZQCC_VECTOR_BUILT. Of Highway, nothing but its headers is used, and nothing of it at run
# time. Targets that compile or include src/vector link zqcc_vector.
set(ZQCC_VECTOR AUTO CACHE STRING
  "Build vector code where the processor has any: ON, OFF, or AUTO for where Highway's headers are found")
set_property(CACHE ZQCC_VECTOR PROPERTY STRINGS AUTO ON OFF)
set(ZQCC_OLDEST_HIGHWAY 1.0.3)

# zqcc_highway_version(VARIABLE DIRECTORY): the version of the headers in DIRECTORY/hwy, 0 if they do not say.
function(zqcc_highway_version variable directory)
  set(version "")
  if(EXISTS ${directory}/hwy/highway.h)
    file(STRINGS ${directory}/hwy/highway.h version REGEX "^#define HWY_(MAJOR|MINOR|PATCH) +[0-9]+$")
    list(TRANSFORM version REPLACE "^.* " "")
  endif()
  list(JOIN version . version)
  if(NOT version)
    set(version 0)
  endif()
  set(${variable} ${version} PARENT_SCOPE)
endfunction()

# Headers alone serve every processor, so that those of the machine that compiles do for the one it compiles for. They may
# have gone since they were found.
if(ZQCC_HIGHWAY_HEADERS AND NOT EXISTS ${ZQCC_HIGHWAY_HEADERS}/hwy/foreach_target.h)
  unset(ZQCC_HIGHWAY_HEADERS CACHE)
endif()
find_path(ZQCC_HIGHWAY_HEADERS hwy/foreach_target.h PATHS /usr/local/include /usr/include NO_CMAKE_FIND_ROOT_PATH
  DOC "The directory that holds hwy/foreach_target.h")
mark_as_advanced(ZQCC_HIGHWAY_HEADERS)
set(missing "")
if(NOT ZQCC_HIGHWAY_HEADERS)
  set(missing "Highway's headers were not found (Debian: libhwy-dev)")
else()
  zqcc_highway_version(highway_version ${ZQCC_HIGHWAY_HEADERS})
  if(highway_version VERSION_LESS ZQCC_OLDEST_HIGHWAY)
    set(missing "Highway's headers in ${ZQCC_HIGHWAY_HEADERS} are older than ${ZQCC_OLDEST_HIGHWAY}")
  endif()
endif()

set(ZQCC_VECTOR_BUILT OFF)
if(ZQCC_VECTOR)
  include(CheckCXXSourceCompiles)
  check_cxx_source_compiles("
    #if !defined(__x86_64__) && !defined(__aarch64__)
    #error no level of vector code for this processor
    #endif
    int main() {}" ZQCC_PROCESSOR_HAS_LEVELS)
  if(NOT ZQCC_PROCESSOR_HAS_LEVELS)
    message(STATUS "Vector code is left out: there is none for this processor")
  elseif(NOT missing)
    set(ZQCC_VECTOR_BUILT ON)
  elseif(ZQCC_VECTOR STREQUAL "AUTO")
    message(STATUS "Vector code is left out: ${missing}")
  else()
    message(FATAL_ERROR "Vector code is wanted (ZQCC_VECTOR), but ${missing}")
  endif()
endif()

# zqPicture is vectors throughout; Highway emulates them where the processor has none.
set(ZQCC_PICTURE AUTO CACHE STRING "Build zqPicture: ON, OFF, or AUTO for where Highway's headers are found")
set_property(CACHE ZQCC_PICTURE PROPERTY STRINGS AUTO ON OFF)
set(ZQP_BUILT OFF)
if(ZQCC_PICTURE AND NOT missing)
  set(ZQP_BUILT ON)
elseif(ZQCC_PICTURE STREQUAL "AUTO")
  message(STATUS "zqPicture is left out: ${missing}")
elseif(ZQCC_PICTURE)
  message(FATAL_ERROR "zqPicture is wanted (ZQCC_PICTURE), but ${missing}")
endif()

add_library(zqcc_vector INTERFACE)
target_compile_definitions(zqcc_vector INTERFACE ZQCC_VECTOR=$<BOOL:${ZQCC_VECTOR_BUILT}>)
if(ZQCC_VECTOR_BUILT OR ZQP_BUILT)
  # Only Highway's own headers are made visible, through a link: when compiling for another processor, the directory
  # around them is full of the compiling machine's.
  set(highway ${PROJECT_BINARY_DIR}/highway)
  file(MAKE_DIRECTORY ${highway})
  file(CREATE_LINK ${ZQCC_HIGHWAY_HEADERS}/hwy ${highway}/hwy SYMBOLIC)
  target_include_directories(zqcc_vector SYSTEM INTERFACE ${highway})
  if(WIN32 AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The stack of 64-bit Windows is aligned to 16 bytes, and GCC does not align it further, but spills registers of 32
    # and 64 bytes with instructions that want them aligned. Debian's GCC is mended, others are not; the assembler can
    # make all of them unaligned ones.
    include(CheckCXXCompilerFlag)
    check_cxx_compiler_flag(-Wa,-muse-unaligned-vector-move ZQCC_ASSEMBLER_UNALIGNS)
    if(ZQCC_ASSEMBLER_UNALIGNS)
      target_compile_options(zqcc_vector INTERFACE -Wa,-muse-unaligned-vector-move)
    endif()
  endif()
endif()
