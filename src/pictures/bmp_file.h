// BMP files, whole. Read and written is every variant that programs for Windows and OS/2 write, but those that are a
// JPEG or PNG file inside, and OS/2's Huffman and 24-bit run lengths. bmp_header.h has the headers.
#pragma once

#include <string>
#include <string_view>

#include "platform/picture.h"

namespace pictures {

bool isBmp(std::string_view content);

// Throws what decodeBmp() throws, without taking memory for the pixels.
platform::PictureInfo inspectBmp(std::string_view content);

// A number beyond the file's palette is black; pixels that run lengths leave out are number 0. The fourth byte of 32
// bits counts only where a mask says that it is alpha; then the picture lies on white. errInvalidPicture for files that
// are damaged or cut off: half a letterhead is worse than a message.
platform::Picture decodeBmp(std::string_view content);

// The original with the picture's pixels and palette. Everything else stays as it is: header, unused bits, alpha of
// pixels that are opaque or have not changed, bytes behind the pixels. The picture has the size and depth that
// decodeBmp() gives for the original. A palette too short for it becomes a whole one; colours that narrow channels
// cannot hold become the nearest that they can, which only pictures with alpha need.
std::string encodeBmp(const platform::Picture& picture, std::string_view original);

}  // namespace pictures
