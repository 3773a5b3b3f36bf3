# The program from end to end: each file of tests in Python is one test of ctest. They read PDFs back with poppler-utils
# and qpdf; queues are those of a private cupsd.
find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

foreach(name pdf archive log usage faults queues print_jobs desktop selection preview joblist graphics barcodes everywhere crash messenger dosbox)
    add_test(NAME e2e.${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_${name}.py)
    set_tests_properties(e2e.${name} PROPERTIES
        TIMEOUT $<IF:$<BOOL:${KRV_SANITIZE}>,400,200>
        ENVIRONMENT "KRVWINPR=$<TARGET_FILE:KRVWinPr>;KRVWINPR_SLOW=$<BOOL:${KRV_SANITIZE}>;KRVWINPR_DEVELOPED=$<BOOL:${KRV_DEVELOPMENT}>")
endforeach()
set_property(TEST e2e.queues e2e.print_jobs e2e.everywhere APPEND PROPERTY ENVIRONMENT "KRVWINPR_PRINTERS=$<TARGET_FILE:krv-printers>")
set_tests_properties(e2e.everywhere PROPERTIES SKIP_RETURN_CODE 77)

# How the files that users get are hardened; the builds with the sanitizers are not.
if(NOT KRV_SANITIZE)
    set(files "$<TARGET_FILE:KRVWinPr>:$<TARGET_FILE:KRVWinPrBote>")
    foreach(module cups images notification pdf qt screen xml)
        string(APPEND files ":$<TARGET_FILE:krvwinpr-${module}>")
    endforeach()
    add_test(NAME e2e.hardening WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_hardening.py)
    set_tests_properties(e2e.hardening PROPERTIES ENVIRONMENT "KRVWINPR_FILES=${files}")
endif()

# What users get of them on Debian. It makes a Debian of its own.
if(NOT KRV_SANITIZE)
    add_test(NAME e2e.debian_packages WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_debian_packages.py)
    set_tests_properties(e2e.debian_packages PROPERTIES TIMEOUT 600
        ENVIRONMENT "KRVWINPR=$<TARGET_FILE:KRVWinPr>;KRVWINPR_DEVELOPED=$<BOOL:${KRV_DEVELOPMENT}>")
endif()

# What lets the program's memory end, for the tests of faults.
add_library(krv-no-memory MODULE e2e/faults/no_memory.cpp)
set_target_properties(krv-no-memory PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
target_link_libraries(krv-no-memory PRIVATE ${CMAKE_DL_LIBS})
set_property(TEST e2e.faults APPEND PROPERTY ENVIRONMENT "KRVWINPR_NO_MEMORY=$<TARGET_FILE:krv-no-memory>")

# The desktop's notification service for the tests of messages.
add_executable(krv-notifications e2e/desktop/notifications.cpp)
target_link_libraries(krv-notifications PRIVATE PkgConfig::DBUS)
set_target_properties(krv-notifications PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
set_property(TEST e2e.desktop e2e.selection e2e.preview e2e.joblist e2e.crash e2e.messenger APPEND PROPERTY ENVIRONMENT "KRVWINPR_NOTIFICATIONS=$<TARGET_FILE:krv-notifications>")

# What plays the host in an emulator.
set(host ${CMAKE_BINARY_DIR}/dos/HOST.COM)
set(source ${CMAKE_CURRENT_SOURCE_DIR}/e2e/dos/host.asm)
add_custom_command(OUTPUT ${host} DEPENDS ${source} VERBATIM
    COMMAND ${KRV_NASM} -f bin -w+all -w+error -o ${host} ${source})
add_custom_target(krv-dos-host ALL DEPENDS ${host})

# The handbook's examples are those of the other tests in one way or another, so the sanitizers would find nothing new.
if(NOT KRV_SANITIZE)
    add_test(NAME e2e.handbook WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B tests/e2e/test_handbook.py)
    set_tests_properties(e2e.handbook PROPERTIES TIMEOUT 300 ENVIRONMENT "KRVWINPR=$<TARGET_FILE:KRVWinPr>")
endif()

# Symbols for the readers of the barcode tests.
add_executable(barcode_sheet e2e/barcode_sheet.cpp)
target_include_directories(barcode_sheet PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(barcode_sheet PRIVATE krv-barcode krv-linux-pdf)
set_property(TEST e2e.barcodes APPEND PROPERTY ENVIRONMENT "KRVWINPR_SHEET=$<TARGET_FILE:barcode_sheet>")

# The comparison of two builds, with this one on both sides, so that it works when it is wanted.
if(CMAKE_BINARY_DIR STREQUAL "${CMAKE_SOURCE_DIR}/build/linux")
    add_test(NAME e2e.compare WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
             COMMAND ${Python3_EXECUTABLE} -B scripts/compare_output.py . . --files 5)
    set_tests_properties(e2e.compare PROPERTIES TIMEOUT 300)
endif()
