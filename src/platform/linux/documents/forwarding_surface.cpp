#include "platform/linux/documents/forwarding_surface.h"

namespace platform_linux::documents {

void ForwardingSurface::forwardTo(platform::Surface& surface) {
    surface_ = &surface;
    if (font_) {
        surface.setFont(*font_);
    }
}

platform::DeviceCapabilities ForwardingSurface::capabilities() const { return surface_->capabilities(); }

platform::FontFace ForwardingSurface::setFont(const platform::FontRequest& font) {
    platform::FontFace face = surface_->setFont(font);
    font_ = font;
    return face;
}

int ForwardingSurface::textWidth(std::string_view text) const { return surface_->textWidth(text); }

int ForwardingSurface::textHeight() const { return surface_->textHeight(); }

void ForwardingSurface::drawText(int x, int y, std::string_view text, platform::Color color, platform::TextRole role) {
    surface_->drawText(x, y, text, color, role);
}

void ForwardingSurface::fillRectangle(int x, int y, int width, int height, platform::Color color) {
    surface_->fillRectangle(x, y, width, height, color);
}

void ForwardingSurface::drawPicture(const std::shared_ptr<const platform::Picture>& picture, int x, int y, int width,
                                    int height) {
    surface_->drawPicture(picture, x, y, width, height);
}

}  // namespace platform_linux::documents
