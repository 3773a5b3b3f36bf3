#include "preview/preview_document.h"

#include "runtime/error.h"

namespace preview {

using platform::PageOption;

void PageSurface::drawText(int x, int y, std::string_view text, platform::Color color, platform::TextRole role) {
    takeRoom(text.size());
    RecordingSurface::drawText(x, y, text, color, role);
}

void PageSurface::fillRectangle(int x, int y, int width, int height, platform::Color color) {
    takeRoom(0);
    RecordingSurface::fillRectangle(x, y, width, height, color);
}

void PageSurface::drawPicture(const std::shared_ptr<const platform::Picture>& picture, int x, int y, int width,
                              int height) {
    takeRoom(0);
    RecordingSurface::drawPicture(picture, x, y, width, height);
}

void PageSurface::clear() noexcept {
    RecordingSurface::clear();
    steps_ = 0;
    bytes_ = 0;
}

// A page full of the smallest type has some 30,000 characters.
void PageSurface::takeRoom(std::size_t bytes) {
    constexpr std::size_t mostSteps = 400'000;
    constexpr std::size_t mostBytes = 16'000'000;
    ++steps_;
    bytes_ += bytes;
    if (steps_ > mostSteps || bytes_ > mostBytes) {
        throw runtime::Error(runtime::errOutOfMemory,
                             "auf der Seite ist mehr, als die Vorschau zeigt; gedruckt werden kann sie");
    }
}

PreviewDocument::PreviewDocument(std::unique_ptr<platform::PrintDocument> device, bool sheetOnly)
    : device_(std::move(device)), sheetOnly_(sheetOnly), surface_(device_->surface()) {}

int PreviewDocument::option(PageOption option) const {
    if (sheetOnly_ && option == PageOption::paperBin) {
        return sheetBin_;
    }
    const auto coming = forNextPage_.find(option);
    return coming != forNextPage_.end() ? coming->second : device_->option(option);
}

// The device would change its page at once, because none is open there: so it says what it makes of the value, and
// keeps the old one until our page has ended.
void PreviewDocument::setOption(PageOption option, int value) {
    if (sheetOnly_ && option == PageOption::paperBin) {
        sheetBin_ = value;
        return;
    }
    const int before = device_->option(option);
    if (value != before) {
        device_->setOption(option, value);
    }
    if (pageOpen_) {
        forNextPage_[option] = device_->option(option);
        if (device_->option(option) != before) {
            device_->setOption(option, before);
        }
    }
}

void PreviewDocument::beginPage() { pageOpen_ = true; }

// The device has taken the values once already.
void PreviewDocument::endPage() {
    surface_.clear();
    pageOpen_ = false;
    const std::map<PageOption, int> values = std::move(forNextPage_);
    forNextPage_.clear();
    for (const auto& [option, value] : values) {
        if (device_->option(option) != value) {
            device_->setOption(option, value);
        }
    }
}

PreviewPage PreviewDocument::emptyPage() const {
    constexpr int monochrome = 1;
    PreviewPage page;
    page.device = surface_.capabilities();
    page.color = device_->option(PageOption::colorMode) != monochrome;
    page.paperSize = device_->option(PageOption::paperSize);
    page.paperBin = sheetOnly_ ? sheetBin_ : device_->option(PageOption::paperBin);
    return page;
}

PreviewPage PreviewDocument::page() const {
    PreviewPage page = emptyPage();
    page.recording = surface_.recording();
    return page;
}

}  // namespace preview
