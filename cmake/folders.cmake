# One library for each folder of src, with the folders that it may include from. What every folder states here is one table,
# and check_includes.cmake compares it with every include and with docs/ARCHITECTURE.md whenever the program is built.

set(KRV_SOURCES ${CMAKE_CURRENT_LIST_DIR}/../src)
cmake_path(NORMAL_PATH KRV_SOURCES)

# krv_library_name(folder result): "krv-linux-pdf" for platform/linux/pdf.
function(krv_library_name folder result)
    string(REGEX REPLACE "^platform/" "" name ${folder})
    string(REPLACE "/" "-" name ${name})
    set(${result} krv-${name} PARENT_SCOPE)
endfunction()

# krv_uses(target [USES folder...] [LOADS folder...]): what the sources of the calling folder may include. The libraries of
# USES are linked; LOADS are modules, of which only the interface is included.
function(krv_uses target)
    cmake_parse_arguments(ARG "" "" "USES;LOADS" ${ARGN})
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${KRV_SOURCES} OUTPUT_VARIABLE folder)
    set_property(GLOBAL APPEND PROPERTY KRV_FOLDERS ${folder})
    set_property(GLOBAL PROPERTY KRV_USED_BY_${folder} ${ARG_USES} ${ARG_LOADS})
    get_target_property(type ${target} TYPE)
    if(type STREQUAL INTERFACE_LIBRARY)
        set(reach INTERFACE)
    else()
        set(reach PUBLIC)
    endif()
    foreach(used IN LISTS ARG_USES)
        krv_library_name(${used} library)
        target_link_libraries(${target} ${reach} ${library})
    endforeach()
endfunction()

# krv_library([USES folder...] [LOADS folder...] [SOURCES source...]): the static library of the calling folder; of headers
# alone where it has no sources. Its name is left in KRV_LIBRARY.
function(krv_library)
    cmake_parse_arguments(ARG "" "" "USES;LOADS;SOURCES" ${ARGN})
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${KRV_SOURCES} OUTPUT_VARIABLE folder)
    krv_library_name(${folder} library)
    if(ARG_SOURCES)
        add_library(${library} STATIC ${ARG_SOURCES})
    else()
        add_library(${library} INTERFACE)
    endif()
    krv_uses(${library} USES ${ARG_USES} LOADS ${ARG_LOADS})
    set(KRV_LIBRARY ${library} PARENT_SCOPE)
endfunction()

# To be called behind the last folder: writes the table, and lets every build check the includes that changed.
function(krv_check_includes)
    get_property(folders GLOBAL PROPERTY KRV_FOLDERS)
    set(table)
    set(sources)
    foreach(folder IN LISTS folders)
        get_property(used GLOBAL PROPERTY KRV_USED_BY_${folder})
        list(JOIN used " " used)
        string(STRIP "${folder}: ${used}" line)
        string(APPEND table "${line}\n")
        file(GLOB found CONFIGURE_DEPENDS ${KRV_SOURCES}/${folder}/*.cpp ${KRV_SOURCES}/${folder}/*.h)
        list(APPEND sources ${found})
    endforeach()
    set(file ${CMAKE_BINARY_DIR}/folders.txt)
    file(CONFIGURE OUTPUT ${file} CONTENT "${table}")
    set(check ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/check_includes.cmake)
    set(document ${KRV_SOURCES}/../docs/ARCHITECTURE.md)
    add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/includes-checked
        COMMAND ${CMAKE_COMMAND} -DSOURCES=${KRV_SOURCES} -DTABLE=${file} -DDOCUMENT=${document} -P ${check}
        COMMAND ${CMAKE_COMMAND} -E touch ${CMAKE_BINARY_DIR}/includes-checked
        DEPENDS ${sources} ${file} ${check} ${document}
        COMMENT "Checking every include against the table of folders" VERBATIM)
    add_custom_target(krv-includes ALL DEPENDS ${CMAKE_BINARY_DIR}/includes-checked)
endfunction()
