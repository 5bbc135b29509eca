# ARMv4T without floating point: the oldest processors that the library serves. Debian's armel compiler makes the code;
# its C library is built for ARMv5TE, so the library's own objects keep to ARMv4T, the programs of the tests do not.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabi-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabi-g++)
set(CMAKE_C_FLAGS_INIT "-march=armv4t -mfloat-abi=soft -marm")
set(CMAKE_CXX_FLAGS_INIT "-march=armv4t -mfloat-abi=soft -marm")
# -O3 makes half as much code again and executes hardly fewer instructions; scripts/measure-arm shows both.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG" CACHE STRING "Optimisation that ships")
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-arm;-L;/usr/arm-linux-gnueabi")
set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabi)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
