#include "platform/windows/gdi/scaled_picture.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

#include "platform/drawing/grey.h"

namespace platform_windows::gdi {

namespace {

using platform::Picture;
using platform::drawing::Span;

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

Share shareOf(std::int64_t place, int pixels, std::int64_t shown, bool mirrored) {
    const std::int64_t at = mirrored ? shown - 1 - place : place;
    if (shown >= pixels) {
        const auto nearest = static_cast<int>((2 * at + 1) * pixels / (2 * shown));
        return {nearest, nearest};
    }
    // A pixel of the picture is as long as `shown`, one of the screen as long as `pixels`.
    const std::int64_t start = at * pixels;
    const std::int64_t end = start + pixels;
    Share share;
    share.first = static_cast<int>(start / shown);
    share.last = static_cast<int>((end - 1) / shown);
    const auto part = [&](std::int64_t length) { return static_cast<float>(length) / static_cast<float>(pixels); };
    share.ofFirst = part(std::min((share.first + 1) * shown, end) - start);
    share.between = part(shown);
    share.ofLast = part(end - share.last * shown);
    return share;
}

std::vector<Share> sharesOf(Span part, int pixels, std::int64_t shown, bool mirrored) {
    std::vector<Share> shares;
    for (std::int64_t place = part.start; place < part.end; ++place) {
        shares.push_back(shareOf(place, pixels, shown, mirrored));
    }
    return shares;
}

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
                       [](platform::Color color) { return packed(color.red, color.green, color.blue); });
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
    const platform::Color color{channel(sum.red), channel(sum.green), channel(sum.blue)};
    return gdi::pixelOf(grey ? platform::drawing::greyOf(color) : color);
}

}  // namespace

void drawScaled(const Picture& picture, const PictureLook& look, const platform::drawing::Area& part,
                const ScreenPixels& pixels) {
    Rows rows(picture, sharesOf(part.across, picture.width, look.width, look.mirroredAcross));
    const auto width = static_cast<std::size_t>(part.across.end - part.across.start);
    std::vector<Sum> sums;
    Share before{-1, -1};
    for (std::int64_t place = part.down.start; place < part.down.end; ++place) {
        const Share share = shareOf(place, picture.height, look.height, look.mirroredDown);
        std::uint32_t* const row = pixels.row(static_cast<int>(place - part.down.start));
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

}  // namespace platform_windows::gdi
