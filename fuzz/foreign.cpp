// Picture files of other programs: PNG, JPEG, GIF, TIFF.
#include "pictures/foreign_picture.h"

#include "platform/linux/images/image_codecs.h"
#include "round_trip.h"

namespace {

platform::Picture decode(std::string_view content) { return platform_linux::images::ImageCodecs().decode(content); }

std::string encode(const platform::Picture& picture, std::string_view original) {
    return platform_linux::images::ImageCodecs().encode(picture, original);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return fuzz::check({decode, encode}, data, size, [](std::string_view content) {
        const pictures::ForeignPicture file = pictures::inspectForeignPicture(content);
        // JPEG, and TIFF with JPEG in it, old or new.
        const bool losesColors =
            file.kind == pictures::ForeignKind::jpeg || file.compression == 6 || file.compression == 7;
        return fuzz::Header{file.width * file.height, losesColors ? fuzz::Holds::none : fuzz::Holds::all};
    });
}
