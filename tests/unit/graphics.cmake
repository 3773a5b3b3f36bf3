# The program's own picture files. krv-picture makes their pictures readable for other programs.
krv_unit_test(picture-file-tests LIBS krv-graphics SOURCES
    unit/bmp_test.cpp
    unit/pcx_test.cpp
)
if(NOT CMAKE_CROSSCOMPILING)
    add_executable(krv-picture ${CMAKE_SOURCE_DIR}/bench/pictures.cpp)
    target_link_libraries(krv-picture PRIVATE krv-graphics)
    set_target_properties(krv-picture PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
endif()
