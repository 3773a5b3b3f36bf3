// A font as the device has it for a name and a style: its measures, whatever the size.
#pragma once

#include <string>

#include "platform/drawing/font_pixels.h"
#include "platform/drawing/page_area.h"
#include "platform/surface.h"
#include "platform/windows/gdi/dos_characters.h"
#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/gdi/system_headers.h"

namespace platform_windows::gdi {

// How a device draws the edges of letters.
enum class Smoothing {
    device,  // as it likes
    grey,    // in shades between the letter's colour and the ground's, never in other colours
};

class Typeface {
public:
    // The size, the underline and the rotation of the request do not matter.
    Typeface(HDC device, const platform::FontRequest& request, const DosCharacters& characters, Smoothing smoothing);

    bool isFor(const platform::FontRequest& request) const noexcept;

    const platform::FontFace& face() const noexcept { return face_; }

    // Of the outlines.
    const platform::drawing::FontUnits& units() const noexcept { return units_; }

    // For drawing on a device, on which any other font may be selected meanwhile. Without an underline; the system
    // would draw it elsewhere than the font's own table says. The em square's height is in vertical pixels. No font
    // where the system has no room for one more.
    Font create(HDC device, int emHeight, platform::drawing::Turn turn,
                platform::drawing::TextScale scale) const noexcept;

private:
    // What the system is asked for at a size at which the outlines' own units are pixels.
    struct Size {
        double height = 0;
        double width = 0;
    };

    void measure(HDC device, const DosCharacters& characters);
    int letterAdvance() const noexcept { return units_.advance['H']; }
    Size sizeFor(HDC device, platform::drawing::Turn turn, platform::drawing::TextScale scale) const noexcept;
    // Width 0: as it follows from the height.
    Font create(double height, double width, platform::drawing::Turn turn) const noexcept;

    platform::FontRequest request_;
    LOGFONTW description_{};
    platform::FontFace face_;
    platform::drawing::FontUnits units_;
    double averageWidth_ = 0;  // what the system takes for it, in the same units
    bool coversCodePage_ = false;
};

}  // namespace platform_windows::gdi
