// The state of one print job: what the job driver sets and the page interpreter reads and changes. It lasts for the
// whole job, from pass to pass and from page to page.
#pragma once

#include <cstdint>

#include "graphics/clsGrafiken.h"
#include "runtime/currency.h"
#include "settings/printer_settings.h"

namespace report {

inline constexpr double defaultBarcodeHeight = 0.15;  // inches

struct JobState {
    // Made before the first page.
    settings::PrinterSettings settings;
    std::int16_t intMaxZeilen = 72;                  // lines of a page
    double dblBarcodeHeight = defaultBarcodeHeight;  // inches
    graphics::clsGrafiken colGrafik;                 // the two sets of graphics
    graphics::clsGrafiken colGrafikA;

    std::int16_t intSeite = 1;  // number of the page in the print file, for messages only

    // Which objects a pass draws.
    bool blnGrafikAusgeben = true;
    bool blnTextAusgeben = true;

    // Type state, changed by the macros. Bold, italic, underline, the size in effect and the colour are the printer's.
    runtime::Currency curFontSize;  // points
    bool blnBreitschrift = false;   // wide type
    std::int16_t intHochTief = 0;   // 1 superscript, -1 subscript, 0 normal
    double dblSchatten = 0;         // shadow depth, 0 to 3
    std::int16_t intEinzug = 0;     // blanks before every line
    double dblEinzugFontSize = 0;   // points, of those blanks
    bool blnZeileBegonnen = false;  // the line has had its first run of text
};

}  // namespace report
