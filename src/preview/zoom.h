// How large a sheet is shown.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/locale.h"

namespace preview {

struct Zoom {
    enum class Mode { percent, wholePage, pageWidth };
    static constexpr double smallest = 10;
    static constexpr double largest = 800;

    Mode mode = Mode::wholePage;
    double percent = 100;  // of the paper's real size

    static Zoom of(double percent);
    bool operator==(const Zoom&) const = default;
};

// What a user can choose instead of typing a number.
const std::vector<std::string>& zoomChoices();

// "125 %", "Ganze Seite" or "Seitenbreite".
std::string zoomText(const Zoom& zoom, const runtime::Locale& locale);

// What such a text means, with or without the "%", in any case of letters; a number beyond the range means its end.
// Nothing where it means nothing.
std::optional<Zoom> zoomOf(std::string_view text, const runtime::Locale& locale);

// The next step up and down.
Zoom larger(double percent);
Zoom smaller(double percent);

}  // namespace preview
