#include <string>

#include "pictures/foreign_kinds.h"
#include "pictures/jpeg_segments.h"

namespace pictures {

namespace {

void readFrame(const JpegFrame& frame, ForeignPicture& file) {
    if (frame.precision != 8) {
        refuseForeign(file.kind,
                      "hat " + std::to_string(frame.precision) + " Bits je Farbe; gedruckt werden Bilder mit 8");
    }
    file.height = frame.height;
    file.width = frame.width;
    file.bitsPerPixel = frame.components == 1 ? 8 : 24;
    file.inks = frame.components == 4;
}

void readResolution(std::string_view jfif, ForeignPicture& file) {
    constexpr double centimetresPerInch = 2.54;
    const FileBytes bytes(jfif, file.kind, ByteOrder::mostFirst);
    const std::uint32_t unit = bytes.number8(7);
    const double perInch = unit == 1 ? 1 : unit == 2 ? centimetresPerInch : 0;
    file.dpiX = bytes.number16(8) * perInch;
    file.dpiY = bytes.number16(10) * perInch;
}

}  // namespace

ForeignPicture inspectJpeg(std::string_view content) {
    using namespace std::string_view_literals;
    constexpr std::size_t jfifFields = 12;
    ForeignPicture file{.kind = ForeignKind::jpeg};
    bool hasScan = false;
    JpegSegments segments(content);
    while (const std::optional<JpegSegment> segment = segments.next()) {
        if (const auto frame = segment->isFrame() ? JpegFrame::of(*segment) : std::nullopt) {
            readFrame(*frame, file);
        } else if (segment->marker == APP0 && segment->content.size() >= jfifFields &&
                   segment->content.starts_with("JFIF\0"sv)) {
            readResolution(segment->content, file);
        }
        hasScan = hasScan || segment->marker == SOS;
    }
    if (!hasScan || file.bitsPerPixel == 0) {
        refuseDamaged(file.kind);
    }
    return file;
}

}  // namespace pictures
