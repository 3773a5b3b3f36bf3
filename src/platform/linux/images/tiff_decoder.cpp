#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "pictures/colors.h"
#include "pictures/picture_size.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/tiff_stream.h"

namespace platform_linux::images {

namespace {

using pictures::ForeignPicture;
using platform::Color;
using platform::Picture;

template <typename Number>
Number field(TIFF* tiff, std::uint32_t tag, Number otherwise) {
    Number value{};
    return TIFFGetFieldDefaulted(tiff, tag, &value) != 0 ? value : otherwise;
}

[[noreturn]] void refuse() { pictures::refuseDamaged(pictures::ForeignKind::tiff); }

// A piece of the picture that is decoded at once: some of its rows, or a tile.
struct Piece {
    int left = 0;
    int top = 0;
    int width = 0;  // the part of it that lies in the picture
    int height = 0;
    std::size_t rowBytes = 0;
    const std::uint8_t* bytes = nullptr;
};

template <typename Take>
void forEachTile(TIFF* tiff, const Picture& picture, const Take& take) {
    const auto width = static_cast<int>(field<std::uint32_t>(tiff, TIFFTAG_TILEWIDTH, 0));
    const auto height = static_cast<int>(field<std::uint32_t>(tiff, TIFFTAG_TILELENGTH, 0));
    const tmsize_t size = TIFFTileSize(tiff);
    if (width <= 0 || height <= 0 || size <= 0 || size > pictures::mostPictureBytes) {
        refuse();
    }
    std::vector<std::uint8_t> tile(static_cast<std::size_t>(size));
    const auto rowBytes = static_cast<std::size_t>(TIFFTileRowSize(tiff));
    for (int top = 0; top < picture.height; top += std::min(height, picture.height - top)) {
        for (int left = 0; left < picture.width; left += std::min(width, picture.width - left)) {
            const std::uint32_t number =
                TIFFComputeTile(tiff, static_cast<std::uint32_t>(left), static_cast<std::uint32_t>(top), 0, 0);
            if (TIFFReadEncodedTile(tiff, number, tile.data(), size) != size) {
                refuse();
            }
            take(Piece{left, top, std::min(width, picture.width - left), std::min(height, picture.height - top),
                       rowBytes, tile.data()});
        }
    }
}

template <typename Take>
void forEachStrip(TIFF* tiff, const Picture& picture, const Take& take) {
    const auto perStrip =
        std::min(field<std::uint32_t>(tiff, TIFFTAG_ROWSPERSTRIP, 0), static_cast<std::uint32_t>(picture.height));
    const tmsize_t rowBytes = TIFFScanlineSize(tiff);
    if (perStrip == 0 || rowBytes <= 0) {
        refuse();
    }
    const auto rows = static_cast<int>(perStrip);
    std::vector<std::uint8_t> strip(static_cast<std::size_t>(rowBytes) * perStrip);
    std::uint32_t number = 0;
    for (int top = 0; top < picture.height; top += std::min(rows, picture.height - top), ++number) {
        const int height = std::min(rows, picture.height - top);
        const tmsize_t size = rowBytes * height;
        if (TIFFReadEncodedStrip(tiff, number, strip.data(), size) != size) {
            refuse();
        }
        take(Piece{0, top, picture.width, height, static_cast<std::size_t>(rowBytes), strip.data()});
    }
}

// How the numbers of a pixel lie in the file.
struct Layout {
    int bits = 0;
    bool opacity = false;     // behind the shade, in as many bits
    bool multiplied = false;  // the shade by the opacity
};

std::uint8_t sampleAt(const std::uint8_t* row, std::size_t index, int bits) {
    if (bits == 8) {
        return row[index];
    }
    std::uint16_t wide = 0;
    std::memcpy(&wide, row + index * sizeof(wide), sizeof(wide));
    return pictures::eightBits(wide);
}

std::uint8_t shadeAt(const std::uint8_t* row, std::size_t x, const Layout& layout) {
    if (!layout.opacity) {
        return sampleAt(row, x, layout.bits);
    }
    const std::uint8_t shade = sampleAt(row, 2 * x, layout.bits);
    const std::uint8_t opacity = sampleAt(row, 2 * x + 1, layout.bits);
    return layout.multiplied ? static_cast<std::uint8_t>(std::min(shade + 255 - opacity, 255))
                             : pictures::onWhite(shade, opacity);
}

void copyRows(const Piece& piece, const Layout& layout, Picture& picture) {
    const auto bits = static_cast<std::size_t>(picture.bitsPerPixel);
    const std::size_t left = static_cast<std::size_t>(piece.left) * bits / 8;  // tiles begin with whole bytes
    const std::size_t count = (static_cast<std::size_t>(piece.width) * bits + 7) / 8;
    const bool same = layout.bits == picture.bitsPerPixel && !layout.opacity;
    for (int y = 0; y < piece.height; ++y) {
        const std::uint8_t* from = piece.bytes + static_cast<std::size_t>(y) * piece.rowBytes;
        std::uint8_t* to = picture.pixels.data() + static_cast<std::size_t>(piece.top + y) * picture.stride() + left;
        if (same) {
            std::memcpy(to, from, count);
            continue;
        }
        for (std::size_t x = 0; x < count; ++x) {
            to[x] = shadeAt(from, x, layout);
        }
    }
}

// Some programs state the colours in eight bits, not in sixteen.
std::vector<Color> paletteOf(TIFF* tiff, int bits) {
    std::array<std::uint16_t*, 3> channels{};
    if (TIFFGetField(tiff, TIFFTAG_COLORMAP, &channels[0], &channels[1], &channels[2]) == 0) {
        refuse();
    }
    const std::size_t count = std::size_t{1} << bits;
    const bool wide = std::any_of(channels.begin(), channels.end(), [count](const std::uint16_t* channel) {
        return std::any_of(channel, channel + count, [](std::uint16_t value) { return value > 255; });
    });
    const auto byteOf = [wide](std::uint16_t value) {
        return wide ? pictures::eightBits(value) : static_cast<std::uint8_t>(value);
    };
    std::vector<Color> palette;
    for (std::size_t i = 0; i < count; ++i) {
        palette.push_back({byteOf(channels[0][i]), byteOf(channels[1][i]), byteOf(channels[2][i])});
    }
    return palette;
}

// Shades of grey, or numbers in a palette.
void decodeNumbers(TIFF* tiff, const ForeignPicture& file, Picture& picture) {
    const auto bits = field<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    const auto format = field<std::uint16_t>(tiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    const bool planes = field<std::uint16_t>(tiff, TIFFTAG_PLANARCONFIG, 0) == PLANARCONFIG_SEPARATE;
    if ((bits != picture.bitsPerPixel && bits != 16) || (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID) ||
        (planes && file.transparency)) {
        pictures::refuseForeign(file.kind, "hat Bildpunkte einer Art, die selten vorkommt");
    }
    Layout layout{.bits = bits, .opacity = file.transparency};
    std::uint16_t extraCount = 0;
    const std::uint16_t* extra = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &extraCount, &extra) != 0 && extraCount > 0) {
        layout.multiplied = extra[0] == EXTRASAMPLE_ASSOCALPHA;
    }
    const bool whiteIsZero = field<std::uint16_t>(tiff, TIFFTAG_PHOTOMETRIC, 0) == PHOTOMETRIC_MINISWHITE;
    picture.palette = file.palette  ? paletteOf(tiff, picture.bitsPerPixel)
                      : whiteIsZero ? pictures::reversedGreyPalette(picture.bitsPerPixel)
                                    : pictures::greyPalette(picture.bitsPerPixel);
    const auto copy = [&](const Piece& piece) { copyRows(piece, layout, picture); };
    TIFFIsTiled(tiff) != 0 ? forEachTile(tiff, picture, copy) : forEachStrip(tiff, picture, copy);
}

class Colors {
public:
    explicit Colors(TIFF* tiff) {
        std::array<char, 1024> message{};
        if (TIFFRGBAImageOK(tiff, message.data()) == 0 ||
            TIFFRGBAImageBegin(&image_, tiff, /*stop at the first error*/ 1, message.data()) == 0) {
            pictures::refuseForeign(pictures::ForeignKind::tiff, "hat Farben einer Art, die selten vorkommt");
        }
        image_.req_orientation = image_.orientation;  // rows as they are in the file
    }
    Colors(const Colors&) = delete;
    Colors& operator=(const Colors&) = delete;
    ~Colors() { TIFFRGBAImageEnd(&image_); }

