#include <string>

#include "pictures/file_bytes.h"
#include "pictures/foreign_kinds.h"

namespace pictures {

namespace {

// ISO/IEC 10918-1, table B.1.
enum Marker : std::uint32_t {
    SOF0 = 0xC0,
    DHT = 0xC4,
    JPG = 0xC8,
    DAC = 0xCC,
    SOF15 = 0xCF,
    RST0 = 0xD0,
    RST7 = 0xD7,
    SOI = 0xD8,
    EOI = 0xD9,
    SOS = 0xDA,
    APP0 = 0xE0,
    TEM = 0x01,
};

bool isFrame(std::uint32_t marker) {
    return marker >= SOF0 && marker <= SOF15 && marker != DHT && marker != JPG && marker != DAC;
}

bool standsAlone(std::uint32_t marker) { return marker == TEM || (marker >= RST0 && marker <= SOI); }

void readFrame(const FileBytes& bytes, std::uint64_t data, ForeignPicture& file) {
    if (const std::uint32_t precision = bytes.number8(data); precision != 8) {
        refuseForeign(file.kind, "hat " + std::to_string(precision) + " Bits je Farbe; gedruckt werden Bilder mit 8");
    }
    file.height = bytes.number16(data + 1);
    file.width = bytes.number16(data + 3);
    const std::uint32_t components = bytes.number8(data + 5);
    file.bitsPerPixel = components == 1 ? 8 : 24;
    file.inks = components == 4;
}

void readResolution(const FileBytes& bytes, std::uint64_t data, ForeignPicture& file) {
    constexpr double centimetresPerInch = 2.54;
    const std::uint32_t unit = bytes.number8(data + 7);
    const double perInch = unit == 1 ? 1 : unit == 2 ? centimetresPerInch : 0;
    file.dpiX = bytes.number16(data + 8) * perInch;
    file.dpiY = bytes.number16(data + 10) * perInch;
}

// Behind the coded data of a scan, where the next marker is that is no part of it.
std::uint64_t behindScan(const FileBytes& bytes, std::uint64_t at) {
    for (;; ++at) {
        at = bytes.find('\xFF', at);
        const std::uint32_t next = bytes.number8(at + 1);
        if (next != 0 && next != 0xFF && !(next >= RST0 && next <= RST7)) {
            return at;
        }
    }
}

}  // namespace

ForeignPicture inspectJpeg(std::string_view content) {
    const FileBytes bytes(content, ForeignKind::jpeg, ByteOrder::mostFirst);
    ForeignPicture file{.kind = ForeignKind::jpeg};
    bool hasScan = false;
    std::uint64_t at = 2;
    for (;;) {
        at = bytes.find('\xFF', at) + 1;
        const std::uint32_t marker = bytes.number8(at);
        if (marker == EOI) {
            break;
        }
        if (marker == 0 || marker == 0xFF || standsAlone(marker)) {
            continue;
        }
        const std::uint64_t segment = at + 1;
        const std::uint32_t length = bytes.number16(segment);
        bytes.require(segment, length);
        if (length < 2) {
            refuseDamaged(file.kind);
        }
        at = segment + length;
        if (isFrame(marker) && length >= 8) {
            readFrame(bytes, segment + 2, file);
        } else if (marker == APP0 && length >= 14 && bytes.text(segment + 2, 5) == std::string_view("JFIF\0", 5)) {
            readResolution(bytes, segment + 2, file);
        } else if (marker == SOS) {
            hasScan = true;
            at = behindScan(bytes, at);
        }
    }
    if (!hasScan || file.bitsPerPixel == 0) {
        refuseDamaged(file.kind);
    }
    return file;
}

}  // namespace pictures
