# Warnings are errors everywhere. The library adds -Wconversion on its own target.
add_library(zqcc_warnings INTERFACE)
target_compile_options(zqcc_warnings INTERFACE -Wall -Wextra -Wpedantic -Werror -Wshadow
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast -Wcast-qual>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlapping copies inside std::string where there are none (its bug 105651).
  target_compile_options(zqcc_warnings INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
