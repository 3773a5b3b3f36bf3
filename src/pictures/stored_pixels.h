// From the pixels that a decoder of the system gives to the picture that the file means.
#pragma once

#include "pictures/foreign_picture.h"
#include "platform/picture.h"

namespace pictures {

// The whole Picture: on the screen of a GIF file, whose other pixels are white, turned as a TIFF file says, with the
// resolution that the file states.
platform::Picture completed(platform::Picture stored, const ForeignPicture& file);

}  // namespace pictures
