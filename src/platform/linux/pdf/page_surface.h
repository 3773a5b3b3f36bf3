// The surface of a PDF page.
#pragma once

#include <string_view>

#include "platform/drawing/pixel_surface.h"
#include "platform/linux/pdf/font_collection.h"
#include "platform/linux/pdf/page_content.h"
#include "platform/linux/pdf/pdf_document.h"
#include "platform/linux/pdf/picture_collection.h"

namespace platform_linux::pdf {

class PageSurface final : public platform::drawing::PixelSurface {
public:
    PageSurface(FontCollection& fonts, PictureCollection& pictures) : fonts_(fonts), pictures_(pictures) {}

    // Throws errInvalidPropertyValue for a page without size or resolution.
    static void check(const PdfPage& page);
    // The page has passed the check.
    void setPage(const PdfPage& page);
    const PdfPage& page() const noexcept { return page_; }

    void begin();
    // The page's content stream; valid until the next page begins.
    std::string_view finish() { return content_.finish(); }

private:
    DeviceFont findFont(const platform::FontRequest& font) override;
    void fontSized() override;
    void showRun(const Run& run) override;
    void showRectangle(const platform::drawing::Area& area, platform::Color color) override;
    void showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) override;
    // From the printable area's corner to the sheet's.
    platform::drawing::Point onSheet(platform::drawing::Point point) const;

    FontCollection& fonts_;
    PictureCollection& pictures_;
    PdfPage page_;
    PageContent content_;
    EmbeddedFont* font_ = nullptr;
    FontSize size_;
};

}  // namespace platform_linux::pdf
