#include "platform/windows/gdi/scaled_pictures.h"

#include <algorithm>
#include <utility>

namespace platform_windows::gdi {

using platform::drawing::Area;
using platform::drawing::Point;
using platform::drawing::Span;

void ScaledPictures::draw(const std::shared_ptr<const platform::Picture>& picture, const PictureLook& look,
                          Point corner, const Area& within, const ScreenPixels& pixels) {
    const Area shown =
        intersection(platform::drawing::areaBetween(corner, {corner.x + look.width, corner.y + look.height}), within);
    if (shown.empty()) {
        return;
    }
    ScreenPixels place = pixels;
    place.first = pixels.row(static_cast<int>(shown.down.start)) + shown.across.start;
    const auto inPicture = [](Span span, std::int64_t start) { return Span{span.start - start, span.end - start}; };
    const Area part{inPicture(shown.across, corner.x), inPicture(shown.down, corner.y)};
    const bool enlarged = look.width >= picture->width && look.height >= picture->height;
    if (enlarged || static_cast<double>(look.width) * static_cast<double>(look.height) > most) {
        drawScaled(*picture, look, part, place);
        return;
    }
    const std::vector<std::uint32_t>& whole = scaled(picture, look).pixels;
    for (std::int64_t y = part.down.start; y < part.down.end; ++y) {
        const auto row = whole.begin() + static_cast<std::ptrdiff_t>(y * look.width);
        std::copy(row + static_cast<std::ptrdiff_t>(part.across.start),
                  row + static_cast<std::ptrdiff_t>(part.across.end), place.row(static_cast<int>(y - part.down.start)));
    }
}

const ScaledPictures::Entry& ScaledPictures::scaled(const std::shared_ptr<const platform::Picture>& picture,
                                                    const PictureLook& look) {
    const auto known = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.look == look && entry.picture.lock() == picture;
    });
    if (known != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, known);
        return entries_.front();
    }
    const auto size = static_cast<std::size_t>(look.width * look.height);
    while (!entries_.empty() && kept_ + size > most) {
        kept_ -= entries_.back().pixels.size();
        entries_.pop_back();
    }
    Entry entry{picture, look, std::vector<std::uint32_t>(size)};
    const auto width = static_cast<int>(look.width);
    const auto height = static_cast<int>(look.height);
    drawScaled(*picture, look, {{0, width}, {0, height}}, {entry.pixels.data(), width, height, width});
    kept_ += size;
    return entries_.emplace_front(std::move(entry));
}

}  // namespace platform_windows::gdi
