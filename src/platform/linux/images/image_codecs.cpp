#include "platform/linux/images/image_codecs.h"

#include "platform/foreign/foreign_picture.h"
#include "platform/linux/images/codecs.h"

namespace platform_linux::images {

namespace {

platform::Picture decodeKind(const platform::ForeignPicture& file, std::string_view content) {
    switch (file.kind) {
        case platform::ForeignKind::png:
            return decodePng(file, content);
        case platform::ForeignKind::jpeg:
            return decodeJpeg(file, content);
        case platform::ForeignKind::gif:
            return decodeGif(file, content);
        case platform::ForeignKind::tiff:
            break;
    }
    return decodeTiff(file, content);
}

}  // namespace

platform::Picture ImageCodecs::decode(std::string_view content) {
    const platform::ForeignPicture file = platform::inspectForeignPicture(content);
    platform::Picture picture = decodeKind(file, content);
    picture.dpiX = file.dpiX;
    picture.dpiY = file.dpiY;
    return picture;
}

std::string ImageCodecs::encode(const platform::Picture& picture, std::string_view original) {
    const platform::ForeignPicture file = platform::inspectForeignPicture(original);
    switch (file.kind) {
        case platform::ForeignKind::png:
            return encodePng(picture);
        case platform::ForeignKind::jpeg:
            return encodeJpeg(picture, original);
        case platform::ForeignKind::gif:
            return encodeGif(picture);
        case platform::ForeignKind::tiff:
            break;
    }
    return encodeTiff(picture, file);
}

}  // namespace platform_linux::images
