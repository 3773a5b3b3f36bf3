#include "platform/linux/qt/dialog_units.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace platform_linux::qt {

namespace {

// Of the characters of the fonts that desktops show dialogs in, in pixels at 96 dpi. A smaller font gets as much room:
// the frames and margins that controls have around it do not become smaller with it.
constexpr double usualHeight = 18;
constexpr double usualDpi = 96;
constexpr double twipsPerPixel = 15;

constexpr int unitsAcross = 4;
constexpr int unitsDown = 8;

}  // namespace

DialogUnits::DialogUnits(const QFont& font, int dpi) {
    const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const QFontMetricsF metrics(font);
    characterWidth_ = metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
    characterHeight_ = std::max(metrics.height(), usualHeight * dpi / usualDpi);
}

int DialogUnits::across(int units) const {
    return static_cast<int>(std::lround(units * characterWidth_ / unitsAcross));
}

int DialogUnits::down(int units) const { return static_cast<int>(std::lround(units * characterHeight_ / unitsDown)); }

QRect DialogUnits::rectangle(const platform::Place& place) const {
    const QPoint corner(across(place.x), down(place.y));
    const QPoint behind(across(place.x + place.width), down(place.y + place.height));
    return {corner, QSize(behind.x() - corner.x(), behind.y() - corner.y())};
}

int DialogUnits::height(const platform::FormHeight& height) const {
    const double pixels = height.twips / twipsPerPixel * characterHeight_ / usualHeight;
    return std::max(static_cast<int>(std::lround(pixels)), down(height.visible));
}

}  // namespace platform_linux::qt
