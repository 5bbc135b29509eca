# Without a wish CMake would not optimise at all. A project of its own then builds as Release; inside another project,
# whose build type is not ours to choose, the options of Release go to our own targets only.
get_property(multi_config GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(NOT multi_config AND NOT CMAKE_BUILD_TYPE)
  if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
  elseif(NOT "${CMAKE_CXX_FLAGS} ${CMAKE_C_FLAGS}" MATCHES "(^| )-O")
    foreach(language C CXX)
      separate_arguments(options NATIVE_COMMAND "${CMAKE_${language}_FLAGS_RELEASE}")
      add_compile_options("$<$<COMPILE_LANGUAGE:${language}>:${options}>")
    endforeach()
  endif()
endif()
