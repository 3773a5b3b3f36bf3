#include "report/type_state.h"

#include <algorithm>
#include <array>

namespace report {

namespace {

using platform::Color;
using runtime::Currency;
using namespace runtime::literals;

// The sizes of a pitch in normal and in wide type, points. Under wide type "10" and "20" have each other's size on
// purpose; "widened" is the size that wide type makes of the normal one.
struct Pitch {
    std::string_view code;
    Currency normal;
    Currency wide;
    Currency widened;
};

constexpr std::array pitches = {
    Pitch{"10", 12_cur, 6_cur, 24_cur},          Pitch{"12", 9.36_cur, 20.04_cur, 20.04_cur},
    Pitch{"15", 7.92_cur, 15.84_cur, 15.84_cur}, Pitch{"17", 6.72_cur, 14.04_cur, 14.04_cur},
    Pitch{"20", 6_cur, 12_cur, 12_cur},
};

Currency widened(Currency size) {
    const auto* pitch = std::find_if(pitches.begin(), pitches.end(), [&](const Pitch& p) { return p.normal == size; });
    return pitch != pitches.end() ? pitch->widened : size;
}

Currency narrowed(Currency size) {
    const auto* pitch = std::find_if(pitches.begin(), pitches.end(), [&](const Pitch& p) { return p.widened == size; });
    return pitch != pitches.end() ? pitch->normal : size;
}

struct ColorCode {
    std::string_view code;
    Color color;
};

constexpr std::array colors = {
    ColorCode{"CS", {0, 0, 0}},     ColorCode{"CR", {255, 0, 0}}, ColorCode{"CG", {0, 255, 0}},
    ColorCode{"CH", {255, 255, 0}}, ColorCode{"CB", {0, 0, 255}}, ColorCode{"CM", {255, 0, 255}},
    ColorCode{"CC", {0, 255, 255}},
};

template <typename Table>
const typename Table::value_type* rowOf(const Table& table, std::string_view code) {
    const auto* row = std::find_if(table.begin(), table.end(), [&](const auto& entry) { return entry.code == code; });
    return row != table.end() ? row : nullptr;
}

bool isEffect(std::string_view code) {
    constexpr std::string_view effects = "FUKHTBEOS";
    return (code[1] == 'E' || code[1] == 'A') && effects.find(code[0]) != std::string_view::npos;
}

}  // namespace

bool isTypeMacro(std::string_view code) {
    return isEffect(code) || rowOf(pitches, code) != nullptr || rowOf(colors, code) != nullptr;
}

void TypeState::execute(std::string_view code) {
    if (isEffect(code)) {
        executeEffect(code);
    } else if (const Pitch* pitch = rowOf(pitches, code)) {
        curFontSize = blnBreitschrift ? pitch->wide : pitch->normal;
    } else if (const ColorCode* entry = rowOf(colors, code)) {
        color = entry->color;
    }
}

void TypeState::executeEffect(std::string_view code) {
    const bool on = code[1] == 'E';
    switch (code[0]) {
        case 'F':
            bold = on;
            break;
        case 'U':
            underline = on;
            break;
        case 'K':
            italic = on;
            break;
        case 'H':
            intHochTief = on ? 1 : 0;
            break;
        case 'T':
            intHochTief = on ? -1 : 0;
            break;
        case 'B':
            wideType(on);
            break;
        case 'O':  // both deepen the shadow; only "SA" ends it
            dblSchatten = on ? 2 : 3;
            break;
        case 'S':
            dblSchatten = on ? 1 : 0;
            break;
        default:  // 'E' does nothing
            break;
    }
}

void TypeState::wideType(bool on) {
    if (blnBreitschrift != on) {
        blnBreitschrift = on;
        curFontSize = on ? widened(curFontSize) : narrowed(curFontSize);
    }
}

void TypeState::SetIndent(std::int16_t count) {
    intEinzug = count;
    dblEinzugFontSize = curFontSize.toDouble();
}

}  // namespace report
