# Cross build for 32-bit Windows with Debian's mingw-w64 (package g++-mingw-w64-i686-win32): of the compiler's two variants
# the one whose run-time library asks nothing of the system that Windows XP lacks.
set(KRV_MINGW_TARGET i686-w64-mingw32)
set(KRV_MINGW_VARIANT win32)
# Calculates with the precision that the system gives every thread, which is that of a double: so what lies on the border
# between two pixels is rounded as it is with 64 bits and on Linux. The compiler's own beginning would switch to more.
set(KRV_MINGW_START -l:CRT_fp8.o)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
