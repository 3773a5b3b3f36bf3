#include "platform/linux/qt/glyph_masks.h"

#include <cmath>
#include <utility>

namespace platform_linux::qt {

namespace {

using platform::drawing::Outline;
using platform::drawing::Place;

constexpr std::size_t mostFaces = 48;
constexpr std::size_t mostLevels = std::size_t{8} << 20;

// A pen whose outline is in pixels.
class PixelPen final : public fonts::OutlinePen {
public:
    explicit PixelPen(const GlyphMatrix& matrix) : matrix_(matrix) {}

    void moveTo(double x, double y) override { outline.moveTo(at(x, y)); }
    void lineTo(double x, double y) override { outline.lineTo(at(x, y)); }
    void curveTo(double controlX, double controlY, double x, double y) override {
        outline.curveTo(at(controlX, controlY), at(x, y));
    }
    void close() override { outline.close(); }

    Outline outline;

private:
    Place at(double x, double y) const {
        return {x * matrix_.right.x + y * matrix_.up.x, x * matrix_.right.y + y * matrix_.up.y};
    }

    const GlyphMatrix& matrix_;
};

}  // namespace

Outline glyphOutline(const fonts::CodePageFont& font, unsigned char byte, const GlyphMatrix& matrix) {
    PixelPen pen(matrix);
    if (font.glyphs()[byte] != 0) {
        font.file().outline(font.glyphs()[byte], pen);
    }
    return std::move(pen.outline);
}

void GlyphMasks::select(const fonts::CodePageFont& font, const GlyphMatrix& matrix) {
    forgetTooMany();
    font_ = &font;
    matrix_ = matrix;
    selected_ = &faces_[{&font, matrix.right.x, matrix.right.y, matrix.up.x, matrix.up.y}];
}

void GlyphMasks::forgetTooMany() {
    if (faces_.size() > mostFaces || levels_.size() > mostLevels) {
        faces_.clear();
        levels_.clear();
    }
}

const GlyphMask& GlyphMasks::mask(unsigned char byte, int across, int down) {
    std::optional<GlyphMask>& mask =
        selected_->made[byte][static_cast<std::size_t>(across)][static_cast<std::size_t>(down)];
    if (!mask) {
        std::optional<Outline>& outline = selected_->outlines[byte];
        if (!outline) {
            outline = glyphOutline(*font_, byte, matrix_);
        }
        mask = make(*outline, across, down);
    }
    return *mask;
}

GlyphMask GlyphMasks::make(const Outline& outline, int across, int down) {
    GlyphMask mask;
    mask.start = levels_.size();
    if (!outline.empty()) {
        const Place place{static_cast<double>(across) / phases, static_cast<double>(down) / phases};
        mask.left = static_cast<int>(std::floor(outline.least().x + place.x));
        mask.top = static_cast<int>(std::floor(outline.least().y + place.y));
        mask.width = static_cast<int>(std::ceil(outline.most().x + place.x)) - mask.left;
        mask.height = static_cast<int>(std::ceil(outline.most().y + place.y)) - mask.top;
        coverage_.begin(mask.width, mask.height);
        coverage_.add(outline, {place.x - mask.left, place.y - mask.top});
        coverage_.appendTo(levels_);
    }
    return mask;
}

}  // namespace platform_linux::qt
