#include "messenger/answer.h"

#include <array>
#include <utility>

#include "runtime/utf8.h"

namespace messenger {

namespace {

constexpr std::size_t markLength = 8;
constexpr std::size_t markAt = 2;
constexpr std::string_view lineEnd = "\r\n";

// Code pages 437, 850, 852 and 858 agree in these.
char dosCharacter(char32_t character) {
    static constexpr std::array<std::pair<char32_t, unsigned char>, 12> shared{{{U'ä', 0x84},
                                                                                {U'ö', 0x94},
                                                                                {U'ü', 0x81},
                                                                                {U'Ä', 0x8E},
                                                                                {U'Ö', 0x99},
                                                                                {U'Ü', 0x9A},
                                                                                {U'ß', 0xE1},
                                                                                {U'é', 0x82},
                                                                                {U'„', '"'},
                                                                                {U'“', '"'},
                                                                                {U'”', '"'},
                                                                                {U'–', '-'}}};
    constexpr char32_t firstPrintable = 0x20;
    constexpr char32_t behindAscii = 0x7F;
    if (character >= firstPrintable && character < behindAscii) {
        return static_cast<char>(character);
    }
    for (const auto& [known, code] : shared) {
        if (character == known) {
            return static_cast<char>(code);
        }
    }
    return '?';
}

std::string dosText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        result += dosCharacter(runtime::takeCharacter(text).value_or(runtime::replacementCharacter));
    }
    return result;
}

std::string inLines(std::string_view text) {
    constexpr std::size_t longestLine = 78;
    constexpr std::size_t longestText = 380;
    text = text.substr(0, longestText);
    std::string lines;
    while (!text.empty()) {
        std::size_t end = text.size();
        if (end > longestLine) {
            const std::size_t blank = text.rfind(' ', longestLine);
            end = blank == std::string_view::npos || blank == 0 ? longestLine : blank;
        }
        lines.append(text.substr(0, end)).append(lineEnd);
        text.remove_prefix(end);
        text.remove_prefix(text.starts_with(' ') ? 1 : 0);
    }
    return lines;
}

}  // namespace

bool isLast(AnswerState state) { return state != AnswerState::taken && state != AnswerState::started; }

std::string answerContent(const Answer& answer) {
    std::string content(1, static_cast<char>(answer.state));
    content.append(" ").append(answer.mark).append(lineEnd);
    return content + inLines(dosText(answer.text));
}

std::optional<Answer> readAnswer(std::string_view content) {
    constexpr std::string_view states = "ASONE";
    if (content.size() < markAt + markLength + lineEnd.size() ||
        states.find(content.front()) == std::string_view::npos) {
        return std::nullopt;
    }
    return Answer{static_cast<AnswerState>(content.front()), std::string(content.substr(markAt, markLength)), {}};
}

}  // namespace messenger
