// Standard (industrial) and Interleaved 2 of 5.
#include <array>
#include <string>

#include "barcode/families.h"

namespace barcode {

namespace {

// Bars narrow "1" or wide "3" as the two-out-of-five code has it, a narrow space behind each. No standard describes
// this symbology; the table was checked against an independent encoder.
constexpr std::array<std::string_view, 10> standardPatterns = {
    "1111313111", "3111111131", "1131111131", "3131111111", "1111311131",
    "3111311111", "1131311111", "1111113131", "3111113111", "1131113111",
};
constexpr std::string_view standardStart = "313111";
constexpr std::string_view standardStop = "31113";

// ISO/IEC 16390:2007, table 1; "1" narrow, "2" wide, for bars or spaces.
constexpr std::array<std::string_view, 10> interleavedPatterns = {
    "11221", "21112", "12112", "22111", "11212", "21211", "12211", "11122", "21121", "12121",
};
constexpr std::string_view interleavedStart = "1111";
constexpr std::string_view interleavedStop = "211";

std::string_view patternOf(const std::array<std::string_view, 10>& patterns, char digit) {
    return patterns[digits.position(digit)];
}

// ISO/IEC 16390:2007, A.1: modulo 10, weights 3 and 1 by turns from the right.
char checkDigit(std::string_view data) {
    std::size_t sum = 0;
    std::size_t weight = 3;
    for (std::size_t index = data.size(); index-- > 0;) {
        sum += weight * digits.position(data[index]);
        weight = 4 - weight;
    }
    return digits.character((10 - sum % 10) % 10);
}

}  // namespace

Symbol encodeStandard2of5(std::string_view data) {
    Symbol symbol{std::string(standardStart), std::string(data)};
    symbol.elements.reserve((data.size() + 2) * standardPatterns.front().size());
    for (const char digit : data) {
        symbol.elements += patternOf(standardPatterns, digit);
    }
    symbol.elements += standardStop;
    return symbol;
}

Symbol encodeInterleaved2of5(std::string_view data, const SymbolOptions& options) {
    std::string encoded(data);
    if (options.useCheckDigit) {
        encoded += checkDigit(data);
    }
    if (encoded.size() % 2 != 0) {
        encoded.insert(0, 1, '0');
    }
    Symbol symbol;
    symbol.elements.reserve(encoded.size() * 5 + 8);
    symbol.elements += interleavedStart;
    for (std::size_t index = 0; index < encoded.size(); index += 2) {
        const std::string_view bars = patternOf(interleavedPatterns, encoded[index]);
        const std::string_view spaces = patternOf(interleavedPatterns, encoded[index + 1]);
        for (std::size_t element = 0; element < bars.size(); ++element) {
            (symbol.elements += bars[element]) += spaces[element];
        }
    }
    symbol.elements += interleavedStop;
    if (options.useCheckDigit && !options.displayCheckDigit) {
        encoded.pop_back();
    }
    symbol.text = encoded;
    return symbol;
}

}  // namespace barcode
