// The surface of a page as the screen shows it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/drawing/screen_surface.h"
#include "platform/windows/gdi/font_handles.h"
#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/gdi/page_drawing.h"
#include "platform/windows/gdi/system_headers.h"
#include "platform/windows/gdi/typefaces.h"

namespace platform_windows::gdi {

// Each letter stands at the screen's pixel next to its place on paper.
class SheetSurface final : public platform::drawing::ScreenSurface {
public:
    SheetSurface() = default;
    SheetSurface(const SheetSurface&) = delete;
    SheetSurface& operator=(const SheetSurface&) = delete;
    ~SheetSurface() override { endSheet(); }

    // Draws on this bitmap, which is selected on the canvas, from now on until the sheet's end. Both are borrowed.
    void beginSheet(HDC canvas, const platform::drawing::ScreenPixels& pixels, const platform::SheetView& view);

    // The canvas has its own font, colours and clipping again, and the bitmap all that was drawn. Without a sheet
    // nothing happens.
    void endSheet() noexcept;

private:
    DeviceFont findFont(const platform::FontRequest& font) override;
    void showRun(const Run& run) override;
    void finishText() noexcept override;

    FontKey fontKey() const;
    void showLetters(std::int64_t start, std::int64_t baseline, platform::Color color);

    DeviceContext device_{::CreateCompatibleDC(nullptr)};  // to measure on
    Typefaces typefaces_{Smoothing::grey};
    const Typeface* typeface_ = nullptr;
    FontHandles handles_;

    HDC canvas_ = nullptr;
    int canvasState_ = 0;
    std::optional<PageDrawing> drawing_;
    bool lettersPending_ = false;
    std::vector<wchar_t> letters_;  // reused
    std::vector<int> advances_;
};

}  // namespace platform_windows::gdi
