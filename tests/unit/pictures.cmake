# Picture files of other programs for the tests, made when the tests are built; krv_pictures(target) lets a test read them.
set(KRV_PICTURES ${CMAKE_BINARY_DIR}/pictures)
add_custom_command(OUTPUT ${KRV_PICTURES}/done
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/unit/support/make_pictures.sh ${KRV_PICTURES}
    COMMAND ${CMAKE_COMMAND} -E touch ${KRV_PICTURES}/done
    DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/unit/support/make_pictures.sh)
add_custom_target(krv-test-pictures DEPENDS ${KRV_PICTURES}/done)

function(krv_pictures target)
    target_compile_definitions(${target} PRIVATE KRV_PICTURES="${KRV_PICTURES}")
    add_dependencies(${target} krv-test-pictures)
endfunction()
