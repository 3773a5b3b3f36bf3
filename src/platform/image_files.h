// Port: the kinds of picture files that the system or a library knows. BMP and PCX are the program's own.
#pragma once

#include <string>
#include <string_view>

#include "platform/picture.h"

namespace platform {

// Kinds: PNG (ISO/IEC 15948), JPEG (ISO/IEC 10918-1), GIF 87a and 89a, TIFF 6.0. What is transparent in a file lies on
// white. The file's own depth is kept where a Picture can have it; more than eight bits a channel become eight. Inks
// are mixed to colours without a profile, and such a JPEG file is not handed on in Picture::jpeg. A note in the file
// that it wants to be turned is not followed.
class ImageFiles {
public:
    virtual ~ImageFiles() = default;

    // The first picture in the content of a file. errInvalidPicture, with what is wrong and what to do in the detail,
    // for content that is of none of these kinds, is damaged or cut off, or is larger than checkPictureSize() allows
    // (found out before memory is taken); errOutOfMemory.
    virtual Picture decode(std::string_view content) = 0;

    // A file of the same kind, depth, resolution and compression as the original, the picture's pixels in place of its
    // own, and nothing else that the original has (further pictures, comments, profiles). The picture has the size of
    // the original. errInvalidPicture as above.
    virtual std::string encode(const Picture& picture, std::string_view original) = 0;
};

}  // namespace platform
