#include "platform/linux/pdf/jpeg_header.h"

#include <string>

#include "pictures/jpeg_segments.h"
#include "runtime/error.h"

namespace platform_linux::pdf {

namespace {

using pictures::JpegFrame;
using pictures::JpegSegment;

struct Markers {
    bool jfif = false;
    bool adobe = false;
};

std::optional<JpegHeader> readFrame(const JpegSegment& segment, const Markers& markers) {
    constexpr std::size_t frameFields = 6;
    constexpr std::size_t componentFields = 3;
    const std::optional<JpegFrame> frame = JpegFrame::of(segment);
    if (segment.marker > pictures::SOF2 || !frame || frame->precision != 8) {
        return std::nullopt;
    }
    if (frame->components != 1 && frame->components != 3) {
        return std::nullopt;
    }
    if (segment.content.size() < frameFields + frame->components * componentFields) {
        return std::nullopt;
    }
    std::string names;
    for (std::size_t component = 0; component < frame->components; ++component) {
        names += segment.content[frameFields + component * componentFields];
    }
    if (names == "RGB" && !markers.jfif && !markers.adobe) {
        return std::nullopt;
    }
    JpegHeader header;
    header.height = static_cast<int>(frame->height);
    header.width = static_cast<int>(frame->width);
    header.components = static_cast<int>(frame->components);
    return header;
}

std::optional<JpegHeader> read(std::string_view file) {
    pictures::JpegSegments segments(file);
    std::optional<JpegSegment> frame;
    Markers markers;
    // Markers of programs may stand behind the frame as well; the first scan ends the header.
    while (const std::optional<JpegSegment> segment = segments.next()) {
        if (!segment->adjacent) {
            return std::nullopt;
        }
        if (segment->marker == pictures::SOS) {
            return frame ? readFrame(*frame, markers) : std::nullopt;
        }
        markers.jfif = markers.jfif || (segment->marker == pictures::APP0 && segment->content.starts_with("JFIF"));
        markers.adobe = markers.adobe || (segment->marker == pictures::APP14 && segment->content.starts_with("Adobe"));
        if (segment->isFrame()) {
            frame = segment;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<JpegHeader> readJpegHeader(std::string_view file) {
    if (!file.starts_with("\xFF\xD8")) {
        return std::nullopt;
    }
    try {
        return read(file);
    } catch (const runtime::Error&) {
        return std::nullopt;
    }
}

}  // namespace platform_linux::pdf
