#include <array>
#include <new>
#include <vector>

#include "pictures/colors.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/tiff_stream.h"

namespace platform_linux::images {

namespace {

using platform::Picture;

template <typename... Values>
void set(TIFF* tiff, std::uint32_t tag, Values... values) {
    if (TIFFSetField(tiff, tag, values...) == 0) {
        throw std::bad_alloc();  // the values are ones that the library takes
    }
}

bool isGrey(const Picture& picture) { return picture.bitsPerPixel == 8 && picture.palette == pictures::greyPalette(8); }

bool canHold(std::uint32_t compression, const Picture& picture) {
    switch (compression) {
        case COMPRESSION_CCITTRLE:
        case COMPRESSION_CCITTRLEW:
        case COMPRESSION_CCITTFAX3:
        case COMPRESSION_CCITTFAX4:
            return picture.bitsPerPixel == 1;
        case COMPRESSION_JPEG:
            return picture.bitsPerPixel == 24 || isGrey(picture);
        case COMPRESSION_NONE:
        case COMPRESSION_LZW:
        case COMPRESSION_PACKBITS:
        case COMPRESSION_DEFLATE:
        case COMPRESSION_ADOBE_DEFLATE:
        case COMPRESSION_LZMA:
        case COMPRESSION_ZSTD:
            return TIFFIsCODECConfigured(static_cast<std::uint16_t>(compression)) != 0;
        default:
            return false;
    }
}

std::uint32_t compressionFor(const Picture& picture, std::uint32_t original) {
    const std::uint32_t wanted = original == COMPRESSION_OJPEG ? std::uint32_t{COMPRESSION_JPEG} : original;
    return canHold(wanted, picture) ? wanted : std::uint32_t{COMPRESSION_LZW};
}

int setPalette(TIFF* tiff, const Picture& picture) {
    if (picture.palette == pictures::greyPalette(picture.bitsPerPixel)) {
        return PHOTOMETRIC_MINISBLACK;
    }
    if (picture.palette == pictures::reversedGreyPalette(picture.bitsPerPixel)) {
        return PHOTOMETRIC_MINISWHITE;
    }
    std::array<std::array<std::uint16_t, 256>, 3> channels{};
    constexpr int toSixteenBits = 257;
    for (std::size_t i = 0; i < picture.palette.size(); ++i) {
        channels[0][i] = static_cast<std::uint16_t>(picture.palette[i].red * toSixteenBits);
        channels[1][i] = static_cast<std::uint16_t>(picture.palette[i].green * toSixteenBits);
        channels[2][i] = static_cast<std::uint16_t>(picture.palette[i].blue * toSixteenBits);
    }
    set(tiff, TIFFTAG_COLORMAP, channels[0].data(), channels[1].data(), channels[2].data());
    return PHOTOMETRIC_PALETTE;
}

void writeHeader(TIFF* tiff, const Picture& picture, std::uint32_t compression) {
    const bool colors = picture.bitsPerPixel == 24;
    const bool coded = colors && compression == COMPRESSION_JPEG;
    set(tiff, TIFFTAG_IMAGEWIDTH, picture.width);
    set(tiff, TIFFTAG_IMAGELENGTH, picture.height);
    set(tiff, TIFFTAG_BITSPERSAMPLE, colors ? 8 : picture.bitsPerPixel);
    set(tiff, TIFFTAG_SAMPLESPERPIXEL, colors ? 3 : 1);
    set(tiff, TIFFTAG_COMPRESSION, static_cast<int>(compression));
    set(tiff, TIFFTAG_PHOTOMETRIC, coded ? PHOTOMETRIC_YCBCR : colors ? PHOTOMETRIC_RGB : setPalette(tiff, picture));
    set(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    const bool predicts = compression == COMPRESSION_LZW || compression == COMPRESSION_DEFLATE ||
                          compression == COMPRESSION_ADOBE_DEFLATE;
    if (predicts && (colors || isGrey(picture))) {
        set(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    }
    if (compression == COMPRESSION_JPEG) {
        constexpr int quality = 95;
        set(tiff, TIFFTAG_JPEGQUALITY, quality);
        set(tiff, TIFFTAG_YCBCRSUBSAMPLING, 1, 1);
        set(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    }
    if (picture.dpiX > 0 && picture.dpiY > 0) {
        set(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
        set(tiff, TIFFTAG_XRESOLUTION, picture.dpiX);
        set(tiff, TIFFTAG_YRESOLUTION, picture.dpiY);
    }
    set(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
}

bool writeRows(TIFF* tiff, const Picture& picture) {
    std::vector<std::uint8_t> row;  // the library changes what it is given
    const std::uint8_t* from = picture.pixels.data();
    for (int y = 0; y < picture.height; ++y, from += picture.stride()) {
        row.assign(from, from + picture.stride());
        if (TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y), 0) < 0) {
            return false;
        }
    }
    return TIFFFlush(tiff) != 0;
}

}  // namespace

std::string encodeTiff(const Picture& picture, const pictures::ForeignPicture& original) {
    TiffStream stream;
    OwnedTiff tiff = stream.open();
    if (!tiff) {
        throw std::bad_alloc();
    }
    writeHeader(tiff.get(), picture, compressionFor(picture, original.compression));
    const bool written = writeRows(tiff.get(), picture);
    tiff.reset();
    if (!written || stream.isFull()) {
        throw std::bad_alloc();
    }
    return stream.takeWritten();
}

}  // namespace platform_linux::images
