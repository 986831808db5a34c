# Cross-build for 64-bit Windows, for testing on machines whose kernel cannot run 32-bit
# code (and so no 32-bit Wine); the product itself is 32-bit.
set(TOVIRA_MINGW_ARCH x86_64)
set(TOVIRA_WINE /usr/lib/wine/wine64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-i686.cmake)
