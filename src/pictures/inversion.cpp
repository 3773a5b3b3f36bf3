#include "pictures/inversion.h"

#include <array>
#include <cstring>

#include "pictures/colors.h"
#include "pictures/file_bytes.h"
#include "pictures/jpeg_segments.h"
#include "runtime/error.h"

namespace pictures {

namespace {

constexpr std::size_t signatureLength = 8;
constexpr std::size_t headerOfChunk = 8;  // length and type
constexpr std::size_t checksumLength = 4;

void complement(std::string& content, const ByteRange& range) {
    for (std::size_t at = range.start; at < range.start + range.length; ++at) {
        content[at] = static_cast<char>(~content[at]);
    }
}

// Numbers of sixteen bits that are all next to black would be taken for brighter ones of eight.
void toEightBits(std::string& content, const ByteRange& range) {
    for (std::size_t at = range.start; at < range.start + range.length; ++at) {
        content[at] = static_cast<char>(eightBits(static_cast<std::uint8_t>(content[at])));
    }
}

// ISO/IEC 15948, annex D.
std::uint32_t checksumOf(std::string_view bytes) {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> made{};
        for (std::uint32_t byte = 0; byte < made.size(); ++byte) {
            std::uint32_t value = byte;
            for (int bit = 0; bit < 8; ++bit) {
                value = (value & 1) != 0 ? 0xEDB88320U ^ value >> 1 : value >> 1;
            }
            made[byte] = value;
        }
        return made;
    }();
    std::uint32_t sum = ~std::uint32_t{0};
    for (const char byte : bytes) {
        sum = table[(sum ^ static_cast<std::uint8_t>(byte)) & 0xFF] ^ sum >> 8;
    }
    return ~sum;
}

// Of a chunk whose data has changed.
void renewChecksum(std::string& content, std::size_t data, std::size_t length) {
    const std::uint32_t sum = checksumOf(std::string_view(content).substr(data - 4, length + 4));
    for (std::size_t i = 0; i < checksumLength; ++i) {
        content[data + length + i] = static_cast<char>(sum >> (24 - 8 * i));
    }
}

// take(type, the whole chunk) for each chunk of a file that has been inspected.
template <typename Take>
void forEachChunk(std::string_view content, const Take& take) {
    const FileBytes bytes(content, ForeignKind::png, ByteOrder::mostFirst);
    std::string_view type;
    for (std::size_t at = signatureLength; type != "IEND";) {
        const std::size_t size = headerOfChunk + bytes.number32(at) + checksumLength;
        const std::string_view chunk = bytes.text(at, size);
        type = chunk.substr(4, 4);
        take(type, chunk);
        at += size;
    }
}

// Numbers of sixteen bits, of which the depth says how many count.
std::string invertedKey(std::string_view chunk, int depth) {
    std::string key(chunk);
    const std::size_t length = chunk.size() - headerOfChunk - checksumLength;
    const unsigned mask = (1U << depth) - 1;
    for (std::size_t i = 0; i < length; ++i) {
        char& byte = key[headerOfChunk + i];
        byte = static_cast<char>(static_cast<std::uint8_t>(byte) ^ (i % 2 == 0 ? mask >> 8 : mask & 0xFF));
    }
    renewChecksum(key, headerOfChunk, length);
    return key;
}

template <typename Sample>
void invertPixels(std::uint8_t* bytes, std::size_t count, const SampleLayout& layout) {
    const std::size_t pixel = layout.samples * sizeof(Sample);
    for (std::uint8_t* at = bytes; count >= pixel; count -= pixel, at += pixel) {
        auto most = static_cast<Sample>(~Sample{0});
        if (layout.multiplied) {
            std::memcpy(&most, at + layout.colors * sizeof(Sample), sizeof(Sample));
        }
        for (std::size_t i = 0; i < layout.colors; ++i) {
            Sample sample = 0;
            std::memcpy(&sample, at + i * sizeof(Sample), sizeof(Sample));
            sample = static_cast<Sample>(most - sample);
            std::memcpy(at + i * sizeof(Sample), &sample, sizeof(Sample));
        }
    }
}

constexpr std::size_t lengthOfMarker = 2;
constexpr std::size_t lengthOfHead = 4;  // marker and length

// Says something about the picture and nothing about how it is coded, as Adobe's segment does.
bool isNote(const JpegSegment& segment) {
    const bool ofApplication = segment.marker >= APP0 && segment.marker <= APP15;
    return (ofApplication && segment.marker != APP14) || segment.marker == COM;
}

std::size_t startOf(const JpegSegment& segment, std::string_view file) {
    return static_cast<std::size_t>(segment.content.data() - file.data()) - lengthOfHead;
}

}  // namespace

