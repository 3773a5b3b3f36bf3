// The port ImageFiles on Windows; what it has to do is in image_files_test.cpp.
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
bool canKeepAll() { return !windows_support::onWine(); }

}  // namespace support
