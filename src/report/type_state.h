// How text is printed: what the macros of type change. It goes on from page to page.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/color.h"
#include "runtime/currency.h"

namespace report {

struct TypeState {
    runtime::Currency curFontSize;  // points
    bool bold = false;
    bool italic = false;
    bool underline = false;
    platform::Color color;
    bool blnBreitschrift = false;  // wide type
    std::int16_t intHochTief = 0;  // 1 superscript, -1 subscript, 0 normal
    double dblSchatten = 0;        // shadow depth, 0 to 3
    std::int16_t intEinzug = 0;    // blanks before every line
    double dblEinzugFontSize = 0;  // points, of those blanks

    bool operator==(const TypeState&) const = default;

    // Does what a macro of type says; see isTypeMacro().
    void execute(std::string_view code);

    // Indentation in blanks (0 to 255) of the lines to come, as wide as blanks are in the font size now in effect.
    void SetIndent(std::int16_t count);

private:
    void executeEffect(std::string_view code);
    void wideType(bool on);
};

// Whether the two characters are the code of a macro that changes nothing but the type state and has no parameter.
bool isTypeMacro(std::string_view code);

}  // namespace report
