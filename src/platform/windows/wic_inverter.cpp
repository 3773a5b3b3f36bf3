#include "platform/windows/wic_inverter.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "pictures/inversion.h"
#include "pictures/picture_file.h"
#include "platform/windows/wic_decoder.h"
#include "platform/windows/wic_encoder.h"

namespace platform_windows {

namespace {

using pictures::ForeignKind;
using pictures::ForeignPicture;

struct InvertibleFormat {
    const GUID* format;
    std::size_t bitsPerPixel;
    pictures::SampleLayout layout;
};

const std::array formats = {
    InvertibleFormat{&GUID_WICPixelFormatBlackWhite, 1, {}},
    InvertibleFormat{&GUID_WICPixelFormat2bppGray, 2, {}},
    InvertibleFormat{&GUID_WICPixelFormat4bppGray, 4, {}},
    InvertibleFormat{&GUID_WICPixelFormat8bppGray, 8, {}},
    InvertibleFormat{&GUID_WICPixelFormat16bppGray, 16, {}},
    InvertibleFormat{&GUID_WICPixelFormat24bppBGR, 24, {}},
    InvertibleFormat{&GUID_WICPixelFormat24bppRGB, 24, {}},
    InvertibleFormat{&GUID_WICPixelFormat48bppRGB, 48, {}},
    InvertibleFormat{&GUID_WICPixelFormat32bppBGRA, 32, {.samples = 4, .colors = 3}},
    InvertibleFormat{&GUID_WICPixelFormat32bppRGBA, 32, {.samples = 4, .colors = 3}},
    InvertibleFormat{&GUID_WICPixelFormat64bppRGBA, 64, {.samples = 4, .colors = 3, .bytesPerSample = 2}},
};

WicPixels invertedPixels(const WicFactory& factory, const ForeignPicture& file, std::string_view content) {
    const WicCheck check(file.kind);
    const auto frame = openWicFrame(factory, file, content, check);
    WicPixels pixels;
    check(frame->GetPixelFormat(&pixels.format));
    const auto* found = std::find_if(formats.begin(), formats.end(), [&](const InvertibleFormat& known) {
        return ::IsEqualGUID(*known.format, pixels.format) != 0;
    });
    if (found == formats.end()) {
        pictures::refuseInversion(file.kind, "Farben einer Art, die selten vorkommt,");
    }
    const std::size_t stride = (static_cast<std::size_t>(file.stored.width) * found->bitsPerPixel + 7) / 8;
    pixels.bytes.resize(stride * static_cast<std::size_t>(file.stored.height));
    check(frame->CopyPixels(nullptr, static_cast<UINT>(stride), static_cast<UINT>(pixels.bytes.size()),
                            pixels.bytes.data()));
    pictures::invertSamples(pixels.bytes.data(), pixels.bytes.size(), found->layout);
    return pixels;
}

WicPixels jpegPixels(const WicFactory& factory, const ForeignPicture& file, std::string_view content) {
    platform::Picture picture = decodeByWic(factory, file, content);
    pictures::invert(picture);
    WicPixels pixels{GUID_WICPixelFormat8bppGray, std::move(picture.pixels)};
    if (picture.bitsPerPixel == 24) {
        pixels.format = GUID_WICPixelFormat24bppBGR;
        for (std::size_t i = 0; i + 2 < pixels.bytes.size(); i += 3) {
            std::swap(pixels.bytes[i], pixels.bytes[i + 2]);
        }
    }
    return pixels;
}

// The system's encoder writes one picture, and of what is said about it only the resolution.
std::string invertTiff(const WicFactory& factory, const ForeignPicture& file, std::string_view content) {
    if (file.furtherPictures || file.orientation != 1) {
        pictures::refuseInversion(file.kind, "die weiteren Bilder oder die Ausrichtung");
    }
    std::string result = encodeByWic(factory, invertedPixels(factory, file, content), file);
    if (!statesResolution(file)) {
        result = pictures::withoutTiffResolution(std::move(result));
    }
    const ForeignPicture written = pictures::inspectForeignPicture(result);
    if (std::tie(written.bitsPerSample, written.samples, written.transparency) !=
        std::tie(file.bitsPerSample, file.samples, file.transparency)) {
        pictures::refuseInversion(file.kind, "die Farbtiefe oder die Transparenz");
    }
    return result;
}

}  // namespace

std::string invertByWic(const WicFactory& factory, const ForeignPicture& file, std::string_view content) {
    switch (file.kind) {
        case ForeignKind::png:
            return pictures::withInvertedPngPixels(content,
                                                   encodeByWic(factory, invertedPixels(factory, file, content), file));
        case ForeignKind::jpeg:
            return pictures::withInvertedJpegScans(content,
                                                   encodeByWic(factory, jpegPixels(factory, file, content), file));
        case ForeignKind::gif:
        case ForeignKind::tiff:
            break;
    }
    return invertTiff(factory, file, content);
}

}  // namespace platform_windows
