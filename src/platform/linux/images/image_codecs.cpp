#include "platform/linux/images/image_codecs.h"

#include <optional>
#include <utility>

#include "pictures/foreign_picture.h"
#include "pictures/inversion.h"
#include "pictures/picture_file.h"
#include "pictures/stored_pixels.h"
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

// In a damaged file the pixels may lie over a table or a tag.
void requireSamePixels(const pictures::ForeignPicture& file, std::string_view content, std::string_view changed) {
    const auto pixelsOf = [&](std::string_view bytes) { return decodeTiff(file, bytes).pixels; };
    if (file.kind == pictures::ForeignKind::tiff && pixelsOf(content) != pixelsOf(changed)) {
        pictures::refuseDamaged(file.kind);
    }
}

}  // namespace

platform::PictureInfo ImageCodecs::inspect(std::string_view content) {
    return pictures::inspectForeignPicture(content).info();
}

platform::Picture ImageCodecs::decode(std::string_view content) {
    const pictures::ForeignPicture file = pictures::inspectForeignPicture(content);
    return pictures::completed(decodeKind(file, content), file);
}

std::string ImageCodecs::inverted(std::string_view content) {
    const pictures::ForeignPicture file = pictures::inspectForeignPicture(content);
    if (std::optional<std::string> result = pictures::withInvertedTables(content, file)) {
        requireSamePixels(file, content, *result);
        return std::move(*result);
    }
    switch (file.kind) {
        case pictures::ForeignKind::png:
            return pictures::withInvertedPngPixels(content, encodeInvertedPng(content));
        case pictures::ForeignKind::jpeg: {
            platform::Picture picture = decode(content);
            pictures::invert(picture);
            return pictures::withInvertedJpegScans(content, encodeJpeg(picture, content));
        }
        case pictures::ForeignKind::gif:
        case pictures::ForeignKind::tiff:
            break;
    }
    return invertTiff(content);
}

}  // namespace platform_linux::images
