#include "platform/messages/unseen_box.h"

#include <algorithm>

#include "runtime/program.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace platform::messages {

namespace {

std::string_view answerTaken(Buttons buttons) {
    switch (buttons) {
        case Buttons::okCancel:
            return " [Antwort: OK]";
        case Buttons::yesNo:
            return " [Antwort: Ja]";
        default:
            return "";
    }
}

// A line ends with CR, LF or both.
std::string severalLines(std::string_view text) {
    std::string lines;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find_first_of("\r\n"), text.size());
        lines += oneLine(text.substr(0, size)) + '\n';
        text.remove_prefix(size);
        text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(text.size(), 1));
    }
    lines.resize(lines.size() - (lines.empty() ? 0 : 1));
    return lines;
}

}  // namespace

std::string oneLine(std::string_view text) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char deleteCode = 0x7F;
    std::string line;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code > firstPrintable && code != deleteCode) {
            line += c;
        } else if (std::string_view(" \t\r\n").find(c) == std::string_view::npos) {
            line += runtime::shown({&c, 1});
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    return std::string(runtime::trimRight(line));
}

std::string unseenBox(std::string_view text, Buttons buttons, Icon icon, std::string_view title) {
    std::string line;
    if (!title.empty() && runtime::upperCase(title) != runtime::upperCase(runtime::programName)) {
        line.append(title) += ": ";
    }
    return line.append(icon == Icon::none ? severalLines(text) : oneLine(text)).append(answerTaken(buttons));
}

Answer unseenAnswer(Buttons buttons) { return buttons == Buttons::yesNo ? Answer::yes : Answer::ok; }

}  // namespace platform::messages
