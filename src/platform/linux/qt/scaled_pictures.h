// Pictures in the sizes that the screen shows them in, kept for the next time that it does.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRectF>
#include <list>
#include <memory>

#include "platform/picture.h"

namespace platform_linux::qt {

class ScaledPictures {
public:
    struct Source {
        std::shared_ptr<const platform::Picture> picture;
        bool color = true;  // false: in shades of grey
    };

    // Draws the picture stretched to the target, mirrored where that is of negative width or height, as far as it is
    // visible.
    void draw(QPainter& painter, const Source& source, const QRectF& target, const QRect& visible);

private:
    struct Scaled {
        std::weak_ptr<const platform::Picture> picture;
        bool color = true;
        QRectF target;  // from the image's corner
        QImage image;
    };

    const QImage& find(const Source& source, const QRectF& target, QSize size);
    void forgetMoreThan(qsizetype bytes);

    std::list<Scaled> kept_;  // the one used last is the first
};

}  // namespace platform_linux::qt
