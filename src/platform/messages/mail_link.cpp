#include "platform/messages/mail_link.h"

#include <algorithm>
#include <string_view>

namespace platform::messages {

namespace {

constexpr std::string_view lineEnd = "%0D%0A";
constexpr std::string_view cutNote = "\n[Hier gekürzt: Der ganze Text ist für diesen Weg zu lang.]\n";

bool isUnreserved(char c) {
    constexpr std::string_view marks = "-._~";
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           marks.find(c) != std::string_view::npos;
}

std::string encoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    for (const char c : text) {
        if (isUnreserved(c)) {
            result += c;
        } else if (c == '\n') {
            result += lineEnd;
        } else if (c != '\r') {
            const auto byte = static_cast<unsigned char>(c);
            result += {'%', digits[byte / digits.size()], digits[byte % digits.size()]};
        }
    }
    return result;
}

}  // namespace

std::string mailLink(const std::string& subject, const std::string& text, std::size_t most) {
    const std::string start = "mailto:?subject=" + encoded(subject) + "&body=";
    std::string body = encoded(text);
    if (start.size() + body.size() <= most) {
        return start + body;
    }
    const std::string note = encoded(cutNote);
    const std::size_t others = start.size() + note.size() + lineEnd.size();
    const std::size_t last = most >= others ? body.rfind(lineEnd, most - others) : std::string::npos;
    body.resize(last == std::string::npos ? 0 : last + lineEnd.size());
    return start + body + note;
}

}  // namespace platform::messages
