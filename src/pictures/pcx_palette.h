// The colours of PCX files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "pictures/pcx_header.h"
#include "platform/color.h"

namespace pictures {

// As many colours as numbers have values, for a file whose pixels end at a place.
//
// Up to 16 colours stand in the header: as red, green and blue, or, with two bits of one plane, as what a Color
// Graphics Adapter is set to (background and one of its palettes), where the table holds nothing but that. Version 3
// has none and means the standard ones of the Enhanced Graphics Adapter; so do versions before 5 whose table is all
// zero. With one bit, 0 is black and 1 is white, as the format has it; where the header has two different colours those
// count, unless its table is the standard one, which programs leave there without meaning it.
//
// 256 colours stand behind a byte 12, right behind the pixels or at the end of the file. Without them numbers are grey;
// where fewer stand behind a byte 12, the file is cut off: errInvalidPicture.
std::vector<platform::Color> readPcxPalette(std::string_view content, const PcxHeader& header, std::size_t pixelsEnd);

// Makes the palette the one of the file. It changes nothing where it is that already, and the version to 5 only where
// that of the file cannot hold one. errInvalidPicture where the format cannot hold it: one bit, both colours the same.
void writePcxPalette(const std::vector<platform::Color>& palette, std::string& content, const PcxHeader& header,
                     std::size_t pixelsEnd);

}  // namespace pictures
