# Cross build for 32-bit Windows with Debian's mingw-w64 (package g++-mingw-w64-i686-posix).
set(KRV_MINGW_TARGET i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
