# The encoders; libzint, an independent encoder, is the tests' alone.
find_library(KRV_ZINT zint REQUIRED)
krv_unit_test(barcode-tests LIBS krv-barcode ${KRV_ZINT} SOURCES unit/barcode_symbols_test.cpp)
