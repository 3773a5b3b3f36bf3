# The Windows program from end to end, under Wine, beside the native one, which is built before.
find_package(Python3 3.10 REQUIRED COMPONENTS Interpreter)
set(KRV_NATIVE ${CMAKE_SOURCE_DIR}/build/linux/KRVWinPr CACHE FILEPATH "The native program to compare with")

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    foreach(name windows windows_graphics)
        add_test(NAME e2e.${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
                 COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_${name}.py)
    endforeach()
    set_tests_properties(e2e.windows e2e.windows_graphics PROPERTIES
        TIMEOUT 400 FIXTURES_REQUIRED wine RUN_SERIAL ON
        ENVIRONMENT "KRVWINPR=$<TARGET_FILE:KRVWinPr>;KRVWINPR_ANSWER=$<TARGET_FILE:krv-answer>;KRVWINPR_PREFIX=${CMAKE_BINARY_DIR}/wineprefix;KRVWINPR_NATIVE=${KRV_NATIVE}")
endif()
