# GoogleTest for the cross builds, from the sources of Debian's package googletest; its programs run under Wine, in a
# prefix of the build folder that the first of them makes.
set(KRV_GOOGLETEST /usr/src/googletest/googletest CACHE PATH "Folder of GoogleTest's sources")

add_library(gtest_main STATIC EXCLUDE_FROM_ALL
    ${KRV_GOOGLETEST}/src/gtest-all.cc ${KRV_GOOGLETEST}/src/gtest_main.cc)
set_target_properties(gtest_main PROPERTIES COMPILE_OPTIONS "")
target_include_directories(gtest_main PRIVATE ${KRV_GOOGLETEST})
target_include_directories(gtest_main SYSTEM PUBLIC ${KRV_GOOGLETEST}/include)
# The compiler's 32-bit variant has no threads of the language.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_options(gtest_main PUBLIC
        -DGTEST_HAS_NOTIFICATION_=1 -include ${CMAKE_CURRENT_LIST_DIR}/support/googletest_without_threads.h)
endif()
add_library(GTest::gtest_main ALIAS gtest_main)

# Without a 32-bit Wine the tests of a 32-bit build are skipped, and need no prefix.
if(CMAKE_SIZEOF_VOID_P EQUAL 8 OR EXISTS /usr/lib/wine/wine)
    set(KRV_WINE_FIXTURE FIXTURES_REQUIRED wine)
    add_test(NAME wine.prefix COMMAND ${CMAKE_SOURCE_DIR}/tests/wine-prefix.sh ${CMAKE_BINARY_DIR}/wineprefix)
    add_test(NAME wine.end COMMAND ${CMAKE_SOURCE_DIR}/tests/wine-prefix.sh --end ${CMAKE_BINARY_DIR}/wineprefix)
    set_tests_properties(wine.prefix PROPERTIES FIXTURES_SETUP wine TIMEOUT 300)
    set_tests_properties(wine.end PROPERTIES FIXTURES_CLEANUP wine TIMEOUT 60)
endif()

# krv_wine_test(program): the program is a test, alone in the prefix while it runs; skipped (exit code 77) where Wine
# cannot run it.
function(krv_wine_test program)
    add_test(NAME ${program} COMMAND ${program})
    set_tests_properties(${program} PROPERTIES
        ${KRV_WINE_FIXTURE} RUN_SERIAL ON SKIP_RETURN_CODE 77 TIMEOUT 120)
endfunction()
