# Cross-build for 64-bit Windows with Debian's MinGW-w64, for testing on machines whose
# kernel cannot run 32-bit code (and so no 32-bit Wine); the product itself is 32-bit. The -posix compilers carry
# std::mutex, which GoogleTest needs; the program is built with the same ones.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER   ${MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER  ${MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# CTest runs the test executables through 64-bit Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
