#include "platform/linux/qt/scaled_pictures.h"

#include <algorithm>
#include <cmath>

#include "platform/drawing/grey.h"
#include "platform/linux/qt/scaled_picture.h"

namespace platform_linux::qt {

namespace {

constexpr qsizetype mostKept = qsizetype{24} << 20;  // bytes
// A picture of no more pixels is scaled as a whole, so that it is there when it is moved; of a larger one what is seen.
constexpr double wholeUpTo = 2e6;

// Moving a picture by whole pixels makes no other one of it.
double rounded(double offset) { return std::round(offset * 256) / 256; }

}  // namespace

void ScaledPictures::draw(QPainter& painter, const Source& source, const QRectF& target, const QRect& visible) {
    const QRectF area = target.normalized();
    const QRect seen = area.intersected(QRectF(visible)).toAlignedRect().intersected(visible);
    if (seen.isEmpty() || area.isEmpty()) {
        return;
    }
    const QRect part =
        area.width() * area.height() <= wholeUpTo && area.width() < wholeUpTo / 16 && area.height() < wholeUpTo / 16
            ? area.toAlignedRect()
            : seen;
    const QRectF within(rounded(target.x() - part.x()), rounded(target.y() - part.y()), target.width(),
                        target.height());
    painter.drawImage(seen.topLeft(), find(source, within, part.size()), seen.translated(-part.topLeft()));
}

const QImage& ScaledPictures::find(const Source& source, const QRectF& target, QSize size) {
    const auto known = std::find_if(kept_.begin(), kept_.end(), [&](const Scaled& scaled) {
        return scaled.target == target && scaled.image.size() == size && scaled.color == source.color &&
               scaled.picture.lock() == source.picture;
    });
    if (known != kept_.end()) {
        kept_.splice(kept_.begin(), kept_, known);
        return known->image;
    }
    const bool grey = !source.color && !platform::drawing::isGrey(*source.picture);
    QImage image = grey ? scaledPicture(platform::drawing::greyOf(*source.picture), target, size)
                        : scaledPicture(*source.picture, target, size);
    forgetMoreThan(mostKept - image.sizeInBytes());
    kept_.push_front({source.picture, source.color, target, std::move(image)});
    return kept_.front().image;
}

void ScaledPictures::forgetMoreThan(qsizetype bytes) {
    std::erase_if(kept_, [&](const Scaled& scaled) {
        bytes -= scaled.picture.expired() ? 0 : scaled.image.sizeInBytes();
        return bytes < 0 || scaled.picture.expired();
    });
}

}  // namespace platform_linux::qt