    void decodeRows(int top, int count, std::vector<std::uint32_t>& raster) {
        image_.row_offset = top;
        if (TIFFRGBAImageGet(&image_, raster.data(), image_.width, static_cast<std::uint32_t>(count)) == 0) {
            refuse();
        }
    }

private:
    TIFFRGBAImage image_{};
};

// What is transparent has been multiplied by its opacity already.
Color onWhite(std::uint32_t pixel) {
    const std::uint32_t white = 255 - TIFFGetA(pixel);
    const auto channel = [white](std::uint32_t value) {
        return static_cast<std::uint8_t>(std::min<std::uint32_t>(value + white, 255));
    };
    return {channel(TIFFGetR(pixel)), channel(TIFFGetG(pixel)), channel(TIFFGetB(pixel))};
}

// Whatever else the library can turn into colours, some rows at a time.
void decodeColors(TIFF* tiff, Picture& picture) {
    Colors colors(tiff);
    const std::uint32_t inFile = TIFFIsTiled(tiff) != 0 ? field<std::uint32_t>(tiff, TIFFTAG_TILELENGTH, 0)
                                                        : field<std::uint32_t>(tiff, TIFFTAG_ROWSPERSTRIP, 0);
    const auto rows =
        static_cast<int>(std::clamp<std::uint32_t>(inFile, 1, static_cast<std::uint32_t>(picture.height)));
    std::vector<std::uint32_t> raster(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(rows));
    std::uint8_t* to = picture.pixels.data();
    for (int top = 0; top < picture.height; top += std::min(rows, picture.height - top)) {
        const int count = std::min(rows, picture.height - top);
        colors.decodeRows(top, count, raster);
        const std::size_t pixels = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(count);
        for (std::size_t i = 0; i < pixels; ++i) {
            const Color color = onWhite(raster[i]);
            *to++ = color.red;
            *to++ = color.green;
            *to++ = color.blue;
        }
    }
}

}  // namespace

Picture decodeTiff(const ForeignPicture& file, std::string_view content) {
    TiffStream stream(content, TiffStream::Use::read);
    const OwnedTiff tiff = stream.open();
    if (!tiff) {
        refuse();
    }
    Picture picture = pictures::makePicture(file.stored.width, file.stored.height, file.stored.bitsPerPixel);
    if (picture.bitsPerPixel < 24) {
        decodeNumbers(tiff.get(), file, picture);
    } else {
        decodeColors(tiff.get(), picture);
    }
    return picture;
}

}  // namespace platform_linux::images
