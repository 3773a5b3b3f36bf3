#include "platform/linux/qt/scaled_picture.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "platform/drawing/grey.h"

namespace platform_linux::qt {

namespace {

using platform::Picture;

// What a pixel of the screen shows in one direction: pixels of the picture, the first and the last of them in part.
struct Sight {
    int first = 0;
    int last = 0;  // included
    float firstPart = 0;
    float lastPart = 0;  // 0 where it is the first
    float share = 0;     // of each whole one in the mean
    float covered = 0;   // how much of the screen's pixel is covered
};

std::vector<Sight> sights(double start, double length, int count, int pictureLength) {
    const double low = std::min(start, start + length);
    const double high = std::max(start, start + length);
    const double scale = pictureLength / (high - low);
    std::vector<Sight> all(static_cast<std::size_t>(count));
    for (int pixel = 0; pixel < count; ++pixel) {
        const double from = std::max<double>(pixel, low);
        const double to = std::min<double>(pixel + 1, high);
        if (from >= to) {
            continue;
        }
        const bool mirrored = length < 0;
        const double begin = (mirrored ? high - to : from - low) * scale;
        const double end = (mirrored ? high - from : to - low) * scale;
        Sight& sight = all[static_cast<std::size_t>(pixel)];
        sight.first = std::clamp(static_cast<int>(std::floor(begin)), 0, pictureLength - 1);
        sight.last = std::clamp(static_cast<int>(std::ceil(end)) - 1, sight.first, pictureLength - 1);
        const bool one = sight.first == sight.last;
        sight.firstPart = static_cast<float>(one ? end - begin : sight.first + 1 - begin);
        sight.lastPart = static_cast<float>(one ? 0 : end - sight.last);
        sight.share = static_cast<float>(1 / (end - begin));
        sight.covered = static_cast<float>(to - from);
    }
    return all;
}

// Rows of a picture as bytes: one a pixel where it is grey, otherwise three.
class PictureRows {
public:
    explicit PictureRows(const Picture& picture)
        : picture_(picture), channels_(platform::drawing::isGrey(picture) ? 1 : 3) {
        if (picture.bitsPerPixel <= 8) {
            bytes_.resize(static_cast<std::size_t>(picture.width) * channels_);
        }
    }

    std::size_t channels() const { return channels_; }

    // Valid until the next call.
    const std::uint8_t* row(int number) {
        const std::uint8_t* packed = picture_.pixels.data() + static_cast<std::size_t>(number) * picture_.stride();
        if (picture_.bitsPerPixel > 8) {
            return packed;
        }
        const int bits = picture_.bitsPerPixel;
        const unsigned mask = (1U << static_cast<unsigned>(bits)) - 1;
        std::uint8_t* to = bytes_.data();
        for (int x = 0; x < picture_.width; ++x) {
            const int bit = x * bits;
            const auto shift = static_cast<unsigned>(8 - bits - bit % 8);
            const platform::Color color = picture_.palette[(packed[bit / 8] >> shift) & mask];
            *to++ = color.red;
            if (channels_ == 3) {
                *to++ = color.green;
                *to++ = color.blue;
            }
        }
        return bytes_.data();
    }

private:
    const Picture& picture_;
    std::size_t channels_;
    std::vector<std::uint8_t> bytes_;
};

template <std::size_t channels>
void shrinkRow(const std::uint8_t* row, const std::vector<Sight>& across, std::vector<float>& shrunk) {
    float* to = shrunk.data();
    for (const Sight& sight : across) {
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const std::uint8_t* at = row + channel;
            unsigned whole = 0;
            for (int pixel = sight.first + 1; pixel < sight.last; ++pixel) {
                whole += at[static_cast<std::size_t>(pixel) * channels];
            }
            *to++ = (static_cast<float>(at[static_cast<std::size_t>(sight.first) * channels]) * sight.firstPart +
                     static_cast<float>(whole) +
                     static_cast<float>(at[static_cast<std::size_t>(sight.last) * channels]) * sight.lastPart) *
                    sight.share;
        }
    }
}

// Rows of the picture in the width that they have on the screen; the last one is kept, for it is often the next.
class ShrunkRows {
public:
    ShrunkRows(const Picture& picture, const std::vector<Sight>& across)
        : rows_(picture), across_(across), shrunk_(across.size() * rows_.channels()) {}

    std::size_t channels() const { return rows_.channels(); }

    const std::vector<float>& row(int number) {
        if (number != number_) {
            number_ = number;
            if (channels() == 1) {
                shrinkRow<1>(rows_.row(number), across_, shrunk_);
            } else {
                shrinkRow<3>(rows_.row(number), across_, shrunk_);
            }
        }
        return shrunk_;
    }

private:
    PictureRows rows_;
    const std::vector<Sight>& across_;
    std::vector<float> shrunk_;
    int number_ = -1;
};

void mean(ShrunkRows& rows, const Sight& down, std::vector<float>& sum) {
    std::fill(sum.begin(), sum.end(), 0.0F);
    for (int number = down.first; number <= down.last; ++number) {
        const float part = number == down.first ? down.firstPart : number == down.last ? down.lastPart : 1.0F;
        const float share = part * down.share;
        const std::vector<float>& row = rows.row(number);
        for (std::size_t index = 0; index < sum.size(); ++index) {
            sum[index] += row[index] * share;
        }
    }
}

}  // namespace

QImage scaledPicture(const Picture& picture, const QRectF& target, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    const std::vector<Sight> across = sights(target.x(), target.width(), size.width(), picture.width);
    const std::vector<Sight> down = sights(target.y(), target.height(), size.height(), picture.height);
    ShrunkRows rows(picture, across);
    const std::size_t channels = rows.channels();
    constexpr float half = 0.5F;  // rounds what is not negative
    std::vector<float> sum(across.size() * channels);
    for (int y = 0; y < size.height(); ++y) {
        const Sight& line = down[static_cast<std::size_t>(y)];
        mean(rows, line, sum);
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (std::size_t x = 0; x < across.size(); ++x) {
            const float covered = line.covered * across[x].covered;
            const auto level = [&](std::size_t channel) {
                return static_cast<int>(sum[x * channels + std::min(channel, channels - 1)] * covered + half);
            };
            to[x] = qRgba(level(0), level(1), level(2), static_cast<int>(255 * covered + half));
        }
    }
    return image;
}

}  // namespace platform_linux::qt
