# What the cross builds for Windows share. The programs run here under Wine, in a private prefix of the build folder.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${KRV_MINGW_TARGET}-g++-${KRV_MINGW_VARIANT})
set(CMAKE_RC_COMPILER ${KRV_MINGW_TARGET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${KRV_MINGW_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tests/wine-run.sh ${CMAKE_BINARY_DIR}/wineprefix)

# One file that needs nothing but the system, without what no part of it uses.
set(CMAKE_CXX_FLAGS_INIT "-ffunction-sections -fdata-sections")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--gc-sections ${KRV_MINGW_START}")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-s")
