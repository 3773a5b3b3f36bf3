#include "platform/windows/wic_decoder.h"

#include <algorithm>
#include <array>
#include <vector>

#include "pictures/colors.h"
#include "pictures/picture_size.h"
#include "platform/windows/wic_pixels.h"

namespace platform_windows {

namespace {

using pictures::ForeignPicture;
using platform::Color;
using platform::Picture;

std::vector<Color> paletteOf(const WicFactory& factory, IWICBitmapSource& source, int bits, const WicCheck& check) {
    const auto palette =
        received<IWICPalette>([&](IWICPalette** to) { return factory.get().CreatePalette(to); }, check);
    check(source.CopyPalette(palette.get()));
    std::array<WICColor, 256> colors{};
    UINT count = 0;
    check(palette->GetColors(static_cast<UINT>(colors.size()), colors.data(), &count));
    std::vector<Color> result(std::size_t{1} << bits);
    for (std::size_t i = 0; i < std::min<std::size_t>(result.size(), count); ++i) {
        const auto part = [color = colors[i]](int shift) { return static_cast<std::uint8_t>(color >> shift); };
        result[i] = pictures::onWhite({part(16), part(8), part(0)}, part(24));
    }
    return result;
}

// Reads rows of that many bits a pixel, some of them at a time; take(row, the picture's row).
template <typename Take>
void forEachRow(IWICBitmapSource& source, int bits, Picture& picture, const WicCheck& check, const Take& take) {
    constexpr std::size_t portion = std::size_t{16} << 20;
    const std::size_t stride = Picture::strideOf(picture.width, bits);
    const auto height = static_cast<std::size_t>(picture.height);
    const auto most = static_cast<int>(std::clamp<std::size_t>(portion / stride, 1, height));
    std::vector<std::uint8_t> rows(stride * static_cast<std::size_t>(most));
    std::uint8_t* to = picture.pixels.data();
    for (int top = 0; top < picture.height; top += std::min(most, picture.height - top)) {
        const int count = std::min(most, picture.height - top);
        const WICRect part{0, top, picture.width, count};
        check(source.CopyPixels(&part, static_cast<UINT>(stride), static_cast<UINT>(rows.size()), rows.data()));
        const std::uint8_t* from = rows.data();
        for (int y = 0; y < count; ++y, from += stride, to += picture.stride()) {
            take(from, to);
        }
    }
}

// Into a row of that many bits a pixel, whose pixels are 0.
void put(std::uint8_t value, int x, int bits, std::uint8_t* row) {
    const int position = x * bits;
    row[position / 8] = static_cast<std::uint8_t>(row[position / 8] | value << (8 - bits - position % 8));
}

// Rows as the picture has them.
void copyRows(IWICBitmapSource& source, Picture& picture, const WicCheck& check) {
    check(source.CopyPixels(nullptr, static_cast<UINT>(picture.stride()), static_cast<UINT>(picture.pixels.size()),
                            picture.pixels.data()));
}

// Eight bits, of which the numbers need fewer.
void packNumbers(IWICBitmapSource& source, Picture& picture, const WicCheck& check) {
    const int bits = picture.bitsPerPixel;
    const unsigned largest = (1U << bits) - 1;
    forEachRow(source, 8, picture, check, [&](const std::uint8_t* from, std::uint8_t* to) {
        for (int x = 0; x < picture.width; ++x) {
            put(static_cast<std::uint8_t>(from[x] & largest), x, bits, to);
        }
    });
}

void mixColors(IWICBitmapSource& source, const PixelFormat& format, Picture& picture, const WicCheck& check) {
    const int bits = picture.bitsPerPixel;
    forEachRow(source, format.bitsPerPixel, picture, check, [&](const std::uint8_t* from, std::uint8_t* to) {
        for (int x = 0; x < picture.width; ++x, from += format.bitsPerPixel / 8) {
            const Color color = format.color(from);
            if (bits == 24) {
                *to++ = color.red;
                *to++ = color.green;
                *to++ = color.blue;
            } else {
                put(static_cast<std::uint8_t>(color.red >> (8 - bits)), x, bits, to);
            }
        }
    });
}

}  // namespace

ComObject<IWICBitmapFrameDecode> openWicFrame(const WicFactory& factory, const ForeignPicture& file,
                                              std::string_view content, const WicCheck& check) {
    const auto stream = received<IWICStream>([&](IWICStream** to) { return factory.get().CreateStream(to); }, check);
    // The stream is only read.
    auto* bytes = reinterpret_cast<BYTE*>(const_cast<char*>(content.data()));
    check(stream->InitializeFromMemory(bytes, static_cast<DWORD>(content.size())));
    const auto decoder = received<IWICBitmapDecoder>(
        [&](IWICBitmapDecoder** to) { return factory.get().CreateDecoder(containerOf(file.kind), nullptr, to); },
        check);
    check(decoder->Initialize(stream.get(), WICDecodeMetadataCacheOnDemand));
    auto frame =
        received<IWICBitmapFrameDecode>([&](IWICBitmapFrameDecode** to) { return decoder->GetFrame(0, to); }, check);
    UINT width = 0;
    UINT height = 0;
    check(frame->GetSize(&width, &height));
    if (width != file.stored.width || height != file.stored.height) {
        pictures::refuseDamaged(file.kind);
    }
    return frame;
}

Picture decodeByWic(const WicFactory& factory, const ForeignPicture& file, std::string_view content) {
    const WicCheck check(file.kind);
    const auto frame = openWicFrame(factory, file, content, check);
    WICPixelFormatGUID format{};
    check(frame->GetPixelFormat(&format));
    const auto is = [&format](const GUID& other) { return ::IsEqualGUID(format, other) != 0; };

    const int bits = file.stored.bitsPerPixel;
    Picture picture = pictures::makePicture(file.stored.width, file.stored.height, bits);
    if (file.palette && (is(indexedFormat(bits)) || is(indexedFormat(8)))) {
        picture.palette = paletteOf(factory, *frame, bits, check);
        is(indexedFormat(bits)) ? copyRows(*frame, picture, check) : packNumbers(*frame, picture, check);
        return picture;
    }
    if (file.palette) {
        picture = pictures::makePicture(file.stored.width, file.stored.height, 24);
    } else if (bits <= 8) {
        picture.palette = pictures::greyPalette(bits);
    }
    if (bits <= 8 && !file.palette && is(greyFormat(bits))) {
        copyRows(*frame, picture, check);
        return picture;
    }
    const PixelFormat& known = pixelFormat(format);
    if (is(*known.format)) {
        mixColors(*frame, known, picture, check);
        return picture;
    }
    const auto converter = received<IWICFormatConverter>(
        [&](IWICFormatConverter** to) { return factory.get().CreateFormatConverter(to); }, check);
    check(converter->Initialize(frame.get(), *known.format, WICBitmapDitherTypeNone, nullptr, 0,
                                WICBitmapPaletteTypeCustom));
    mixColors(*converter, known, picture, check);
    return picture;
}

}  // namespace platform_windows
