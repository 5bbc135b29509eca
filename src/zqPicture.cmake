# libzqPicture: rows of pixels by Highway's vectors, or by its emulation of them where the processor has none.
file(GLOB ZQP_STAGE_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/rows/*.cpp)
# What serves every level: chosen or made by portable code.
set(ZQP_ROW_SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/rows/stages.cpp ${CMAKE_CURRENT_SOURCE_DIR}/rows/lerp_layout.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/rows/tap_layout.cpp)
list(REMOVE_ITEM ZQP_STAGE_SOURCES ${ZQP_ROW_SOURCES})
file(GLOB ZQP_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/picture/*.cpp)
list(APPEND ZQP_SOURCES ${ZQP_ROW_SOURCES} ${CMAKE_CURRENT_SOURCE_DIR}/vector/abort.cpp)
if(ZQCC_VECTOR_BUILT)
  list(APPEND ZQP_SOURCES ${ZQP_STAGE_SOURCES} ${CMAKE_CURRENT_SOURCE_DIR}/vector/detect.cpp)
endif()

add_library(zqp_portable OBJECT ${ZQP_STAGE_SOURCES})
target_compile_definitions(zqp_portable PRIVATE ZQP_PORTABLE=1)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 12.3)
  # GCC 12.2 vectorises multiplications of which the upper half is wanted wrongly.
  target_compile_options(zqp_portable PRIVATE -fno-tree-vectorize -fno-tree-slp-vectorize)
endif()
add_library(zqp_objects OBJECT ${ZQP_SOURCES})
foreach(objects zqp_portable zqp_objects)
  set_target_properties(${objects} PROPERTIES
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_include_directories(${objects} PUBLIC ${PROJECT_SOURCE_DIR}/include PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_compile_definitions(${objects} PRIVATE ZQP_BUILDING)
  # Coefficients are products and sums that are rounded one by one, so that they are the same everywhere.
  target_compile_options(${objects} PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -Wconversion
    -Wsign-conversion -ffp-contract=off)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(i[3-6]86|x86)$")
    target_compile_options(${objects} PRIVATE -msse2 -mfpmath=sse)
  endif()
  target_link_libraries(${objects} PRIVATE $<BUILD_INTERFACE:zqcc_warnings> $<BUILD_INTERFACE:zqcc_vector>)
endforeach()

add_library(zqPicture $<TARGET_OBJECTS:zqp_objects> $<TARGET_OBJECTS:zqp_portable>)
add_library(zqColorConversion::zqPicture ALIAS zqPicture)
zqcc_export(zqPicture zqPicture ${ZQP_VERSION} ${ZQP_ABI_VERSION})

add_library(zqp_static STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:zqp_objects> $<TARGET_OBJECTS:zqp_portable>)
target_include_directories(zqp_static INTERFACE ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(zqp_static INTERFACE zqcc_vector)
