// Port: what the program draws on. One page in device pixels, the origin in the top left corner of the printable area,
// x to the right, y downwards.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/color.h"
#include "platform/picture.h"

namespace platform {

// What a device says of its page; pixels, or pixels per inch. The members are named after the standard indices of the
// device capability query (HORZRES 8, VERTRES 10, LOGPIXELSX 88, LOGPIXELSY 90, PHYSICALWIDTH 110, PHYSICALHEIGHT 111,
// PHYSICALOFFSETX 112, PHYSICALOFFSETY 113).
struct DeviceCapabilities {
    int horzRes = 0;          // width of the printable area
    int vertRes = 0;          // height of the printable area
    int logPixelsX = 0;       // pixels per inch, horizontally
    int logPixelsY = 0;       // pixels per inch, vertically
    int physicalWidth = 0;    // width of the sheet
    int physicalHeight = 0;   // height of the sheet
    int physicalOffsetX = 0;  // left unprintable margin
    int physicalOffsetY = 0;  // top unprintable margin

    bool operator==(const DeviceCapabilities&) const = default;
};

// Character set numbers as fonts carry them.
inline constexpr int charsetAnsi = 0;
inline constexpr int charsetOem = 255;

struct FontRequest {
    std::string name;
    int charset = charsetOem;
    int emHeight = 0;  // height of the em square in device pixels, at least 1
    bool bold = false;
    bool italic = false;
    bool underline = false;
    // Degrees by which text is turned counter-clockwise about the point it is drawn at: 0, 90, 180 or 270.
    int rotation = 0;

    bool operator==(const FontRequest&) const = default;
};

// What the device took for a requested font: the requested name where it has that font or one of the same metrics, and
// the requested character set where the font covers it.
struct FontFace {
    std::string name;
    int charset = charsetOem;
};

// Whether a run of text is the page's text or only an effect of it (the offset copy of a shadow or a double strike).
// An effect is drawn alike, but is no text where a device can tell the two apart (copying and searching in a PDF).
enum class TextRole { content, effect };

class Surface {
public:
    virtual ~Surface() = default;

    // Valid at any time, also before the first page; may change when a page begins with another paper or orientation.
    virtual DeviceCapabilities capabilities() const = 0;

    // Selects the font for the following calls; stays selected from page to page. Never fails for a missing font: the
    // device takes the nearest it has and says which. Throws runtime::Error (errPrinter) where there is no font at all.
    virtual FontFace setFont(const FontRequest& font) = 0;

    // Width in pixels, along the direction of the text, by which a run moves the position: the sum of the whole-pixel
    // advances of its bytes in the selected font. Bytes are characters of the host's DOS code page, control codes
    // included (they have glyphs). A width beyond the range of int is INT_MAX.
    virtual int textWidth(std::string_view text) const = 0;

    // Height in pixels, across the direction of the text, of the character cell of the selected font.
    virtual int textHeight() const = 0;

    // Draws a run on the page begun, transparently, the top of the character cell at y and the left edge of the first
    // cell at x, underlined over its whole width where the font is; then turned about that point as the font says. What
    // lies beyond the sheet is clipped.
    virtual void drawText(int x, int y, std::string_view text, Color color, TextRole role) = 0;

    // Fills the pixels from (x, y) up to but not including (x + width, y + height). An empty one draws nothing.
    virtual void fillRectangle(int x, int y, int width, int height, Color color) = 0;

    // Draws a whole picture, stretched to the pixels from (x, y) up to but not including (x + width, y + height); a
    // negative width or height mirrors it. An empty area draws nothing. The surface may keep the picture for the rest
    // of the document, to draw it again at next to no cost; its content must not change any more.
    virtual void drawPicture(const std::shared_ptr<const Picture>& picture, int x, int y, int width, int height) = 0;
};

}  // namespace platform
