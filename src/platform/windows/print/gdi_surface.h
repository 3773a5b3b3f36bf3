// The surface of a page that GDI draws.
#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string_view>

#include "platform/surface.h"
#include "platform/windows/print/dos_characters.h"
#include "platform/windows/print/font_handles.h"
#include "platform/windows/print/page_recording.h"
#include "platform/windows/print/system_headers.h"
#include "platform/windows/print/typeface.h"

namespace platform_windows::print {

// What a device says of its page.
platform::DeviceCapabilities capabilitiesOf(HDC device) noexcept;

// Measures on a device at once and draws on it when the page is played.
class GdiSurface final : public platform::Surface {
public:
    // The device must live as long as the surface.
    explicit GdiSurface(HDC device);

    // For the coming page. Without colour everything is turned into shades of grey.
    void setPage(const platform::DeviceCapabilities& capabilities, bool color);

    // Forgets what was drawn.
    void begin() noexcept { recording_.clear(); }

    // Draws the page. Returns 0 or the system's error code.
    DWORD play() { return recording_.play(device_, handles_); }

    platform::DeviceCapabilities capabilities() const override { return capabilities_; }
    platform::FontFace setFont(const platform::FontRequest& font) override;
    // Text functions throw errInvalidCall before the first setFont().
    int textWidth(std::string_view text) const override;
    int textHeight() const override;
    void drawText(int x, int y, std::string_view text, platform::Color color, platform::TextRole role) override;
    void fillRectangle(int x, int y, int width, int height, platform::Color color) override;
    void drawPicture(const std::shared_ptr<const platform::Picture>& picture, int x, int y, int width,
                     int height) override;

private:
    struct Span {
        std::int64_t start = 0;
        std::int64_t end = 0;
    };

    void requireFont() const;
    double stretch() const noexcept;
    // Fills what is on the sheet.
    void fill(Span across, Span down, COLORREF color);
    COLORREF shown(platform::Color color) const noexcept;

    HDC device_;
    DosCharacters characters_;
    platform::DeviceCapabilities capabilities_;
    bool color_ = true;
    std::list<Typeface> typefaces_;
    std::optional<platform::FontRequest> request_;
    const Typeface* typeface_ = nullptr;
    FontSize size_;
    FontHandles handles_;
    PageRecording recording_;
};

}  // namespace platform_windows::print
