// Picture files of other programs: PNG, JPEG, GIF, TIFF.
#include "pictures/foreign_picture.h"

#include "platform/linux/images/image_codecs.h"
#include "round_trip.h"

namespace {

// What is wrong with a file that can be decoded: it has to be what was said of it, and inverted twice itself again.
std::string_view faultOf(std::string_view content, const platform::PictureInfo& info, bool exact) {
    platform_linux::images::ImageCodecs files;
    const platform::Picture picture = files.decode(content);
    if (picture.width != info.width || picture.height != info.height || picture.bitsPerPixel != info.bitsPerPixel) {
        return "the picture is not what its file said";
    }
    std::string once;
    try {
        once = files.inverted(content);
    } catch (const runtime::Error&) {
        return "";
    }
    const platform::Picture again = files.decode(files.inverted(once));
    return exact && support::colorsOf(again) != support::colorsOf(picture)
               ? "inverting twice does not give the first colours"
               : "";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    std::string_view fault;
    try {
        const pictures::ForeignPicture file = pictures::inspectForeignPicture(content);
        // JPEG, and TIFF with JPEG in it, old or new.
        const bool losesColors =
            file.kind == pictures::ForeignKind::jpeg || file.compression == 6 || file.compression == 7;
        if (file.width * file.height <= fuzz::mostPixels) {
            fault = faultOf(content, file.info(), !losesColors);
        }
    } catch (const runtime::Error&) {
        return 0;
    }
    fuzz::end(fault);
    return 0;
}
