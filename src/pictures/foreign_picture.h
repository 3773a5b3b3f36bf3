// Picture files that the system or a library decodes: what can be said about them without decoding, so that every
// system takes and refuses the same files and makes the same Picture of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/picture.h"

namespace pictures {

enum class ForeignKind { png, jpeg, gif, tiff };

struct ByteRange {
    std::size_t start = 0;
    std::size_t length = 0;
};

// What a decoder gives. completed() makes the Picture of it: GIF, where it is a part of the screen; TIFF, where it has
// to be turned.
struct StoredPixels {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    int bitsPerPixel = 0;
};

// What the file says about its first picture.
struct ForeignPicture {
    ForeignKind kind = ForeignKind::png;
    std::int64_t width = 0;
    std::int64_t height = 0;
    // Of the Picture that it becomes: 24 for colours, 8 for more than eight bits of grey and for grey on transparency.
    int bitsPerPixel = 0;
    bool palette = false;       // up to 8 bits: pixels are numbers in the file's palette, otherwise shades of grey
    bool transparency = false;  // there are pixels whose colour has to be laid on white
    bool inks = false;          // JPEG, TIFF: of four inks
    double dpiX = 0;            // as Picture has them
    double dpiY = 0;
    int bitsPerSample = 0;  // TIFF: as in the file; and how many samples a pixel has
    int samples = 0;
    StoredPixels stored = {};
    int orientation = 1;            // TIFF: the tag of that name, from 1 to 8
    std::uint32_t compression = 0;  // TIFF: the tag of that name
    // GIF: how many bytes end with the first picture, and the colour that is transparent; -1 for none.
    std::size_t end = 0;
    int transparentColor = -1;
    // Where the file can be inverted without its pixels: bytes that are colours, each to be complemented; TIFF: the
    // byte whose last bit says whether shades of grey begin with white or with black.
    std::vector<ByteRange> colorTables = {};
    std::size_t greyDirectionAt = 0;
    std::size_t resolutionUnitAt = 0;  // TIFF: the less significant byte of that tag's value; 0 where there is none
    bool furtherPictures = false;      // TIFF
    bool colorsStated = true;          // TIFF: the file says what its numbers mean

    platform::PictureInfo info() const {
        return {static_cast<int>(width), static_cast<int>(height), bitsPerPixel, dpiX, dpiY};
    }
};

// Goes through the structure of the whole file, without decoding. Throws errInvalidPicture for content that is of none
// of the kinds, is cut off (PNG, GIF: at any length; JPEG: before the end of its scans; TIFF: anything of the first
// picture or of what is said about it lies behind the end), contradicts itself, or is larger than checkPictureSize()
// allows.
ForeignPicture inspectForeignPicture(std::string_view content);

// "PNG", as in messages.
std::string_view nameOf(ForeignKind kind);

// Throws errInvalidPicture: what is wrong with the file as the rest of a German sentence without its full stop, and
// what to do.
[[noreturn]] void refuseForeign(ForeignKind kind, std::string_view fault);
// The same for what a decoder finds out.
[[noreturn]] void refuseDamaged(ForeignKind kind);

}  // namespace pictures
