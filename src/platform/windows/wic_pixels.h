// The kinds of pixels in which the system's codecs give colours.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "platform/color.h"

namespace platform_windows {

struct PixelFormat {
    const GUID* format;
    int bitsPerPixel;
    // The colour of one pixel, on white.
    platform::Color (*color)(const std::uint8_t* pixel);
};

// Those that are read as they are, for exactness and for what the system's own conversions get wrong: the rounding of
// sixteen bits, inks without a profile. Any other has to be converted to the last of them,
// GUID_WICPixelFormat32bppBGRA.
const PixelFormat& pixelFormat(const GUID& format);

}  // namespace platform_windows
