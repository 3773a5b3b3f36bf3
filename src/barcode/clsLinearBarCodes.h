// A linear barcode that is drawn on a page. The macros of print files ask for Code 39 alone so far; the other
// symbologies, the human-readable text and the rotations are for those who draw labels.
//
//     clsLinearBarCodes barcode;
//     barcode.Symbology(1);
//     barcode.BarcodeOutput(&surface);
//     barcode.BarRatio(3.0);
//     barcode.BarCodeData("ABC");
//     barcode.DrawBarCode();
//
// A property X reads as X() and is set with X(value). The order counts for two of them: the ratio and the data are
// checked against the symbology that is set at that moment.
//
// Failures are runtime::Error with the operation as the source; their text stays readable as ErrorText().
//   invalidCharacter  BarCodeData, DrawBarCode and the totals: a character that the symbology does not have
//   invalidRatio      BarRatio
//   errInvalidCall    DrawBarCode and the totals: no surface, no symbology or no data, found in this order
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "barcode/drawing.h"
#include "barcode/layout.h"
#include "barcode/symbol.h"
#include "platform/surface.h"

namespace barcode {

struct BarTextFontStyle {
    std::string name = "Tahoma";
    double size = 10;  // points
    bool bold = false;
    bool italic = false;
};

class clsLinearBarCodes {
public:
    static constexpr std::int32_t invalidCharacter = 5970;
    static constexpr std::int32_t invalidRatio = 5980;

    // Bytes in the host's DOS code page. While no symbology is set any are taken.
    const std::string& BarCodeData() const { return data_; }
    void BarCodeData(std::string data);

    // 1 to 12, see barcode::Symbology; any other number is none, as in a new object.
    int Symbology() const { return symbology_; }
    void Symbology(int number) { symbology_ = number; }

    // Whether the check characters that a symbology leaves to its users are computed. Off in a new object, so a scanner
    // as it leaves its factory returns the data.
    bool UseCheckDigit() const { return options_.useCheckDigit; }
    void UseCheckDigit(bool on) { options_.useCheckDigit = on; }

    // What the human-readable text shows besides the data: check characters; start and stop characters. Off.
    bool DisplayCheckDigit() const { return options_.displayCheckDigit; }
    void DisplayCheckDigit(bool on) { options_.displayCheckDigit = on; }
    bool DisplayStopStart() const { return options_.displayStopStart; }
    void DisplayStopStart(bool on) { options_.displayStopStart = on; }

    // The human-readable text; empty while there is no symbol.
    std::string HRText() const;

    // Where it stands: nowhere in a new object, and centred.
    TextPlacement HRTextPlacement() const { return placement_; }
    void HRTextPlacement(TextPlacement placement) { placement_ = placement; }
    TextAlignment HRTextAlignment() const { return alignment_; }
    void HRTextAlignment(TextAlignment alignment) { alignment_ = alignment; }

    // Pixels between the bars and the text; a negative gap is none. 0.
    int BarTextGap() const { return gap_; }
    void BarTextGap(int pixels) { gap_ = pixels; }
    const BarTextFontStyle& BarTextFont() const { return font_; }
    void BarTextFont(BarTextFontStyle font);

    // Height of the bars in pixels. 150, a quarter of an inch on a printer of 600 dpi.
    int BarcodeHeight() const { return height_; }
    void BarcodeHeight(int pixels) { height_ = pixels; }

    // Top left corner, in pixels of the surface, of the box that the symbol takes on the page, in every rotation. 0.
    int BarCodeX() const { return x_; }
    void BarCodeX(int pixels) { x_ = pixels; }
    int BarCodeY() const { return y_; }
    void BarCodeY(int pixels) { y_ = pixels; }

    // Of bars and text. Black.
    platform::Color BarColor() const { return color_; }
    void BarColor(platform::Color color) { color_ = color; }

    // Degrees by which the symbol is turned counter-clockwise: 0, 90 (the first bar is at the bottom), 180 or 270. Any
    // other value is 0.
    int BarRotation() const { return rotation_; }
    void BarRotation(int degrees);

    // Set to the ratio of wide to narrow elements, 2.0 to 3.0, for the symbologies 1, 2 and 8; reads as half of it, by
    // which the width digits "2" and "3" are multiplied. For every other symbology it becomes 1.0 whatever is set. A
    // refused value changes nothing. 1.0.
    double BarRatio() const { return ratio_; }
    void BarRatio(double ratio);

    // Their product is the width of the narrow element in 1/600 inch, which is drawn as the nearest number of whole
    // pixels, one at least. 3 and 2: 0.01 inch.
    double BarXFactor() const { return xFactor_; }
    void BarXFactor(double factor) { xFactor_ = factor; }
    int BarMultiplier() const { return multiplier_; }
    void BarMultiplier(int multiplier) { multiplier_ = multiplier; }

    // Borrowed; nullptr is none, as in a new object.
    platform::Surface* BarcodeOutput() const { return output_; }
    void BarcodeOutput(platform::Surface* surface) { output_ = surface; }

    // Size in pixels of everything that DrawBarCode() draws: along the elements, and across them.
    std::int64_t TotalBarWidth();
    std::int64_t TotalBarHeight();

    // Draws bars and text as far as they lie on the sheet. Text leaves its font selected on the surface, as the totals
    // of a symbol with text do.
    void DrawBarCode();

    // The text of the last failure; empty where there was none.
    const std::string& ErrorText() const { return errorText_; }

private:
    std::optional<std::size_t> refusedPosition(const std::string& data) const;
    void checkData(const std::string& data);
    MeasuredSymbol measured();
    TextPlace textPlace(const std::string& text);
    [[noreturn]] void fail(std::int32_t number, const char* text, const char* source, std::string detail = {});

    std::string data_;
    int symbology_ = 0;
    SymbolOptions options_;
    TextPlacement placement_ = TextPlacement::none;
    TextAlignment alignment_ = TextAlignment::centre;
    int gap_ = 0;
    BarTextFontStyle font_;
    int height_ = 150;
    int x_ = 0;
    int y_ = 0;
    platform::Color color_;
    int rotation_ = 0;
    double ratio_ = 1.0;
    double xFactor_ = 3.0;
    int multiplier_ = 2;
    platform::Surface* output_ = nullptr;
    std::string errorText_;
};

}  // namespace barcode
