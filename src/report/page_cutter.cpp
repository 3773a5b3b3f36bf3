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

// The last place of the code on the page. Most pages have no macro at all, which is found out fastest.
std::size_t lastTrayMacro(std::string_view page) {
    std::size_t last = std::string_view::npos;
    for (std::size_t caret = page.find('^'); caret != std::string_view::npos; caret = page.find('^', caret + 1)) {
        if (page.substr(caret, trayCode.size()) == trayCode) {
            last = caret;
        }
    }
    return last;
}

}  // namespace

std::optional<std::string_view> PageCutter::nextPage() {
    if (remaining_.empty()) {
        return std::nullopt;
    }
    const std::size_t end = pageEnd(remaining_);
    const std::string_view page = remaining_.substr(0, end);
    remaining_.remove_prefix(end == std::string_view::npos ? remaining_.size() : end + 1);
    return page;
}

void requestTray(std::string_view page, std::string& tray) {
    const std::size_t macro = lastTrayMacro(page);
    if (macro == std::string_view::npos) {
        return;
    }
    const std::string_view parameter = page.substr(macro + trayCode.size(), 1);
    if (parameter == "1" || parameter == "2" || parameter == "3") {
        tray = parameter;
    } else if (tray.empty()) {
        tray = "1";
    }
}

PageCuts::PageCuts(std::string_view printText) : text_(printText) {
    PageCutter cutter(printText);
    while (const auto page = cutter.nextPage()) {
        ends_.push_back(static_cast<std::size_t>(page->data() - text_.data()) + page->size());
    }
}

std::string_view PageCuts::page(std::size_t number) const {
    const std::size_t begin = number > 1 ? ends_.at(number - 2) + 1 : 0;
    return text_.substr(begin, ends_.at(number - 1) - begin);
}

}  // namespace report
