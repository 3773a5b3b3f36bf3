// Port: the kinds of picture files that the system or a library knows. BMP and PCX are the program's own.
#pragma once

#include <string>
#include <string_view>

#include "platform/picture.h"

namespace platform {

// Kinds: PNG (ISO/IEC 15948), JPEG (ISO/IEC 10918-1), GIF 87a and 89a, TIFF 6.0. What is transparent in a file lies on
// white. The file's own depth is kept where a Picture can have it; more than eight bits a channel become eight. Inks
// are mixed to colours without a profile, and such a JPEG file is not handed on in Picture::jpeg. A TIFF
// file is turned as it says, a note in a JPEG file is not followed. A frame smaller than the screen of its GIF file
// lies on white.
class ImageFiles {
public:
    virtual ~ImageFiles() = default;

    // What decode() will give, told from the structure of the whole file. errInvalidPicture as there, but for damage
    // that only decoding meets.
    virtual PictureInfo inspect(std::string_view content) = 0;

    // The first picture in the content of a file. errInvalidPicture, with what is wrong and what to do in the detail,
    // for content that is of none of these kinds, is damaged or cut off, or is larger than checkPictureSize() allows
    // (found out before memory is taken); errOutOfMemory.
    virtual Picture decode(std::string_view content) = 0;

    // The same file with each colour turned into its opposite: its kind, depth, model of colours, transparency,
    // resolution and orientation stay, as does what else is in it as far as the system can keep it; JPEG loses a
    // little. errInvalidPicture as above, and for a file that cannot be kept so, with what would be lost.
    virtual std::string inverted(std::string_view content) = 0;
};

}  // namespace platform
