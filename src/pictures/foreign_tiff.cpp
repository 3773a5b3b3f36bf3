#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "pictures/file_bytes.h"
#include "pictures/foreign_kinds.h"
#include "pictures/picture_size.h"

namespace pictures {

namespace {

// TIFF 6.0, section 8 and its supplements.
enum Tag : std::uint32_t {
    imageWidth = 256,
    imageLength = 257,
    bitsPerSample = 258,
    compression = 259,
    photometricInterpretation = 262,
    stripOffsets = 273,
    orientation = 274,
    samplesPerPixel = 277,
    stripByteCounts = 279,
    xResolution = 282,
    yResolution = 283,
    resolutionUnit = 296,
    tileWidth = 322,
    tileLength = 323,
    tileOffsets = 324,
    tileByteCounts = 325,
    colorMap = 320,
    extraSamples = 338,
    firstPrivate = 32768,
};
enum Photometric : std::uint32_t { whiteIsZero = 0, blackIsZero = 1, paletteColor = 3, separated = 5 };
enum Type : std::uint32_t { byteType = 1, shortType = 3, longType = 4, rationalType = 5 };

// Bytes of a value of each type.
constexpr std::array<std::uint32_t, 13> sizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};

struct Entry {
    std::uint32_t tag = 0;
    std::uint32_t type = 0;
    std::uint32_t count = 0;
    std::uint64_t values = 0;  // where they are in the file
};

class Directory {
public:
    explicit Directory(const FileBytes& bytes) : bytes_(bytes), start_(bytes.number32(4)) {
        count_ = bytes_.number16(start_);
        bytes_.require(start_ + 2, std::uint64_t{count_} * entrySize);
        for (std::uint32_t i = 0; i < count_; ++i) {
            const Entry entry = at(i);
            if (entry.tag < firstPrivate && entry.type < sizes.size()) {
                bytes_.require(entry.values, std::uint64_t{sizes[entry.type]} * entry.count);
            }
        }
    }

    // A count of 0 where there is none.
    Entry find(Tag tag) const {
        for (std::uint32_t i = 0; i < count_; ++i) {
            if (const Entry entry = at(i); entry.tag == tag) {
                return entry;
            }
        }
        return {};
    }
    std::uint32_t value(const Entry& entry, std::uint32_t index) const {
        switch (entry.type) {
            case byteType:
                return bytes_.number8(entry.values + index);
            case shortType:
                return bytes_.number16(entry.values + std::uint64_t{2} * index);
            case longType:
                return bytes_.number32(entry.values + std::uint64_t{4} * index);
            default:
                refuseDamaged(ForeignKind::tiff);
        }
    }
    std::uint32_t value(Tag tag, std::uint32_t otherwise) const {
        const Entry entry = find(tag);
        return entry.count > 0 ? value(entry, 0) : otherwise;
    }
    double rational(Tag tag) const {
        const Entry entry = find(tag);
        if (entry.count == 0 || entry.type != rationalType) {
            return 0;
        }
        const std::uint32_t divisor = bytes_.number32(entry.values + 4);
        return divisor != 0 ? static_cast<double>(bytes_.number32(entry.values)) / divisor : 0;
    }

    bool isLast() const { return bytes_.number32(start_ + 2 + std::uint64_t{count_} * entrySize) == 0; }
    // Where the less significant byte of a value of sixteen bits is.
    std::size_t lowByteAt(const Entry& entry, std::uint32_t index) const {
        return static_cast<std::size_t>(entry.values) + std::size_t{2} * index + (bytes_.mostFirst() ? 1 : 0);
    }

private:
    static constexpr std::uint64_t entrySize = 12;

    Entry at(std::uint32_t index) const {
        const std::uint64_t position = start_ + 2 + index * entrySize;
        Entry entry{bytes_.number16(position), bytes_.number16(position + 2), bytes_.number32(position + 4),
                    position + 8};
        const bool elsewhere = entry.type < sizes.size() && std::uint64_t{sizes[entry.type]} * entry.count > 4;
        entry.values = elsewhere ? bytes_.number32(entry.values) : entry.values;
        return entry;
    }

