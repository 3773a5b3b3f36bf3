// Pictures as the screen shows them, those shown last kept.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <vector>

#include "platform/windows/gdi/scaled_picture.h"

namespace platform_windows::gdi {

class ScaledPictures {
public:
    // Draws what of the picture is within an area of the bitmap; the picture's corner comes to this point.
    void draw(const std::shared_ptr<const platform::Picture>& picture, const PictureLook& look,
              platform::drawing::Point corner, const platform::drawing::Area& within, const ScreenPixels& pixels);

private:
    struct Entry {
        std::weak_ptr<const platform::Picture> picture;
        PictureLook look;
        std::vector<std::uint32_t> pixels;
    };
    static constexpr std::size_t most = std::size_t{4} << 20;  // pixels, of all together

    // Whole, the one used last in front.
    const Entry& scaled(const std::shared_ptr<const platform::Picture>& picture, const PictureLook& look);

    std::list<Entry> entries_;
    std::size_t kept_ = 0;  // pixels
};

}  // namespace platform_windows::gdi
