#include "pictures/bmp_runs.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "pictures/little_endian.h"
#include "pictures/picture_error.h"
#include "pictures/pixel_rows.h"

namespace pictures {

namespace {

enum Escape : std::uint8_t { endOfRow = 0, endOfPicture = 1, move = 2 };

constexpr int longestRun = 255;

std::uint8_t swapNibbles(std::uint8_t byte) { return static_cast<std::uint8_t>(byte << 4 | byte >> 4); }

// Where the next pixel goes.
class Canvas {
public:
    // Without a picture nothing is drawn, only checked.
    Canvas(platform::Picture* picture, const BmpHeader& header)
        : picture_(picture), header_(header), rowEnd_(static_cast<int>(header.rowSize()) * (8 / header.bitsPerPixel)) {}

    // Pixels that all are the byte or, with 4 bits, are its halves in turn.
    void fill(int count, std::uint8_t byte) {
        std::uint8_t* row = take(count);
        const int seen = visible(count);
        if (row == nullptr) {
            // only checked
        } else if (header_.bitsPerPixel == 8) {
            std::memset(row + x_, byte, static_cast<std::size_t>(seen));
        } else {
            fillNibbles(row, seen, byte);
        }
        x_ += count;
    }

    void copy(int count, const std::uint8_t* bytes) {
        std::uint8_t* row = take(count);
        const int seen = visible(count);
        if (row == nullptr) {
            // only checked
        } else if (header_.bitsPerPixel == 8) {
            std::memcpy(row + x_, bytes, static_cast<std::size_t>(seen));
        } else {
            for (int i = 0; i < seen; ++i) {
                put(row, x_ + i, i % 2 == 0 ? bytes[i / 2] >> 4 : bytes[i / 2]);
            }
        }
        x_ += count;
    }

    void nextRow() {
        x_ = 0;
        y_ = std::min(y_ + 1, header_.height);
    }

    void moveBy(int right, int on) {
        if (right > rowEnd_ - x_ || on > header_.height - y_) {
            refusePicture("BMP", "ist beschädigt: Sie springt aus dem Bild hinaus");
        }
        x_ += right;
        y_ += on;
    }

    bool full() const { return y_ >= header_.height || (y_ == header_.height - 1 && x_ >= header_.width); }

private:
    int visible(int count) const { return std::clamp(header_.width - x_, 0, count); }

    std::uint8_t* take(int count) {
        if (y_ >= header_.height || count > rowEnd_ - x_) {
            refusePicture("BMP", "ist beschädigt: Eine Folge von Bildpunkten ragt über das Bild hinaus");
        }
        return picture_ == nullptr ? nullptr : rowOf(*picture_, header_.topDown ? y_ : header_.height - 1 - y_);
    }

    static void put(std::uint8_t* row, int x, int value) {
        std::uint8_t& byte = row[x / 2];
        byte = static_cast<std::uint8_t>(x % 2 == 0 ? (byte & 0x0F) | (value & 0x0F) << 4
                                                    : (byte & 0xF0) | (value & 0x0F));
    }

    void fillNibbles(std::uint8_t* row, int count, std::uint8_t byte) {
        int x = x_;
        const int end = x_ + count;
        if (x % 2 != 0 && x < end) {
            put(row, x++, byte >> 4);
            byte = swapNibbles(byte);
        }
        std::memset(row + x / 2, byte, static_cast<std::size_t>((end - x) / 2));
        if (x < end && (end - x) % 2 != 0) {
            put(row, end - 1, byte >> 4);
        }
    }

    platform::Picture* picture_;
    const BmpHeader& header_;
    int rowEnd_;
    int x_ = 0;
    int y_ = 0;
};

// A row's pixels as run lengths. With 4 bits a run is two values in turn: there the period is 2.
class RowRuns {
public:
    RowRuns(std::string& out, int bitsPerPixel) : out_(out), bits_(bitsPerPixel), period_(bitsPerPixel == 8 ? 1 : 2) {}

