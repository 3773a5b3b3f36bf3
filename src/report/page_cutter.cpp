#include "report/page_cutter.h"

namespace report {

namespace {

constexpr char formFeed = '\f';
constexpr std::string_view indentCode = "^LR";
constexpr std::string_view trayCode = "^TR";

// Whether the form feed at the position is the parameter of an indentation macro.
bool isIndentParameter(std::string_view text, std::size_t position) {
    return position >= indentCode.size() && position + 1 < text.size() &&
           text.substr(position - indentCode.size(), indentCode.size()) == indentCode;
}

std::size_t pageEnd(std::string_view text) {
    std::size_t position = text.find(formFeed);
    while (position != std::string_view::npos && isIndentParameter(text, position)) {
        position = text.find(formFeed, position + 1);
    }
    return position;
}

void chooseTray(std::string_view page, std::string& tray) {
    const std::size_t macro = page.rfind(trayCode);
    if (macro == std::string_view::npos) {
        return;
    }
    const std::string_view parameter = page.substr(macro + trayCode.size()).substr(0, 1);
    if (parameter == "1" || parameter == "2" || parameter == "3") {
        tray = parameter;
    } else if (tray.empty()) {
        tray = "1";
    }
}

}  // namespace

std::optional<std::string_view> PageCutter::nextPage() {
    if (remaining_.empty()) {
        return std::nullopt;
    }
    const std::size_t end = pageEnd(remaining_);
    const std::string_view page = remaining_.substr(0, end);
    remaining_.remove_prefix(end == std::string_view::npos ? remaining_.size() : end + 1);
    chooseTray(page, requestedTray_);
    return page;
}

}  // namespace report
