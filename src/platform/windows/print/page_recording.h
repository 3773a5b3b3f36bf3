// What is drawn on a page, kept until the page has ended: only then is it known that the printer is to have it, and a
// page begun cannot be taken back from the system.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/windows/print/device_bitmap.h"
#include "platform/windows/print/dos_characters.h"
#include "platform/windows/print/font_handles.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

// Coordinates are the device's. Memory is kept from page to page.
class PageRecording {
public:
    void clear() noexcept;

    void addText(const FontKey& font, COLORREF color, POINT baseline, std::string_view bytes,
                 const DosCharacters& characters, const platform::drawing::FontPixels& pixels);
    void addRectangle(const RECT& rectangle, COLORREF color);
    void addPicture(std::shared_ptr<const DeviceBitmap> bitmap, const Stretch& across, const Stretch& down);

    // Draws everything in its order. Returns 0 or the system's error code; after an error the rest has not been drawn.
    DWORD play(HDC device, FontHandles& fonts) const;

private:
    struct Text {
        std::size_t font = 0;  // among fonts_
        COLORREF color = 0;
        POINT baseline{};
        std::size_t start = 0;  // of its characters and advances
        UINT length = 0;
    };
    struct Rectangle {
        RECT area{};
        COLORREF color = 0;
    };
    struct Picture {
        std::shared_ptr<const DeviceBitmap> bitmap;
        Stretch across;
        Stretch down;
    };
    class Player;

    std::vector<std::variant<Text, Rectangle, Picture>> steps_;
    std::vector<FontKey> fonts_;
    std::vector<wchar_t> characters_;
    std::vector<int> advances_;
};

}  // namespace platform_windows::print
