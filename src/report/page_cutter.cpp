#include "report/page_cutter.h"

#include <algorithm>

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

// Before the given place there is none.
std::size_t pageEnd(std::string_view text, std::size_t from = 0) {
    std::size_t position = text.find(formFeed, from);
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

std::size_t pagesIn(std::string_view printText) {
    PageCutter cutter(printText);
    std::size_t count = 0;
    bool printed = true;
    while (const auto page = cutter.nextPage()) {
        printed = page->find_first_not_of("\r\n") != std::string_view::npos;
        ++count;
    }
    return printed ? count : count - 1;
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

void PageCuts::cutOn(std::string_view text, bool isWhole) {
    text_ = text;
    while (begin_ < text_.size()) {
        const std::string_view remaining = text_.substr(begin_);
        const std::size_t end = std::min(pageEnd(remaining, looked_ - begin_), remaining.size());
        // What a form feed is that comes last, is decided by what follows.
        if (!isWhole && end + 1 >= remaining.size()) {
            looked_ = text_.size() - 1;
            return;
        }
        ends_.push_back(begin_ + end);
        begin_ = std::min(ends_.back() + 1, text_.size());
        looked_ = begin_;
    }
}

std::string_view PageCuts::page(std::size_t number) const {
    const std::size_t begin = number > 1 ? ends_.at(number - 2) + 1 : 0;
    return text_.substr(begin, ends_.at(number - 1) - begin);
}

}  // namespace report
