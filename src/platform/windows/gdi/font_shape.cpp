#include "platform/windows/gdi/font_shape.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace platform_windows::gdi {

LetterBox letterBox(HDC device) {
    const FIXED one{0, 1};
    const FIXED zero{0, 0};
    const MAT2 asItIs{one, zero, zero, one};
    GLYPHMETRICS metrics{};
    if (::GetGlyphOutlineW(device, L'H', GGO_METRICS, &metrics, 0, nullptr, &asItIs) == GDI_ERROR) {
        return {};
    }
    // They are pixels of the device, which need not be the unit that is drawn in.
    constexpr int length = 10000;
    std::array<POINT, 2> corners{POINT{0, 0}, POINT{length, length}};
    if (::DPtoLP(device, corners.data(), static_cast<int>(corners.size())) == FALSE) {
        return {};
    }
    return {metrics.gmBlackBoxX * static_cast<double>(std::abs(corners[1].x - corners[0].x)) / length,
            metrics.gmBlackBoxY * static_cast<double>(std::abs(corners[1].y - corners[0].y)) / length};
}

double ownStretch(HDC device, int advance) {
    INT width = 0;
    const bool told = ::GetCharWidth32W(device, L'H', L'H', &width) != FALSE;
    return told && width > 0 && advance > 0 ? static_cast<double>(width) / advance : 1;
}

}  // namespace platform_windows::gdi
