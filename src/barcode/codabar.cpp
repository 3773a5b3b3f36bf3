// Codabar.
#include <array>
#include <string>

#include "barcode/families.h"

namespace barcode {

namespace {

// ANSI/AIM BC3-1995, table 1; "1" narrow, "2" wide. Behind the 16 characters A, B, C and D, start and stop.
constexpr std::array<std::string_view, 20> patterns = {
    "1111122", "1111221", "1112112", "2211111", "1121121", "2111121", "1211112", "1211211", "1221111", "2112111",
    "1112211", "1122111", "2111212", "2121112", "2121211", "1121212", "1122121", "1212112", "1112122", "1112221",
};
constexpr std::size_t firstStartStop = 16;
constexpr char startStopCharacter = 'A';
constexpr char gap = '1';

}  // namespace

std::string_view codabarStartStop(char letter) {
    return patterns[firstStartStop + static_cast<std::size_t>(letter - startStopCharacter)];
}

Symbol encodeCodabar(std::string_view data, const SymbolOptions& options) {
    const std::string_view startStop = codabarStartStop(startStopCharacter);
    Symbol symbol{std::string(startStop), std::string(data)};
    symbol.elements.reserve((data.size() + 2) * (startStop.size() + 1));
    for (const char character : data) {
        (symbol.elements += gap) += patterns[codabarCharacters.position(character)];
    }
    (symbol.elements += gap) += startStop;
    if (options.displayStopStart) {
        symbol.text = startStopCharacter + symbol.text + startStopCharacter;
    }
    return symbol;
}

}  // namespace barcode
