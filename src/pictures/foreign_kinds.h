// The structure of each kind of file, as inspectForeignPicture() goes through it.
#pragma once

#include <string_view>

#include "pictures/foreign_picture.h"

namespace pictures {

// PNG, ISO/IEC 15948: chunks up to IEND. Checksums are the decoder's.
ForeignPicture inspectPng(std::string_view content);

// JPEG, ISO/IEC 10918-1 annex B: segments and scans up to EOI; the resolution as JFIF has it (ISO/IEC 10918-5).
ForeignPicture inspectJpeg(std::string_view content);

// GIF 89a: blocks up to the trailer. The picture is the screen with the first frame on it. What the frame leaves free
// is white, for which the depth is 24 where the frame's table has neither white nor a transparent colour.
ForeignPicture inspectGif(std::string_view content);

// TIFF 6.0: the first directory, its values, strips and tiles. The picture is turned as the file says.
ForeignPicture inspectTiff(std::string_view content);

}  // namespace pictures
