#include "platform/windows/windows_image_files.h"

#include "pictures/within_memory.h"
#include "platform/windows/wic_decoder.h"
#include "platform/windows/wic_encoder.h"

namespace platform_windows {

using pictures::ForeignPicture;
using platform::Picture;

WindowsImageFiles::WindowsImageFiles() = default;
WindowsImageFiles::~WindowsImageFiles() = default;

Picture WindowsImageFiles::decode(std::string_view content) {
    return pictures::withinMemory([&, this] {
        const ForeignPicture file = pictures::inspectForeignPicture(content);
        Picture picture = decodeByWic(factory(), file, content);
        picture.dpiX = file.dpiX;
        picture.dpiY = file.dpiY;
        if (file.kind == pictures::ForeignKind::jpeg && !file.inks) {
            picture.jpeg = content;
        }
        return picture;
    });
}

std::string WindowsImageFiles::encode(const Picture& picture, std::string_view original) {
    return pictures::withinMemory(
        [&, this] { return encodeByWic(factory(), picture, pictures::inspectForeignPicture(original)); });
}

const WicFactory& WindowsImageFiles::factory() {
    if (!factory_) {
        factory_ = std::make_unique<WicFactory>();
    }
    return *factory_;
}

}  // namespace platform_windows
