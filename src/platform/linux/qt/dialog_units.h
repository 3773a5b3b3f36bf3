// Dialog units as pixels on the desktop.
#pragma once

#include <QFont>
#include <QRect>

#include "platform/forms.h"

namespace platform_linux::qt {

class DialogUnits {
public:
    // For the font of a window, on a screen of so many pixels per inch.
    DialogUnits(const QFont& font, int dpi);

    int across(int units) const;
    int down(int units) const;
    QRect rectangle(const platform::Place& place) const;
    int height(const platform::FormHeight& height) const;

private:
    double characterWidth_;
    double characterHeight_;
};

}  // namespace platform_linux::qt
