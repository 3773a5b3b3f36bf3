# The PDF module. Its tests read the documents back with poppler-utils and qpdf.
krv_unit_test(pdf_document_test LIBS krv-linux-pdf SOURCES unit/pdf_document_test.cpp)
krv_unit_test(pdf_font_test LIBS krv-linux-pdf SOURCES unit/pdf_font_test.cpp)
krv_unit_test(pdf_picture_test LIBS krv-linux-pdf SOURCES unit/pdf_picture_test.cpp)
krv_unit_test(pdf_content_test LIBS krv-linux-pdf SOURCES unit/pdf_content_test.cpp)
krv_unit_test(sheet_surface_test LIBS krv-linux-qt krv-linux-pdf SOURCES unit/sheet_surface_test.cpp)

add_executable(pdf_pages ${CMAKE_SOURCE_DIR}/bench/pdf_pages.cpp)
target_include_directories(pdf_pages PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(pdf_pages PRIVATE krv-linux-pdf)
