#include "pictures/pcx_file.h"

#include <algorithm>
#include <vector>

#include "pictures/pcx_header.h"
#include "pictures/pcx_palette.h"
#include "pictures/pcx_planes.h"
#include "pictures/pcx_runs.h"
#include "pictures/picture_error.h"
#include "pictures/picture_size.h"
#include "pictures/pixel_rows.h"

namespace pictures {

namespace {

constexpr int planesWithAlpha = 4;

// The lines of a file one after the other.
class Lines {
public:
    Lines(std::string_view content, const PcxHeader& header)
        : header_(header), reader_(content, pcxHeaderSize, header.runLengths), line_(header.lineSize()) {}

    std::uint8_t* next() {
        const std::size_t got = reader_.read(line_.data(), line_.size());
        const std::size_t unused = ++count_ == header_.height ? header_.bytesPerLine - header_.usedBytes() : 0;
        if (got < line_.size() - unused) {
            refusePicture("PCX", "ist unvollständig: Sie endet mitten im Bild");
        }
        return line_.data();
    }

    // Behind the last line.
    std::size_t end() const { return reader_.position(); }

private:
    const PcxHeader& header_;
    PcxReader reader_;
    std::vector<std::uint8_t> line_;
    int count_ = 0;
};

bool findAlpha(std::string_view content, const PcxHeader& header) {
    if (!header.isColors() || header.planes != planesWithAlpha) {
        return false;
    }
    Lines lines(content, header);
    for (int row = 0; row < header.height; ++row) {
        const std::uint8_t* alpha = lines.next() + 3 * header.bytesPerLine;
        if (std::any_of(alpha, alpha + header.width, [](std::uint8_t value) { return value != 0; })) {
            return true;
        }
    }
    return false;
}

void repeatUpTo(std::vector<platform::Color>& palette, std::size_t count) {
    for (std::size_t i = 0; palette.size() < count; ++i) {
        palette.push_back(palette[i]);
    }
}

}  // namespace

platform::PictureInfo inspectPcx(std::string_view content) {
    const PcxHeader header = readPcxHeader(content);
    Lines lines(content, header);
    for (int row = 0; row < header.height; ++row) {
        lines.next();
    }
    if (!header.isColors()) {
        readPcxPalette(content, header, lines.end());
    }
    return header.info();
}

platform::Picture decodePcx(std::string_view content) {
    const PcxHeader header = readPcxHeader(content);
    const bool alpha = findAlpha(content, header);
    platform::Picture picture = makePicture(header.width, header.height, header.pictureBits());
    static_cast<platform::PictureInfo&>(picture) = header.info();
    const PcxPlanes planes(header);
    Lines lines(content, header);
    for (int row = 0; row < header.height; ++row) {
        planes.join(lines.next(), rowOf(picture, row), alpha);
    }
    if (!header.isColors()) {
        const std::size_t count = picture.palette.size();
        picture.palette = readPcxPalette(content, header, lines.end());
        repeatUpTo(picture.palette, count);
    }
    return picture;
}

std::string encodePcx(const platform::Picture& picture, std::string_view original) {
    const PcxHeader header = readPcxHeader(original);
    const bool alpha = findAlpha(original, header);
    const PcxPlanes planes(header);
    Lines lines(original, header);
    std::string content(original.substr(0, pcxHeaderSize));
    for (int row = 0; row < header.height; ++row) {
        std::uint8_t* line = lines.next();
        planes.split(rowOf(picture, row), line, alpha);
        for (int plane = 0; plane < header.planes; ++plane) {
            const std::uint8_t* bytes = line + static_cast<std::size_t>(plane) * header.bytesPerLine;
            if (header.runLengths) {
                appendPcxRuns(content, bytes, header.bytesPerLine);
            } else {
                content.append(reinterpret_cast<const char*>(bytes), header.bytesPerLine);
            }
        }
    }
    const std::size_t end = content.size();
    content += original.substr(lines.end());
    if (!header.isColors()) {
        const auto colors = std::size_t{1} << header.pixelBits();
        writePcxPalette({picture.palette.begin(), picture.palette.begin() + static_cast<std::ptrdiff_t>(colors)},
                        content, header, end);
    }
    return content;
}

}  // namespace pictures
