#include "round_trip.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "pictures/picture_file.h"
#include "runtime/error.h"

namespace fuzz {

namespace {

using Colors = std::vector<platform::Color>;

void require(bool sound, const char* what) {
    if (!sound) {
        std::fprintf(stderr, "not true: %s\n", what);
        std::abort();
    }
}

Colors colorsOf(const platform::Picture& picture) {
    const int bits = picture.bitsPerPixel;
    require(picture.pixels.size() == picture.stride() * static_cast<std::size_t>(picture.height),
            "pixels fill the picture");
    require(picture.palette.size() == (bits == 24 ? 0U : std::size_t{1} << bits), "every number has a colour");
    Colors colors;
    for (int y = 0; y < picture.height; ++y) {
        const std::uint8_t* row = picture.pixels.data() + static_cast<std::size_t>(y) * picture.stride();
        for (int x = 0; x < picture.width; ++x) {
            if (bits == 24) {
                colors.push_back({row[3 * x], row[3 * x + 1], row[3 * x + 2]});
            } else {
                const int number = row[x * bits / 8] >> (8 - bits - x * bits % 8) & ((1 << bits) - 1);
                colors.push_back(picture.palette[static_cast<std::size_t>(number)]);
            }
        }
    }
    return colors;
}

Colors oppositesOf(Colors colors) {
    for (platform::Color& color : colors) {
        color = {static_cast<std::uint8_t>(255 - color.red), static_cast<std::uint8_t>(255 - color.green),
                 static_cast<std::uint8_t>(255 - color.blue)};
    }
    return colors;
}

std::string inverted(const Codec& codec, std::string_view content) {
    platform::Picture picture = codec.decode(content);
    pictures::invert(picture);
    return codec.encode(picture, content);
}

platform::Picture decodeOrNothing(const Codec& codec, std::string_view content) {
    try {
        return codec.decode(content);
    } catch (const runtime::Error&) {
        return {};
    }
}

}  // namespace

void checkRoundTrip(const Codec& codec, std::string_view content, bool exact) noexcept {
    const platform::Picture picture = decodeOrNothing(codec, content);
    if (picture.width == 0) {
        return;
    }
    const Colors colors = colorsOf(picture);
    const std::string once = inverted(codec, content);
    const Colors rewritten = colorsOf(codec.decode(codec.encode(picture, content)));
    const Colors opposite = colorsOf(codec.decode(once));
    const Colors twice = colorsOf(codec.decode(inverted(codec, once)));
    require(rewritten == colors, "what is written is what was read");
    require(opposite == oppositesOf(colors) || !exact, "inverting gives the opposite colours");
    require(twice == colors || !exact, "inverting twice gives the first colours");
}

}  // namespace fuzz
