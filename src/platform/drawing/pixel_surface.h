// What all surfaces of a sheet have in common: measuring in whole pixels, turning and clipping text, shades of grey.
// What remains for a device is to find fonts and to draw what is on the sheet.
#pragma once

#include <optional>

#include "platform/drawing/font_pixels.h"
#include "platform/drawing/page_area.h"
#include "platform/surface.h"

namespace platform::drawing {

class PixelSurface : public Surface {
public:
    DeviceCapabilities capabilities() const final { return device_; }
    FontFace setFont(const FontRequest& font) final;
    // Text functions throw errInvalidCall before the first setFont().
    int textWidth(std::string_view text) const final;
    int textHeight() const final;
    void drawText(int x, int y, std::string_view text, Color color, TextRole role) final;
    void fillRectangle(int x, int y, int width, int height, Color color) final;
    void drawPicture(const std::shared_ptr<const Picture>& picture, int x, int y, int width, int height) final;

protected:
    // The font that a device has for a request.
    struct DeviceFont {
        FontFace face;
        const FontUnits* units = nullptr;  // lives as long as the surface
    };
    // What of a run is on the sheet.
    struct Run {
        std::string_view text;
        Point start;             // on the baseline, where the first cell begins
        std::int64_t width = 0;  // along the text
        Color color;
        TextRole role = TextRole::content;
    };
    // A picture's left top corner comes to this point; a negative width or height mirrors it.
    struct Frame {
        Point corner;
        int width = 0;
        int height = 0;
    };

    // For the coming page. Without colour everything drawn is turned into shades of grey.
    void setPage(const DeviceCapabilities& device, bool color);

    Area sheet() const { return sheetOf(device_); }
    bool hasColor() const { return color_; }
    // Of the font selected.
    const FontRequest& font() const { return *request_; }
    const FontPixels& fontPixels() const { return pixels_; }
    TextScale textScale() const { return scale_; }
    Turn turn() const { return turn_; }

private:
    // Throws errPrinter where there is no font at all, and then leaves the font selected before.
    virtual DeviceFont findFont(const FontRequest& font) = 0;
    // The font selected has another size than before.
    virtual void fontSized() {}
    virtual void showRun(const Run& run) = 0;
    virtual void showRectangle(const Area& area, Color color) = 0;
    // Some of the picture is on the sheet.
    virtual void showPicture(const std::shared_ptr<const Picture>& picture, const Frame& frame) = 0;

    void requireFont() const;
    void sizeFont();
    Color shown(Color color) const;
    void fill(const Area& area, Color color);

    DeviceCapabilities device_;
    bool color_ = true;
    std::optional<FontRequest> request_;
    DeviceFont font_;
    FontPixels pixels_;
    TextScale scale_;
    Turn turn_;
};

}  // namespace platform::drawing
