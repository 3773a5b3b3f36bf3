#include "pictures/foreign_picture.h"

#include <string>

#include "pictures/foreign_kinds.h"
#include "pictures/picture_error.h"
#include "pictures/picture_size.h"
#include "runtime/error.h"

namespace pictures {

namespace {

using namespace std::string_view_literals;

ForeignPicture inspect(std::string_view content) {
    if (content.starts_with("\x89PNG\r\n\x1A\n"sv)) {
        return inspectPng(content);
    }
    if (content.starts_with("\xFF\xD8\xFF"sv)) {
        return inspectJpeg(content);
    }
    if (content.starts_with("GIF87a"sv) || content.starts_with("GIF89a"sv)) {
        return inspectGif(content);
    }
    if (content.starts_with("II*\0"sv) || content.starts_with("MM\0*"sv)) {
        return inspectTiff(content);
    }
    throw runtime::Error(runtime::errInvalidPicture,
                         "Die Datei ist kein Bild einer bekannten Art (BMP, PCX, PNG, JPEG, GIF, TIFF). Bitte das Bild "
                         "mit einem Bildprogramm öffnen und als eine davon speichern.");
}

}  // namespace

ForeignPicture inspectForeignPicture(std::string_view content) {
    ForeignPicture file = inspect(content);
    if (file.stored.width == 0) {
        file.stored = {0, 0, file.width, file.height, file.bitsPerPixel};
    }
    checkPictureSize(file.width, file.height, file.bitsPerPixel);
    return file;
}

std::string_view nameOf(ForeignKind kind) {
    switch (kind) {
        case ForeignKind::png:
            return "PNG";
        case ForeignKind::jpeg:
            return "JPEG";
        case ForeignKind::gif:
            return "GIF";
        case ForeignKind::tiff:
            break;
    }
    return "TIFF";
}

void refuseForeign(ForeignKind kind, std::string_view fault) { refusePicture(nameOf(kind), fault); }

void refuseDamaged(ForeignKind kind) { refuseForeign(kind, "ist beschädigt"); }

}  // namespace pictures
