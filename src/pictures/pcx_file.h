// PCX files, whole: 1 to 8 bits in any number of planes and bits of a plane, 24 bits, and 24 bits with alpha in a
// fourth plane, as some programs write it; as they are or in run lengths. pcx_palette.h has their colours.
#pragma once

#include <string>
#include <string_view>

#include "platform/picture.h"

namespace pictures {

// Throws what decodePcx() throws, without taking memory for the pixels.
platform::PictureInfo inspectPcx(std::string_view content);

// Alpha lies on white; alpha that is 0 everywhere was forgotten and does not count. errInvalidPicture for files that
// are damaged or cut off.
platform::Picture decodePcx(std::string_view content);

// The original with the picture's pixels and, where it has changed, palette. The header stays, but for the version
// where it has to be one that holds a palette; so does what stands behind the pixels. Bytes at the end of lines that
// hold no pixels become 0. The picture has the size and depth that decodePcx() gives for the original.
std::string encodePcx(const platform::Picture& picture, std::string_view original);

}  // namespace pictures
