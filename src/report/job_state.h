// The state of one print job: what the job driver sets and the page interpreter reads and changes. It lasts for the
// whole job, from pass to pass and from page to page.
#pragma once

#include <cstdint>

#include "graphics/clsGrafiken.h"
#include "report/page_reader.h"
#include "report/type_state.h"
#include "settings/printer_settings.h"

namespace report {

inline constexpr double defaultBarcodeHeight = 0.15;  // inches

struct JobState {
    // Made before the first page.
    settings::PrinterSettings settings;
    std::int16_t intMaxZeilen = linesOfPage;
    double dblBarcodeHeight = defaultBarcodeHeight;  // inches
    graphics::clsGrafiken colGrafik;                 // the two sets of graphics
    graphics::clsGrafiken colGrafikA;

    std::int16_t intSeite = 1;     // number of the page in the print file, for messages only
    std::uint64_t pageOffset = 0;  // where that page begins in the print file, likewise

    // Which objects a pass draws.
    bool blnGrafikAusgeben = true;
    bool blnTextAusgeben = true;

    TypeState type;                 // the printer has the same font and colour
    bool blnZeileBegonnen = false;  // the line has had its first run of text
};

}  // namespace report
