#include "barcode/clsLinearBarCodes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "barcode/refusal.h"
#include "runtime/error.h"

namespace barcode {

namespace {

constexpr const char* dataSource = "clsBarCode.BarCodeData";
constexpr const char* ratioSource = "clsBarCode.BarRatio";
constexpr const char* widthSource = "clsBarCode.BarWidth";
constexpr const char* drawSource = "clsBarCode.Draw_BarCode";
constexpr const char* outputSource = "clsBarCode.BarcodeOutput";

constexpr double pointsPerInch = 72;
constexpr double largestEmHeight = 1e8;

int emHeight(double points, int pixelsPerInch) {
    const double pixels = points * pixelsPerInch / pointsPerInch;
    return pixels >= 1 ? static_cast<int>(std::lround(std::min(pixels, largestEmHeight))) : 1;
}

bool hasRatio(int symbology) {
    return symbology == code39 || symbology == code39FullAscii || symbology == interleaved2of5;
}

bool isUsable(const platform::Surface* surface) {
    return surface != nullptr && surface->capabilities().logPixelsX > 0 && surface->capabilities().logPixelsY > 0;
}

}  // namespace

void clsLinearBarCodes::BarCodeData(std::string data) {
    checkData(data);
    data_ = std::move(data);
}

void clsLinearBarCodes::BarTextFont(BarTextFontStyle font) { font_ = std::move(font); }

void clsLinearBarCodes::BarRotation(int degrees) {
    rotation_ = degrees == 90 || degrees == 180 || degrees == 270 ? degrees : 0;
}

void clsLinearBarCodes::BarRatio(double ratio) {
    if (!hasRatio(symbology_)) {
        ratio_ = 1.0;
    } else if (ratio >= 2.0 && ratio <= 3.0) {
        ratio_ = ratio / 2;
    } else {
        fail(invalidRatio, "Invalid barcode ratio.", ratioSource, "möglich ist 2 bis 3");
    }
}

std::string clsLinearBarCodes::HRText() const {
    const bool encodable = isSymbology(symbology_) && !data_.empty() && !refusedPosition(data_);
    return encodable ? encode(symbology_, data_, options_).text : std::string();
}

std::int64_t clsLinearBarCodes::TotalBarWidth() { return measured().layout.total.width; }

std::int64_t clsLinearBarCodes::TotalBarHeight() { return measured().layout.total.height; }

void clsLinearBarCodes::DrawBarCode() {
    const MeasuredSymbol symbol = measured();
    const platform::drawing::Turn turn(rotation_);
    draw(*output_, symbol, {turn, originOnPage(turn, {x_, y_}, symbol.layout.total)}, color_);
}

MeasuredSymbol clsLinearBarCodes::measured() {
    if (!isUsable(output_)) {
        fail(runtime::errInvalidCall, "Invalid control to output the barcode.", outputSource);
    }
    if (!isSymbology(symbology_)) {
        fail(runtime::errInvalidCall, "Invalid or no symbology selected.", drawSource);
    }
    if (data_.empty()) {
        fail(runtime::errInvalidCall, "No barcode data specified.", widthSource);
    }
    checkData(data_);

    const platform::DeviceCapabilities caps = output_->capabilities();
    const std::int64_t narrow = narrowWidth(
        xFactor_ * multiplier_, platform::drawing::Turn(rotation_).upright() ? caps.logPixelsY : caps.logPixelsX);
    Symbol symbol = encode(symbology_, data_, options_);
    const ElementWidths widths(narrow, ratio_);
    const Size bars{widths.sum(symbol.elements), std::max(height_, 0)};
    if (placement_ == TextPlacement::none) {
        symbol.text.clear();
    }
    const Layout layout = layOut(bars, textPlace(symbol.text));
    return {std::move(symbol.elements), widths, std::move(symbol.text), layout};
}

TextPlace clsLinearBarCodes::textPlace(const std::string& text) {
    if (text.empty()) {
        return {};
    }
    output_->setFont({font_.name, platform::charsetOem, emHeight(font_.size, output_->capabilities().logPixelsY),
                      font_.bold, font_.italic, false, rotation_});
    return {placement_, alignment_, std::max(gap_, 0), {output_->textWidth(text), output_->textHeight()}};
}

std::optional<std::size_t> clsLinearBarCodes::refusedPosition(const std::string& data) const {
    const auto refused = std::find_if_not(data.begin(), data.end(), [this](char character) {
        return accepts(symbology_, static_cast<unsigned char>(character));
    });
    return refused == data.end() ? std::nullopt : std::optional(static_cast<std::size_t>(refused - data.begin()));
}

void clsLinearBarCodes::checkData(const std::string& data) {
    if (!isSymbology(symbology_)) {
        return;
    }
    if (const auto position = refusedPosition(data)) {
        fail(invalidCharacter, "Invalid character in the Barcode.", dataSource, refusal(symbology_, data, *position));
    }
}

void clsLinearBarCodes::fail(std::int32_t number, const char* text, const char* source, std::string detail) {
    errorText_ = text;
    throw runtime::Error(number, source, text, std::move(detail));
}

}  // namespace barcode
