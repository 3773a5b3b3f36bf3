// Picture files by the system's encoders.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/windows/wic_factory.h"

namespace platform_windows {

// Pixels as the system has them, without gaps between rows.
struct WicPixels {
    GUID format{};
    std::vector<std::uint8_t> bytes;
};

// The encoders write some resolution where they are told none.
inline bool statesResolution(const pictures::ForeignPicture& file) { return file.dpiX > 0 && file.dpiY > 0; }

// A file of the kind and size of the original, and of its resolution where it states one. TIFF: with its compression
// where the system has it, otherwise LZW. Throws what WicCheck throws, and errInvalidPicture where the system cannot
// write such pixels.
std::string encodeByWic(const WicFactory& factory, WicPixels pixels, const pictures::ForeignPicture& original);

}  // namespace platform_windows
