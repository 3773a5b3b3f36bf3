// Picture files of every kind that the program prints: the host's own (BMP, PCX) by the program itself, others by the
// system.
#pragma once

#include <string>
#include <string_view>

#include "platform/image_files.h"
#include "platform/picture.h"

namespace pictures {

// The first picture in the content of a file, whatever the file's name says. errInvalidPicture, as platform::ImageFiles
// has it.
platform::Picture decodePicture(std::string_view content, platform::ImageFiles& others);

// A file of the same kind, depth, resolution and compression as the original, the picture's pixels in place of its own.
std::string encodePicture(const platform::Picture& picture, std::string_view original, platform::ImageFiles& others);

// Turns every colour into its opposite, twice into the first again. Where the palette holds the opposite of each of its
// colours the pixels change, otherwise the palette does.
void invert(platform::Picture& picture);

}  // namespace pictures
