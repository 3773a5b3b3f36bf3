#include "barcode/symbol.h"

#include "barcode/families.h"
#include "runtime/error.h"

namespace barcode {

bool accepts(int symbology, unsigned char character) {
    const char given = static_cast<char>(character);
    switch (symbology) {
        case code39:
        case code93:
            return code39Characters.contains(given);
        case code39FullAscii:
        case code128:
            return character < 128;
        case code128A:
            return character < 96;
        case code128B:
            return character >= 32 && character < 127;
        case codabar:
            return codabarCharacters.contains(given);
        case code11:
            return code11Characters.contains(given);
        default:
            return digits.contains(given);
    }
}

Symbol encode(int symbology, std::string_view data, const SymbolOptions& options) {
    switch (symbology) {
        case code39:
            return encodeCode39(data, options);
        case code39FullAscii:
            return encodeCode39FullAscii(data, options);
        case code128:
        case code128A:
        case code128B:
        case code128C:
            return encodeCode128(symbology, data);
        case standard2of5:
            return encodeStandard2of5(data);
        case interleaved2of5:
            return encodeInterleaved2of5(data, options);
        case code93:
            return encodeCode93(data, options);
        case codabar:
            return encodeCodabar(data, options);
        case msi:
            return encodeMsi(data, options);
        case code11:
            return encodeCode11(data, options);
        default:
            throw runtime::Error(runtime::errInvalidCall);
    }
}

}  // namespace barcode
