# Every source has the project's format, and what a change touches passes clang-tidy.
find_program(CLANG_FORMAT clang-format)
find_package(Git)
if(CLANG_FORMAT AND GIT_FOUND)
    add_test(NAME format
        COMMAND sh -c "'${GIT_EXECUTABLE}' -c safe.directory='*' ls-files -z '*.cpp' '*.h' | xargs -0 '${CLANG_FORMAT}' --dry-run -Werror"
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
endif()

# The longest of all tests after a large change; so it ends after some minutes and says what it has not come to. Once is
# enough: it looks at the sources of both systems.
if(NOT CMAKE_CROSSCOMPILING AND NOT KRV_SANITIZE)
    add_test(NAME lint COMMAND scripts/lint.sh --touched --seconds 240 WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
    set_tests_properties(lint PROPERTIES LABELS lint TIMEOUT 480 SKIP_RETURN_CODE 77)
endif()