    const FileBytes& bytes_;
    std::uint64_t start_;
    std::uint32_t count_ = 0;
};

void checkData(const FileBytes& bytes, const Directory& directory, Tag offsetTag, Tag countTag) {
    const Entry offsets = directory.find(offsetTag);
    const Entry counts = directory.find(countTag);
    for (std::uint32_t i = 0; i < std::min(offsets.count, counts.count); ++i) {
        bytes.require(directory.value(offsets, i), directory.value(counts, i));
    }
}

// A tile may be larger than the picture, and is decoded whole.
void checkTiles(const Directory& directory) {
    if (directory.find(tileWidth).count > 0) {
        checkPictureSize(directory.value(tileWidth, 0), directory.value(tileLength, 0), 24);
    }
}

void readDepth(const Directory& directory, ForeignPicture& file) {
    const std::uint32_t photometric = directory.value(photometricInterpretation, whiteIsZero);
    const std::uint32_t bits = directory.value(bitsPerSample, 1);
    const std::uint32_t extra = directory.find(extraSamples).count;
    const std::uint32_t samples = directory.value(samplesPerPixel, 1);
    const bool single = samples == 1 + extra && samples <= 2;
    const bool grey = single && (photometric == whiteIsZero || photometric == blackIsZero);
    file.palette = samples == 1 && photometric == paletteColor && bits <= 8;
    file.transparency = extra > 0;
    file.bitsPerSample = static_cast<int>(bits);
    file.samples = static_cast<int>(samples);
    file.bitsPerPixel = 24;
    if (grey || file.palette) {
        file.bitsPerPixel = bits > 8 || file.transparency ? 8 : static_cast<int>(bits);
    }
}

// A number that is none of the eight means nothing.
void readOrientation(const Directory& directory, ForeignPicture& file) {
    constexpr std::uint32_t upright = 1;
    constexpr std::uint32_t last = 8;
    constexpr std::uint32_t firstOnItsSide = 5;
    const std::uint32_t value = directory.value(orientation, upright);
    file.stored = {0, 0, file.width, file.height, file.bitsPerPixel};
    file.orientation = static_cast<int>(value >= upright && value <= last ? value : upright);
    if (value >= firstOnItsSide && value <= last) {
        std::swap(file.width, file.height);
        std::swap(file.dpiX, file.dpiY);
    }
}

// Some programs state the colours in eight bits, not in sixteen.
void readColorMap(const Directory& directory, ForeignPicture& file) {
    const Entry map = directory.find(colorMap);
    bool wide = false;
    for (std::uint32_t i = 0; i < map.count && map.type == shortType; ++i) {
        wide = wide || directory.value(map, i) > 255;
        file.colorTables.push_back({directory.lowByteAt(map, i), 1});
    }
    if (wide) {
        file.colorTables = {{static_cast<std::size_t>(map.values), std::size_t{2} * map.count}};
    }
}

// What inverting the file has to know.
void readColors(const Directory& directory, ForeignPicture& file) {
    const Entry photometric = directory.find(photometricInterpretation);
    const std::uint32_t kind = directory.value(photometricInterpretation, whiteIsZero);
    file.furtherPictures = !directory.isLast();
    file.inks = kind == separated;
    file.colorsStated = photometric.count > 0;
    if (file.palette) {
        readColorMap(directory, file);
    } else if (photometric.type == shortType && kind <= blackIsZero && directory.value(samplesPerPixel, 1) == 1) {
        file.greyDirectionAt = directory.lowByteAt(photometric, 0);
    }
}

void readResolution(const Directory& directory, ForeignPicture& file) {
    constexpr double centimetresPerInch = 2.54;
    constexpr std::uint32_t inch = 2;
    constexpr std::uint32_t centimetre = 3;
    const std::uint32_t unit = directory.value(resolutionUnit, inch);
    if (const Entry entry = directory.find(resolutionUnit); entry.count > 0 && entry.type == shortType) {
        file.resolutionUnitAt = directory.lowByteAt(entry, 0);
    }
    const double perInch = unit == inch ? 1 : unit == centimetre ? centimetresPerInch : 0;
    file.dpiX = directory.rational(xResolution) * perInch;
    file.dpiY = directory.rational(yResolution) * perInch;
}

}  // namespace

ForeignPicture inspectTiff(std::string_view content) {
    const FileBytes bytes(content, ForeignKind::tiff,
                          content.starts_with('I') ? ByteOrder::leastFirst : ByteOrder::mostFirst);
    const Directory directory(bytes);
    ForeignPicture file{.kind = ForeignKind::tiff};
    file.width = directory.value(imageWidth, 0);
    file.height = directory.value(imageLength, 0);
    file.compression = directory.value(compression, 1);
    readDepth(directory, file);
    readResolution(directory, file);
    readOrientation(directory, file);
    readColors(directory, file);
    if (const int bits = file.bitsPerPixel; bits != 1 && bits != 2 && bits != 4 && bits != 8 && bits != 24) {
        refuseForeign(file.kind, "hat " + std::to_string(bits) + " Bits je Bildpunkt");
    }
    checkData(bytes, directory, stripOffsets, stripByteCounts);
    checkData(bytes, directory, tileOffsets, tileByteCounts);
    checkTiles(directory);
    return file;
}

}  // namespace pictures
