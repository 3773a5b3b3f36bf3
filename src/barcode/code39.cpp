// Code 39 and Code 39 full ASCII.
#include <array>
#include <string>

#include "barcode/families.h"

namespace barcode {

namespace {

// ISO/IEC 16388:2007, table 1; behind the 43 characters the asterisk, start and stop. "1" narrow, "2" wide.
constexpr std::array<std::string_view, 44> patterns = {
    "111221211", "211211112", "112211112", "212211111", "111221112", "211221111", "112221111", "111211212", "211211211",
    "112211211", "211112112", "112112112", "212112111", "111122112", "211122111", "112122111", "111112212", "211112211",
    "112112211", "111122211", "211111122", "112111122", "212111121", "111121122", "211121121", "112121121", "111111222",
    "211111221", "112111221", "111121221", "221111112", "122111112", "222111111", "121121112", "221121111", "122121111",
    "121111212", "221111211", "122111211", "121212111", "121211121", "121112121", "111212121", "121121211",
};
constexpr std::string_view startStop = patterns.back();
constexpr char gap = '1';

// ISO/IEC 16388:2007, table A.2: the full ASCII set by one or two of the 43 characters.
std::string fullAsciiPair(char character) {
    const auto shifted = [character](char shift, char first, char letter) {
        return std::string{shift, static_cast<char>(letter + (character - first))};
    };
    if (character == 0) {
        return "%U";
    }
    if (character <= 26) {
        return shifted('$', 1, 'A');
    }
    if (character < ' ') {
        return shifted('%', 27, 'A');
    }
    if (character == ' ' || character == '-' || character == '.' || digits.contains(character) ||
        (character >= 'A' && character <= 'Z')) {
        return {character};
    }
    if (character <= '/') {
        return shifted('/', '!', 'A');
    }
    if (character == ':') {
        return "/Z";
    }
    if (character <= '?') {
        return shifted('%', ';', 'F');
    }
    if (character == '@') {
        return "%V";
    }
    if (character <= '_') {
        return shifted('%', '[', 'K');
    }
    if (character == '`') {
        return "%W";
    }
    return character <= 'z' ? shifted('+', 'a', 'A') : shifted('%', '{', 'P');
}

// The characters encoded, and the data as people read it.
Symbol build(std::string_view encoded, std::string_view data, const SymbolOptions& options) {
    const auto check = [&] {
        std::size_t sum = 0;
        for (const char character : encoded) {
            sum += code39Characters.position(character);
        }
        return sum % code39Characters.characters().size();
    };
    Symbol symbol;
    std::string& elements = symbol.elements;
    elements.reserve((encoded.size() + 3) * (startStop.size() + 1));
    elements += startStop;
    const auto append = [&elements](std::string_view pattern) { (elements += gap) += pattern; };
    for (const char character : encoded) {
        append(patterns[code39Characters.position(character)]);
    }
    symbol.text = data;
    if (options.useCheckDigit) {
        const std::size_t position = check();
        append(patterns[position]);
        if (options.displayCheckDigit) {
            symbol.text += code39Characters.character(position);
        }
    }
    append(startStop);
    if (options.displayStopStart) {
        symbol.text = "*" + symbol.text + "*";
    }
    return symbol;
}

}  // namespace

Symbol encodeCode39(std::string_view data, const SymbolOptions& options) { return build(data, data, options); }

Symbol encodeCode39FullAscii(std::string_view data, const SymbolOptions& options) {
    std::string encoded;
    encoded.reserve(2 * data.size());
    for (const char character : data) {
        encoded += fullAsciiPair(character);
    }
    return build(encoded, data, options);
}

}  // namespace barcode
