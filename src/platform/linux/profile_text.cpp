#include "platform/linux/profile_text.h"

#include <algorithm>
#include <optional>

#include "platform/linux/code_page.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace platform_linux {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16Mark = "\xFF\xFE";
constexpr std::size_t longestValue = 254;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\v\f\x1A";
    const std::size_t start = text.find_first_not_of(blanks);
    return start == std::string_view::npos ? std::string_view()
                                           : text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

bool sameName(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [lower](char a, char b) { return lower(a) == lower(b); });
}

std::string fromUtf16(std::string_view bytes) {
    const auto unitAt = [bytes](std::size_t i) -> std::uint32_t {
        return i + 1 < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) |
                                          static_cast<std::uint32_t>(static_cast<std::uint8_t>(bytes[i + 1])) << 8
                                    : 0;
    };
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::uint32_t character = unitAt(i);
        const std::uint32_t next = unitAt(i + 2);
        const bool first = character >= 0xD800 && character < 0xDC00;
        if (first && next >= 0xDC00 && next < 0xE000) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            i += 2;
        } else if (character >= 0xD800 && character < 0xE000) {
            character = 0xFFFD;
        }
        runtime::appendUtf8(text, character);
    }
    return text;
}

std::string_view takeLine(std::string_view& rest) {
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return trimmed(line);
}

// Nothing where the line begins no section.
std::optional<std::string_view> sectionOf(std::string_view line) {
    const std::size_t end = line.rfind(']');
    if (!line.starts_with('[') || end == std::string_view::npos) {
        return std::nullopt;
    }
    return trimmed(line.substr(1, end - 1));
}

std::string valueOf(std::string_view text) {
    text = trimmed(text.substr(0, text.find('\0')));
    const char quote = text.empty() ? '\0' : text.front();
    if (text.size() >= 2 && (quote == '"' || quote == '\'') && text.back() == quote) {
        text = text.substr(1, text.size() - 2);
    }
    return runtime::isUtf8(text) ? std::string(runtime::beginningOf(text, longestValue))
                                 : fromWindows1252(text.substr(0, longestValue));
}

}  // namespace

ProfileText::ProfileText(std::string content, std::string failure)
    : content_(std::move(content)), failure_(std::move(failure)) {
    if (content_.starts_with(utf16Mark)) {
        content_ = fromUtf16(std::string_view(content_).substr(utf16Mark.size()));
    } else if (content_.starts_with(utf8Mark)) {
        content_.erase(0, utf8Mark.size());
    }
}

std::string ProfileText::text(std::string_view section, std::string_view key, std::string_view fallback) {
    bool inside = false;
    for (std::string_view rest = content_; !rest.empty();) {
        const std::string_view line = takeLine(rest);
        if (const auto name = sectionOf(line)) {
            if (inside) {
                break;
            }
            inside = sameName(*name, section);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (inside && !line.starts_with(';') && sameName(trimmed(line.substr(0, equals)), key)) {
            return equals == std::string_view::npos ? std::string(fallback) : valueOf(line.substr(equals + 1));
        }
    }
    return std::string(fallback);
}

}  // namespace platform_linux
