// The surface of a PDF page.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/linux/pdf/font_collection.h"
#include "platform/linux/pdf/page_content.h"
#include "platform/linux/pdf/pdf_document.h"
#include "platform/surface.h"

namespace platform_linux::pdf {

class PageSurface final : public platform::Surface {
public:
    explicit PageSurface(FontCollection& fonts) : fonts_(fonts) {}

    // Throws errInvalidPropertyValue for a page without size or resolution.
    static void check(const PdfPage& page);
    // The page has passed the check.
    void setPage(const PdfPage& page);
    const PdfPage& page() const noexcept { return page_; }

    void begin();
    // The page's content stream; valid until the next page begins.
    std::string_view finish() { return content_.finish(); }

    platform::DeviceCapabilities capabilities() const override { return page_.device; }
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
    double stretch() const;
    platform::Color shown(platform::Color color) const;
    // Fills what is on the sheet, whose pixels these are.
    void fill(Span across, Span down);

    FontCollection& fonts_;
    PdfPage page_;
    PageContent content_;
    std::optional<platform::FontRequest> request_;
    platform::FontFace face_;
    EmbeddedFont* font_ = nullptr;
    FontSize size_;
};

}  // namespace platform_linux::pdf
