// Code 11.
#include <array>
#include <string>

#include "barcode/families.h"

namespace barcode {

namespace {

// AIM USD-8; "1" narrow, "3" wide. The table was checked against an independent encoder.
constexpr std::array<std::string_view, 11> patterns = {
    "11113", "31113", "13113", "33111", "11313", "31311", "13311", "11133", "31131", "31111", "11311",
};
constexpr std::string_view startStop = "11331";
constexpr char gap = '1';
constexpr std::size_t greatestWeightC = 10;
constexpr std::size_t greatestWeightK = 9;

char checkCharacter(std::string_view text, std::size_t greatestWeight) {
    const std::size_t modulus = code11Characters.characters().size();
    const auto position = [](char character) { return code11Characters.position(character); };
    return code11Characters.character(weightedSum(text, greatestWeight, position) % modulus);
}

}  // namespace

Symbol encodeCode11(std::string_view data, const SymbolOptions& options) {
    std::string encoded(data);
    if (options.useCheckDigit) {
        encoded += checkCharacter(encoded, greatestWeightC);
        encoded += checkCharacter(encoded, greatestWeightK);
    }
    Symbol symbol{std::string(startStop), options.displayCheckDigit ? encoded : std::string(data)};
    symbol.elements.reserve((encoded.size() + 2) * (startStop.size() + 1));
    for (const char character : encoded) {
        (symbol.elements += gap) += patterns[code11Characters.position(character)];
    }
    (symbol.elements += gap) += startStop;
    return symbol;
}

}  // namespace barcode
