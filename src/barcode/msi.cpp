// MSI (modified Plessey).
#include <array>
#include <string>

#include "barcode/families.h"

namespace barcode {

namespace {

// Each digit is four bits, the highest first: a 0 is a narrow bar and a wide space, a 1 a wide bar and a narrow space.
// No standard describes this symbology; the table was checked against an independent encoder.
constexpr std::array<std::string_view, 10> patterns = {
    "12121212", "12121221", "12122112", "12122121", "12211212",
    "12211221", "12212112", "12212121", "21121212", "21121221",
};
constexpr std::string_view start = "21";
constexpr std::string_view stop = "121";

// Modulo 10 with every second digit doubled, the rightmost one first (ISO/IEC 7812-1:2017, annex B).
char checkDigit(std::string_view data) {
    std::size_t sum = 0;
    bool doubled = true;
    for (std::size_t index = data.size(); index-- > 0; doubled = !doubled) {
        const std::size_t value = digits.position(data[index]) * (doubled ? 2 : 1);
        sum += value / 10 + value % 10;
    }
    return digits.character((10 - sum % 10) % 10);
}

}  // namespace

Symbol encodeMsi(std::string_view data, const SymbolOptions& options) {
    std::string encoded(data);
    if (options.useCheckDigit) {
        encoded += checkDigit(data);
    }
    Symbol symbol{std::string(start), options.displayCheckDigit ? encoded : std::string(data)};
    symbol.elements.reserve(encoded.size() * patterns.front().size() + 5);
    for (const char digit : encoded) {
        symbol.elements += patterns[digits.position(digit)];
    }
    symbol.elements += stop;
    return symbol;
}

}  // namespace barcode
