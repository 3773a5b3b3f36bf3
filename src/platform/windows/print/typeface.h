// A font as the device has it for a name and a style: its measures, whatever the size.
#pragma once

#include <array>
#include <string>

#include "platform/surface.h"
#include "platform/windows/print/dos_characters.h"
#include "platform/windows/print/print_handles.h"
#include "platform/windows/print/system_headers.h"

namespace platform_windows::print {

// Pixels of one size, and the sizes of nothing else: the same whole pixels on every system.
struct FontSize {
    std::array<int, 256> advance{};  // of each byte
    int ascent = 0;                  // top of the character cell to the baseline
    int descent = 0;                 // baseline to the bottom of the cell
    int underlineTop = 0;            // below the baseline
    int underlineThickness = 1;
};

class Typeface {
public:
    // The size and the underline of the request do not matter.
    Typeface(HDC device, const platform::FontRequest& request, const DosCharacters& characters);

    bool isFor(const platform::FontRequest& request) const noexcept;

    const platform::FontFace& face() const noexcept { return face_; }

    // Stretch: pixels per inch across, by those down.
    FontSize atSize(int emHeight, double stretch) const noexcept;

    // Without an underline; the system would draw it elsewhere than the font's own table says. No font where the system
    // has no room for one more.
    Font create(int emHeight) const noexcept;

private:
    // Widths and cell at a size at which the outlines' own units are pixels.
    void measure(HDC device, const DosCharacters& characters);
    void measureUnderline(HDC device);
    bool hasCourierMetrics() const noexcept;

    platform::FontRequest request_;
    LOGFONTW description_{};
    platform::FontFace face_;
    int em_ = 0;  // that the following are for
    std::array<int, 256> advances_{};
    int ascent_ = 0;
    int descent_ = 0;
    int underlineTop_ = 0;  // above the baseline
    int underlineThickness_ = 0;
    bool coversCodePage_ = false;
};

}  // namespace platform_windows::print
