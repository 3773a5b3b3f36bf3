// Picture files of other programs with the opposite colours, everything else in them as it is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "pictures/foreign_picture.h"

namespace pictures {

// How the numbers of a pixel lie behind each other: colours first, then opacity and the like, which has no opposite.
struct SampleLayout {
    std::size_t samples = 1;
    std::size_t colors = 1;
    std::size_t bytesPerSample = 1;  // 1 also where several pixels share a byte
    bool multiplied = false;         // the colours by the opacity behind them
};

void invertSamples(std::uint8_t* bytes, std::size_t count, const SampleLayout& layout);

// The file, of which inspectForeignPicture() has found this, where its colours can be turned in tables and tags: GIF,
// and all that has a palette; TIFF in shades of grey. Nothing where its pixels have to change. Throws errInvalidPicture
// where there is no opposite that the file could hold: four inks.
std::optional<std::string> withInvertedTables(std::string_view content, const ForeignPicture& file);

// A PNG file with the pixels of another, which are its own inverted; a colour that is transparent is inverted with
// them. Throws errInvalidPicture where the other one is not of the same size and kind of pixels.
std::string withInvertedPngPixels(std::string_view content, std::string_view inverted);

// A JPEG file with the pixels of another, which are its own inverted, and with its own notes: resolution, camera,
// profile of colours, comment.
std::string withInvertedJpegScans(std::string_view content, std::string_view inverted);

// A TIFF file that says nothing about its resolution, as encoders will not write one.
std::string withoutTiffResolution(std::string content);

// Throws errInvalidPicture: the file cannot be written as it is; it says what would be lost.
[[noreturn]] void refuseInversion(ForeignKind kind, std::string_view lost);

}  // namespace pictures
