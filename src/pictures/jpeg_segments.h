// The marker segments of a JPEG file (ISO/IEC 10918-1, annex B).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "pictures/file_bytes.h"

namespace pictures {

// Table B.1, as far as somebody asks for it.
enum JpegMarker : std::uint32_t {
    SOF0 = 0xC0,  // baseline
    SOF2 = 0xC2,  // progressive
    DHT = 0xC4,
    JPG = 0xC8,
    DAC = 0xCC,
    SOF15 = 0xCF,
    RST0 = 0xD0,
    RST7 = 0xD7,
    SOI = 0xD8,
    EOI = 0xD9,
    SOS = 0xDA,
    APP0 = 0xE0,   // JFIF
    APP14 = 0xEE,  // Adobe
    APP15 = 0xEF,
    COM = 0xFE,  // a comment
    TEM = 0x01,
};

struct JpegSegment {
    std::uint32_t marker = 0;
    std::string_view content;  // behind the length
    bool adjacent = true;      // nothing but fill bytes between it and what is before it

    bool isFrame() const {
        return marker >= SOF0 && marker <= SOF15 && marker != DHT && marker != JPG && marker != DAC;
    }
};

// What a frame header begins with.
struct JpegFrame {
    std::uint32_t precision = 0;  // bits of a sample
    std::uint32_t height = 0;
    std::uint32_t width = 0;
    std::uint32_t components = 0;

    // Nothing for a segment that is too short.
    static std::optional<JpegFrame> of(const JpegSegment& segment);
};

// Segments one after the other; the coded data of a scan, and markers that stand alone, are gone over. What is cut off
// or cannot be throws errInvalidPicture.
class JpegSegments {
public:
    // A file that begins with SOI.
    explicit JpegSegments(std::string_view file) : bytes_(file, ForeignKind::jpeg, ByteOrder::mostFirst) {}

    // Nothing behind the end of the image.
    std::optional<JpegSegment> next();

private:
    std::uint64_t behindScan(std::uint64_t at) const;

    FileBytes bytes_;
    std::uint64_t at_ = 2;
};

}  // namespace pictures
