// Decoding and inverting of each kind of file. The decoders are given what inspectForeignPicture() found in the
// content, and leave the resolution to their caller. Nothing is written to standard error.
#pragma once

#include <string>
#include <string_view>

#include "pictures/foreign_picture.h"

namespace platform_linux::images {

// libpng. Every damage of the picture's own chunks is an error (checksums); chunks that only comment on it may be bad.
platform::Picture decodePng(const pictures::ForeignPicture& file, std::string_view content);
// A file with the opposite of its pixels, as many bits and samples to each, and nothing else.
std::string encodeInvertedPng(std::string_view content);

// libjpeg. Coded data that ends early or makes no sense is an error; bytes too many, or wrong ones that make sense, are
// not. The colours of four inks
// are mixed without a profile, and such a file is not handed on in Picture::jpeg.
platform::Picture decodeJpeg(const pictures::ForeignPicture& file, std::string_view content);
// With the quantisation, the sampling and the kind of coding of the original, for as little loss as there can be.
std::string encodeJpeg(const platform::Picture& picture, std::string_view original);

// leptonica.
platform::Picture decodeGif(const pictures::ForeignPicture& file, std::string_view content);

// libtiff. Wrong bytes in fax-coded or deflated data of the right length cannot be told from a picture.
platform::Picture decodeTiff(const pictures::ForeignPicture& file, std::string_view content);
// The file with the opposite of the first picture's pixels, strip by strip or tile by tile in their own compression,
// and all else as it was. Samples of eight or sixteen bits: colours in any order of planes, grey with an opacity.
std::string invertTiff(std::string_view content);

}  // namespace platform_linux::images
