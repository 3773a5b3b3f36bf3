// Picture files of other programs: PNG, JPEG, GIF, TIFF.
#include "pictures/foreign_picture.h"

#include "platform/linux/images/image_codecs.h"
#include "round_trip.h"
#include "runtime/error.h"

namespace {

platform::Picture decode(std::string_view content) { return platform_linux::images::ImageCodecs().decode(content); }

std::string encode(const platform::Picture& picture, std::string_view original) {
    return platform_linux::images::ImageCodecs().encode(picture, original);
}

// JPEG, and TIFF with JPEG in it, old or new.
bool losesColors(const pictures::ForeignPicture& file) {
    return file.kind == pictures::ForeignKind::jpeg || file.compression == 6 || file.compression == 7;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    try {
        const pictures::ForeignPicture file = pictures::inspectForeignPicture(content);
        if (file.width * file.height > fuzz::mostPixels) {
            return 0;
        }
        if (losesColors(file)) {
            encode(decode(content), content);
            return 0;
        }
    } catch (const runtime::Error&) {
        return 0;
    }
    fuzz::checkRoundTrip({decode, encode}, content);
    return 0;
}
