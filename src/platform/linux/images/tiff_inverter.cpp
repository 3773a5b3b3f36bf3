#include <algorithm>
#include <new>
#include <vector>

#include "pictures/inversion.h"
#include "pictures/picture_size.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/tiff_stream.h"

namespace platform_linux::images {

namespace {

using pictures::ForeignKind;
using pictures::SampleLayout;

std::uint16_t shortField(TIFF* tiff, std::uint32_t tag) {
    std::uint16_t value = 0;
    return TIFFGetFieldDefaulted(tiff, tag, &value) != 0 ? value : std::uint16_t{0};
}

[[noreturn]] void refuseCompression() {
    pictures::refuseInversion(ForeignKind::tiff, "Farben, die hier nicht ebenso komprimiert werden können,");
}

[[noreturn]] void refuse() { pictures::refuseDamaged(ForeignKind::tiff); }

struct Samples {
    SampleLayout layout;
    bool planes = false;  // one behind the other, each with one sample of every pixel
};

// JPEG inside gives and takes red, green and blue, whatever it stores.
bool isColors(std::uint16_t photometric, std::uint16_t compression) {
    return photometric == PHOTOMETRIC_RGB || (photometric == PHOTOMETRIC_YCBCR && compression == COMPRESSION_JPEG);
}

Samples samplesOf(TIFF* tiff) {
    const std::uint16_t photometric = shortField(tiff, TIFFTAG_PHOTOMETRIC);
    const std::uint16_t bits = shortField(tiff, TIFFTAG_BITSPERSAMPLE);
    const std::uint16_t format = shortField(tiff, TIFFTAG_SAMPLEFORMAT);
    std::uint16_t extraCount = 0;
    const std::uint16_t* extra = nullptr;
    if (TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &extraCount, &extra) == 0) {
        extraCount = 0;
    }
    const bool grey = photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
    const bool colors = isColors(photometric, shortField(tiff, TIFFTAG_COMPRESSION));
    Samples samples;
    samples.layout.samples = shortField(tiff, TIFFTAG_SAMPLESPERPIXEL);
    samples.layout.colors = colors ? 3 : 1;
    samples.layout.bytesPerSample = bits / 8;
    samples.layout.multiplied = extraCount > 0 && extra[0] == EXTRASAMPLE_ASSOCALPHA;
    samples.planes = shortField(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE && samples.layout.samples > 1;
    const bool numbers = format == SAMPLEFORMAT_UINT || format == SAMPLEFORMAT_VOID;
    if ((!grey && !colors) || (bits != 8 && bits != 16) || !numbers ||
        samples.layout.samples != samples.layout.colors + extraCount || (samples.planes && samples.layout.multiplied)) {
        pictures::refuseInversion(ForeignKind::tiff, "Farben einer Art, die selten vorkommt,");
    }
    return samples;
}

void prepareJpeg(TIFF* tiff) {
    if (shortField(tiff, TIFFTAG_COMPRESSION) == COMPRESSION_JPEG) {
        constexpr int quality = 95;
        TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        TIFFSetField(tiff, TIFFTAG_JPEGQUALITY, quality);
        // Each piece brings its own tables: those of the file are for what was there before.
        TIFFSetField(tiff, TIFFTAG_JPEGTABLESMODE, 0);
    }
}

struct PieceOfFile {
    std::uint32_t number = 0;
    std::uint8_t* bytes = nullptr;
    tmsize_t size = 0;
};

bool isTiled(TIFF* tiff) { return TIFFIsTiled(tiff) != 0; }

tmsize_t readPiece(TIFF* tiff, std::uint32_t number, std::vector<std::uint8_t>& bytes) {
    const auto size = static_cast<tmsize_t>(bytes.size());
    return isTiled(tiff) ? TIFFReadEncodedTile(tiff, number, bytes.data(), size)
                         : TIFFReadEncodedStrip(tiff, number, bytes.data(), size);
}

// Calls take(piece) for the inverted content of every strip or tile.
template <typename Take>
void forEachInvertedPiece(TIFF* tiff, const Take& take) {
    const Samples samples = samplesOf(tiff);
    const std::uint32_t count = isTiled(tiff) ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
    const tmsize_t size = isTiled(tiff) ? TIFFTileSize(tiff) : TIFFStripSize(tiff);
    if (size <= 0 || size > 2 * pictures::mostPictureBytes || count == 0) {
        refuse();
    }
    std::vector<std::uint8_t> piece(static_cast<std::size_t>(size));
    const SampleLayout plane{.samples = 1, .colors = 1, .bytesPerSample = samples.layout.bytesPerSample};
    const std::uint32_t perPlane = count / static_cast<std::uint32_t>(samples.planes ? samples.layout.samples : 1);
    for (std::uint32_t i = 0; i < count; ++i) {
        const tmsize_t got = readPiece(tiff, i, piece);
        if (got <= 0) {
            refuse();
        }
        if (!samples.planes || i / perPlane < samples.layout.colors) {
            pictures::invertSamples(piece.data(), static_cast<std::size_t>(got),
                                    samples.planes ? plane : samples.layout);
        }
        take(PieceOfFile{i, piece.data(), got});
    }
}

void writeInverted(TIFF* from, TIFF* to) {
    forEachInvertedPiece(from, [&](const PieceOfFile& piece) {
        const tmsize_t written = isTiled(to) ? TIFFWriteEncodedTile(to, piece.number, piece.bytes, piece.size)
                                             : TIFFWriteEncodedStrip(to, piece.number, piece.bytes, piece.size);
        if (written < 0) {
            refuseCompression();
        }
    });
}

// In a damaged file pieces may lie over each other or over the directory: writing one changes another.
void requireInverted(TIFF* from, std::string_view written) {
    TiffStream stream(written, TiffStream::Use::read);
    const OwnedTiff result = stream.open();
    if (!result) {
        refuse();
    }
    const tmsize_t room = isTiled(from) ? TIFFTileSize(from) : TIFFStripSize(from);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(room));
    forEachInvertedPiece(from, [&](const PieceOfFile& piece) {
        const tmsize_t got = readPiece(result.get(), piece.number, bytes);
        if (got != piece.size || !std::equal(piece.bytes, piece.bytes + got, bytes.begin())) {
            refuse();
        }
    });
}

}  // namespace

std::string invertTiff(std::string_view content) {
    TiffStream source(content, TiffStream::Use::read);
    TiffStream copy(content, TiffStream::Use::change);
    const OwnedTiff from = source.open();
    OwnedTiff to = copy.open();
    if (!from || !to) {
        refuse();
    }
    prepareJpeg(from.get());
    prepareJpeg(to.get());
    writeInverted(from.get(), to.get());
    const bool written = TIFFFlush(to.get()) != 0;
    to.reset();
    if (copy.isFull()) {
        throw std::bad_alloc();
    }
    if (!written) {
        refuseCompression();
    }
    std::string inverted = copy.takeWritten();
    if (shortField(from.get(), TIFFTAG_COMPRESSION) != COMPRESSION_JPEG) {
        requireInverted(from.get(), inverted);
    }
    return inverted;
}

}  // namespace platform_linux::images
