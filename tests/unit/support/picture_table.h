// The pictures that make_pictures.sh makes, and what has to become of them.
#pragma once

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace support {

struct PictureFile {
    std::string name;
    int bitsPerPixel = 0;
    // How far a channel may be from what ImageMagick makes of it; how much of it may be lost in saving the picture.
    int difference = 0;
    int loss = 0;
    double dpiX = 0;
    double dpiY = 0;
};

inline constexpr std::size_t bytesOfPixels = 61 * 43 * 3;

inline const std::vector<PictureFile> pictureFiles = [] {
    std::vector<PictureFile> files = {
        // Colours at half the resolution: decoders smooth them each in its way.
        {"rgb.jpg", 24, 25, 12, 150, 150},
        {"full.jpg", 24, 3, 12, 254, 254},
        {"grey.jpg", 8, 2, 12},
        {"progressive.jpg", 24, 3, 12},
        {"inks.jpg", 24, 3, 60},
        {"jpeg.tif", 24, 3, 12},
        {"grey-alpha.png", 8, 1},
        {"palette-alpha.png", 8, 1},
        {"rgb-alpha.png", 24, 1},
        {"interlaced-alpha.png", 24, 1},
        {"grey-alpha.tif", 8, 1},
        {"rgb-alpha.tif", 24, 2},
        {"inks.tif", 24, 2},
        {"rgb8.png", 24, 0, 0, 300, 150},
        {"group4.tif", 1, 0, 0, 300, 300},
        {"strips.tif", 24, 0, 0, 304.8, 152.4},
    };
    for (const auto& [bits, names] : std::map<int, std::string>{
             {1, "grey1.png palette1.png colors2.gif fax.tif grey1.tif white1.tif palette1.tif bit-tiles.tif"},
             {2, "grey2.png palette2.png colors4.gif grey2.tif"},
             {4,
              "grey4.png palette4.png colors16.gif interlaced.gif transparent.gif animated.gif grey4.tif palette4.tif"},
             {8,
              "grey8.png grey16.png grey-transparent.png palette8.png colors200.gif grey8.tif grey16.tif "
              "palette8.tif grey-tiles.tif"},
             {24, "rgb16.png interlaced.png lzw.tif zip.tif planes.tif rgb16.tif tiles.tif pages.tif"}}) {
        std::istringstream list(names);
        for (std::string name; list >> name;) {
            files.push_back({name, bits});
        }
    }
    return files;
}();

}  // namespace support
