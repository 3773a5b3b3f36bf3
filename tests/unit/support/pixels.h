// Pictures pixel by pixel, and what must be true of every picture file that can be read; for tests and fuzzers.
#pragma once

#include <string>
#include <string_view>

#include "pictures/picture_file.h"

namespace support {

inline platform::Color colorAt(const platform::Picture& picture, int x, int y) {
    const std::uint8_t* row = picture.pixels.data() + static_cast<std::size_t>(y) * picture.stride();
    if (picture.bitsPerPixel == 24) {
        return {row[3 * x], row[3 * x + 1], row[3 * x + 2]};
    }
    const int bit = x * picture.bitsPerPixel;
    const int number = row[bit / 8] >> (8 - picture.bitsPerPixel - bit % 8) & ((1 << picture.bitsPerPixel) - 1);
    return picture.palette.at(static_cast<std::size_t>(number));
}

// The colours of all pixels, three bytes each.
inline std::string colorsOf(const platform::Picture& picture) {
    std::string colors;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const platform::Color color = colorAt(picture, x, y);
            colors += {static_cast<char>(color.red), static_cast<char>(color.green), static_cast<char>(color.blue)};
        }
    }
    return colors;
}

// Decoding and encoding of one kind of files.
struct Codec {
    platform::Picture (*decode)(std::string_view content);
    std::string (*encode)(const platform::Picture& picture, std::string_view original);
};

inline std::string inverted(const Codec& codec, std::string_view content) {
    platform::Picture picture = codec.decode(content);
    pictures::invert(picture);
    return codec.encode(picture, content);
}

// What is wrong with a file that can be decoded: written back it has to show the same colours, inverted the opposite
// ones and inverted twice the first again; or some colours, where the file cannot hold them exactly.
inline std::string_view faultOf(const Codec& codec, std::string_view content, bool exact = true) {
    const platform::Picture picture = codec.decode(content);
    const auto shownBy = [&codec](std::string_view file) { return colorsOf(codec.decode(file)); };
    const std::size_t numbers = picture.bitsPerPixel == 24 ? 0U : std::size_t{1} << picture.bitsPerPixel;
    if (picture.palette.size() != numbers ||
        picture.pixels.size() != picture.stride() * static_cast<std::size_t>(picture.height)) {
        return "the picture has not all of its pixels and colours";
    }
    const std::string colors = colorsOf(picture);
    std::string opposites = colors;
    for (char& channel : opposites) {
        channel = static_cast<char>(~channel);
    }
    const std::string once = inverted(codec, content);
    const bool rewritten = shownBy(codec.encode(picture, content)) == colors;
    const bool opposite = shownBy(once) == opposites || !exact;
    const bool twice = shownBy(inverted(codec, once)) == colors || !exact;
    return !rewritten  ? "what is written is not what was read"
           : !opposite ? "inverting does not give the opposite colours"
           : !twice    ? "inverting twice does not give the first colours"
                       : "";
}

}  // namespace support
