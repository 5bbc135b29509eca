# 32-bit x86 Linux with Debian's cross compiler. Programs run on the host's own processor; the C library that they
# need lies where the cross packages put it, so they name it themselves.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-Wl,--dynamic-linker=/usr/i686-linux-gnu/lib/ld-linux.so.2 -Wl,-rpath,/usr/i686-linux-gnu/lib")
# A kernel without 32-bit programs can still run them emulated: -DZQCC_RUN_WITH=qemu-i386.
if(ZQCC_RUN_WITH)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${ZQCC_RUN_WITH}")
endif()
set(CMAKE_FIND_ROOT_PATH /usr/i686-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
