#include "platform/crash/report_log.h"

namespace platform::crash {

namespace {

constexpr std::string_view opening = "===== Fehlerbericht ";
constexpr std::string_view closing = "===== Ende, ";
constexpr std::string_view signs = "===== ";
constexpr std::string_view lastSigns = " =====";
constexpr std::size_t longestMark = 80;

constexpr std::size_t nowhere = std::string_view::npos;

// The beginning of the next line that begins so, at or behind a place.
std::size_t lineWith(std::string_view log, std::string_view beginning, std::size_t from) {
    std::size_t place = log.find(beginning, from);
    while (place != nowhere && place > 0 && log[place - 1] != '\n') {
        place = log.find(beginning, place + 1);
    }
    return place;
}

// Without the line end.
std::string_view lineAt(std::string_view log, std::size_t place) {
    const std::size_t end = log.find('\n', place);
    std::string_view line = log.substr(place, end == nowhere ? nowhere : end - place);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

}  // namespace

Entry nextEntry(std::string_view log) noexcept {
    std::size_t begin = lineWith(log, opening, 0);
    while (begin != nowhere) {
        const std::string_view firstLine = lineAt(log, begin);
        const std::size_t following = lineWith(log, opening, begin + 1);
        const std::size_t end = lineWith(log, closing, begin);
        if (firstLine.ends_with(lastSigns) && firstLine.size() <= longestMark && end < following) {
            const std::string_view mark =
                firstLine.substr(signs.size(), firstLine.size() - signs.size() - lastSigns.size());
            const std::string_view lastLine = lineAt(log, end);
            if (lastLine.substr(closing.size()) == firstLine.substr(signs.size())) {
                return {log.substr(begin, end + lastLine.size() - begin), mark};
            }
        }
        begin = following;
    }
    return {};
}

std::string_view keptPart(std::string_view log, std::size_t toAdd) noexcept {
    const std::size_t room = toAdd < longestLog ? longestLog - toAdd : 0;
    if (log.size() <= room) {
        return log;
    }
    const std::size_t begin = lineWith(log, opening, log.size() - room);
    return begin == nowhere ? std::string_view() : log.substr(begin);
}

}  // namespace platform::crash
