// What the tests of picture files share.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pictures/picture_file.h"
#include "runtime/error.h"

namespace test {

using namespace std::string_literals;

class NoOthers : public platform::ImageFiles {
public:
    platform::Picture decode(std::string_view) override { throw runtime::Error(runtime::errInvalidPicture, "andere"); }
    std::string encode(const platform::Picture&, std::string_view) override { return "andere"; }
};

inline platform::Picture decode(std::string_view content) {
    NoOthers others;
    return pictures::decodePicture(content, others);
}

inline std::string encode(const platform::Picture& picture, std::string_view original) {
    NoOthers others;
    return pictures::encodePicture(picture, original, others);
}

inline std::string inverted(std::string_view content) {
    platform::Picture picture = decode(content);
    pictures::invert(picture);
    return encode(picture, content);
}

inline platform::Color colorAt(const platform::Picture& picture, int x, int y) {
    const std::uint8_t* row = picture.pixels.data() + static_cast<std::size_t>(y) * picture.stride();
    if (picture.bitsPerPixel == 24) {
        return {row[3 * x], row[3 * x + 1], row[3 * x + 2]};
    }
    const int bit = x * picture.bitsPerPixel;
    const int number = row[bit / 8] >> (8 - picture.bitsPerPixel - bit % 8) & ((1 << picture.bitsPerPixel) - 1);
    return picture.palette.at(static_cast<std::size_t>(number));
}

// The pixels of each row, "/" between rows: a letter for black (k), white, red, green, blue, cyan, magenta and yellow,
// the number in hexadecimal digits for other colours.
inline std::string colorsOf(const platform::Picture& picture) {
    static constexpr std::string_view letters = "kbgcrmyw";
    std::string text;
    for (int y = 0; y < picture.height; ++y) {
        text += y > 0 ? "/" : "";
        for (int x = 0; x < picture.width; ++x) {
            const platform::Color color = colorAt(picture, x, y);
            const std::array values{color.red, color.green, color.blue};
            std::size_t letter = 0;
            bool pure = true;
            for (const std::uint8_t value : values) {
                pure = pure && (value == 0 || value == 255);
                letter = letter * 2 + value / 255;
            }
            std::array<char, 9> digits{};
            std::snprintf(digits.data(), digits.size(), "<%02X%02X%02X", color.red, color.green, color.blue);
            text += pure ? std::string(1, letters[letter]) : digits.data() + ">"s;
        }
    }
    return text;
}

// "00 FF" as bytes.
inline std::string hex(std::string_view digits) {
    std::string bytes;
    std::string pair;
    for (const char digit : digits) {
        pair += digit == ' ' ? ""s : std::string(1, digit);
        if (pair.size() == 2) {
            bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
            pair.clear();
        }
    }
    return bytes;
}

inline std::string number16(std::uint32_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

inline std::string number32(std::uint32_t value) { return number16(value & 0xFFFF) + number16(value >> 16); }

inline void expectRefused(std::string_view content, std::string_view what) {
    try {
        decode(content);
        ADD_FAILURE() << what << " was decoded";
    } catch (const runtime::Error& error) {
        EXPECT_EQ(error.number(), runtime::errInvalidPicture) << what;
        EXPECT_NE(error.detail().find("Bild"), std::string::npos) << what << ": " << error.detail();
    }
}

// Cut off anywhere a file is refused, or shows the same picture where only what no pixel needs is missing.
inline void expectRefusedOrSameCutOff(std::string_view content, std::string_view what) {
    const std::string whole = colorsOf(decode(content));
    for (std::size_t length = 0; length < content.size(); ++length) {
        try {
            EXPECT_EQ(colorsOf(decode(content.substr(0, length))), whole) << what << " of " << length << " bytes";
        } catch (const runtime::Error& error) {
            EXPECT_EQ(error.number(), runtime::errInvalidPicture);
        }
    }
}

// Written back as it is a file is the same file; inverted it shows the opposite colours, and twice inverted the first.
inline void expectInvertible(std::string_view content, std::string_view what) {
    const platform::Picture picture = decode(content);
    EXPECT_EQ(colorsOf(decode(encode(picture, content))), colorsOf(picture)) << what;
    platform::Picture opposite = picture;
    pictures::invert(opposite);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const platform::Color color = colorAt(picture, x, y);
            EXPECT_EQ(colorAt(opposite, x, y).red, 255 - color.red) << what;
            EXPECT_EQ(colorAt(opposite, x, y).green, 255 - color.green) << what;
            EXPECT_EQ(colorAt(opposite, x, y).blue, 255 - color.blue) << what;
        }
    }
    const std::string once = inverted(content);
    EXPECT_EQ(colorsOf(decode(once)), colorsOf(opposite)) << what;
    EXPECT_EQ(colorsOf(decode(inverted(once))), colorsOf(picture)) << what;
    EXPECT_EQ(decode(once).bitsPerPixel, picture.bitsPerPixel) << what;
    EXPECT_EQ(decode(once).dpiX, picture.dpiX) << what;
}

}  // namespace test
