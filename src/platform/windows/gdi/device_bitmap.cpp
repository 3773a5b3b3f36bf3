#include "platform/windows/gdi/device_bitmap.h"

#include <algorithm>
#include <cstdlib>

#include "platform/drawing/grey.h"

namespace platform_windows::gdi {

namespace {

using platform::Color;
using platform::Picture;

// The system knows no two bits a pixel.
int depthOf(const Picture& picture) { return picture.bitsPerPixel == 2 ? 4 : picture.bitsPerPixel; }

std::size_t strideOf(int width, int bitsPerPixel) { return (Picture::strideOf(width, bitsPerPixel) + 3) / 4 * 4; }

int brightness(Color color) { return platform::drawing::greyOf(color).red; }

// Where pixels fall together the system keeps the number 0.
bool hasDarkLast(const Picture& picture) {
    return picture.bitsPerPixel == 1 && brightness(picture.palette[0]) > brightness(picture.palette[1]);
}

void convertRow(const Picture& picture, bool invert, const std::uint8_t* row, std::uint8_t* out) {
    const std::size_t bytes = picture.stride();
    if (picture.bitsPerPixel == 24) {
        for (std::size_t at = 0; at < bytes; at += 3) {
            out[at] = row[at + 2];
            out[at + 1] = row[at + 1];
            out[at + 2] = row[at];
        }
    } else if (picture.bitsPerPixel == 2) {
        const std::size_t wide = Picture::strideOf(picture.width, 4);
        for (std::size_t at = 0; at < wide; ++at) {
            const int four = at % 2 == 0 ? row[at / 2] >> 4 : row[at / 2] & 0xF;
            out[at] = static_cast<std::uint8_t>((four & 0xC) << 2 | (four & 0x3));
        }
    } else if (invert) {
        std::transform(row, row + bytes, out, [](std::uint8_t byte) { return static_cast<std::uint8_t>(~byte); });
    } else {
        std::copy(row, row + bytes, out);
    }
}

// Drivers that draw nothing of a picture, as none of it is visible, leave any code they like. Of these the system
// itself tells that it could not draw.
bool isSystemFailure(DWORD code) {
    constexpr std::array failures = {ERROR_NOT_ENOUGH_MEMORY, ERROR_OUTOFMEMORY, ERROR_NO_SYSTEM_RESOURCES,
                                     ERROR_DISK_FULL, ERROR_PRINT_CANCELLED};
    return std::find(failures.begin(), failures.end(), static_cast<LONG>(code)) != failures.end();
}

}  // namespace

DeviceBitmap::DeviceBitmap(const Picture& picture) {
    const int depth = depthOf(picture);
    header_.info.biSize = sizeof header_.info;
    header_.info.biWidth = picture.width;
    header_.info.biHeight = picture.height;
    header_.info.biPlanes = 1;
    header_.info.biBitCount = static_cast<WORD>(depth);
    header_.info.biClrUsed = static_cast<DWORD>(picture.palette.size());
    const bool invert = hasDarkLast(picture);
    for (std::size_t index = 0; index < picture.palette.size(); ++index) {
        const Color color = picture.palette[invert ? 1 - index : index];
        header_.colors[index] = {color.blue, color.green, color.red, 0};
    }
    const std::size_t stride = strideOf(picture.width, depth);
    const auto rows = static_cast<std::size_t>(picture.height);
    pixels_.resize(stride * rows);
    for (std::size_t row = 0; row < rows; ++row) {
        convertRow(picture, invert, picture.pixels.data() + picture.stride() * row,
                   pixels_.data() + stride * (rows - 1 - row));
    }
}

int DeviceBitmap::stretchMode(const Stretch& across, const Stretch& down) const {
    const auto shrunk = [](const Stretch& stretch) { return std::abs(std::int64_t{stretch.length}) < stretch.pixels; };
    if (header_.info.biBitCount == 1) {
        return BLACKONWHITE;
    }
    return shrunk(across) || shrunk(down) ? HALFTONE : COLORONCOLOR;
}

bool DeviceBitmap::draw(HDC device, const Stretch& across, const Stretch& down, bool printable,
                        const StretchPicture& stretchPicture) const {
    ::SetStretchBltMode(device, stretchMode(across, down));
    ::SetBrushOrgEx(device, 0, 0, nullptr);
    // Mirrored pixels begin before their place and go on backwards. Rows are counted from the bottom.
    const auto start = [](const Stretch& stretch) { return stretch.length < 0 ? stretch.place - 1 : stretch.place; };
    ::SetLastError(ERROR_SUCCESS);
    const int rows =
        stretchPicture(device, start(across), start(down), across.length, down.length, across.first,
                       header_.info.biHeight - down.first - down.pixels, across.pixels, down.pixels, pixels_.data(),
                       reinterpret_cast<const BITMAPINFO*>(&header_), DIB_RGB_COLORS, SRCCOPY);
    return !printable || (rows == 0 ? !isSystemFailure(::GetLastError()) : rows != static_cast<int>(GDI_ERROR));
}

}  // namespace platform_windows::gdi
