#include "platform/linux/pdf/jpeg_header.h"

#include <cstddef>
#include <string>

namespace platform_linux::pdf {

namespace {

constexpr unsigned firstFrame = 0xC0;
constexpr unsigned lastFrame = 0xCF;
constexpr unsigned progressiveFrame = 0xC2;
constexpr unsigned huffmanTables = 0xC4;
constexpr unsigned arithmeticTables = 0xCC;
constexpr unsigned jfif = 0xE0;
constexpr unsigned adobe = 0xEE;
constexpr unsigned startOfScan = 0xDA;
constexpr unsigned fill = 0xFF;
constexpr std::size_t frameFields = 6;
constexpr std::size_t componentFields = 3;

unsigned byteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

int wordAt(std::string_view bytes, std::size_t at) {
    return static_cast<int>(byteAt(bytes, at) << 8 | byteAt(bytes, at + 1));
}

bool isFrame(unsigned marker) {
    return marker >= firstFrame && marker <= lastFrame && marker != huffmanTables && marker != arithmeticTables;
}

struct Segment {
    unsigned marker = 0;
    std::string_view content;
};

// Marker segments one after the other; none any more where the file ends or is no JPEG file.
class Segments {
public:
    explicit Segments(std::string_view file) : rest_(file) {}

    std::optional<Segment> next() {
        if (rest_.size() < 2 || byteAt(rest_, 0) != fill) {
            return std::nullopt;
        }
        while (rest_.size() > 1 && byteAt(rest_, 1) == fill) {
            rest_.remove_prefix(1);
        }
        if (rest_.size() < 4) {
            return std::nullopt;
        }
        const auto length = static_cast<std::size_t>(wordAt(rest_, 2));
        if (length < 2 || rest_.size() < 2 + length) {
            return std::nullopt;
        }
        const Segment segment{byteAt(rest_, 1), rest_.substr(4, length - 2)};
        rest_.remove_prefix(2 + length);
        return segment;
    }

private:
    std::string_view rest_;
};

struct Markers {
    bool jfif = false;
    bool adobe = false;
};

std::optional<JpegHeader> readFrame(const Segment& segment, const Markers& markers) {
    if (segment.marker > progressiveFrame || segment.content.size() < frameFields || byteAt(segment.content, 0) != 8) {
        return std::nullopt;
    }
    JpegHeader header;
    header.height = wordAt(segment.content, 1);
    header.width = wordAt(segment.content, 3);
    header.components = static_cast<int>(byteAt(segment.content, 5));
    if (header.components != 1 && header.components != 3 && header.components != 4) {
        return std::nullopt;
    }
    const auto count = static_cast<std::size_t>(header.components);
    if (segment.content.size() < frameFields + count * componentFields) {
        return std::nullopt;
    }
    std::string names;
    for (std::size_t component = 0; component < count; ++component) {
        names += segment.content[frameFields + component * componentFields];
    }
    if (names == "RGB" && !markers.jfif && !markers.adobe) {
        return std::nullopt;
    }
    header.inverted = count == 4 && markers.adobe;
    return header;
}

}  // namespace

std::optional<JpegHeader> readJpegHeader(std::string_view file) {
    if (!file.starts_with("\xFF\xD8")) {
        return std::nullopt;
    }
    Segments segments(file.substr(2));
    std::optional<Segment> frame;
    Markers markers;
    // Markers of programs may stand behind the frame as well; the first scan ends the header.
    while (const std::optional<Segment> segment = segments.next()) {
        if (segment->marker == startOfScan) {
            return frame ? readFrame(*frame, markers) : std::nullopt;
        }
        markers.jfif = markers.jfif || (segment->marker == jfif && segment->content.starts_with("JFIF"));
        markers.adobe = markers.adobe || (segment->marker == adobe && segment->content.starts_with("Adobe"));
        if (isFrame(segment->marker)) {
            frame = segment;
        }
    }
    return std::nullopt;
}

}  // namespace platform_linux::pdf
