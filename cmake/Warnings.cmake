# One set of warnings for everything; the library adds -Wconversion on its own target. They are errors where we build
# (presets, scripts), and not where a compiler of tomorrow that warns of more would keep somebody from building.
add_library(zqcc_warnings INTERFACE)
target_compile_options(zqcc_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast -Wcast-qual>)
if(ZQCC_WERROR)
  target_compile_options(zqcc_warnings INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlapping copies inside std::string where there are none (its bug 105651).
  target_compile_options(zqcc_warnings INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
