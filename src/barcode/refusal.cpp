#include "barcode/refusal.h"

#include "barcode/symbol.h"

namespace barcode {

namespace {

constexpr std::size_t longestQuotation = 40;

bool isPrintable(char character) { return character >= ' ' && character <= '~'; }

std::string named(char character) {
    return isPrintable(character) ? "'" + std::string(1, character) + "'"
                                  : "mit dem Code " + std::to_string(static_cast<unsigned char>(character));
}

// The data as far as every code page shows it alike.
std::string quoted(std::string_view data) {
    std::string text(data.substr(0, longestQuotation));
    for (char& character : text) {
        character = isPrintable(character) ? character : '?';
    }
    return "'" + text + (data.size() > longestQuotation ? "...'" : "'");
}

std::string_view accepted(int symbology) {
    switch (symbology) {
        case code39:
        case code93:
            return "Ziffern, Großbuchstaben, Leerzeichen und - . $ / + %";
        case code39FullAscii:
        case code128:
            return "die Zeichen mit den Codes 0 bis 127";
        case code128A:
            return "die Zeichen mit den Codes 0 bis 95";
        case code128B:
            return "die Zeichen mit den Codes 32 bis 126";
        case codabar:
            return "Ziffern und - $ : / . +";
        case code11:
            return "Ziffern und -";
        default:
            return "Ziffern";
    }
}

}  // namespace

std::string refusal(int symbology, std::string_view data, std::size_t position) {
    return "Zeichen " + named(data[position]) + " an Stelle " + std::to_string(position + 1) + " von " + quoted(data) +
           "; möglich sind hier nur " + std::string(accepted(symbology));
}

}  // namespace barcode
