// A document that nobody prints: it measures as the printer's own does and keeps what is drawn.
#pragma once

#include <map>
#include <memory>

#include "platform/drawing/page_recording.h"
#include "platform/print_document.h"
#include "preview/preview_pages.h"

namespace preview {

// Records, but no more than a page may sensibly hold: beyond that it is errOutOfMemory.
class PageSurface : public platform::drawing::RecordingSurface {
public:
    using RecordingSurface::RecordingSurface;

    void drawText(int x, int y, std::string_view text, platform::Color color, platform::TextRole role) override;
    void fillRectangle(int x, int y, int width, int height, platform::Color color) override;
    void drawPicture(const std::shared_ptr<const platform::Picture>& picture, int x, int y, int width,
                     int height) override;
    void clear() noexcept;

private:
    void takeRoom(std::size_t bytes);

    std::size_t steps_ = 0;
    std::size_t bytes_ = 0;
};

class PreviewDocument : public platform::PrintDocument {
public:
    // Of the device's document no page is ever begun. Where it is a sheet without a printer, every paper bin is right.
    PreviewDocument(std::unique_ptr<platform::PrintDocument> device, bool sheetOnly);

    platform::Surface& surface() override { return surface_; }
    int option(platform::PageOption option) const override;
    void setOption(platform::PageOption option, int value) override;
    void beginPage() override;
    void endPage() override;
    void end() override {}
    int pagesHandedOver() const override { return 0; }
    void abort() noexcept override { device_->abort(); }

    const PageSurface& pageSurface() const { return surface_; }

    // The page that is open, or would be begun now, and the same with what is drawn on it.
    PreviewPage emptyPage() const;
    PreviewPage page() const;

private:
    std::unique_ptr<platform::PrintDocument> device_;
    const bool sheetOnly_;
    PageSurface surface_;
    bool pageOpen_ = false;
    std::map<platform::PageOption, int> forNextPage_;
    int sheetBin_ = 0;
};

}  // namespace preview
