// The encoders, one family of symbologies to a source; symbol.h says what they take and give.
#pragma once

#include <string_view>

#include "barcode/character_set.h"
#include "barcode/symbol.h"

namespace barcode {

inline constexpr CharacterSet code39Characters("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%");
inline constexpr CharacterSet codabarCharacters("0123456789-$:/.+");
inline constexpr CharacterSet code11Characters("0123456789-");

Symbol encodeCode39(std::string_view data, const SymbolOptions& options);
Symbol encodeCode39FullAscii(std::string_view data, const SymbolOptions& options);
Symbol encodeCode93(std::string_view data, const SymbolOptions& options);
// The symbology is one of the four of Code 128.
Symbol encodeCode128(int symbology, std::string_view data);
Symbol encodeStandard2of5(std::string_view data);
Symbol encodeInterleaved2of5(std::string_view data, const SymbolOptions& options);
// Between A and A.
Symbol encodeCodabar(std::string_view data, const SymbolOptions& options);
// The elements of a start and stop character, "A" to "D"; which of them frames the data is the user's convention.
std::string_view codabarStartStop(char letter);
Symbol encodeMsi(std::string_view data, const SymbolOptions& options);
Symbol encodeCode11(std::string_view data, const SymbolOptions& options);

}  // namespace barcode
