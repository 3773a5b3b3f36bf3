// What the tests of the host's own picture files share.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "runtime/error.h"
#include "unit/support/pixels.h"

namespace support {

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

inline std::string inverted(std::string_view content) { return inverted({decode, encode}, content); }

// The pixels of each row, "/" between rows: a letter for black (k), white, red, green, blue, cyan, magenta and yellow,
// the number in hexadecimal digits for other colours.
inline std::string lettersOf(const platform::Picture& picture) {
    std::string text;
    for (int y = 0; y < picture.height; ++y) {
        text += y > 0 ? "/" : "";
        for (int x = 0; x < picture.width; ++x) {
            const auto [red, green, blue] = colorAt(picture, x, y);
            std::array<char, 9> number{};
            std::snprintf(number.data(), number.size(), "<%02X%02X%02X>", red, green, blue);
            const bool pure = red % 255 == 0 && green % 255 == 0 && blue % 255 == 0;
            text += pure ? std::string(1, "kbgcrmyw"[red / 255 * 4 + green / 255 * 2 + blue / 255]) : number.data();
        }
    }
    return text;
}

// "00 FF"_hex as bytes.
inline std::string operator""_hex(const char* digits, std::size_t) {
    std::istringstream pairs(digits);
    std::string bytes;
    for (char high = 0, low = 0; pairs >> high >> low;) {
        bytes += static_cast<char>(std::stoi(std::string{high, low}, nullptr, 16));
    }
    return bytes;
}

inline std::string number16(std::int64_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

inline std::string number32(std::int64_t value) { return number16(value) + number16(value >> 16); }

inline void expectRefused(std::string_view content) {
    try {
        decode(content);
        ADD_FAILURE() << "it was decoded";
    } catch (const runtime::Error& error) {
        EXPECT_EQ(error.number(), runtime::errInvalidPicture);
        EXPECT_NE(error.detail().find("Bild"), std::string::npos) << error.detail();
    }
}

// Decoded and encoded as it should be. Cut off anywhere it is refused, or shows the same where only what no pixel needs
// is missing.
inline void expectVariant(std::string_view content, std::string_view colors, bool cutOff) {
    EXPECT_EQ(lettersOf(decode(content)), colors);
    EXPECT_EQ(faultOf({decode, encode}, content), "");
    for (std::size_t length = 0; cutOff && length < content.size(); ++length) {
        try {
            EXPECT_EQ(lettersOf(decode(content.substr(0, length))), colors) << length << " bytes";
        } catch (const runtime::Error& error) {
            EXPECT_EQ(error.number(), runtime::errInvalidPicture);
        }
    }
}

}  // namespace support
