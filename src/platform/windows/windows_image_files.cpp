#include "platform/windows/windows_image_files.h"

#include "runtime/error.h"

namespace platform_windows {

platform::Picture WindowsImageFiles::decode(std::string_view) { throw runtime::Error(runtime::errInvalidPicture); }

std::string WindowsImageFiles::encode(const platform::Picture&, std::string_view) {
    throw runtime::Error(runtime::errInvalidPicture);
}

}  // namespace platform_windows
