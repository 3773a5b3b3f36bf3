#include "platform/windows/wic_pixels.h"

#include <wincodec.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "pictures/colors.h"

namespace platform_windows {

namespace {

using platform::Color;

std::uint8_t wideAt(const std::uint8_t* pixel, std::size_t index) {
    std::uint16_t channel = 0;
    std::memcpy(&channel, pixel + index * sizeof(channel), sizeof(channel));
    return pictures::eightBits(channel);
}

Color fromGrey(const std::uint8_t* pixel) { return {*pixel, *pixel, *pixel}; }
Color fromWideGrey(const std::uint8_t* pixel) {
    const std::uint8_t shade = wideAt(pixel, 0);
    return {shade, shade, shade};
}
Color fromBgr(const std::uint8_t* pixel) { return {pixel[2], pixel[1], pixel[0]}; }
Color fromRgb(const std::uint8_t* pixel) { return {pixel[0], pixel[1], pixel[2]}; }
Color fromBgra(const std::uint8_t* pixel) { return pictures::onWhite(fromBgr(pixel), pixel[3]); }
Color fromRgba(const std::uint8_t* pixel) { return pictures::onWhite(fromRgb(pixel), pixel[3]); }
Color fromWideRgb(const std::uint8_t* pixel) { return {wideAt(pixel, 0), wideAt(pixel, 1), wideAt(pixel, 2)}; }
Color fromWideRgba(const std::uint8_t* pixel) { return pictures::onWhite(fromWideRgb(pixel), wideAt(pixel, 3)); }
Color fromCmyk(const std::uint8_t* pixel) { return pictures::fromInks(pixel[0], pixel[1], pixel[2], pixel[3]); }

constexpr std::array formats = {
    PixelFormat{&GUID_WICPixelFormat8bppGray, 8, fromGrey},
    PixelFormat{&GUID_WICPixelFormat16bppGray, 16, fromWideGrey},
    PixelFormat{&GUID_WICPixelFormat24bppBGR, 24, fromBgr},
    PixelFormat{&GUID_WICPixelFormat24bppRGB, 24, fromRgb},
    PixelFormat{&GUID_WICPixelFormat32bppBGR, 32, fromBgr},
    PixelFormat{&GUID_WICPixelFormat32bppRGBA, 32, fromRgba},
    PixelFormat{&GUID_WICPixelFormat48bppRGB, 48, fromWideRgb},
    PixelFormat{&GUID_WICPixelFormat64bppRGBA, 64, fromWideRgba},
    PixelFormat{&GUID_WICPixelFormat32bppCMYK, 32, fromCmyk},
    PixelFormat{&GUID_WICPixelFormat32bppBGRA, 32, fromBgra},
};

}  // namespace

const PixelFormat& pixelFormat(const GUID& format) {
    const auto* found = std::find_if(formats.begin(), formats.end() - 1, [&](const PixelFormat& entry) {
        return ::IsEqualGUID(*entry.format, format) != 0;
    });
    return *found;
}

}  // namespace platform_windows
