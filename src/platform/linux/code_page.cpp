#include "platform/linux/code_page.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>

#include "runtime/text.h"
#include "runtime/utf8.h"

namespace platform_linux {

namespace {

constexpr std::size_t firstHigh = 128;

// Glyphs of the codes 1 to 31 of the IBM PC's character generator; code 127 is the house.
constexpr std::u32string_view controlGlyphs =
    U"☺☻♥♦♣♠•◘○◙♂♀♪♫☼"
    U"►◄↕‼¶§▬↨↑↓→←∟↔▲▼";
static_assert(controlGlyphs.size() == 31);
constexpr char32_t house = U'⌂';

// The codes 128 to 255 of the two code pages that nearly every host uses; they must be there on systems, too, that
// have left out the converter's tables.
constexpr std::u32string_view high437 =
    U"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒ"
    U"áíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    U"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
    U"αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0";
constexpr std::u32string_view high850 =
    U"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒ"
    U"áíóúñÑªº¿®¬½¼¡«»░▒▓│┤ÁÂÀ©╣║╗╝¢¥┐"
    U"└┴┬├─┼ãÃ╚╔╩╦╠═╬¤ðÐÊËÈıÍÎÏ┘┌█▄¦Ì▀"
    U"ÓßÔÒõÕµþÞÚÛÙýÝ¯´\u00AD±‗¾¶§÷¸°¨·¹³²■\u00A0";
static_assert(high437.size() == firstHigh && high850.size() == firstHigh);
constexpr std::size_t euroIn858 = 0xD5;

// The codes 128 to 159 of Windows-1252; all others are those of Latin-1.
constexpr std::u32string_view high1252 =
    U"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F"
    U"\u0090‘’“”•–—˜™š›œ\u009DžŸ";
static_assert(high1252.size() == 32);

CodePage lowerHalf() {
    CodePage page{};
    std::copy(controlGlyphs.begin(), controlGlyphs.end(), page.begin() + 1);
    for (char32_t c = U' '; c < 127; ++c) {
        page[c] = c;
    }
    page[127] = house;
    return page;
}

class Converter {
public:
    explicit Converter(const std::string& from) : handle_(::iconv_open("UTF-32LE", from.c_str())) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (*this) {
            ::iconv_close(handle_);
        }
    }
    explicit operator bool() const { return reinterpret_cast<std::intptr_t>(handle_) != -1; }

    // 0 where the byte has no character; nothing where it is but a part of one.
    std::optional<char32_t> character(std::uint8_t byte) const {
        char input = static_cast<char>(byte);
        std::array<char, 16> output{};
        char* from = &input;
        char* to = output.data();
        std::size_t fromLeft = 1;
        std::size_t toLeft = output.size();
        ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        if (::iconv(handle_, &from, &fromLeft, &to, &toLeft) == static_cast<std::size_t>(-1)) {
            return errno == EILSEQ ? std::optional<char32_t>(0) : std::nullopt;
        }
        if (toLeft != output.size() - 4) {
            return std::nullopt;
        }
        char32_t result = 0;
        for (std::size_t i = 4; i-- > 0;) {
            result = result << 8U | static_cast<std::uint8_t>(output[i]);
        }
        return result;
    }

private:
    iconv_t handle_;
};

bool convert(const Converter& converter, CodePage& page) {
    for (std::size_t code = U' '; code < page.size(); ++code) {
        const std::optional<char32_t> character = converter.character(static_cast<std::uint8_t>(code));
        if (!character || (code < 127 && *character != code)) {
            return false;
        }
        if (code >= firstHigh) {
            page[code] = *character;
        }
    }
    return true;
}

std::optional<CodePage> fromSystem(int number, CodePage page) {
    for (const char* prefix : {"IBM", "CP"}) {
        const Converter converter(prefix + std::to_string(number));
        if (converter && convert(converter, page)) {
            return page;
        }
    }
    return std::nullopt;
}

std::optional<CodePage> find(int number) {
    CodePage page = lowerHalf();
    switch (number) {
        case 437:
            std::copy(high437.begin(), high437.end(), page.begin() + firstHigh);
            return page;
        case 850:
        case 858:
            std::copy(high850.begin(), high850.end(), page.begin() + firstHigh);
            page[euroIn858] = number == 858 ? U'€' : page[euroIn858];
            return page;
        default:
            return number > 0 ? fromSystem(number, page) : std::nullopt;
    }
}

}  // namespace

CodePage dosCodePage(int number) {
    constexpr int germanCodePage = 850;
    const std::optional<CodePage> found = find(number);
    return found ? *found : *find(germanCodePage);
}

bool isDosCodePage(int number) { return find(number).has_value(); }

std::string textOf(std::string_view bytes, const CodePage& codePage) {
    constexpr char32_t replacement = 0xFFFD;
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const char32_t c = codePage[static_cast<std::uint8_t>(byte)];
        runtime::appendUtf8(text, c != 0 ? c : byte == '\0' ? U' ' : replacement);
    }
    return text;
}

std::string fromWindows1252(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        const auto code = static_cast<std::uint8_t>(byte);
        const std::size_t special = code - firstHigh;
        runtime::appendUtf8(text, special < high1252.size() ? high1252[special] : code);
    }
    return text;
}

std::optional<std::string> toWindows1252(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const char32_t character = runtime::takeCharacter(text).value_or(runtime::replacementCharacter);
        const std::size_t special = high1252.find(character);
        const bool same = character < firstHigh || (character >= 0xA0 && character <= 0xFF);
        if (special == std::u32string_view::npos && !same) {
            return std::nullopt;
        }
        bytes += static_cast<char>(same ? character : firstHigh + special);
    }
    return bytes;
}

}  // namespace platform_linux
