#include "platform/linux/qt/sheet_surface.h"

#include <QImage>
#include <QPaintDevice>
#include <algorithm>
#include <array>
#include <cmath>

namespace platform_linux::qt {

namespace {

using platform::drawing::Area;
using platform::drawing::Point;

// Pixels of the em square from which on outlines are filled in place: few of such glyphs fit on a screen.
constexpr double largestMask = 128;

QColor colorOf(platform::Color color) { return {color.red, color.green, color.blue}; }

QRect pixelsOf(const QPaintDevice& device) {
    const double ratio = device.devicePixelRatioF();
    return {0, 0, static_cast<int>(std::ceil(device.width() * ratio)),
            static_cast<int>(std::ceil(device.height() * ratio))};
}

// A length of pixels, and how much of each of them is covered.
struct Stretch {
    int start = 0;
    int length = 0;
    double covered = 1;
};

// The pixels that lie between two places: those in part at both ends, and the whole ones.
std::array<Stretch, 3> stretches(double from, double to) {
    const int first = static_cast<int>(std::floor(from));
    const int last = static_cast<int>(std::floor(to));
    if (first == last) {
        return {Stretch{first, 1, to - from}, {}, {}};
    }
    return {Stretch{first, 1, first + 1 - from}, Stretch{first + 1, last - first - 1, 1}, Stretch{last, 1, to - last}};
}

// The pixel of a place, and which part of it.
std::pair<int, int> partOf(double place) {
    const auto parts = static_cast<int>(std::floor(place * GlyphMasks::phases + 0.5));
    const int part = parts & (GlyphMasks::phases - 1);
    return {(parts - part) / GlyphMasks::phases, part};
}

// A colour in every opacity.
std::array<QRgb, 256> shadesOf(QColor color) {
    std::array<QRgb, 256> shades{};
    for (int opacity = 0; opacity < 256; ++opacity) {
        shades[static_cast<std::size_t>(opacity)] =
            qPremultiply(qRgba(color.red(), color.green(), color.blue(), opacity));
    }
    return shades;
}

std::uint8_t over(unsigned below, unsigned above) {
    return static_cast<std::uint8_t>(below + above - (below * above + 127) / 255);
}

}  // namespace

void SheetSurface::beginSheet(QPainter& painter, const platform::SheetView& view) {
    painter_ = &painter;
    view_ = view;
    setPage(view.device, view.color);
    const Area area = sheet();
    const QRectF whole(onScreen({area.across.start, area.down.start}), onScreen({area.across.end, area.down.end}));
    visible_ = whole.intersected(QRectF(pixelsOf(*painter.device()))).toAlignedRect();
}

QPointF SheetSurface::onScreen(Point point) const {
    return {view_.left + static_cast<double>(point.x) * view_.scaleX,
            view_.top + static_cast<double>(point.y) * view_.scaleY};
}

platform::drawing::PixelSurface::DeviceFont SheetSurface::findFont(const platform::FontRequest& font) {
    if (!fonts_) {
        fonts_.emplace(codePage_());
    }
    const fonts::FontCatalog::Choice& choice = fonts_->choose(font.name, font.bold, font.italic);
    font_ = choice.font;
    return {{choice.name, font_->coversCodePage() ? font.charset : platform::charsetAnsi}, &font_->units()};
}

// From units of the font, y upwards, to the screen.
QTransform SheetSurface::glyphMatrix() const {
    const double unit = static_cast<double>(std::max(1, font().emHeight)) / font_->units().perEm;
    const double along = unit * textScale().along;
    const double up = -unit * textScale().across;
    const Point right = turn().along();
    const Point down = turn().down();
    return {static_cast<double>(right.x) * along * view_.scaleX,
            static_cast<double>(right.y) * along * view_.scaleY,
            static_cast<double>(down.x) * up * view_.scaleX,
            static_cast<double>(down.y) * up * view_.scaleY,
            0,
            0};
}

void SheetSurface::showRun(const Run& run) {
    const QTransform matrix = glyphMatrix();
    const double unit = std::max(std::hypot(matrix.m11(), matrix.m12()), std::hypot(matrix.m21(), matrix.m22()));
    const double em = unit * font_->units().perEm;
    constexpr double widest = 4;  // what reaches farthest from its place, in em squares
    const std::vector<Glyph>& glyphs = visibleGlyphs(run, widest * em);
    if (glyphs.empty()) {
        return;
    }
    if (em > largestMask) {
        showOutlines(glyphs, matrix, colorOf(run.color));
    } else {
        showMasks(glyphs, matrix, colorOf(run.color));
    }
}

const std::vector<SheetSurface::Glyph>& SheetSurface::visibleGlyphs(const Run& run, double reach) {
    const QRectF near = QRectF(visible_).adjusted(-reach, -reach, reach, reach);
    glyphs_.clear();
    std::int64_t along = 0;
    for (const char character : run.text) {
        const auto byte = static_cast<unsigned char>(character);
        const QPointF place = onScreen(turn().toPage(run.start, Point{along, 0}));
        if (byte != ' ' && near.contains(place)) {
            glyphs_.push_back({byte, place});
        }
        along += fontPixels().advance[byte];
    }
    return glyphs_;
}

void SheetSurface::showOutlines(const std::vector<Glyph>& glyphs, const QTransform& matrix, QColor color) {
    painter_->save();
    painter_->setRenderHint(QPainter::Antialiasing);
    painter_->setClipRect(visible_, Qt::IntersectClip);
    for (const Glyph& glyph : glyphs) {
        painter_->fillPath(glyphOutline(*font_, glyph.byte, matrix).translated(glyph.place), color);
    }
    painter_->restore();
}

// All glyphs of the run in one picture, because drawing one is far cheaper than drawing eighty.
void SheetSurface::showMasks(const std::vector<Glyph>& glyphs, const QTransform& matrix, QColor color) {
    masks_.forgetTooMany();
    masks_.select({font_, {matrix.m11(), matrix.m12(), matrix.m21(), matrix.m22()}});
    placed_.clear();
    QRect box;
    for (const Glyph& glyph : glyphs) {
        const auto [pixelX, partX] = partOf(glyph.place.x());
        const auto [pixelY, partY] = partOf(glyph.place.y());
        const GlyphMasks::Mask& mask = masks_.mask(glyph.byte, partX, partY);
        placed_.push_back({mask.box.translated(pixelX, pixelY), mask.start});
        box |= placed_.back().box;
    }
    box &= visible_;
    if (box.isEmpty()) {
        return;
    }
    coverage_.assign(static_cast<std::size_t>(box.width()) * static_cast<std::size_t>(box.height()), 0);
    for (const GlyphMasks::Mask& mask : placed_) {
        blendMask(mask, box);
    }
    const std::array<QRgb, 256> shades = shadesOf(color);
    pixels_.resize(coverage_.size());
    std::transform(coverage_.begin(), coverage_.end(), pixels_.begin(),
                   [&shades](std::uint8_t level) { return shades[level]; });
    const QImage image(reinterpret_cast<const uchar*>(pixels_.data()), box.width(), box.height(),
                       static_cast<qsizetype>(box.width()) * 4, QImage::Format_ARGB32_Premultiplied);
    painter_->drawImage(box.topLeft(), image);
}

void SheetSurface::blendMask(const GlyphMasks::Mask& mask, const QRect& box) {
    const QRect seen = mask.box & box;
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
        const std::uint8_t* from = masks_.coverage(mask) +
                                   static_cast<std::ptrdiff_t>(y - mask.box.top()) * mask.box.width() +
                                   (seen.left() - mask.box.left());
        std::uint8_t* to =
            coverage_.data() + static_cast<std::ptrdiff_t>(y - box.top()) * box.width() + (seen.left() - box.left());
        std::transform(from, from + seen.width(), to, to,
                       [](unsigned above, unsigned below) { return over(below, above); });
    }
}

void SheetSurface::showRectangle(const Area& area, platform::Color color) {
    const QPointF corner = onScreen({area.across.start, area.down.start});
    const QPointF other = onScreen({area.across.end, area.down.end});
    const QRectF seen = QRectF(corner, other).intersected(QRectF(visible_));
    if (seen.isEmpty()) {
        return;
    }
    QColor shade = colorOf(color);
    for (const Stretch& down : stretches(seen.top(), seen.bottom())) {
        for (const Stretch& across : stretches(seen.left(), seen.right())) {
            const int opacity = static_cast<int>(std::lround(255 * down.covered * across.covered));
            if (opacity > 0 && down.length > 0 && across.length > 0) {
                shade.setAlpha(opacity);
                painter_->fillRect(QRect(across.start, down.start, across.length, down.length), shade);
            }
        }
    }
}

void SheetSurface::showPicture(const std::shared_ptr<const platform::Picture>& picture, const Frame& frame) {
    const QRectF target(onScreen(frame.corner),
                        onScreen({frame.corner.x + frame.width, frame.corner.y + frame.height}));
    pictures_.draw(*painter_, {picture, hasColor()}, target, visible_);
}

}  // namespace platform_linux::qt
