#include "platform/linux/qt/glyph_masks.h"

#include <QImage>
#include <QPainter>
#include <cmath>

namespace platform_linux::qt {

namespace {

constexpr std::size_t mostFaces = 48;
constexpr std::size_t mostCoverage = std::size_t{8} << 20;  // bytes

// A pen whose path is in pixels.
class PathPen final : public fonts::OutlinePen {
public:
    explicit PathPen(const QTransform& matrix) : matrix_(matrix) { path_.setFillRule(Qt::WindingFill); }

    void moveTo(double x, double y) override { path_.moveTo(at(x, y)); }
    void lineTo(double x, double y) override { path_.lineTo(at(x, y)); }
    void curveTo(double controlX, double controlY, double x, double y) override {
        path_.quadTo(at(controlX, controlY), at(x, y));
    }
    void close() override { path_.closeSubpath(); }

    const QPainterPath& path() const { return path_; }

private:
    QPointF at(double x, double y) const { return matrix_.map(QPointF(x, y)); }

    const QTransform& matrix_;
    QPainterPath path_;
};

QTransform transformOf(const std::array<double, 4>& matrix) {
    return {matrix[0], matrix[1], matrix[2], matrix[3], 0, 0};
}

}  // namespace

QPainterPath glyphOutline(const fonts::CodePageFont& font, unsigned char byte, const QTransform& matrix) {
    PathPen pen(matrix);
    if (font.glyphs()[byte] != 0) {
        font.file().outline(font.glyphs()[byte], pen);
    }
    return pen.path();
}

void GlyphMasks::select(const Face& face) {
    if (selected_ != nullptr && face == face_) {
        return;
    }
    face_ = face;
    selected_ = &faces_[face];
    selected_->made.resize(std::size_t{256} * phases * phases);
}

void GlyphMasks::forgetTooMany() {
    if (faces_.size() > mostFaces || coverage_.size() > mostCoverage) {
        faces_.clear();
        coverage_.clear();
        selected_ = nullptr;
    }
}

const GlyphMasks::Mask& GlyphMasks::mask(unsigned char byte, int across, int down) {
    const std::size_t number =
        (std::size_t{byte} * phases + static_cast<std::size_t>(across)) * phases + static_cast<std::size_t>(down);
    std::optional<Mask>& mask = selected_->made[number];
    if (!mask) {
        std::optional<QPainterPath>& outline = selected_->outlines[byte];
        if (!outline) {
            outline = glyphOutline(*face_.font, byte, transformOf(face_.matrix));
        }
        mask = make(*outline, across, down);
    }
    return *mask;
}

GlyphMasks::Mask GlyphMasks::make(const QPainterPath& outline, int across, int down) {
    const QPointF place(static_cast<double>(across) / phases, static_cast<double>(down) / phases);
    const QRect box = outline.controlPointRect().translated(place).toAlignedRect();
    const Mask mask{box, coverage_.size()};
    if (outline.isEmpty() || box.isEmpty()) {
        return {};
    }
    QImage image(box.size(), QImage::Format_Alpha8);
    image.fill(0);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place - box.topLeft());
    painter.fillPath(outline, Qt::black);
    painter.end();
    for (int row = 0; row < box.height(); ++row) {
        const std::uint8_t* line = image.constScanLine(row);
        coverage_.insert(coverage_.end(), line, line + box.width());
    }
    return mask;
}

}  // namespace platform_linux::qt
