# What the surfaces of all systems share.
krv_unit_test(drawing-tests LIBS krv-drawing SOURCES unit/pixel_surface_test.cpp)

# The program's own picture files. krv-picture makes their pictures readable for other programs.
krv_unit_test(picture-file-tests LIBS krv-pictures SOURCES unit/picture_files_test.cpp)
if(NOT CMAKE_CROSSCOMPILING)
    add_executable(krv-picture ${CMAKE_SOURCE_DIR}/bench/pictures.cpp)
    target_link_libraries(krv-picture PRIVATE krv-pictures)
    set_target_properties(krv-picture PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
    find_package(Python3 3.10 REQUIRED COMPONENTS Interpreter)
    add_test(NAME e2e.picture_files WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_picture_files.py)
    set_tests_properties(e2e.picture_files PROPERTIES
        TIMEOUT $<IF:$<BOOL:${KRV_SANITIZE}>,400,200> ENVIRONMENT "KRV_PICTURE=$<TARGET_FILE:krv-picture>")
endif()
