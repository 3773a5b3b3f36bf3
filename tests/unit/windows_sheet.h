// A sheet of paper in memory, to draw on with GDI.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "pictures/picture_size.h"
#include "platform/windows/print/gdi_surface.h"
#include "platform/windows/print/print_handles.h"

namespace platform_windows::print {

using platform::Color;
using platform::FontRequest;
using platform::TextRole;

inline constexpr int sheetWidth = 700;
inline constexpr int sheetHeight = 300;
inline constexpr int marginX = 20;
inline constexpr int marginY = 10;
inline constexpr Color black{0, 0, 0};
inline constexpr std::uint32_t white = 0xFFFFFF;

struct BitmapKind {
    using Handle = HBITMAP;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { ::DeleteObject(handle); }
};

struct Box {
    int left = INT_MAX;
    int top = INT_MAX;
    int right = -1;  // the last column with ink
    int bottom = -1;
    bool operator==(const Box&) const = default;
};

inline void PrintTo(const Box& box, std::ostream* out) {
    *out << box.left << ',' << box.top << " to " << box.right << ',' << box.bottom;
}

// A sheet of paper: a white bitmap, and a surface whose printable area lies within.
class Sheet {
public:
    explicit Sheet(bool color = true, int dpiX = 600) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), sheetWidth, -sheetHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        bitmap_ = Owner<BitmapKind>(::CreateDIBSection(context_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        pixels_ = static_cast<std::uint32_t*>(bits);
        selection_.emplace(context_.get(), bitmap_.get());
        std::fill_n(pixels_, sheetWidth * sheetHeight, white);
        ::SetViewportOrgEx(context_.get(), marginX, marginY, nullptr);
        surface_.emplace(context_.get());
        platform::DeviceCapabilities device;
        device.logPixelsX = dpiX;
        device.logPixelsY = 600;
        device.physicalWidth = sheetWidth;
        device.physicalHeight = sheetHeight;
        device.physicalOffsetX = marginX;
        device.physicalOffsetY = marginY;
        surface_->setPage(device, color);
        surface_->beginPage();
    }

    GdiSurface* operator->() { return &*surface_; }

    void text(int x, int y, std::string_view bytes, Color color = black) {
        surface_->drawText(x, y, bytes, color, TextRole::content);
    }

    // Ends the page; coordinates are then those of the printable area.
    std::vector<std::uint32_t> drawn() {
        EXPECT_EQ(surface_->endPage(), DWORD{ERROR_SUCCESS});
        ::GdiFlush();
        std::vector<std::uint32_t> result(pixels_, pixels_ + sheetWidth * sheetHeight);
        for (std::uint32_t& pixel : result) {
            pixel &= white;
        }
        return result;
    }

    static std::uint32_t at(const std::vector<std::uint32_t>& image, int x, int y) {
        return image[static_cast<std::size_t>((y + marginY) * sheetWidth + x + marginX)];
    }

    static Box inkOf(const std::vector<std::uint32_t>& image) {
        Box box;
        for (int y = -marginY; y < sheetHeight - marginY; ++y) {
            for (int x = -marginX; x < sheetWidth - marginX; ++x) {
                if (at(image, x, y) != white) {
                    box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                           std::max(box.bottom, y)};
                }
            }
        }
        return box;
    }

private:
    DeviceContext context_{::CreateCompatibleDC(nullptr)};
    Owner<BitmapKind> bitmap_;
    std::uint32_t* pixels_ = nullptr;
    std::optional<Selection> selection_;
    std::optional<GdiSurface> surface_;
};

inline FontRequest courier(int emHeight) {
    FontRequest font;
    font.name = "Courier New";
    font.emHeight = emHeight;
    return font;
}

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

inline std::uint32_t pixelAt(const platform::Picture& picture, int x, int y) {
    const std::uint8_t* row = picture.pixels.data() + picture.stride() * static_cast<std::size_t>(y);
    Color color;
    if (picture.bitsPerPixel == 24) {
        color = {row[x * 3], row[x * 3 + 1], row[x * 3 + 2]};
    } else {
        const int bit = x * picture.bitsPerPixel;
        const int number = row[bit / 8] >> (8 - picture.bitsPerPixel - bit % 8) & ((1 << picture.bitsPerPixel) - 1);
        color = picture.palette[static_cast<std::size_t>(number)];
    }
    return static_cast<std::uint32_t>(color.red << 16 | color.green << 8 | color.blue);
}

}  // namespace platform_windows::print
