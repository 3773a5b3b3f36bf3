// The pictures that make_pictures.sh makes, and what has to become of them.
#pragma once

#include <array>
#include <string_view>

namespace support {

struct PictureFile {
    std::string_view name;
    int bitsPerPixel;
    double dpiX;
    double dpiY;
    // How far a channel may be from what ImageMagick makes of it; how much of it may be lost in saving the picture.
    int difference = 0;
    int loss = 0;
};

inline constexpr int pictureWidth = 61;
inline constexpr int pictureHeight = 43;

inline constexpr std::array pictureFiles = {
    PictureFile{"grey1.png", 1, 0, 0},
    PictureFile{"grey2.png", 2, 0, 0},
    PictureFile{"grey4.png", 4, 0, 0},
    PictureFile{"grey8.png", 8, 0, 0},
    PictureFile{"grey16.png", 8, 0, 0},
    PictureFile{"grey-alpha.png", 8, 0, 0, 1},
    PictureFile{"grey-transparent.png", 8, 0, 0},
    PictureFile{"palette1.png", 1, 0, 0},
    PictureFile{"palette2.png", 2, 0, 0},
    PictureFile{"palette4.png", 4, 0, 0},
    PictureFile{"palette8.png", 8, 0, 0},
    PictureFile{"palette-alpha.png", 8, 0, 0, 1},
    PictureFile{"rgb8.png", 24, 300, 150},
    PictureFile{"rgb16.png", 24, 0, 0},
    PictureFile{"rgb-alpha.png", 24, 0, 0, 1},
    PictureFile{"interlaced.png", 24, 0, 0},
    PictureFile{"interlaced-alpha.png", 24, 0, 0, 1},
    // Colours at half the resolution: decoders smooth them each in its way.
    PictureFile{"rgb.jpg", 24, 150, 150, 25, 12},
    PictureFile{"full.jpg", 24, 254, 254, 3, 12},
    PictureFile{"grey.jpg", 8, 0, 0, 2, 12},
    PictureFile{"progressive.jpg", 24, 0, 0, 3, 12},
    PictureFile{"inks.jpg", 24, 0, 0, 3, 60},
    PictureFile{"colors2.gif", 1, 0, 0},
    PictureFile{"colors4.gif", 2, 0, 0},
    PictureFile{"colors16.gif", 4, 0, 0},
    PictureFile{"colors200.gif", 8, 0, 0},
    PictureFile{"interlaced.gif", 4, 0, 0},
    PictureFile{"transparent.gif", 4, 0, 0},
    PictureFile{"animated.gif", 4, 0, 0},
    PictureFile{"group4.tif", 1, 300, 300},
    PictureFile{"fax.tif", 1, 0, 0},
    PictureFile{"grey1.tif", 1, 0, 0},
    PictureFile{"white1.tif", 1, 0, 0},
    PictureFile{"grey2.tif", 2, 0, 0},
    PictureFile{"grey4.tif", 4, 0, 0},
    PictureFile{"grey8.tif", 8, 0, 0},
    PictureFile{"grey16.tif", 8, 0, 0},
    PictureFile{"grey-alpha.tif", 8, 0, 0, 1},
    PictureFile{"palette1.tif", 1, 0, 0},
    PictureFile{"palette4.tif", 4, 0, 0},
    PictureFile{"palette8.tif", 8, 0, 0},
    PictureFile{"strips.tif", 24, 304.8, 152.4},
    PictureFile{"lzw.tif", 24, 0, 0},
    PictureFile{"zip.tif", 24, 0, 0},
    PictureFile{"jpeg.tif", 24, 0, 0, 3, 12},
    PictureFile{"planes.tif", 24, 0, 0},
    PictureFile{"rgb16.tif", 24, 0, 0},
    PictureFile{"rgb-alpha.tif", 24, 0, 0, 2},
    PictureFile{"inks.tif", 24, 0, 0, 2},
    PictureFile{"tiles.tif", 24, 0, 0},
    PictureFile{"grey-tiles.tif", 8, 0, 0},
    PictureFile{"bit-tiles.tif", 1, 0, 0},
    PictureFile{"pages.tif", 24, 0, 0},
};

}  // namespace support
