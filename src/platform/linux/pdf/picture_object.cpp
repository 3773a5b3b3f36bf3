#include "platform/linux/pdf/picture_object.h"

#include <algorithm>
#include <optional>
#include <string>

#include "platform/linux/pdf/deflater.h"
#include "platform/linux/pdf/jpeg_header.h"
#include "platform/linux/pdf/number_text.h"
#include "platform/linux/pdf/paeth_predictor.h"
#include "platform/linux/pdf/text_string.h"

namespace platform_linux::pdf {

namespace {

using platform::Color;
using platform::Picture;

std::string_view bytesOf(const Picture& picture) {
    return {reinterpret_cast<const char*>(picture.pixels.data()), picture.pixels.size()};
}

// Whether the palette is the shades of grey from black to white.
template <typename Iterator>
bool isGreyScale(Iterator first, Iterator last) {
    const auto steps = last - first - 1;
    for (auto at = first; at != last; ++at) {
        const auto shade = static_cast<std::uint8_t>((at - first) * 255 / steps);
        if (*at != Color{shade, shade, shade}) {
            return false;
        }
    }
    return true;
}

std::string paletteSpace(const std::vector<Color>& palette) {
    std::string text = "[/Indexed/DeviceRGB ";
    appendInteger(text, static_cast<std::int64_t>(palette.size()) - 1);
    text += '<';
    for (const Color color : palette) {
        for (const std::uint8_t channel : {color.red, color.green, color.blue}) {
            appendHexByte(text, channel);
        }
    }
    return text + ">]";
}

struct ColorSpace {
    std::string entries;
    int channels = 1;
    bool palette = false;
};

ColorSpace colorSpaceOf(const Picture& picture) {
    if (picture.bitsPerPixel > 8) {
        return {"/ColorSpace/DeviceRGB", 3, false};
    }
    if (isGreyScale(picture.palette.begin(), picture.palette.end())) {
        return {"/ColorSpace/DeviceGray", 1, false};
    }
    if (isGreyScale(picture.palette.rbegin(), picture.palette.rend())) {
        return {"/ColorSpace/DeviceGray/Decode[1 0]", 1, false};
    }
    return {"/ColorSpace" + paletteSpace(picture.palette), 1, true};
}

std::string startOfEntries(const Picture& picture, int bitsPerChannel) {
    std::string entries = "/Type/XObject/Subtype/Image/Width ";
    appendInteger(entries, picture.width);
    entries += "/Height ";
    appendInteger(entries, picture.height);
    entries += "/BitsPerComponent ";
    appendInteger(entries, bitsPerChannel);
    return entries;
}

void writePixels(ObjectWriter& writer, int number, const Picture& picture) {
    const ColorSpace space = colorSpaceOf(picture);
    const int bits = picture.bitsPerPixel / space.channels;
    std::string entries = startOfEntries(picture, bits) + space.entries + "/Filter/FlateDecode";
    // A compressor of its own: the memory that a picture takes is free afterwards.
    Deflater deflater;
    if (bits < 8 || space.palette) {
        writer.storedStream(number, entries, deflater.compress(bytesOf(picture)));
        return;
    }
    entries += "/DecodeParms<</Predictor 15/Colors ";
    appendInteger(entries, space.channels);
    entries += "/Columns ";
    appendInteger(entries, picture.width);
    entries += ">>";
    const std::string rows = predicted(picture.pixels, picture.stride(), static_cast<std::size_t>(space.channels));
    writer.storedStream(number, entries, deflater.compress(rows));
}

// Nothing where the pixels are to be stored instead.
std::optional<JpegHeader> usableJpeg(const Picture& picture) {
    if (picture.jpeg.empty()) {
        return std::nullopt;
    }
    std::optional<JpegHeader> header = readJpegHeader(picture.jpeg);
    const bool same = header && header->width == picture.width && header->height == picture.height &&
                      (header->components == 1) == (picture.bitsPerPixel <= 8);
    return same ? header : std::nullopt;
}

void writeJpeg(ObjectWriter& writer, int number, const Picture& picture, const JpegHeader& header) {
    std::string entries = startOfEntries(picture, 8) + "/ColorSpace/Device";
    entries += header.components == 1 ? "Gray" : "RGB";
    writer.storedStream(number, entries + "/Filter/DCTDecode", picture.jpeg);
}

}  // namespace

int writePicture(ObjectWriter& writer, const Picture& picture) {
    const int number = writer.allocate();
    if (const std::optional<JpegHeader> header = usableJpeg(picture)) {
        writeJpeg(writer, number, picture, *header);
    } else {
        writePixels(writer, number, picture);
    }
    return number;
}

}  // namespace platform_linux::pdf
