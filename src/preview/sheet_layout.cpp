#include "preview/sheet_layout.h"

#include <algorithm>
#include <cmath>

namespace preview {

namespace {

constexpr double borderAtUsualScale = 12;
// More than a scroll bar takes, at the usual scale.
constexpr double scrollBarRoom = 40;

// So much of the workspace is seen beside what is brought into view.
constexpr double besideRevealed = 40;

// A device that does not say what it is like must not lead to a division by zero.
platform::DeviceCapabilities usable(platform::DeviceCapabilities device) {
    const auto orElse = [](int value, int other) { return value > 0 ? value : other; };
    device.logPixelsX = orElse(device.logPixelsX, 600);
    device.logPixelsY = orElse(device.logPixelsY, device.logPixelsX);
    device.physicalWidth = orElse(device.physicalWidth, orElse(device.horzRes, 1));
    device.physicalHeight = orElse(device.physicalHeight, orElse(device.vertRes, 1));
    return device;
}

platform::ScrollBar bar(double whole, double page, double position) {
    return whole > page ? platform::ScrollBar{static_cast<int>(std::ceil(whole)), static_cast<int>(page),
                                              static_cast<int>(position)}
                        : platform::ScrollBar{};
}

double scrolled(double position, double whole, double page) {
    return std::clamp(std::round(position), 0.0, std::max(0.0, std::ceil(whole) - std::floor(page)));
}

// By how much a stretch has to be moved to lie inside the room; its beginning counts where there is no room for all.
double movement(double start, double length, double roomStart, double roomLength, double beside) {
    const double most = std::max(0.0, (roomLength - length) / 2);
    const double distance = std::min(beside, most);
    if (start < roomStart + distance) {
        return start - roomStart - distance;
    }
    return std::max(0.0, std::min(start + length + distance - roomStart - roomLength, start - roomStart));
}

}  // namespace

void SheetLayout::fit(const platform::CanvasSize& canvas, double taken, const platform::DeviceCapabilities& device,
                      const Zoom& zoom) {
    const bool hadBar = down().whole > 0;
    const double top = std::floor(std::clamp(taken, 0.0, static_cast<double>(std::max(0, canvas.height))));
    room_ = {0, top, static_cast<double>(std::max(1, canvas.width)), std::max(1.0, canvas.height - top)};
    device_ = usable(device);
    unitX_ = canvas.pixelsPerInchX / device_.logPixelsX;
    unitY_ = canvas.pixelsPerInchY / device_.logPixelsY;
    uiScale_ = canvas.scale;
    percent_ = chosenPercent(zoom, hadBar);
    scrollTo(across_, down_);
}

double SheetLayout::chosenPercent(const Zoom& zoom, bool hadBar) const {
    if (zoom.mode == Zoom::Mode::percent) {
        return zoom.percent;
    }
    const double width = device_.physicalWidth * unitX_;
    const double height = device_.physicalHeight * unitY_;
    const double byWidth = (room_.width - 2 * border()) / width;
    const double byHeight = (room_.height - 2 * border()) / height;
    // A sheet that is only so little too high that it would fit beside its own scroll bar gets none; otherwise the bar
    // would come and go for ever.
    const double spare = hadBar ? 0 : scrollBarRoom * uiScale_;
    const bool byHeightAlone = zoom.mode == Zoom::Mode::wholePage || (byWidth - byHeight) * width <= spare;
    const double factor = byHeightAlone ? std::min(byWidth, byHeight) : byWidth;
    return std::clamp(factor * 100, 1.0, Zoom::largest);
}

double SheetLayout::border() const { return std::round(borderAtUsualScale * uiScale_); }

double SheetLayout::wholeWidth() const { return device_.physicalWidth * unitX_ * percent_ / 100 + 2 * border() - 0.01; }

double SheetLayout::wholeHeight() const {
    return device_.physicalHeight * unitY_ * percent_ / 100 + 2 * border() - 0.01;
}

platform::ScrollBar SheetLayout::across() const { return bar(wholeWidth(), room_.width, across_); }

platform::ScrollBar SheetLayout::down() const { return bar(wholeHeight(), room_.height, down_); }

void SheetLayout::scrollTo(double across, double down) {
    across_ = scrolled(across, wholeWidth(), room_.width);
    down_ = scrolled(down, wholeHeight(), room_.height);
}

void SheetLayout::bring(PagePoint point, double x, double y) {
    const PagePoint there = pagePointAt(x, y);
    const platform::SheetView scale = view(true);
    scrollBy((point.x - there.x) * scale.scaleX, (point.y - there.y) * scale.scaleY);
}

void SheetLayout::reveal(const platform::drawing::Area& area) {
    const platform::Box box = boxOf(area);
    const double beside = besideRevealed * uiScale_;
    scrollBy(movement(box.x, box.width, room_.x, room_.width, beside),
             movement(box.y, box.height, room_.y, room_.height, beside));
}

platform::Box SheetLayout::sheet() const {
    const auto start = [this](double whole, double room, double position) {
        return whole > room ? border() - position : std::floor((room - whole) / 2) + border();
    };
    return {room_.x + start(wholeWidth(), room_.width, across_), room_.y + start(wholeHeight(), room_.height, down_),
            device_.physicalWidth * unitX_ * percent_ / 100, device_.physicalHeight * unitY_ * percent_ / 100};
}

platform::SheetView SheetLayout::view(bool color) const {
    const platform::Box box = sheet();
    const double scaleX = unitX_ * percent_ / 100;
    const double scaleY = unitY_ * percent_ / 100;
    return {device_, color, box.x + device_.physicalOffsetX * scaleX, box.y + device_.physicalOffsetY * scaleY,
            scaleX,  scaleY};
}

platform::Box SheetLayout::boxOf(const platform::drawing::Area& area) const {
    const platform::SheetView seen = view(true);
    return {seen.left + static_cast<double>(area.across.start) * seen.scaleX,
            seen.top + static_cast<double>(area.down.start) * seen.scaleY,
            static_cast<double>(area.across.end - area.across.start) * seen.scaleX,
            static_cast<double>(area.down.end - area.down.start) * seen.scaleY};
}

platform::Box SheetLayout::printable() const { return boxOf({{0, device_.horzRes}, {0, device_.vertRes}}); }

PagePoint SheetLayout::pagePointAt(double x, double y) const {
    const platform::SheetView seen = view(true);
    return {(x - seen.left) / seen.scaleX, (y - seen.top) / seen.scaleY};
}

platform::drawing::Point SheetLayout::pixelAt(double x, double y) const {
    const PagePoint point = pagePointAt(x, y);
    return {static_cast<std::int64_t>(std::floor(point.x)), static_cast<std::int64_t>(std::floor(point.y))};
}

}  // namespace preview
