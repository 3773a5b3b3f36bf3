# Cross build for 32-bit Windows with Debian's mingw-w64 (package g++-mingw-w64-i686-win32): of the compiler's two variants
# the one whose run-time library asks nothing of the system that Windows XP lacks.
set(KRV_MINGW_TARGET i686-w64-mingw32)
set(KRV_MINGW_VARIANT win32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
