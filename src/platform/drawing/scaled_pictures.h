// Pictures as the screen shows them, those shown last kept.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <vector>

#include "platform/drawing/scaled_picture.h"

namespace platform::drawing {

class ScaledPictures {
public:
    // Draws what of the picture is within an area of the bitmap. Of a pixel that it covers in part, that part is drawn.
    void draw(const std::shared_ptr<const Picture>& picture, const PictureLook& look, const Area& within,
              const ScreenPixels& pixels);

private:
    struct Entry {
        std::weak_ptr<const Picture> picture;
        PictureLook look;
        std::vector<std::uint32_t> pixels;  // of all that it covers, row by row
    };
    static constexpr std::size_t most = std::size_t{4} << 20;  // pixels, of all together

    const std::vector<std::uint32_t>& scaled(const std::shared_ptr<const Picture>& picture, const PictureLook& look,
                                             const Area& whole);
    // Keeps those used last.
    void forgetMoreThan(std::size_t pixels);

    std::list<Entry> entries_;  // the one used last in front
};

}  // namespace platform::drawing