    void append(const std::vector<std::uint8_t>& pixels) {
        const int width = static_cast<int>(pixels.size());
        for (int x = 0; x < width;) {
            const int literal = literalAt(pixels, x);
            if (literal >= 3) {
                appendLiteral(&pixels[static_cast<std::size_t>(x)], literal);
                x += literal;
            } else {
                const int run = runAt(pixels, x, longestRun);
                appendRun(&pixels[static_cast<std::size_t>(x)], run);
                x += run;
            }
        }
    }

private:
    int runAt(const std::vector<std::uint8_t>& pixels, int x, int most) const {
        const int end = std::min(static_cast<int>(pixels.size()), x + most);
        int next = std::min(x + period_, end);
        while (next < end &&
               pixels[static_cast<std::size_t>(next)] == pixels[static_cast<std::size_t>(next - period_)]) {
            ++next;
        }
        return next - x;
    }

    // Pixels up to the next run that is worth its two bytes.
    int literalAt(const std::vector<std::uint8_t>& pixels, int x) const {
        const int worth = 3 * period_;
        const int end = std::min(static_cast<int>(pixels.size()), x + longestRun);
        int next = x;
        while (next < end && runAt(pixels, next, worth) < worth) {
            ++next;
        }
        return next - x;
    }

    void appendRun(const std::uint8_t* pixels, int count) {
        out_ += static_cast<char>(count);
        out_ += static_cast<char>(bits_ == 8 ? pixels[0] : pixels[0] << 4 | (count > 1 ? pixels[1] : 0));
    }

    void appendLiteral(const std::uint8_t* pixels, int count) {
        out_ += '\0';
        out_ += static_cast<char>(count);
        const std::size_t begin = out_.size();
        for (int i = 0; i < count; i += period_) {
            out_ += static_cast<char>(bits_ == 8 ? pixels[i] : pixels[i] << 4 | (i + 1 < count ? pixels[i + 1] : 0));
        }
        out_.append((out_.size() - begin) % 2, '\0');
    }

    std::string& out_;
    int bits_;
    int period_;
};

void unpackRow(const platform::Picture& picture, int y, std::vector<std::uint8_t>& pixels) {
    const std::uint8_t* row = rowOf(picture, y);
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        pixels[x] = picture.bitsPerPixel == 8 ? row[x]
                    : x % 2 == 0              ? static_cast<std::uint8_t>(row[x / 2] >> 4)
                                              : static_cast<std::uint8_t>(row[x / 2] & 0x0F);
    }
}

}  // namespace

std::size_t decodeBmpRuns(std::string_view content, const BmpHeader& header, platform::Picture* picture) {
    Canvas canvas(picture, header);
    const std::size_t end = content.size();
    std::size_t at = header.pixelsAt;
    while (end - at >= 2) {
        const std::uint8_t count = byteAt(content, at);
        const std::uint8_t value = byteAt(content, at + 1);
        at += 2;
        if (count > 0) {
            canvas.fill(count, value);
        } else if (value == endOfRow) {
            canvas.nextRow();
        } else if (value == endOfPicture) {
            return at;
        } else if (value == move) {
            if (end - at < 2) {
                break;
            }
            canvas.moveBy(byteAt(content, at), byteAt(content, at + 1));
            at += 2;
        } else {
            const std::size_t bytes = header.bitsPerPixel == 8 ? value : (value + 1U) / 2;
            if (end - at < bytes) {
                break;
            }
            canvas.copy(value, pixelsAt(content, at));
            at = std::min(at + (bytes + 1) / 2 * 2, end);
        }
    }
    if (!canvas.full()) {
        refusePicture("BMP", "ist unvollständig: Sie endet mitten im Bild");
    }
    return at;
}

std::string encodeBmpRuns(const platform::Picture& picture, bool topDown) {
    std::string out;
    RowRuns runs(out, picture.bitsPerPixel);
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(picture.width));
    for (int y = 0; y < picture.height; ++y) {
        unpackRow(picture, topDown ? y : picture.height - 1 - y, pixels);
        runs.append(pixels);
        out += '\0';
        out += static_cast<char>(y + 1 < picture.height ? endOfRow : endOfPicture);
    }
    return out;
}

}  // namespace pictures
