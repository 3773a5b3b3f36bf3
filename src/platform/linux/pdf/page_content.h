// The content stream of one page: drawing operators (ISO 32000-1, 8 and 9) in device pixels.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/pdf/font_size.h"
#include "platform/surface.h"

namespace platform_linux::pdf {

// Name of a font in the page's resources, behind the slash: "F0".
std::string fontResourceName(int resource);

// Coordinates are pixels from the sheet's top left corner, y downwards; the caller clips. One buffer serves page after
// page. Operators that set what is set already are left out.
class PageContent {
public:
    // Starts an empty page: points per pixel, and the height of the sheet in points. The colour is black.
    void begin(double pointsPerPixelX, double pointsPerPixelY, double heightPoints);

    // Colour of what follows.
    void setColor(platform::Color color);

    // Shows a run that begins at a point of its baseline and has the width given.
    void showText(const FontSize& font, std::string_view text, platform::drawing::Point start, std::int64_t width,
                  platform::TextRole role);

    void fillRectangle(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height);

    // Shows a picture of the document, its left top corner at a point; a negative width or height mirrors it.
    void showPicture(int resource, platform::drawing::Point corner, std::int64_t width, std::int64_t height);

    // The whole stream; valid until the next call of begin().
    std::string_view finish();

private:
    void openText();
    void closeText();
    void moveTo(const FontSize& font, platform::drawing::Point start);
    void turnTo(const FontSize& font, platform::drawing::Point start);
    void setFont(const FontSize& font);
    void setSpacing(double spacing);
    void showEvenly(std::string_view text);
    void showAdjusted(const FontSize& font, std::string_view text);
    void appendString(std::string_view bytes);

    std::string content_;
    bool inText_ = false;
    platform::drawing::Turn turn_;                 // of the text
    platform::drawing::Point line_;                // start of the current line of text
    std::optional<platform::drawing::Point> pen_;  // where the next glyph would appear, if that is a whole pixel
    int resource_ = -1;
    std::int64_t size_ = 0;
    double stretch_ = 1;
    double spacing_ = 0;
    platform::Color color_;
};

}  // namespace platform_linux::pdf
