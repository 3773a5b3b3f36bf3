#include "printer/Printer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "runtime/error.h"
#include "runtime/numbers.h"

namespace printer {

namespace {

// Farther away than any sheet reaches; positions beyond it are off the page all the same.
constexpr double farAway = 1e8;

int toPixels(double twips, int pixelsPerInch) {
    return static_cast<int>(std::lround(std::clamp(twips * pixelsPerInch / twipsPerInch, -farAway, farAway)));
}

int emHeight(runtime::Currency points, int pixelsPerInch) {
    const auto pixels = std::llround(points.toDouble() * pixelsPerInch / pointsPerInch);
    return static_cast<int>(std::clamp<long long>(pixels, 1, static_cast<long long>(farAway)));
}

float twipsPerPixel(int pixelsPerInch) { return runtime::toSingle(runtime::divide(twipsPerInch, pixelsPerInch)); }

float toTwips(int pixels, int pixelsPerInch) {
    return runtime::toSingle(runtime::divide(static_cast<double>(pixels) * twipsPerInch, pixelsPerInch));
}

}  // namespace

Printer::Printer(platform::Spooler& spooler, std::string deviceName, std::string title, Patience patience)
    : deviceName_(std::move(deviceName)),
      openDocument_(
          [&spooler, name = deviceName_, title = std::move(title)] { return spooler.openDocument(name, title); }),
      patience_(std::move(patience)) {}

Printer::Printer(std::string deviceName, OpenDocument openDocument, Patience patience)
    : deviceName_(std::move(deviceName)), openDocument_(std::move(openDocument)), patience_(std::move(patience)) {}

platform::PrintDocument& Printer::document() {
    if (!document_) {
        document_ = patience_.during(openDocument_);
    }
    return *document_;
}

const platform::Surface& Printer::Device() { return surface(); }

float Printer::TwipsPerPixelX() { return twipsPerPixel(surface().capabilities().logPixelsX); }

float Printer::TwipsPerPixelY() { return twipsPerPixel(surface().capabilities().logPixelsY); }

float Printer::ScaleWidth() {
    const auto caps = surface().capabilities();
    return toTwips(caps.horzRes, caps.logPixelsX);
}

float Printer::ScaleHeight() {
    const auto caps = surface().capabilities();
    return toTwips(caps.vertRes, caps.logPixelsY);
}

platform::FontFace Printer::Font(const FontStyle& font) {
    font_ = font;
    selected_ = font_;
    selectedDpi_ = surface().capabilities().logPixelsY;
    return surface().setFont(
        {font_.name, font_.charset, emHeight(font_.size, selectedDpi_), font_.bold, font_.italic, font_.underline});
}

void Printer::selectFont() {
    if (selectedDpi_ != surface().capabilities().logPixelsY || selected_ != font_) {
        Font(FontStyle(font_));
    }
}

int Printer::Option(platform::PageOption option) { return document().option(option); }

void Printer::Option(platform::PageOption option, int value) {
    platform::PrintDocument& opened = document();
    patience_.during([&] { opened.setOption(option, value); });
}

// A document that fails to take a page is lost as a whole: dropping it leaves nothing half-written behind.
template <typename Step>
void Printer::attempt(Step step) {
    try {
        step();
    } catch (...) {
        drop();
        throw;
    }
}

void Printer::drop() {
    pagesHandedOver_ = PagesHandedOver();
    perhapsHandedOver_ = PerhapsHandedOver();
    remarks_ = Remarks();
    document_.reset();
    pageOpen_ = false;
    pagesEnded_ = 0;
}

void Printer::beginPage() {
    if (!pageOpen_) {
        platform::PrintDocument& opened = document();
        attempt([&] { opened.beginPage(); });
        pageOpen_ = true;
    }
}

void Printer::endPage() {
    attempt([this] { document_->endPage(); });
    pageOpen_ = false;
    ++pagesEnded_;
}

void Printer::Print(std::string_view text, platform::TextRole role) {
    beginPage();
    selectFont();
    const auto caps = surface().capabilities();
    surface().drawText(toPixels(x_, caps.logPixelsX), toPixels(y_, caps.logPixelsY), text, color_, role);
    x_ += surface().textWidth(text) * static_cast<double>(twipsPerInch) / caps.logPixelsX;
}

void Printer::PaintPicture(const std::shared_ptr<const platform::Picture>& picture, double left, double top,
                           double width, double height) {
    beginPage();
    const auto caps = surface().capabilities();
    const int x = toPixels(left, caps.logPixelsX);
    const int y = toPixels(top, caps.logPixelsY);
    surface().drawPicture(picture, x, y, toPixels(left + width, caps.logPixelsX) - x,
                          toPixels(top + height, caps.logPixelsY) - y);
}

platform::Surface& Printer::Canvas() {
    beginPage();
    selectedDpi_ = 0;
    return surface();
}

void Printer::NewPage() {
    beginPage();
    endPage();
    x_ = 0;
    y_ = 0;
}

void Printer::EndDoc() {
    if (pageOpen_) {
        endPage();
    }
    Release();
}

void Printer::Release() {
    if (refused_) {
        return;
    }
    if (document_ && pagesEnded_ > 0) {
        refused_ = true;
        patience_.during([this] { document_->end(); });
        refused_ = false;
    }
    drop();
}

int Printer::PagesHandedOver() const { return pagesHandedOver_ + (document_ ? document_->pagesHandedOver() : 0); }

bool Printer::PerhapsHandedOver() const { return perhapsHandedOver_ || (document_ && document_->perhapsHandedOver()); }

std::vector<std::string> Printer::Remarks() const {
    std::vector<std::string> all = remarks_;
    if (document_) {
        const std::vector<std::string> last = document_->remarks();
        all.insert(all.end(), last.begin(), last.end());
    }
    return all;
}

std::vector<std::string> Printer::SaveRest(const std::string& path) {
    return document_ ? document_->saveRest(path) : std::vector<std::string>();
}

}  // namespace printer
