#include "platform/linux/images/image_codecs.h"

#include "pictures/foreign_picture.h"
#include "platform/linux/images/codecs.h"

namespace platform_linux::images {

namespace {

platform::Picture decodeKind(const pictures::ForeignPicture& file, std::string_view content) {
    switch (file.kind) {
        case pictures::ForeignKind::png:
            return decodePng(file, content);
        case pictures::ForeignKind::jpeg:
            return decodeJpeg(file, content);
        case pictures::ForeignKind::gif:
            return decodeGif(file, content);
        case pictures::ForeignKind::tiff:
            break;
    }
    return decodeTiff(file, content);
}

}  // namespace

platform::Picture ImageCodecs::decode(std::string_view content) {
    const pictures::ForeignPicture file = pictures::inspectForeignPicture(content);
    platform::Picture picture = decodeKind(file, content);
    picture.dpiX = file.dpiX;
    picture.dpiY = file.dpiY;
    return picture;
}

std::string ImageCodecs::encode(const platform::Picture& picture, std::string_view original) {
    const pictures::ForeignPicture file = pictures::inspectForeignPicture(original);
    switch (file.kind) {
        case pictures::ForeignKind::png:
            return encodePng(picture);
        case pictures::ForeignKind::jpeg:
            return encodeJpeg(picture, original);
        case pictures::ForeignKind::gif:
            return encodeGif(picture);
        case pictures::ForeignKind::tiff:
            break;
    }
    return encodeTiff(picture, file);
}

}  // namespace platform_linux::images
