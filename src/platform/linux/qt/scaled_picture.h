// A picture in another size.
#pragma once

#include <QImage>
#include <QRectF>

#include "platform/picture.h"

namespace platform_linux::qt {

// What of a picture that is stretched to the target lies in the pixels from (0, 0) up to this size. A target of
// negative width or height mirrors it. Each pixel is the mean of all that it shows: so nothing of a picture vanishes
// when it becomes smaller, and its pixels stay sharp when it becomes larger. Format_ARGB32_Premultiplied.
QImage scaledPicture(const platform::Picture& picture, const QRectF& target, QSize size);

}  // namespace platform_linux::qt
