#include "platform/drawing/scaled_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

#include "platform/drawing/grey.h"

namespace platform::drawing {

namespace {

// Pixels of the picture that fall into one of the screen, in one direction, and how much each of them counts.
struct Share {
    int first = 0;
    int last = 0;
    float ofFirst = 1;
    float between = 0;
    float ofLast = 0;

    bool operator==(const Share&) const = default;
    float of(int pixel) const { return pixel == first ? ofFirst : pixel == last ? ofLast : between; }
};

// One direction of a picture on the screen.
class Shares {
public:
    Shares(Reach reach, int pixels, bool mirrored)
        : reach_(reach), pixels_(pixels), mirrored_(mirrored), scale_(pixels / (reach.end - reach.start)) {}

    Share of(std::int64_t place) const {
        const auto low = static_cast<double>(place);
        const double from = std::max(low, reach_.start);
        const double to = std::min(low + 1, reach_.end);
        const double begin = (mirrored_ ? reach_.end - to : from - reach_.start) * scale_;
        const double end = (mirrored_ ? reach_.end - from : to - reach_.start) * scale_;
        // What is less than can be seen comes from rounding.
        const double least = scale_ / 1'000'000;
        Share share;
        share.first = std::clamp(static_cast<int>(std::floor(begin + least)), 0, pixels_ - 1);
        share.last = std::clamp(static_cast<int>(std::ceil(end - least)) - 1, share.first, pixels_ - 1);
        if (share.first < share.last) {
            const auto part = [&](double length) { return static_cast<float>(length / (end - begin)); };
            share.ofFirst = part(share.first + 1 - begin);
            share.between = part(1);
            share.ofLast = part(end - share.last);
        }
        return share;
    }
    std::vector<Share> of(Span part) const {
        std::vector<Share> shares;
        for (std::int64_t place = part.start; place < part.end; ++place) {
            shares.push_back(of(place));
        }
        return shares;
    }

private:
    Reach reach_;
    int pixels_;
    bool mirrored_;
    double scale_;  // pixels of the picture in one of the screen
};

struct Sum {
    float red = 0;
    float green = 0;
    float blue = 0;

    void add(const Sum& other, float weight) {
        red += other.red * weight;
        green += other.green * weight;
        blue += other.blue * weight;
    }
};

// The three channels of a pixel side by side, with room to add up thousands of them at once.
using Packed = std::uint64_t;
constexpr unsigned packedBits = 21;
constexpr int mostAtOnce = 8192;

Packed packed(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return Packed{red} << (2 * packedBits) | Packed{green} << packedBits | blue;
}

Sum unpacked(Packed value) {
    const auto channel = [value](unsigned bit) {
        return static_cast<float>(value >> bit & ((Packed{1} << packedBits) - 1));
    };
    return {channel(2 * packedBits), channel(packedBits), channel(0)};
}

// Rows of the picture with the columns of the screen.
class Rows {
public:
    Rows(const Picture& picture, std::vector<Share> columns)
        : picture_(picture), columns_(std::move(columns)), sums_(columns_.size()) {
        const auto [first, last] = std::minmax(columns_.front().first, columns_.back().first);
        first_ = first;
        row_.resize(static_cast<std::size_t>(std::max(columns_.front().last, columns_.back().last) - first) + 1);
        std::transform(picture.palette.begin(), picture.palette.end(), std::back_inserter(palette_),
                       [](Color color) { return packed(color.red, color.green, color.blue); });
    }

    // Good until the next one is asked for.
    const std::vector<Sum>& get(int number) {
        const std::uint8_t* bytes = picture_.pixels.data() + picture_.stride() * static_cast<std::size_t>(number);
        if (bytes_ == nullptr || (bytes_ != bytes && !std::equal(bytes, bytes + picture_.stride(), bytes_))) {
            read(bytes);
            std::transform(columns_.begin(), columns_.end(), sums_.begin(),
                           [this](const Share& share) { return sumOf(share); });
        }
        bytes_ = bytes;
        return sums_;
    }

private:
    void read(const std::uint8_t* bytes) {
        switch (picture_.bitsPerPixel) {
            case 1:
                return readNumbers<1>(bytes);
            case 2:
                return readNumbers<2>(bytes);
            case 4:
                return readNumbers<4>(bytes);
            case 8:
                return readNumbers<8>(bytes);
            default:
                break;
        }
        bytes += 3 * first_;
        for (Packed& pixel : row_) {
            pixel = packed(bytes[0], bytes[1], bytes[2]);
            bytes += 3;
        }
    }

    template <std::size_t bits>
    void readNumbers(const std::uint8_t* bytes) {
        constexpr std::size_t inByte = 8 / bits;
        auto x = static_cast<std::size_t>(first_);
        for (Packed& pixel : row_) {
            const unsigned number = bytes[x / inByte] >> ((inByte - 1 - x % inByte) * bits);
            pixel = palette_[number & ((1U << bits) - 1)];
            ++x;
        }
    }

    Sum sumOf(const Share& share) const {
        const auto at = [this](int x) { return row_.begin() + (x - first_); };
        Sum sum;
        sum.add(unpacked(*at(share.first)), share.ofFirst);
        for (int x = share.first + 1; x < share.last; x += mostAtOnce) {
            const int end = std::min(share.last, x + mostAtOnce);
            sum.add(unpacked(std::accumulate(at(x), at(end), Packed{0})), share.between);
        }
        if (share.last > share.first) {
            sum.add(unpacked(*at(share.last)), share.ofLast);
        }
        return sum;
    }

    const Picture& picture_;
    std::vector<Share> columns_;
    std::vector<Sum> sums_;
    std::vector<Packed> palette_;
    std::vector<Packed> row_;  // from the first column on that is needed
    std::ptrdiff_t first_ = 0;
    const std::uint8_t* bytes_ = nullptr;  // of the row that the sums are of; many rows of a form are alike
};

std::uint32_t pixelOf(const Sum& sum, bool grey) {
    const auto channel = [](float value) { return static_cast<std::uint8_t>(std::min(value + 0.5F, 255.0F)); };
    const Color color{channel(sum.red), channel(sum.green), channel(sum.blue)};
    return drawing::pixelOf(grey ? greyOf(color) : color);
}

}  // namespace

void drawScaled(const Picture& picture, const PictureLook& look, const Area& part, const ScreenPixels& pixels) {
    Rows rows(picture, Shares(look.across, picture.width, look.mirroredAcross).of(part.across));
    const Shares down(look.down, picture.height, look.mirroredDown);
    const auto width = static_cast<std::size_t>(part.across.end - part.across.start);
    std::vector<Sum> sums;
    Share before{-1, -1};
    for (std::int64_t place = part.down.start; place < part.down.end; ++place) {
        const Share share = down.of(place);
        std::uint32_t* const row = pixels.row(place - part.down.start);
        if (share.first == share.last && share == before) {
            std::copy_n(row - pixels.stride, width, row);
            continue;
        }
        sums.assign(width, Sum());
        for (int number = share.first; number <= share.last; ++number) {
            const std::vector<Sum>& added = rows.get(number);
            const float weight = share.of(number);
            for (std::size_t column = 0; column < width; ++column) {
                sums[column].add(added[column], weight);
            }
        }
        std::transform(sums.begin(), sums.end(), row, [&](const Sum& sum) { return pixelOf(sum, look.grey); });
        before = share;
    }
}

}  // namespace platform::drawing
