#include "platform/linux/linux_image_files.h"

#include "pictures/within_memory.h"
#include "platform/linux/images/image_codecs.h"
#include "platform/linux/module.h"
#include "runtime/error.h"

namespace platform_linux {

platform::Picture LinuxImageFiles::decode(std::string_view content) {
    return pictures::withinMemory([&, this] { return codecs().decode(content); });
}

std::string LinuxImageFiles::encode(const platform::Picture& picture, std::string_view original) {
    return pictures::withinMemory([&, this] { return codecs().encode(picture, original); });
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
