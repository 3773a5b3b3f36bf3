#include "platform/windows/wic_encoder.h"

// After windows.h, which it needs.
#include <ocidl.h>

#include <string>

#include "pictures/inversion.h"

namespace platform_windows {

namespace {

using pictures::ForeignKind;
using pictures::ForeignPicture;

// TIFF 6.0 and its supplements, the tag "Compression".
BYTE tiffCompression(const ForeignPicture& original) {
    switch (original.compression) {
        case 1:
            return WICTiffCompressionNone;
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

void setOptions(IPropertyBag2& options, const ForeignPicture& original) {
    VARIANT value{};
    if (original.kind == ForeignKind::tiff) {
        value.vt = VT_UI1;
        value.bVal = tiffCompression(original);
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

// The encoder, which takes pixels by a pointer to what is not constant, only reads them.
void writeFrame(IWICBitmapFrameEncode& frame, WicPixels& pixels, const ForeignPicture& original,
                const WicCheck& check) {
    const auto width = static_cast<UINT>(original.stored.width);
    const auto height = static_cast<UINT>(original.stored.height);
    check(frame.SetSize(width, height));
    if (statesResolution(original)) {
        check(frame.SetResolution(original.dpiX, original.dpiY));
    }
    WICPixelFormatGUID format = pixels.format;
    check(frame.SetPixelFormat(&format));
    if (::IsEqualGUID(format, pixels.format) == 0) {
        pictures::refuseInversion(original.kind, "Farben, die Windows nicht ebenso speichern kann,");
    }
    // From where they are: a source of its own would be a copy, with a resolution and a palette of its own.
    const auto size = static_cast<UINT>(pixels.bytes.size());
    check(frame.WritePixels(height, size / height, size, pixels.bytes.data()));
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

std::string encodeByWic(const WicFactory& factory, WicPixels pixels, const ForeignPicture& original) {
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
        setOptions(*options, original);
    }
    check(frame->Initialize(options.get()));
    writeFrame(*frame, pixels, original, check);
    check(frame->Commit());
    check(encoder->Commit());
    return contentOf(*stream, check);
}

}  // namespace platform_windows
