#include "pictures/jpeg_segments.h"

namespace pictures {

namespace {

constexpr std::uint32_t fill = 0xFF;

bool isRestart(std::uint32_t marker) { return marker >= RST0 && marker <= RST7; }

// Neither fill nor a coded byte: a marker without a length.
bool standsAlone(std::uint32_t marker) { return marker == TEM || isRestart(marker) || marker == SOI; }

}  // namespace

std::optional<JpegFrame> JpegFrame::of(const JpegSegment& segment) {
    constexpr std::size_t fields = 6;
    if (segment.content.size() < fields) {
        return std::nullopt;
    }
    const FileBytes bytes(segment.content, ForeignKind::jpeg, ByteOrder::mostFirst);
    return JpegFrame{bytes.number8(0), bytes.number16(1), bytes.number16(3), bytes.number8(5)};
}

std::optional<JpegSegment> JpegSegments::next() {
    constexpr std::uint32_t lengthField = 2;
    JpegSegment segment;
    while (true) {
        const std::uint64_t found = bytes_.find('\xFF', at_);
        segment.adjacent = segment.adjacent && found == at_;
        at_ = found + 1;
        segment.marker = bytes_.number8(at_);
        if (segment.marker == EOI) {
            return std::nullopt;
        }
        if (segment.marker == fill) {
            continue;
        }
        if (segment.marker != 0 && !standsAlone(segment.marker)) {
            break;
        }
        segment.adjacent = false;
    }
    const std::uint64_t start = at_ + 1;
    const std::uint32_t length = bytes_.number16(start);
    bytes_.require(start, length);
    if (length < lengthField) {
        refuseDamaged(ForeignKind::jpeg);
    }
    segment.content = bytes_.text(start + lengthField, length - lengthField);
    at_ = start + length;
    if (segment.marker == SOS) {
        at_ = behindScan(at_);
    }
    return segment;
}

// Where the next marker is that is no part of the coded data.
std::uint64_t JpegSegments::behindScan(std::uint64_t at) const {
    for (;; ++at) {
        at = bytes_.find('\xFF', at);
        const std::uint32_t marker = bytes_.number8(at + 1);
        if (marker != 0 && marker != fill && !isRestart(marker)) {
            return at;
        }
    }
}

}  // namespace pictures
