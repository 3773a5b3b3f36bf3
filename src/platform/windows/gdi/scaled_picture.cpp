#include "platform/windows/gdi/scaled_picture.h"

#include <algorithm>
#include <cmath>
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

// Rows of the picture with the columns of the screen.
class Rows {
public:
    Rows(const Picture& picture, std::vector<Share> columns)
        : picture_(picture), columns_(std::move(columns)), sums_(columns_.size()) {
        first_ = columns_.front().first;
        last_ = columns_.front().last;
        for (const Share& share : columns_) {
            first_ = std::min(first_, share.first);
            last_ = std::max(last_, share.last);
        }
        row_.resize(static_cast<std::size_t>(last_ - first_) + 1);
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
        const int bits = picture_.bitsPerPixel;
        for (int x = first_; x <= last_; ++x) {
            platform::Color& color = row_[static_cast<std::size_t>(x - first_)];
            if (bits == 24) {
                const std::uint8_t* rgb = bytes + std::size_t{3} * static_cast<std::size_t>(x);
                color = {rgb[0], rgb[1], rgb[2]};
            } else {
                const std::size_t bit = static_cast<std::size_t>(x) * static_cast<std::size_t>(bits);
                const unsigned number = bytes[bit / 8] >> (8U - static_cast<unsigned>(bits) - bit % 8);
                color = picture_.palette[number & ((1U << static_cast<unsigned>(bits)) - 1)];
            }
        }
    }

    Sum sumOf(const Share& share) const {
        const auto at = [this](int x) {
            const platform::Color color = row_[static_cast<std::size_t>(x - first_)];
            return Sum{static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue)};
        };
        Sum sum;
        sum.add(at(share.first), share.ofFirst);
        int red = 0;
        int green = 0;
        int blue = 0;
        for (int x = share.first + 1; x < share.last; ++x) {
            const platform::Color color = row_[static_cast<std::size_t>(x - first_)];
            red += color.red;
            green += color.green;
            blue += color.blue;
        }
        sum.add({static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue)}, share.between);
        if (share.last > share.first) {
            sum.add(at(share.last), share.ofLast);
        }
        return sum;
    }

    const Picture& picture_;
    std::vector<Share> columns_;
    std::vector<Sum> sums_;
    std::vector<platform::Color> row_;  // from the first column on that is needed
    int first_ = 0;
    int last_ = 0;
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
    std::vector<Sum> sums;
    for (std::int64_t place = part.down.start; place < part.down.end; ++place) {
        const Share share = shareOf(place, picture.height, look.height, look.mirroredDown);
        sums.assign(static_cast<std::size_t>(part.across.end - part.across.start), Sum());
        for (int number = share.first; number <= share.last; ++number) {
            const std::vector<Sum>& row = rows.get(number);
            for (std::size_t column = 0; column < sums.size(); ++column) {
                sums[column].add(row[column], share.of(number));
            }
        }
        std::transform(sums.begin(), sums.end(), pixels.row(static_cast<int>(place - part.down.start)),
                       [&](const Sum& sum) { return pixelOf(sum, look.grey); });
    }
}

}  // namespace platform_windows::gdi
