// Picture files by the system's encoders.
#pragma once

#include <string>

#include "platform/windows/wic_factory.h"

namespace platform_windows {

// A file of the same kind as the original. TIFF: with the compression of the original where the system has it and it
// can hold the picture, otherwise LZW. Where the system cannot write the picture's depth, the next larger one that it
// can. Throws what WicCheck throws.
std::string encodeByWic(const WicFactory& factory, const platform::Picture& picture,
                        const pictures::ForeignPicture& original);

}  // namespace platform_windows
