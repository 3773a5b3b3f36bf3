#include "platform/drawing/joined_areas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace platform::drawing {

namespace {

constexpr int whole = 0x8000;

}  // namespace

void JoinedAreas::add(int width, int height, Reach across, Reach down) {
    const Cover columns(across, width);
    const Cover rows(down, height);
    if (columns.empty() || rows.empty()) {
        return;
    }
    width_ = width;
    parts_.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (std::int64_t y = rows.first(); y < rows.end(); ++y) {
        const double strength = rows.of(y) * whole;
        std::uint16_t* const row = parts_.data() + y * width;
        const auto add = [](std::uint16_t& part, int more) {
            part = static_cast<std::uint16_t>(std::min(whole, part + more));
        };
        const auto partOf = [&](std::int64_t x) { return static_cast<int>(std::lround(columns.of(x) * strength)); };
        const std::int64_t last = columns.end() - 1;
        add(row[columns.first()], partOf(columns.first()));
        if (columns.first() < last) {
            const auto all = static_cast<int>(std::lround(strength));
            std::for_each(row + columns.first() + 1, row + last, [&](std::uint16_t& part) { add(part, all); });
            add(row[last], partOf(last));
        }
    }
    const Area area{columns.pixels(), rows.pixels()};
    touched_ = touched_.empty() ? area : bounds(touched_, area);
}

void JoinedAreas::draw(const ScreenPixels& pixels, Color color) noexcept {
    const std::uint32_t own = pixelOf(color);
    for (std::int64_t y = touched_.down.start; y < touched_.down.end; ++y) {
        std::uint16_t* const parts = parts_.data() + y * width_;
        std::uint32_t* const row = pixels.row(y);
        for (std::int64_t x = touched_.across.start; x < touched_.across.end; ++x) {
            if (parts[x] != 0) {
                row[x] = mixed(row[x], own, (parts[x] * wholePixel + whole / 2) / whole);
                parts[x] = 0;
            }
        }
    }
    touched_ = {};
}

}  // namespace platform::drawing
