# What the procedure traces of error reports are read with: the names of a file's own routines, in the file itself.
find_program(KRV_PYTHON python3 REQUIRED)

# krv_names_routines(target): links a program or module with a table of the names of its routines, "krvwinpr_symbols".
function(krv_names_routines target)
    set(script ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/link_with_symbols.py)
    set(launcher ${KRV_PYTHON} ${script} ${CMAKE_NM} ${CMAKE_OBJCOPY})
    if(KRV_DEBUG_FILES)
        file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/debug)
        list(APPEND launcher ${CMAKE_BINARY_DIR}/debug/${target}.debug)
        # Which libraries' parts are in the file (packaging/contents.py).
        target_link_options(${target} PRIVATE -Wl,-Map=${CMAKE_BINARY_DIR}/debug/${target}.map)
    endif()
    list(APPEND launcher --)
    set_target_properties(${target} PROPERTIES
        CXX_LINKER_LAUNCHER "${launcher}"
        LINK_DEPENDS ${script})
endfunction()
