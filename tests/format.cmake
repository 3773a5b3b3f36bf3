# Every source has the project's format.
find_program(CLANG_FORMAT clang-format)
find_package(Git)
if(CLANG_FORMAT AND GIT_FOUND)
    add_test(NAME format
        COMMAND sh -c "'${GIT_EXECUTABLE}' ls-files -z '*.cpp' '*.h' | xargs -0 '${CLANG_FORMAT}' --dry-run -Werror"
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
endif()
