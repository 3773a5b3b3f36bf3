#include "platform/drawing/page_recording.h"

#include <limits>

namespace platform::drawing {

namespace {

class Player {
public:
    Player(const PageRecording& page, Surface& surface) : page_(page), surface_(surface) {}

    void operator()(const PageRecording::Text& text) {
        if (font_ != text.font) {
            surface_.setFont(page_.fontOf(text));
            font_ = text.font;
        }
        surface_.drawText(text.x, text.y, page_.bytesOf(text), text.color, text.role);
    }
    void operator()(const PageRecording::Rectangle& area) {
        surface_.fillRectangle(area.x, area.y, area.width, area.height, area.color);
    }
    void operator()(const PageRecording::PlacedPicture& placed) {
        surface_.drawPicture(placed.picture, placed.x, placed.y, placed.width, placed.height);
    }

private:
    const PageRecording& page_;
    Surface& surface_;
    std::size_t font_ = std::numeric_limits<std::size_t>::max();
};

}  // namespace

void PageRecording::clear() noexcept {
    steps_.clear();
    fonts_.clear();
    bytes_.clear();
}

void PageRecording::addText(int x, int y, std::string_view bytes, Color color, TextRole role) {
    steps_.emplace_back(Text{fonts_.size() - 1, x, y, bytes_.size(), bytes.size(), color, role});
    bytes_ += bytes;
}

void PageRecording::play(Surface& surface) const {
    Player player(*this, surface);
    for (const Step& step : steps_) {
        std::visit(player, step);
    }
}

FontFace RecordingSurface::setFont(const FontRequest& font) {
    FontFace face = device_.setFont(font);
    if (font_ != font) {
        font_ = font;
        fontRecorded_ = false;
    }
    return face;
}

void RecordingSurface::drawText(int x, int y, std::string_view text, Color color, TextRole role) {
    if (!font_) {
        device_.textHeight();  // refuses
        return;
    }
    if (!fontRecorded_) {
        recording_.addFont(*font_);
        fontRecorded_ = true;
    }
    recording_.addText(x, y, text, color, role);
}

void RecordingSurface::fillRectangle(int x, int y, int width, int height, Color color) {
    recording_.addRectangle({x, y, width, height, color});
}

void RecordingSurface::drawPicture(const std::shared_ptr<const Picture>& picture, int x, int y, int width, int height) {
    recording_.addPicture({picture, x, y, width, height});
}

void RecordingSurface::clear() noexcept {
    recording_.clear();
    fontRecorded_ = false;
}

void RecordingSurface::playOnDevice() {
    recording_.play(device_);
    if (font_) {
        device_.setFont(*font_);
    }
}

}  // namespace platform::drawing