void invertSamples(std::uint8_t* bytes, std::size_t count, const SampleLayout& layout) {
    layout.bytesPerSample == 2 ? invertPixels<std::uint16_t>(bytes, count, layout)
                               : invertPixels<std::uint8_t>(bytes, count, layout);
}

std::optional<std::string> withInvertedTables(std::string_view content, const ForeignPicture& file) {
    if (file.inks) {
        refuseInversion(file.kind, "die Druckfarben (CMYK), die kein Gegenteil haben,");
    }
    if (!file.colorsStated) {
        refuseInversion(file.kind, "die Farben, deren Art die Datei nicht nennt,");
    }
    if (file.colorTables.empty() && file.greyDirectionAt == 0) {
        return std::nullopt;
    }
    std::string inverted(content);
    for (const ByteRange& table : file.colorTables) {
        complement(inverted, table);
        if (file.kind == ForeignKind::png) {
            renewChecksum(inverted, table.start, table.length);
        }
    }
    if (file.greyDirectionAt != 0) {
        inverted[file.greyDirectionAt] ^= 1;
    }
    if (file.kind == ForeignKind::tiff &&
        inspectForeignPicture(inverted).colorTables.size() > file.colorTables.size()) {
        toEightBits(inverted, file.colorTables.front());
    }
    return inverted;
}

std::string withInvertedPngPixels(std::string_view content, std::string_view inverted) {
    constexpr std::size_t sizeAndKind = 10;
    const std::string_view header = content.substr(signatureLength, 25);
    const std::string_view newHeader = inverted.substr(signatureLength, 25);
    if (header.substr(headerOfChunk, sizeAndKind) != newHeader.substr(headerOfChunk, sizeAndKind)) {
        refuseInversion(ForeignKind::png, "die Farbtiefe oder die Transparenz");
    }
    const int depth = static_cast<std::uint8_t>(header[headerOfChunk + 8]);
    std::string result(content.substr(0, signatureLength));
    bool written = false;
    forEachChunk(content, [&](std::string_view type, std::string_view chunk) {
        if (type == "IHDR") {
            result += newHeader;  // how it is interlaced
        } else if (type == "tRNS") {
            result += invertedKey(chunk, depth);
        } else if (type != "IDAT") {
            result += chunk;
        } else if (!written) {
            forEachChunk(inverted, [&](std::string_view other, std::string_view data) {
                result += other == "IDAT" ? data : std::string_view();
            });
            written = true;
        }
    });
    return result;
}

std::string withInvertedJpegScans(std::string_view content, std::string_view inverted) {
    std::string result(content.substr(0, lengthOfMarker));
    JpegSegments segments(content);
    while (const std::optional<JpegSegment> segment = segments.next()) {
        if (isNote(*segment)) {
            result += content.substr(startOf(*segment, content), lengthOfHead + segment->content.size());
        }
    }
    JpegSegments others(inverted);
    std::optional<JpegSegment> other = others.next();
    while (other && isNote(*other)) {
        other = others.next();
    }
    return other ? result.append(inverted.substr(startOf(*other, inverted))) : result;
}

std::string withoutTiffResolution(std::string content) {
    constexpr char noUnit = 1;
    if (const ForeignPicture file = inspectForeignPicture(content); file.resolutionUnitAt != 0) {
        content[file.resolutionUnitAt] = noUnit;
    }
    return content;
}

void refuseInversion(ForeignKind kind, std::string_view lost) {
    throw runtime::Error(runtime::errInvalidPicture,
                         "Die " + std::string(nameOf(kind)) + "-Datei wurde nicht geändert: Beim Invertieren gingen " +
                             std::string(lost) + " verloren. Bitte das Bild mit einem Bildprogramm invertieren.");
}

}  // namespace pictures
