#include "platform/windows/windows_image_files.h"

#include <optional>
#include <utility>

#include "pictures/inversion.h"
#include "pictures/stored_pixels.h"
#include "pictures/within_memory.h"
#include "platform/windows/wic_decoder.h"
#include "platform/windows/wic_inverter.h"

namespace platform_windows {

using pictures::ForeignPicture;
using platform::Picture;

WindowsImageFiles::WindowsImageFiles() = default;
WindowsImageFiles::~WindowsImageFiles() = default;

platform::PictureInfo WindowsImageFiles::inspect(std::string_view content) {
    return pictures::withinMemory([&, this] {
        const platform::PictureInfo info = pictures::inspectForeignPicture(content).info();
        // Where there are no codecs a job learns it with the faults of its other pictures, and not on a page.
        factory();
        return info;
    });
}

Picture WindowsImageFiles::decode(std::string_view content) {
    return pictures::withinMemory([&, this] {
        const ForeignPicture file = pictures::inspectForeignPicture(content);
        Picture picture = pictures::completed(decodeByWic(factory(), file, content), file);
        if (file.kind == pictures::ForeignKind::jpeg && !file.inks) {
            picture.jpeg = content;
        }
        return picture;
    });
}

std::string WindowsImageFiles::inverted(std::string_view content) {
    return pictures::withinMemory([&, this] {
        const ForeignPicture file = pictures::inspectForeignPicture(content);
        std::optional<std::string> result = pictures::withInvertedTables(content, file);
        return result ? std::move(*result) : invertByWic(factory(), file, content);
    });
}

const WicFactory& WindowsImageFiles::factory() {
    if (!factory_) {
        factory_ = std::make_unique<WicFactory>();
    }
    return *factory_;
}

}  // namespace platform_windows
