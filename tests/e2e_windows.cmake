# The Windows program from end to end, under Wine, beside the native one, which is built before.
find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)
set(KRV_NATIVE ${CMAKE_SOURCE_DIR}/build/linux/KRVWinPr CACHE FILEPATH "The native program to compare with")

foreach(program KRVWinPr KRVWinPrBote)
    add_test(NAME e2e.hardening.${program} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_hardening.py)
    set_tests_properties(e2e.hardening.${program} PROPERTIES ENVIRONMENT "KRVWINPR_FILES=$<TARGET_FILE:${program}>")
endforeach()

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    foreach(name windows windows_crash windows_selection windows_preview windows_joblist windows_messenger)
        add_test(NAME e2e.${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
                 COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_${name}.py)
        set_tests_properties(e2e.${name} PROPERTIES TIMEOUT 400 FIXTURES_REQUIRED wine RUN_SERIAL ON
            ENVIRONMENT "KRVWINPR=${KRV_NATIVE};KRVWINPR_WINDOWS=$<TARGET_FILE:KRVWinPr>;KRVWINPR_ANSWER=$<TARGET_FILE:krv-answer>;KRVWINPR_PREFIX=${CMAKE_BINARY_DIR}/wineprefix")
    endforeach()
    add_test(NAME e2e.windows_setup WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_windows_setup.py)
    set_tests_properties(e2e.windows_setup PROPERTIES TIMEOUT 600 RUN_SERIAL ON
        ENVIRONMENT "KRVWINPR=${KRV_NATIVE};KRVWINPR_WINDOWS=$<TARGET_FILE:KRVWinPr>;KRVWINPR_WINDOWS32=${CMAKE_SOURCE_DIR}/build/windows32;KRVWINPR_ANSWER=$<TARGET_FILE:krv-answer>;KRVWINPR_PREFIX=${CMAKE_BINARY_DIR}/setupprefix")
endif()
