# cmake -DPROGRAM=KRVWINPR.COM -DTEMPLATE=bytes.h.in -DHEADER=krvwinpr_com.h -P bytes.cmake: the bytes of a program that is not
# larger than it may be.
cmake_minimum_required(VERSION 3.25)
file(SIZE ${PROGRAM} size)
if(size GREATER 2048)
    message(FATAL_ERROR "${PROGRAM} has ${size} bytes, more than 2048")
endif()
file(READ ${PROGRAM} bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1, " bytes "${bytes}")
configure_file(${TEMPLATE} ${HEADER} @ONLY)
