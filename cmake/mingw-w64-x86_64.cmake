# Cross build for 64-bit Windows with Debian's mingw-w64 (package g++-mingw-w64-x86-64-posix).
set(KRV_MINGW_TARGET x86_64-w64-mingw32)
set(KRV_MINGW_VARIANT posix)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
