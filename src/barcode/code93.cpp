// Code 93.
#include <array>
#include <string>

#include "barcode/families.h"

namespace barcode {

namespace {

// ANSI/AIM BC5-1995, table 1. Behind the 43 characters the four shift characters, which only their position reaches,
// then start and stop. Module counts.
constexpr std::array<std::string_view, 48> patterns = {
    "131112", "111213", "111312", "111411", "121113", "121212", "121311", "111114", "131211", "141111",
    "211113", "211212", "211311", "221112", "221211", "231111", "112113", "112212", "112311", "122112",
    "132111", "111123", "111222", "111321", "121122", "131121", "212112", "212211", "211122", "211221",
    "221121", "222111", "112122", "112221", "122121", "123111", "121131", "311112", "311211", "321111",
    "112131", "113121", "211131", "121221", "312111", "311121", "122211", "111141",
};
constexpr std::string_view startStop = patterns.back();
constexpr char terminatingBar = '1';

// A field of 47 characters, its end filled with blanks: a blank is found where the set has it first.
constexpr CharacterSet characters("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%    ");
constexpr std::size_t modulus = 47;
constexpr std::size_t greatestWeightC = 20;
constexpr std::size_t greatestWeightK = 15;

// Positions, because a check character may be a shift character.
std::size_t checkPosition(std::string_view positions, std::size_t greatestWeight) {
    const auto position = [](char byte) { return std::size_t{static_cast<unsigned char>(byte)}; };
    return weightedSum(positions, greatestWeight, position) % modulus;
}

// People read a shift character by the sign that its name has.
char readable(std::size_t position) {
    constexpr std::string_view shifts = "$%/+";
    const std::size_t ordinary = code39Characters.characters().size();
    return position < ordinary ? characters.character(position) : shifts[position - ordinary];
}

}  // namespace

Symbol encodeCode93(std::string_view data, const SymbolOptions& options) {
    std::string positions;
    positions.reserve(data.size() + 2);
    for (const char character : data) {
        positions += static_cast<char>(characters.position(character));
    }
    positions += static_cast<char>(checkPosition(positions, greatestWeightC));
    positions += static_cast<char>(checkPosition(positions, greatestWeightK));

    Symbol symbol;
    symbol.text = data;
    symbol.elements.reserve((positions.size() + 2) * startStop.size() + 1);
    symbol.elements += startStop;
    for (const char position : positions) {
        symbol.elements += patterns[static_cast<unsigned char>(position)];
    }
    (symbol.elements += startStop) += terminatingBar;
    if (options.displayCheckDigit) {
        for (std::size_t index = data.size(); index < positions.size(); ++index) {
            symbol.text += readable(static_cast<unsigned char>(positions[index]));
        }
    }
    if (options.displayStopStart) {
        symbol.text = "*" + symbol.text + "*";
    }
    return symbol;
}

}  // namespace barcode
