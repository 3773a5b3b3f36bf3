#include "pictures/pcx_header.h"

#include <bit>
#include <string>

#include "pictures/little_endian.h"
#include "pictures/pcx_runs.h"
#include "pictures/picture_error.h"
#include "pictures/picture_size.h"
#include "platform/picture.h"

namespace pictures {

namespace {

constexpr std::uint8_t signature = 0x0A;

bool isDepth(int bits) { return bits == 1 || bits == 2 || bits == 4 || bits == 8; }

void checkDepth(const PcxHeader& header) {
    const bool colors = header.bits == 8 && (header.planes == 3 || header.planes == 4);
    const bool numbers = isDepth(header.bits) && header.planes >= 1 && header.pixelBits() <= 8;
    if (!colors && !numbers) {
        refusePicture("PCX", "hat " + std::to_string(header.planes) + " Ebenen von " + std::to_string(header.bits) +
                                 " Bits, was es nicht gibt");
    }
}

void checkLength(const PcxHeader& header, std::string_view content) {
    if (header.bytesPerLine < header.usedBytes()) {
        refusePicture("PCX", "ist beschädigt: Ihre Zeilen haben " + std::to_string(header.bytesPerLine) +
                                 " Bytes und brauchen " + std::to_string(header.usedBytes()));
    }
    const std::uint64_t lines = std::uint64_t{header.lineSize()} * static_cast<std::uint64_t>(header.height);
    const std::uint64_t pixelBytes = lines - (header.bytesPerLine - header.usedBytes());
    const std::uint64_t stored = content.size() - pcxHeaderSize;
    if (pixelBytes > (header.runLengths ? (stored + 1) / 2 * longestPcxRun : stored)) {
        refusePicture("PCX", "ist unvollständig: Sie ist " + std::to_string(content.size()) +
                                 " Bytes lang, das Bild braucht mehr");
    }
}

}  // namespace

std::size_t PcxHeader::usedBytes() const {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bits) + 7) / 8;
}

int PcxHeader::pictureBits() const {
    return isColors() ? 24 : static_cast<int>(std::bit_ceil(static_cast<unsigned>(pixelBits())));
}

bool isPcx(std::string_view content) {
    return content.size() >= 4 && byteAt(content, 0) == signature &&
           byteAt(content, pcxVersionAt) <= pcxLatestVersion && byteAt(content, pcxVersionAt) != 1 &&
           byteAt(content, 2) <= 1 && isDepth(byteAt(content, 3));
}

PcxHeader readPcxHeader(std::string_view content) {
    if (content.size() < pcxHeaderSize) {
        refusePicture("PCX", "ist unvollständig: Sie endet in ihrem Kopf");
    }
    PcxHeader header;
    header.version = byteAt(content, pcxVersionAt);
    header.runLengths = byteAt(content, 2) != 0;
    header.bits = byteAt(content, 3);
    header.planes = byteAt(content, 65);
    checkDepth(header);
    const auto side = [&](std::size_t from) {
        return std::int64_t{numberAt16(content, from + 4)} - numberAt16(content, from) + 1;
    };
    checkPictureSize(side(4), side(6), header.pictureBits());
    header.width = static_cast<int>(side(4));
    header.height = static_cast<int>(side(6));
    header.bytesPerLine = numberAt16(content, 66);
    header.dpiX = numberAt16(content, 12);
    header.dpiY = numberAt16(content, 14);
    checkLength(header, content);
    return header;
}

}  // namespace pictures
