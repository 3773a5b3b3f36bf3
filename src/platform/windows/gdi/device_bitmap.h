// A picture as GDI draws it: rows from the bottom, each of whole double words.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/picture.h"
#include "platform/windows/gdi/stretch.h"
#include "platform/windows/gdi/system_headers.h"

namespace platform_windows::gdi {

// StretchDIBits(), or what stands for it.
using StretchPicture =
    std::function<int(HDC, int, int, int, int, int, int, int, int, const void*, const BITMAPINFO*, UINT, DWORD)>;

class DeviceBitmap {
public:
    explicit DeviceBitmap(const platform::Picture& picture);

    // Draws the pixels of these columns and rows by this call. Whether the system took them; otherwise its last error
    // says why not. Where nothing can be printed (the margin that a device leaves white), they always are.
    //
    // Of pixels that fall together on the device, the dark one wins in a picture of two colours: thin lines stay. With
    // more colours they are averaged. That is for drivers that draw pixels; others let the printer do it, from the
    // whole picture. Enlarged pixels keep their colour.
    bool draw(HDC device, const Stretch& across, const Stretch& down, bool printable,
              const StretchPicture& stretchPicture) const;

private:
    struct Header {
        BITMAPINFOHEADER info{};
        std::array<RGBQUAD, 256> colors{};
    };

    int stretchMode(const Stretch& across, const Stretch& down) const;

    Header header_;
    std::vector<std::uint8_t> pixels_;
};

}  // namespace platform_windows::gdi
