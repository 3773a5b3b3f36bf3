# The tests have a program's manifest, on which it depends what they see of the screen.
krv_unit_test(windows-tests LIBS krv-windows-messenger krv-windows-crash krv-windows krv-windows-forms krv-settings krv-printer krv-drawing krv-windows-messenger-resources SOURCES
    unit/image_files_test.cpp
    unit/ports_test.cpp
    unit/windows_crash_test.cpp
    unit/windows_dialogs_test.cpp
    unit/windows_files_test.cpp
    unit/windows_forms_test.cpp
    unit/windows_images_test.cpp
    unit/windows_messenger_test.cpp
    unit/windows_settings_test.cpp
    unit/windows_system_test.cpp
    unit/xml_files_test.cpp
)
include(unit/pictures.cmake)
krv_pictures(windows-tests)
krv_unit_test(windows-print-tests LIBS krv-windows-print SOURCES
    unit/windows_document_test.cpp
    unit/windows_jobs_test.cpp
    unit/windows_preview_test.cpp
    unit/windows_print_test.cpp
    unit/windows_spooler_test.cpp
)

# Starts the program for the tests from end to end and presses the buttons of its message boxes.
add_executable(krv-answer e2e/windows/answer_boxes.cpp)
target_link_libraries(krv-answer PRIVATE krv-windows)
set_target_properties(krv-answer PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
