// The one surface of a document that is written as several PDFs.
#pragma once

#include <optional>

#include "platform/surface.h"

namespace platform_linux::documents {

class ForwardingSurface : public platform::Surface {
public:
    // Everything goes to this surface from now on; the font selected before is selected there too.
    void forwardTo(platform::Surface& surface);

    platform::DeviceCapabilities capabilities() const override;
    platform::FontFace setFont(const platform::FontRequest& font) override;
    int textWidth(std::string_view text) const override;
    int textHeight() const override;
    void drawText(int x, int y, std::string_view text, platform::Color color, platform::TextRole role) override;
    void fillRectangle(int x, int y, int width, int height, platform::Color color) override;
    void drawPicture(const std::shared_ptr<const platform::Picture>& picture, int x, int y, int width,
                     int height) override;

private:
    platform::Surface* surface_ = nullptr;
    std::optional<platform::FontRequest> font_;
};

}  // namespace platform_linux::documents
