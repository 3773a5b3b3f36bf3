#include "platform/linux/linux_image_files.h"

#include "pictures/foreign_picture.h"
#include "pictures/within_memory.h"
#include "platform/linux/images/image_codecs.h"
#include "platform/linux/module.h"
#include "runtime/error.h"

namespace platform_linux {

platform::PictureInfo LinuxImageFiles::inspect(std::string_view content) {
    return pictures::inspectForeignPicture(content).info();
}

platform::Picture LinuxImageFiles::decode(std::string_view content) {
    return pictures::withinMemory([&, this] { return codecs().decode(content); });
}

std::string LinuxImageFiles::inverted(std::string_view content) {
    return pictures::withinMemory([&, this] { return codecs().inverted(content); });
}

platform::ImageFiles& LinuxImageFiles::codecs() {
    if (!codecs_) {
        try {
            codecs_ = reinterpret_cast<images::ImageFilesFactory>(moduleEntry("images"))();
        } catch (const runtime::Error& error) {
            throw runtime::Error(runtime::errInvalidPicture, error.detail());
        }
    }
    return *codecs_;
}

}  // namespace platform_linux
