#include "platform/windows/wic_encoder.h"

// After windows.h, which it needs.
#include <ocidl.h>

#include <string>
#include <utility>
#include <vector>

#include "pictures/colors.h"

namespace platform_windows {

namespace {

using pictures::ForeignKind;
using pictures::ForeignPicture;
using platform::Picture;

// TIFF 6.0 and its supplements, the tag "Compression".
BYTE tiffCompression(const ForeignPicture& original, int bitsPerPixel) {
    switch (original.compression) {
        case 1:
            return WICTiffCompressionNone;
        case 3:
            return bitsPerPixel == 1 ? WICTiffCompressionCCITT3 : WICTiffCompressionLZW;
        case 4:
            return bitsPerPixel == 1 ? WICTiffCompressionCCITT4 : WICTiffCompressionLZW;
        case 8:
        case 32946:
            return WICTiffCompressionZIP;
        case 32773:
            return WICTiffCompressionRLE;
        default:
            return WICTiffCompressionLZW;
    }
}

// An option that the encoder does not know makes no difference.
void setOption(IPropertyBag2& options, std::wstring name, const VARIANT& value) {
    PROPBAG2 property{};
    property.pstrName = name.data();
    VARIANT copy = value;
    options.Write(1, &property, &copy);
}

void setOptions(IPropertyBag2& options, const Picture& picture, const ForeignPicture& original) {
    VARIANT value{};
    if (original.kind == ForeignKind::tiff) {
        value.vt = VT_UI1;
        value.bVal = tiffCompression(original, picture.bitsPerPixel);
        setOption(options, L"TiffCompressionMethod", value);
    }
    if (original.kind == ForeignKind::jpeg) {
        constexpr float quality = 0.95F;
        value.vt = VT_R4;
        value.fltVal = quality;
        setOption(options, L"ImageQuality", value);
        value.vt = VT_UI1;
        value.bVal = WICJpegYCrCbSubsampling444;
        setOption(options, L"JpegYCrCbSubsampling", value);
    }
}

ComObject<IWICPalette> paletteFor(const WicFactory& factory, const Picture& picture, const WicCheck& check) {
    std::vector<WICColor> colors;
    for (const platform::Color& color : picture.palette) {
        constexpr WICColor solid = 0xFF000000;
        colors.push_back(solid | static_cast<WICColor>(color.red) << 16 | static_cast<WICColor>(color.green) << 8 |
                         color.blue);
    }
    auto palette = received<IWICPalette>([&](IWICPalette** to) { return factory.get().CreatePalette(to); }, check);
    check(palette->InitializeCustom(colors.data(), static_cast<UINT>(colors.size())));
    return palette;
}

// The pixels as the system has them.
struct SystemPixels {
    GUID format{};
    std::size_t stride = 0;
    std::vector<std::uint8_t> bytes;
};

std::uint8_t numberAt(const std::uint8_t* row, int x, int bits) {
    const int position = x * bits;
    return static_cast<std::uint8_t>(row[position / 8] >> (8 - bits - position % 8) & ((1 << bits) - 1));
}

SystemPixels withWholeBytes(const Picture& picture) {
    SystemPixels pixels{indexedFormat(8), static_cast<std::size_t>(picture.width), {}};
    const std::uint8_t* row = picture.pixels.data();
    for (int y = 0; y < picture.height; ++y, row += picture.stride()) {
        for (int x = 0; x < picture.width; ++x) {
            pixels.bytes.push_back(numberAt(row, x, picture.bitsPerPixel));
        }
    }
    return pixels;
}

SystemPixels systemPixels(const Picture& picture, ForeignKind kind) {
    const int bits = picture.bitsPerPixel;
    if (kind == ForeignKind::gif) {
        return withWholeBytes(picture);
    }
    SystemPixels pixels{GUID_WICPixelFormat24bppBGR, picture.stride(), picture.pixels};
    if (bits <= 8) {
        const bool grey = picture.palette == pictures::greyPalette(bits);
        pixels.format = grey ? greyFormat(bits) : indexedFormat(bits);
        return pixels;
    }
    for (std::size_t i = 0; i + 2 < pixels.bytes.size(); i += 3) {
        std::swap(pixels.bytes[i], pixels.bytes[i + 2]);
    }
    return pixels;
}

ComObject<IWICBitmapSource> converted(const WicFactory& factory, ComObject<IWICBitmapSource> source, const GUID& format,
                                      IWICPalette* palette, const WicCheck& check) {
    auto converter = received<IWICFormatConverter>(
        [&](IWICFormatConverter** to) { return factory.get().CreateFormatConverter(to); }, check);
    check(converter->Initialize(source.get(), format, WICBitmapDitherTypeNone, palette, 0, WICBitmapPaletteTypeCustom));
    return converter;
}

void writeFrame(const WicFactory& factory, IWICBitmapFrameEncode& frame, const Picture& picture, ForeignKind kind,
                const WicCheck& check) {
    check(frame.SetSize(static_cast<UINT>(picture.width), static_cast<UINT>(picture.height)));
    if (picture.dpiX > 0 && picture.dpiY > 0) {
        check(frame.SetResolution(picture.dpiX, picture.dpiY));
    }
    SystemPixels pixels = systemPixels(picture, kind);
    WICPixelFormatGUID format = pixels.format;
    check(frame.SetPixelFormat(&format));
    auto bitmap = received<IWICBitmap>(
        [&](IWICBitmap** to) {
            return factory.get().CreateBitmapFromMemory(
                static_cast<UINT>(picture.width), static_cast<UINT>(picture.height), pixels.format,
                static_cast<UINT>(pixels.stride), static_cast<UINT>(pixels.bytes.size()), pixels.bytes.data(), to);
        },
        check);
    pixels.bytes = {};
    ComObject<IWICPalette> palette;
    if (picture.bitsPerPixel <= 8) {
        palette = paletteFor(factory, picture, check);
        check(bitmap->SetPalette(palette.get()));
        check(frame.SetPalette(palette.get()));
    }
    ComObject<IWICBitmapSource> source = std::move(bitmap);
    if (::IsEqualGUID(format, pixels.format) == 0) {
        source = converted(factory, std::move(source), format, palette.get(), check);
    }
    check(frame.WriteSource(source.get(), nullptr));
}

std::string contentOf(IStream& stream, const WicCheck& check) {
    STATSTG status{};
    check(stream.Stat(&status, STATFLAG_NONAME));
    std::string content(static_cast<std::size_t>(status.cbSize.QuadPart), '\0');
    check(stream.Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr));
    ULONG count = 0;
    check(stream.Read(content.data(), static_cast<ULONG>(content.size()), &count));
    content.resize(count);
    return content;
}

}  // namespace

std::string encodeByWic(const WicFactory& factory, const Picture& picture, const ForeignPicture& original) {
    const WicCheck check(original.kind);
    const auto stream =
        received<IStream>([](IStream** to) { return ::CreateStreamOnHGlobal(nullptr, TRUE, to); }, check);
    const auto encoder = received<IWICBitmapEncoder>(
        [&](IWICBitmapEncoder** to) { return factory.get().CreateEncoder(containerOf(original.kind), nullptr, to); },
        check);
    check(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache));
    ComObject<IPropertyBag2> options;
    const auto frame = received<IWICBitmapFrameEncode>(
        [&](IWICBitmapFrameEncode** to) {
            IPropertyBag2* bag = nullptr;
            const HRESULT result = encoder->CreateNewFrame(to, &bag);
            options.reset(bag);
            return result;
        },
        check);
    if (options) {
        setOptions(*options, picture, original);
    }
    check(frame->Initialize(options.get()));
    writeFrame(factory, *frame, picture, original.kind, check);
    check(frame->Commit());
    check(encoder->Commit());
    return contentOf(*stream, check);
}

}  // namespace platform_windows
