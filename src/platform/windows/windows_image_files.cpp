#include "platform/windows/windows_image_files.h"

#include <cstdint>
#include <new>
#include <stdexcept>

#include "platform/windows/wic_decoder.h"
#include "platform/windows/wic_encoder.h"
#include "runtime/error.h"

namespace platform_windows {

namespace {

using platform::ForeignPicture;
using platform::Picture;

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

WindowsImageFiles::WindowsImageFiles() = default;
WindowsImageFiles::~WindowsImageFiles() = default;

Picture WindowsImageFiles::decode(std::string_view content) {
    return withinMemory([&, this] {
        const ForeignPicture file = platform::inspectForeignPicture(content);
        Picture picture = decodeByWic(factory(), file, content);
        picture.dpiX = file.dpiX;
        picture.dpiY = file.dpiY;
        if (file.kind == platform::ForeignKind::jpeg && !file.inks) {
            picture.jpeg = content;
        }
        return picture;
    });
}

std::string WindowsImageFiles::encode(const Picture& picture, std::string_view original) {
    return withinMemory(
        [&, this] { return encodeByWic(factory(), picture, platform::inspectForeignPicture(original)); });
}

const WicFactory& WindowsImageFiles::factory() {
    if (!factory_) {
        factory_ = std::make_unique<WicFactory>();
    }
    return *factory_;
}

}  // namespace platform_windows
