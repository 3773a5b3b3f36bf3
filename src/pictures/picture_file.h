// Picture files of every kind that the program prints: the host's own (BMP, PCX) by the program itself, others by the
// system.
#pragma once

#include <string>
#include <string_view>

#include "platform/image_files.h"
#include "platform/picture.h"

namespace pictures {

// What decodePicture() will give, told from the structure of the whole file; its pixels take no memory. Throws what
// that throws, but for damage that only decoding meets.
platform::PictureInfo inspectPicture(std::string_view content, platform::ImageFiles& others);

// The first picture in the content of a file, whatever the file's name says. errInvalidPicture, as platform::ImageFiles
// has it.
platform::Picture decodePicture(std::string_view content, platform::ImageFiles& others);

// Turns every colour into its opposite, twice into the first again. Where the palette holds the opposite of each of its
// colours the pixels change, otherwise the palette does.
void invert(platform::Picture& picture);

// The file with each colour turned into its opposite, everything else as it is. errInvalidPicture, as
// platform::ImageFiles has it.
std::string invertedFile(std::string_view content, platform::ImageFiles& others);

}  // namespace pictures
