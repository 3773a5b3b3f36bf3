#include "platform/linux/linux_image_files.h"

#include "runtime/error.h"

namespace platform_linux {

platform::Picture LinuxImageFiles::decode(std::string_view) { throw runtime::Error(runtime::errInvalidPicture); }

std::string LinuxImageFiles::encode(const platform::Picture&, std::string_view) {
    throw runtime::Error(runtime::errInvalidPicture);
}

}  // namespace platform_linux
