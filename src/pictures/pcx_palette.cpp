#include "pictures/pcx_palette.h"

#include <algorithm>
#include <array>

#include "pictures/little_endian.h"
#include "pictures/picture_error.h"

namespace pictures {

namespace {

using platform::Color;
using Palette = std::vector<Color>;

constexpr int headerBits = 4;  // numbers of more bits have their colours behind the pixels
constexpr std::size_t headerBytes = 48;
constexpr std::size_t largePaletteSize = 768;
constexpr char largePaletteMark = 0x0C;

// IBM Enhanced Graphics Adapter, its palette at power-on; the colours of the Color Graphics Adapter are the same.
constexpr std::array<Color, 16> standardColors = {{
    {0x00, 0x00, 0x00},
    {0x00, 0x00, 0xAA},
    {0x00, 0xAA, 0x00},
    {0x00, 0xAA, 0xAA},
    {0xAA, 0x00, 0x00},
    {0xAA, 0x00, 0xAA},
    {0xAA, 0x55, 0x00},
    {0xAA, 0xAA, 0xAA},
    {0x55, 0x55, 0x55},
    {0x55, 0x55, 0xFF},
    {0x55, 0xFF, 0x55},
    {0x55, 0xFF, 0xFF},
    {0xFF, 0x55, 0x55},
    {0xFF, 0x55, 0xFF},
    {0xFF, 0xFF, 0x55},
    {0xFF, 0xFF, 0xFF},
}};

constexpr Color black{0, 0, 0};
constexpr Color white{255, 255, 255};

std::size_t numbers(const PcxHeader& header) { return std::size_t{1} << header.pixelBits(); }

Palette colorsAt(std::string_view content, std::size_t at, std::size_t count) {
    Palette colors(count);
    for (Color& color : colors) {
        color = {byteAt(content, at), byteAt(content, at + 1), byteAt(content, at + 2)};
        at += 3;
    }
    return colors;
}

void putColors(const Palette& colors, std::string& content, std::size_t at) {
    for (const Color& color : colors) {
        content[at++] = static_cast<char>(color.red);
        content[at++] = static_cast<char>(color.green);
        content[at++] = static_cast<char>(color.blue);
    }
}

// The first byte is the background in its upper four bits; the fourth, in its upper three: no colour burst, palette
// with white, intensity.
Palette adapterColors(unsigned background, unsigned foreground) {
    const bool noBurst = (foreground & 0x80) != 0;
    const bool withWhite = (foreground & 0x40) != 0;
    const std::size_t bright = (foreground & 0x20) != 0 ? 8 : 0;
    const std::array<std::size_t, 3> shown = noBurst     ? std::array<std::size_t, 3>{3, 4, 7}
                                             : withWhite ? std::array<std::size_t, 3>{3, 5, 7}
                                                         : std::array<std::size_t, 3>{2, 4, 6};
    return {standardColors[background >> 4], standardColors[shown[0] + bright], standardColors[shown[1] + bright],
            standardColors[shown[2] + bright]};
}

Palette standardPalette(const PcxHeader& header) {
    return {standardColors.begin(), standardColors.begin() + static_cast<std::ptrdiff_t>(numbers(header))};
}

Palette oneBitPalette(const Palette& table, bool hasTable) {
    const bool meant = hasTable && table[0] != table[1] &&
                       !std::equal(table.begin(), table.end(), standardColors.begin(), standardColors.end());
    return meant ? Palette{table[0], table[1]} : Palette{black, white};
}

bool isAdapterSetting(std::string_view table) {
    return (byteAt(table, 0) & 0x0F) == 0 && (byteAt(table, 3) & 0x1F) == 0 &&
           table.substr(1, 2) == std::string_view("\0\0", 2) &&
           table.find_first_not_of('\0', 4) == std::string_view::npos;
}

Palette headerPalette(std::string_view content, const PcxHeader& header, int version) {
    const std::string_view table = content.substr(pcxPaletteAt, headerBytes);
    const bool empty = table.find_first_not_of('\0') == std::string_view::npos;
    const bool hasTable = version != pcxWithoutPalette && (version == pcxLatestVersion || !empty);
    if (header.pixelBits() == 1) {
        return oneBitPalette(colorsAt(content, pcxPaletteAt, standardColors.size()), hasTable);
    }
    if (version != pcxWithoutPalette && header.bits == 2 && header.planes == 1 && isAdapterSetting(table)) {
        return adapterColors(byteAt(table, 0), byteAt(table, 3));
    }
    return hasTable ? colorsAt(content, pcxPaletteAt, numbers(header)) : standardPalette(header);
}

// Where the 256 colours begin; 0 where there are none. With the mark, but not all of them, the file is cut off.
std::size_t largePaletteAt(std::string_view content, std::size_t pixelsEnd) {
    const std::size_t last = content.size() - std::min(content.size(), largePaletteSize + 1);
    for (const std::size_t mark : {pixelsEnd, last}) {
        if (mark >= pixelsEnd && content.size() - mark > largePaletteSize && content[mark] == largePaletteMark) {
            return mark + 1;
        }
    }
    if (content.find(largePaletteMark, std::max(pixelsEnd, last)) != std::string_view::npos) {
        refusePicture("PCX", "ist unvollständig: Ihre Farbtabelle ist abgeschnitten");
    }
    return 0;
}

Palette greyLevels(const PcxHeader& header) {
    Palette greys(numbers(header));
    for (std::size_t level = 0; level < greys.size(); ++level) {
        const auto value = static_cast<std::uint8_t>((level * 255 + (greys.size() - 1) / 2) / (greys.size() - 1));
        greys[level] = {value, value, value};
    }
    return greys;
}

void writeHeaderPalette(const Palette& palette, std::string& content, const PcxHeader& header) {
    putColors(palette, content, pcxPaletteAt);
    if (headerPalette(content, header, header.version) == palette) {
        return;
    }
    content[pcxVersionAt] = static_cast<char>(pcxLatestVersion);
    const auto reads = [&] { return headerPalette(content, header, pcxLatestVersion) == palette; };
    if (!reads() && palette.size() < standardColors.size()) {
        content[pcxPaletteAt + headerBytes - 1] ^=
            1;  // the last colour, which no pixel has: now it is the picture's table
    }
    if (!reads()) {
        refusePicture("PCX", "kann diese Farben nicht aufnehmen");
    }
}

}  // namespace

Palette readPcxPalette(std::string_view content, const PcxHeader& header, std::size_t pixelsEnd) {
    if (header.pixelBits() <= headerBits) {
        return headerPalette(content, header, header.version);
    }
    const std::size_t at = largePaletteAt(content, pixelsEnd);
    return at == 0 ? greyLevels(header) : colorsAt(content, at, numbers(header));
}

void writePcxPalette(const Palette& palette, std::string& content, const PcxHeader& header, std::size_t pixelsEnd) {
    if (readPcxPalette(content, header, pixelsEnd) == palette) {
        return;
    }
    if (header.pixelBits() <= headerBits) {
        writeHeaderPalette(palette, content, header);
        return;
    }
    std::size_t at = largePaletteAt(content, pixelsEnd);
    if (at == 0) {
        at = pixelsEnd + 1;
        content.insert(pixelsEnd, largePaletteMark + std::string(largePaletteSize, '\0'));
        content[pcxVersionAt] = static_cast<char>(pcxLatestVersion);
    }
    putColors(palette, content, at);
}

}  // namespace pictures
