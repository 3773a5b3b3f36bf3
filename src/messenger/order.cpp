#include "messenger/order.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "runtime/numbers.h"

namespace messenger {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view head = "KRVWINPR-AUFTRAG ";
constexpr std::string_view version = "1";
constexpr std::size_t markLength = 8;

// The rest of the next line behind its label; nothing, and nothing taken, where the label is not there.
std::optional<std::string_view> takeLine(std::string_view& content, std::string_view label) {
    const std::size_t end = content.find(lineEnd);
    if (end == std::string_view::npos || !content.starts_with(label) || end < label.size()) {
        return std::nullopt;
    }
    const std::string_view value = content.substr(label.size(), end - label.size());
    content.remove_prefix(end + lineEnd.size());
    return value;
}

bool isMark(std::string_view text) {
    return text.size() == markLength && text.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
}

std::string sumOf(std::string_view bytes) {
    constexpr std::uint32_t modulus = 0x10000;
    constexpr std::size_t digits = 4;
    std::uint32_t sum = 0;
    for (const char byte : bytes) {
        sum = (sum + static_cast<unsigned char>(byte)) % modulus;
    }
    const std::string number = runtime::hexText(sum);
    return std::string(digits - number.size(), '0') + number;
}

// What stands before the line with the sum; nothing where the sum is missing or another one.
std::optional<std::string_view> summedPart(std::string_view content) {
    constexpr std::string_view label = "Ende=";
    constexpr std::size_t length = label.size() + 4 + lineEnd.size();
    if (content.size() < length) {
        return std::nullopt;
    }
    const std::string_view summed = content.substr(0, content.size() - length);
    const bool right = content.substr(summed.size()) == std::string(label) + sumOf(summed) + std::string(lineEnd);
    return right ? std::optional(summed) : std::nullopt;
}

}  // namespace

// The tail goes up to the line with the sum, because a host may have put anything into it.
Order readOrder(std::string_view content) {
    Order order;
    std::string_view rest = content;
    const auto written = takeLine(rest, head);
    const auto mark = takeLine(rest, "Kennung=");
    if (mark && isMark(*mark)) {
        order.mark = *mark;
    }
    if (!written) {
        order.fault = "er beginnt nicht wie ein Auftrag";
        return order;
    }
    if (*written != version) {
        order.fault = "er ist von einer anderen KRVWINPR.COM, als zu diesem Boten gehört";
        return order;
    }
    const auto summed = summedPart(content);
    if (!summed) {
        order.fault = "er ist abgeschnitten oder verändert";
        return order;
    }
    rest.remove_suffix(content.size() - summed->size());
    const auto directory = takeLine(rest, "Ordner=");
    constexpr std::string_view command = "Befehl=";
    if (!mark || !isMark(*mark) || !directory || !rest.starts_with(command) || !rest.ends_with(lineEnd) ||
        rest.size() > command.size() + longestTail + lineEnd.size()) {
        order.fault = "er hat nicht die Zeilen eines Auftrags";
        return order;
    }
    order.directory = *directory;
    order.tail = rest.substr(command.size(), rest.size() - command.size() - lineEnd.size());
    return order;
}

}  // namespace messenger
