// A sheet of paper in memory, to draw on with GDI.
#pragma once

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>

#include "pictures/picture_size.h"
#include "platform/windows/print/gdi_surface.h"
#include "unit/support/pixels.h"

namespace platform_windows::print {

inline constexpr int sheetWidth = 700;
inline constexpr int sheetHeight = 300;
inline constexpr int marginX = 20;
inline constexpr int marginY = 10;
inline constexpr std::uint32_t white = 0xFFFFFF;

inline std::uint32_t numberOf(platform::Color color) {
    return static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

struct Box {
    int left = INT_MAX;
    int top = INT_MAX;
    int right = -1;  // the last column with ink
    int bottom = -1;
    bool operator==(const Box&) const = default;
};

inline bool isNear(const Box& one, const Box& other, int most) {
    return std::abs(one.left - other.left) <= most && std::abs(one.top - other.top) <= most &&
           std::abs(one.right - other.right) <= most && std::abs(one.bottom - other.bottom) <= most;
}

// What was drawn; coordinates are those of the printable area.
struct Image {
    std::vector<std::uint32_t> pixels;
    bool operator==(const Image&) const = default;

    std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>((y + marginY) * sheetWidth + x + marginX)] & white;
    }
    Box ink() const {
        Box box;
        for (int y = -marginY; y < sheetHeight - marginY; ++y) {
            for (int x = -marginX; x < sheetWidth - marginX; ++x) {
                if (at(x, y) != white) {
                    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                           std::max(box.bottom, y)};
                }
            }
        }
        return box;
    }
};

// What the pixels of a sheet's bitmap are: those of the device, or square ones however oblong the device's are. On the
// latter fonts of the system follow the device, as on a printer, and what is drawn has the shape that it has on paper.
enum class Pixels { device, paper };

// A white bitmap, and a surface whose printable area lies within. A page is begun.
class Sheet {
public:
    explicit Sheet(bool color = true, int dpiX = 600, Pixels pixels = Pixels::device) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), sheetWidth, -sheetHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        HBITMAP bitmap = ::CreateDIBSection(context_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        ::SelectObject(context_.get(), bitmap);
        pixels_ = static_cast<std::uint32_t*>(bits);
        std::fill_n(pixels_, sheetWidth * sheetHeight, white);
        ::SetViewportOrgEx(context_.get(), marginX, marginY, nullptr);
        if (pixels == Pixels::paper) {
            ::SetMapMode(context_.get(), MM_ANISOTROPIC);
            ::SetWindowExtEx(context_.get(), dpiX, 600, nullptr);
            ::SetViewportExtEx(context_.get(), 600, 600, nullptr);
        }
        surface_.setPage({0, 0, dpiX, 600, sheetWidth, sheetHeight, marginX, marginY}, color);
        surface_.beginPage();
    }

    GdiSurface* operator->() { return &surface_; }

    platform::FontFace font(int emHeight, int rotation = 0, bool underline = false, std::string name = "Courier New") {
        return surface_.setFont({name, platform::charsetOem, emHeight, false, false, underline, rotation});
    }
    void text(int x, int y, std::string_view bytes, platform::Color color = {}) {
        surface_.drawText(x, y, bytes, color, platform::TextRole::content);
    }
    Image drawn() {
        EXPECT_EQ(surface_.endPage(), DWORD{ERROR_SUCCESS});
        ::GdiFlush();
        return {{pixels_, pixels_ + sheetWidth * sheetHeight}};
    }

private:
    gdi::DeviceContext context_{::CreateCompatibleDC(nullptr)};
    std::uint32_t* pixels_ = nullptr;
    GdiSurface surface_{context_.get()};
};

// Pixels of all depths: the last row is black, the others have all numbers that there are.
inline std::shared_ptr<platform::Picture> pictureOf(int bitsPerPixel) {
    auto picture = std::make_shared<platform::Picture>(pictures::makePicture(13, 5, bitsPerPixel));
    for (std::size_t index = 1; index < picture->palette.size(); ++index) {
        picture->palette[index] = {static_cast<std::uint8_t>(200 - index), static_cast<std::uint8_t>(index * 3), 99};
    }
    for (std::size_t at = 0; at < picture->stride() * 4; ++at) {
        picture->pixels[at] = static_cast<std::uint8_t>(at * 37 + 1);
    }
    return picture;
}

}  // namespace platform_windows::print
