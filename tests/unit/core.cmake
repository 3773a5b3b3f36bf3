krv_unit_test(core-tests LIBS krv-startup krv-preview krv-joblist krv-crash SOURCES
    unit/core/barcode_test.cpp
    unit/core/crash_report_test.cpp
    unit/core/druckerauswahl_test.cpp
    unit/core/errorreport_test.cpp
    unit/core/graphics_test.cpp
    unit/core/hplaser_test.cpp
    unit/core/joblist_test.cpp
    unit/core/page_interpreter_test.cpp
    unit/core/page_recording_test.cpp
    unit/core/preview_test.cpp
    unit/core/printer_test.cpp
    unit/core/report_test.cpp
    unit/core/runtime_test.cpp
    unit/core/settings_test.cpp
    unit/core/startup_test.cpp
    unit/core/vorschau_test.cpp
)
