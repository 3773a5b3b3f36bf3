// The pictures that make_pictures.sh makes, and what has to become of them.
#pragma once

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

// Decoders smooth colours at half the resolution (rgb.jpg) each in its way.
inline const std::vector<PictureFile> pictureFiles = [] {
    std::istringstream table(
        "grey1.png 1;grey2.png 2;grey4.png 4;grey8.png 8;grey16.png 8;grey-alpha.png 8 1;grey-transparent.png 8;"
        "palette1.png 1;palette2.png 2;palette4.png 4;palette8.png 8;palette-alpha.png 8 1;rgb8.png 24 0 0 300 150;"
        "rgb16.png 24;rgb-alpha.png 24 1;interlaced.png 24;interlaced-alpha.png 24 1;rgb.jpg 24 25 12 150 150;"
        "full.jpg 24 3 12 254 254;grey.jpg 8 2 12;progressive.jpg 24 3 12;inks.jpg 24 3 60;colors2.gif 1;colors4.gif 2;"
        "colors16.gif 4;colors200.gif 8;interlaced.gif 4;transparent.gif 4;animated.gif 4;group4.tif 1 0 0 300 300;"
        "fax.tif 1;grey1.tif 1;white1.tif 1;grey2.tif 2;grey4.tif 4;grey8.tif 8;grey16.tif 8;grey-alpha.tif 8 1;"
        "palette1.tif 1;palette4.tif 4;palette8.tif 8;strips.tif 24 0 0 304.8 152.4;lzw.tif 24;zip.tif 24;"
        "jpeg.tif 24 3 12;planes.tif 24;rgb16.tif 24;rgb-alpha.tif 24 2;inks.tif 24 2;tiles.tif 24;grey-tiles.tif 8;"
        "bit-tiles.tif 1;pages.tif 24;framed.gif 4;framed-colors.gif 24;turned2.tif 1;turned3.tif 1;turned4.tif 1;"
        "turned5.tif 1;turned6.tif 1;turned7.tif 1;turned8.tif 1;turned-colors.tif 24 0 0 150 300");
    std::vector<PictureFile> files;
    for (std::string row; std::getline(table, row, ';');) {
        PictureFile& file = files.emplace_back();
        std::istringstream(row) >> file.name >> file.bitsPerPixel >> file.difference >> file.loss >> file.dpiX >>
            file.dpiY;
    }
    return files;
}();

}  // namespace support
