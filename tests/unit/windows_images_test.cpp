// The port ImageFiles on Windows; what it has to do is in image_files_test.cpp.
#include "platform/windows/wic_factory.h"
#include "platform/windows/windows_image_files.h"
#include "support/image_files_test.h"
#include "windows_support.h"

namespace support {

std::unique_ptr<platform::ImageFiles> makeImageFiles() {
    return std::make_unique<platform_windows::WindowsImageFiles>();
}

// Wine 8 has no TIFF of two bits, with JPEG or in planes; it writes TIFF without compression, GIF with 256 colours and
// JPEG in a quality of its own.
bool canDecode(std::string_view name) {
    return !windows_support::onWine() || (name != "grey2.tif" && name != "jpeg.tif" && name != "planes.tif");
}
// The system has no grey with opacity, and writes TIFF files of one picture, upright.
bool canInvert(std::string_view name) {
    return !name.starts_with("inks") && !name.starts_with("grey-alpha") && name != "grey-transparent.png" &&
           name != "pages.tif" && name != "turned-colors.tif";
}
bool canKeepAll() { return !windows_support::onWine(); }

}  // namespace support

namespace {

// Where the system has no codecs no class is registered, as none is under this number.
TEST(WindowsImageFiles, SayWhatIsMissingWhereTheSystemHasNoCodecs) {
    std::string detail;
    EXPECT_EQ(support::errorOf([] { platform_windows::WicFactory{GUID_ContainerFormatPng}; }, &detail),
              runtime::errInvalidPicture);
    EXPECT_NE(detail.find("fehlt die Windows Imaging Component"), std::string::npos) << detail;
    EXPECT_NE(detail.find("als BMP speichern"), std::string::npos) << detail;
}

}  // namespace
