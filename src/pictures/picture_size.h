// How large a picture may be.
#pragma once

#include <cstdint>

#include "platform/picture.h"

namespace pictures {

// The largest picture: beyond A3 at 1200 dots per inch, and no more memory than a small office machine has to spare.
inline constexpr std::int64_t mostPicturePixels = 300'000'000;
inline constexpr std::int64_t mostPictureBytes = 512LL * 1024 * 1024;

// Throws errInvalidPicture, naming the limit, for a size that no picture has: sides below 1, too many pixels or bytes.
// To be asked with what a file's header says, before memory is taken for it.
void checkPictureSize(std::int64_t width, std::int64_t height, int bitsPerPixel);

// A picture of that size after the check, all pixels 0, the palette all black.
platform::Picture makePicture(std::int64_t width, std::int64_t height, int bitsPerPixel);

}  // namespace pictures
