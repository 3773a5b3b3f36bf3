krv_unit_test(adapter-tests LIBS krv-linux krv-linux-messenger krv-startup-arguments krv-settings krv-printer krv-drawing SOURCES
    unit/linux_dialogs_test.cpp
    unit/linux_locale_test.cpp
    unit/linux_messenger_test.cpp
    unit/linux_settings_test.cpp
    unit/linux_system_test.cpp
    unit/ports_test.cpp
    unit/xml_files_test.cpp
)
# Modules are looked for beside the program.
set_target_properties(adapter-tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
add_dependencies(adapter-tests krvwinpr-qt krvwinpr-screen krvwinpr-xml)

find_package(Qt6 REQUIRED COMPONENTS Test)
krv_unit_test(table_view_test LIBS krv-linux-qt Qt6::Test SOURCES unit/table_view_test.cpp)

include(unit/pictures.cmake)
krv_unit_test(images-tests LIBS krv-linux-images krv-linux SOURCES
    unit/image_files_test.cpp
    unit/linux_images_test.cpp
)
krv_pictures(images-tests)
set_target_properties(images-tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
add_dependencies(images-tests krvwinpr-images)
