#include "preview/zoom.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "runtime/error.h"
#include "runtime/numbers.h"
#include "runtime/text.h"

namespace preview {

namespace {

constexpr const char* wholePage = "Ganze Seite";
constexpr const char* pageWidth = "Seitenbreite";

constexpr std::array steps = {10.0,  25.0,  33.0,  50.0,  67.0,  75.0,  90.0, 100.0,
                              125.0, 150.0, 200.0, 300.0, 400.0, 600.0, 800.0};

// What is shown is a whole number; a step has to be seen.
constexpr double noticeable = 0.5;

}  // namespace

Zoom Zoom::of(double percent) { return {Mode::percent, std::clamp(percent, smallest, largest)}; }

const std::vector<std::string>& zoomChoices() {
    static const std::vector<std::string> choices = {wholePage, pageWidth, "25 %",  "50 %",  "75 %",
                                                     "100 %",   "125 %",   "150 %", "200 %", "400 %"};
    return choices;
}

std::string zoomText(const Zoom& zoom, const runtime::Locale& locale) {
    switch (zoom.mode) {
        case Zoom::Mode::wholePage:
            return wholePage;
        case Zoom::Mode::pageWidth:
            return pageWidth;
        case Zoom::Mode::percent:
            break;
    }
    return runtime::doubleText(std::round(zoom.percent), locale) + " %";
}

std::optional<Zoom> zoomOf(std::string_view text, const runtime::Locale& locale) {
    text = runtime::trimBlanks(text);
    const std::string name = runtime::upperCase(text);
    if (name == runtime::upperCase(wholePage)) {
        return Zoom{Zoom::Mode::wholePage};
    }
    if (name == runtime::upperCase(pageWidth)) {
        return Zoom{Zoom::Mode::pageWidth};
    }
    if (text.ends_with('%')) {
        text = runtime::trimBlanks(text.substr(0, text.size() - 1));
    }
    try {
        const double percent = runtime::parseNumber(text, locale);
        return percent > 0 ? std::optional(Zoom::of(percent)) : std::nullopt;
    } catch (const runtime::Error&) {
        return std::nullopt;
    }
}

Zoom larger(double percent) {
    const auto* const step = std::upper_bound(steps.begin(), steps.end(), percent + noticeable);
    return Zoom::of(step != steps.end() ? *step : steps.back());
}

Zoom smaller(double percent) {
    const auto* const step = std::lower_bound(steps.begin(), steps.end(), percent - noticeable);
    return Zoom::of(step != steps.begin() ? *(step - 1) : steps.front());
}

}  // namespace preview
