#include <algorithm>

#include "pictures/file_bytes.h"
#include "pictures/foreign_kinds.h"

namespace pictures {

namespace {

enum ColorType : std::uint32_t { grey = 0, rgb = 2, indexed = 3, greyAlpha = 4, rgbAlpha = 6 };

// ISO/IEC 15948, table 11.1.
bool isAllowed(std::uint32_t type, std::uint32_t depth) {
    const bool whole = depth == 8 || depth == 16;
    const bool part = depth == 1 || depth == 2 || depth == 4;
    switch (type) {
        case grey:
            return whole || part;
        case indexed:
            return part || depth == 8;
        case rgb:
        case greyAlpha:
        case rgbAlpha:
            return whole;
        default:
            return false;
    }
}

int depthOfPicture(std::uint32_t type, std::uint32_t depth) {
    if (type == rgb || type == rgbAlpha) {
        return 24;
    }
    return type == greyAlpha ? 8 : static_cast<int>(std::min(depth, 8U));
}

void readHeader(const FileBytes& bytes, std::uint64_t data, ForeignPicture& file) {
    const std::uint32_t depth = bytes.number8(data + 8);
    const std::uint32_t type = bytes.number8(data + 9);
    if (!isAllowed(type, depth)) {
        refuseDamaged(file.kind);
    }
    file.width = bytes.number32(data);
    file.height = bytes.number32(data + 4);
    file.palette = type == indexed;
    file.transparency = type == greyAlpha || type == rgbAlpha;
    file.bitsPerPixel = depthOfPicture(type, depth);
}

void readResolution(const FileBytes& bytes, std::uint64_t data, ForeignPicture& file) {
    constexpr double metresPerInch = 0.0254;
    constexpr std::uint32_t perMetre = 1;
    if (bytes.number8(data + 8) == perMetre) {
        file.dpiX = bytes.number32(data) * metresPerInch;
        file.dpiY = bytes.number32(data + 4) * metresPerInch;
    }
}

void readTransparency(ForeignPicture& file) {
    file.transparency = true;
    if (!file.palette && file.bitsPerPixel < 8) {
        file.bitsPerPixel = 8;
    }
}

}  // namespace

ForeignPicture inspectPng(std::string_view content) {
    const FileBytes bytes(content, ForeignKind::png, ByteOrder::mostFirst);
    ForeignPicture file{.kind = ForeignKind::png};
    constexpr std::uint64_t signatureLength = 8;
    constexpr std::uint64_t overhead = 12;  // length, type and checksum of a chunk
    bool hasData = false;
    std::string_view type;
    for (std::uint64_t at = signatureLength; type != "IEND"; at += overhead + bytes.number32(at)) {
        const std::uint32_t length = bytes.number32(at);
        const bool first = type.empty();
        type = bytes.text(at + 4, 4);
        bytes.require(at, overhead + length);
        if (first != (type == "IHDR") || (first && length != 13)) {
            refuseDamaged(file.kind);
        }
        const std::uint64_t data = at + 8;
        if (first) {
            readHeader(bytes, data, file);
        } else if (type == "pHYs" && length == 9) {
            readResolution(bytes, data, file);
        } else if (type == "PLTE" && file.palette) {
            file.colorTables = {{static_cast<std::size_t>(data), length}};
        } else if (type == "tRNS" && !hasData) {
            readTransparency(file);
        }
        hasData = hasData || type == "IDAT";
    }
    if (!hasData) {
        refuseDamaged(file.kind);
    }
    return file;
}

}  // namespace pictures
