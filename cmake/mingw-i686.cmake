# Cross-build for 32-bit Windows with Debian's MinGW-w64. The -posix compilers carry
# std::mutex, which GoogleTest needs; the program is built with the same ones.
set(CMAKE_SYSTEM_NAME Windows)
# The 64-bit toolchain file sets these two before including this one.
if(NOT TOVIRA_MINGW_ARCH)
  set(TOVIRA_MINGW_ARCH i686)
  set(TOVIRA_WINE wine)
endif()
set(CMAKE_SYSTEM_PROCESSOR ${TOVIRA_MINGW_ARCH})

set(MINGW_PREFIX ${TOVIRA_MINGW_ARCH}-w64-mingw32)
set(CMAKE_C_COMPILER   ${MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER  ${MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# CTest runs the test executables through Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${TOVIRA_WINE})
