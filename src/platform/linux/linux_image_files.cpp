#include "platform/linux/linux_image_files.h"

#include <new>
#include <stdexcept>

#include "platform/linux/images/image_codecs.h"
#include "platform/linux/module.h"
#include "runtime/error.h"

namespace platform_linux {

namespace {

template <typename Work>
auto withinMemory(const Work& work) {
    constexpr const char* detail = "Das Bild ist größer als der freie Speicher. Bitte das Bild verkleinern.";
    try {
        return work();
    } catch (const std::bad_alloc&) {
        throw runtime::Error(runtime::errOutOfMemory, detail);
    } catch (const std::length_error&) {
        throw runtime::Error(runtime::errOutOfMemory, detail);
    }
}

}  // namespace

platform::Picture LinuxImageFiles::decode(std::string_view content) {
    return withinMemory([&, this] { return codecs().decode(content); });
}

std::string LinuxImageFiles::encode(const platform::Picture& picture, std::string_view original) {
    return withinMemory([&, this] { return codecs().encode(picture, original); });
}

platform::ImageFiles& LinuxImageFiles::codecs() {
    if (!codecs_) {
        try {
            codecs_ = reinterpret_cast<ImageFilesFactory>(moduleEntry("images"))();
        } catch (const runtime::Error& error) {
            throw runtime::Error(runtime::errInvalidPicture, error.detail());
        }
    }
    return *codecs_;
}

}  // namespace platform_linux
