krv_unit_test(spool-tests LIBS krv-linux-spool krv-linux-cups SOURCES unit/spool_test.cpp)
krv_unit_test(cups-tests LIBS krv-linux-cups SOURCES unit/cups_attributes_test.cpp)

# Drives the adapter's printers, with its modules, for the tests that need a print server.
add_executable(krv-printers e2e/cups/printers.cpp)
target_link_libraries(krv-printers PRIVATE krv-linux-spool)
set_target_properties(krv-printers PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
add_dependencies(krv-printers krvwinpr-cups krvwinpr-pdf)
