// Linear barcode symbols: which characters a symbology takes, and the bars and spaces that it makes of them.
#pragma once

#include <string>
#include <string_view>

namespace barcode {

// The numbers that the property Symbology takes.
enum Symbology : int {
    code39 = 1,
    code39FullAscii = 2,
    code128 = 3,  // code sets chosen by the encoder
    code128A = 4,
    code128B = 5,
    code128C = 6,
    standard2of5 = 7,
    interleaved2of5 = 8,
    code93 = 9,
    codabar = 10,
    msi = 11,
    code11 = 12,
};

inline constexpr bool isSymbology(int number) { return number >= code39 && number <= code11; }

struct SymbolOptions {
    bool useCheckDigit = false;      // compute the check characters that are optional
    bool displayCheckDigit = false;  // check characters in the human-readable text
    bool displayStopStart = false;   // start and stop characters in it, where they have a character
};

struct Symbol {
    // Widths, "1" to "4", of bars and spaces by turns, a bar first and last. In two-width symbologies "1" is narrow and
    // "2" or "3" wide, in the others the digit counts modules.
    std::string elements;
    std::string text;  // human-readable
};

// Whether the symbology can encode the character, a byte. The symbology is one of the twelve.
bool accepts(int symbology, unsigned char character);

// The whole symbol: start, data, check characters, stop, and what readers need behind it. The data is not empty and
// every character is accepted.
//   code128 to code128C  always with the check character, which has no text; code128 gives the shortest symbol there is
//   code128C             digits come in pairs: an odd number of them gets a leading "0", which the text shows
//   interleaved2of5      the same, the check digit counted among them
//   code93               always with both check characters; a shift character among them reads as the sign in its name
//   codabar              between A and A
//   code11               two check characters where they are computed
// Time and memory grow in proportion to the data.
Symbol encode(int symbology, std::string_view data, const SymbolOptions& options);

}  // namespace barcode
