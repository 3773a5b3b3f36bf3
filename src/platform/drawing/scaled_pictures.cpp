#include "platform/drawing/scaled_pictures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform::drawing {

namespace {

// From a pixel on. A picture that is moved by whole pixels looks the same.
Reach rounded(Reach reach, double from) {
    constexpr double exactness = 256;
    const auto place = [from](double at) { return std::round((at - from) * exactness) / exactness; };
    return {place(reach.start), place(reach.end)};
}

Span movedBy(Span span, std::int64_t distance) { return {span.start + distance, span.end + distance}; }

Area movedBy(const Area& area, Point distance) {
    return {movedBy(area.across, distance.x), movedBy(area.down, distance.y)};
}

std::int64_t pixelsIn(const Area& area) {
    return (area.across.end - area.across.start) * (area.down.end - area.down.start);
}

// Some pixels of a picture as it looks.
struct Pixels {
    const std::vector<std::uint32_t>& colors;
    Area area;  // row by row

    const std::uint32_t* at(std::int64_t x, std::int64_t y) const {
        return colors.data() + (y - area.down.start) * (area.across.end - area.across.start) + (x - area.across.start);
    }
};

std::vector<std::uint32_t> drawn(const Picture& picture, const PictureLook& look, const Area& part) {
    std::vector<std::uint32_t> colors(static_cast<std::size_t>(pixelsIn(part)));
    const auto width = static_cast<int>(part.across.end - part.across.start);
    const auto height = static_cast<int>(part.down.end - part.down.start);
    drawScaled(picture, look, part, {colors.data(), width, height, width});
    return colors;
}

// The pixels at the edges are covered in part.
void put(const Pixels& from, const PictureLook& look, const Area& part, std::uint32_t* to, std::ptrdiff_t stride) {
    const Cover columns(look.across);
    const Cover rows(look.down);
    const std::int64_t last = part.across.end - 1;
    for (std::int64_t y = part.down.start; y < part.down.end; ++y, to += stride) {
        const double strength = rows.of(y);
        const auto mix = [&](std::int64_t x) {
            std::uint32_t& pixel = to[x - part.across.start];
            pixel = mixed(pixel, *from.at(x, y), shareOf(columns.of(x) * strength));
        };
        mix(part.across.start);
        if (strength >= 1) {
            std::copy(from.at(part.across.start + 1, y), from.at(std::max(last, part.across.start + 1), y), to + 1);
        } else {
            for (std::int64_t x = part.across.start + 1; x < last; ++x) {
                mix(x);
            }
        }
        if (last > part.across.start) {
            mix(last);
        }
    }
}

}  // namespace

void ScaledPictures::draw(const std::shared_ptr<const Picture>& picture, const PictureLook& look, const Area& within,
                          const ScreenPixels& pixels) {
    const Point corner{static_cast<std::int64_t>(std::floor(look.across.start)),
                       static_cast<std::int64_t>(std::floor(look.down.start))};
    PictureLook own = look;
    own.across = rounded(look.across, static_cast<double>(corner.x));
    own.down = rounded(look.down, static_cast<double>(corner.y));
    const Area whole{Cover(own.across).pixels(), Cover(own.down).pixels()};
    const Area part = intersection(whole, movedBy(within, {-corner.x, -corner.y}));
    if (part.empty()) {
        return;
    }
    std::uint32_t* const to = pixels.row(part.down.start + corner.y) + part.across.start + corner.x;
    const bool enlarged = own.across.length() >= picture->width && own.down.length() >= picture->height;
    if (enlarged || own.across.length() * own.down.length() > most) {
        put({drawn(*picture, own, part), part}, own, part, to, pixels.stride);
    } else {
        put({scaled(picture, own, whole), whole}, own, part, to, pixels.stride);
    }
}

const std::vector<std::uint32_t>& ScaledPictures::scaled(const std::shared_ptr<const Picture>& picture,
                                                         const PictureLook& look, const Area& whole) {
    const auto known = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.look == look && entry.picture.lock() == picture;
    });
    if (known != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, known);
    } else {
        Entry entry{picture, look, drawn(*picture, look, whole)};
        forgetMoreThan(most - std::min(most, entry.pixels.size()));
        entries_.push_front(std::move(entry));
    }
    return entries_.front().pixels;
}

void ScaledPictures::forgetMoreThan(std::size_t pixels) {
    entries_.remove_if([&](const Entry& entry) {
        const bool keeps = !entry.picture.expired() && entry.pixels.size() <= pixels;
        pixels -= keeps ? entry.pixels.size() : 0;
        return !keeps;
    });
}

}  // namespace platform::drawing
