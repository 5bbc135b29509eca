# zqcc_export(TARGET NAME VERSION ABI_VERSION): a library of C++ objects that users get as one of C. NAME.def has its
# exports for Windows, NAME.map.in, with the version as the name of their node, for ELF.
function(zqcc_export target name version abi_version)
  # Linked as C, statically as well: nothing of the C++ runtime is needed.
  set_target_properties(${target} PROPERTIES
    VERSION ${version} SOVERSION ${abi_version} LINKER_LANGUAGE C)
  target_include_directories(${target} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL "SHARED_LIBRARY")
    return() # objects in an archive: no linker runs, and no names are exported
  endif()
  if(WIN32)
    set_target_properties(${target} PROPERTIES PREFIX "")
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${name}.def)
    if(CMAKE_C_COMPILER_ID STREQUAL "GNU")
      # 64-bit divisions on 32-bit processors come from libgcc, which a host does not have as a DLL.
      target_link_options(${target} PRIVATE -static-libgcc)
    endif()
  elseif(NOT ZQCC_SANITIZE)
    # -z defs proves that the C runtime is all that is needed.
    configure_file(${name}.map.in ${name}.map @ONLY)
    target_link_options(${target} PRIVATE
      -Wl,--version-script=${CMAKE_CURRENT_BINARY_DIR}/${name}.map -Wl,-z,defs -Wl,--gc-sections)
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${name}.map)
  endif()
endfunction()
