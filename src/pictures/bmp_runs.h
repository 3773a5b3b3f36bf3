// Run lengths of BMP files, RLE8 and RLE4, as the Windows programming reference has them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "pictures/bmp_header.h"
#include "platform/picture.h"

namespace pictures {

// Writes the pixels of a file into a picture of its size, all of whose pixels are 0 before, and returns where they end
// in the file; without a picture it only checks them. Runs may go on up to the end of the row as it would be
// uncompressed, a multiple of four bytes: some programs compress those as well. errInvalidPicture for runs past that or
// past the end of the picture, and where pixels are missing and no end of the picture is marked.
std::size_t decodeBmpRuns(std::string_view content, const BmpHeader& header, platform::Picture* picture);

// The pixels of a picture of 8 or 4 bits as run lengths, with the mark at their end.
std::string encodeBmpRuns(const platform::Picture& picture, bool topDown);

}  // namespace pictures
