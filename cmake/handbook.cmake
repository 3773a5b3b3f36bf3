# The target "handbook": the handbook of the built program in the build's folder "handbuch".
add_custom_target(handbook
    COMMAND /usr/bin/python3 -B ${CMAKE_SOURCE_DIR}/docs/handbuch/build.py --program ${CMAKE_BINARY_DIR} --out ${CMAKE_BINARY_DIR}/handbuch
    DEPENDS KRVWinPr KRVWinPrBote krvwinpr-cups krvwinpr-images krvwinpr-notification krvwinpr-pdf krvwinpr-qt krvwinpr-screen krvwinpr-xml
    USES_TERMINAL VERBATIM)
